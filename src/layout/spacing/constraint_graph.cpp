#include "layout/spacing/constraint_graph.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>

namespace norvelis::layout {

namespace {

constexpr double kRounding = 1e-9;
constexpr int kMostRounds = 1000;
constexpr int kRoundsToSuspicion = 12;

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

}  // namespace

void ConstraintGraph::KeepApart(int lower, int upper, double distance) {
    arcs_.push_back({lower, upper, distance, true});
}

void ConstraintGraph::KeepWithin(int a, int b, double reach) {
    arcs_.push_back({a, b, -reach, false});
    arcs_.push_back({b, a, -reach, false});
}

/// Of arcs between the same two, the longest one holds.
void ConstraintGraph::DropRepeatedArcs() {
    std::vector<std::vector<Arc>> from(places_.size());
    for (const Arc& arc : arcs_) {
        std::vector<Arc>& here = from[At(arc.from)];
        const auto same =
            std::find_if(here.begin(), here.end(), [&](const Arc& other) { return other.to == arc.to; });
        if (same == here.end()) {
            here.push_back(arc);
        } else if (same->distance < arc.distance) {
            *same = arc;
        }
    }
    arcs_.clear();
    for (const auto& here : from) arcs_.insert(arcs_.end(), here.begin(), here.end());
}

ConstraintGraph::Walk ConstraintGraph::WalkOf(bool upwards) const {
    Walk walk;
    walk.order.resize(places_.size());
    std::iota(walk.order.begin(), walk.order.end(), 0);
    std::sort(walk.order.begin(), walk.order.end(), [&](int a, int b) {
        const double x = places_[At(a)], y = places_[At(b)];
        return (x != y ? x < y : a < b) == upwards && a != b;
    });
    std::vector<int> count(places_.size() + 1), rank(places_.size());
    for (std::size_t i = 0; i < walk.order.size(); ++i) rank[At(walk.order[i])] = static_cast<int>(i);
    const auto source = [&](const Arc& arc) { return At(rank[At(upwards ? arc.from : arc.to)]); };
    for (const Arc& arc : arcs_) ++count[source(arc) + 1];
    std::partial_sum(count.begin(), count.end(), count.begin());
    walk.first = count;
    walk.arcs.resize(arcs_.size());
    for (std::size_t i = 0; i < arcs_.size(); ++i)
        walk.arcs[At(count[source(arcs_[i])]++)] = static_cast<int>(i);
    return walk;
}

/// The least places not below the wishes that keep all distances, or the greatest not above them. Sweeps in
/// the order of places settle all but what reaches hold back.
std::vector<double> ConstraintGraph::Push(const Walk& walk, bool upwards, double squeeze,
                                          bool& contradiction) {
    const double sign = upwards ? 1 : -1;
    std::vector<double> value;
    for (const double place : places_) value.push_back(place * squeeze * sign);
    std::vector<int> cause(places_.size(), -1);
    std::vector<char> isDirty(places_.size(), 1);
    bool changed = true;
    for (int round = 1; changed && round <= kMostRounds; ++round) {
        changed = false;
        for (std::size_t i = 0; i < walk.order.size(); ++i) {
            const std::size_t from = At(walk.order[i]);
            if (!isDirty[from]) continue;
            isDirty[from] = 0;
            for (int k = walk.first[i]; k < walk.first[i + 1]; ++k) {
                const int arcNumber = walk.arcs[At(k)];
                const Arc& arc = arcs_[At(arcNumber)];
                const std::size_t to = At(upwards ? arc.to : arc.from);
                const double least = value[from] + arc.distance;
                if (value[to] >= least - kRounding) continue;
                value[to] = least;
                cause[to] = arcNumber;
                isDirty[to] = 1;
                changed = true;
            }
        }
        if (upwards && round % kRoundsToSuspicion == 0 && ShrinkContradictions(cause)) {
            contradiction = true;
            break;
        }
    }
    for (double& v : value) v *= sign;
    return value;
}

/// Arcs that push one another around a circle can never all be kept.
bool ConstraintGraph::ShrinkContradictions(const std::vector<int>& cause) {
    enum State : char { Fresh, OnWalk, Done };
    std::vector<State> state(cause.size(), Fresh);
    std::vector<int> walk;
    bool found = false;
    for (std::size_t start = 0; start < cause.size(); ++start) {
        int at = static_cast<int>(start);
        walk.clear();
        while (state[At(at)] == Fresh) {
            state[At(at)] = OnWalk;
            walk.push_back(at);
            if (cause[At(at)] < 0) break;
            at = arcs_[At(cause[At(at)])].from;
        }
        if (state[At(at)] == OnWalk && cause[At(at)] >= 0) {
            int on = at;
            do {
                Arc& arc = arcs_[At(cause[At(on)])];
                if (arc.mayShrink) {
                    arc.distance = std::min(arc.distance, places_[At(arc.to)] - places_[At(arc.from)]);
                    arc.mayShrink = false;
                    found = true;
                }
                on = arc.from;
            } while (on != at);
        }
        for (const int passed : walk) state[At(passed)] = Done;
    }
    return found;
}

std::pair<double, double> ConstraintGraph::SpaceOf(int variable, int other,
                                                   const std::vector<double>& places) const {
    double lo = -std::numeric_limits<double>::infinity(), hi = -lo;
    for (const int i : arcsAt_[At(variable)]) {
        const Arc& arc = arcs_[At(i)];
        if (arc.from == other || arc.to == other) continue;
        if (arc.to == variable) lo = std::max(lo, places[At(arc.from)] + arc.distance);
        if (arc.from == variable) hi = std::min(hi, places[At(arc.to)] - arc.distance);
    }
    return {lo, hi};
}

bool ConstraintGraph::Join(int a, int b, std::vector<double>& places) {
    if (arcsAt_.empty()) {
        arcsAt_.resize(places_.size());
        for (std::size_t i = 0; i < arcs_.size(); ++i) {
            arcsAt_[At(arcs_[i].from)].push_back(static_cast<int>(i));
            arcsAt_[At(arcs_[i].to)].push_back(static_cast<int>(i));
        }
    }
    const auto [loA, hiA] = SpaceOf(a, b, places);
    const auto [loB, hiB] = SpaceOf(b, a, places);
    const double lo = std::max(loA, loB), hi = std::min(hiA, hiB);
    if (lo > hi) return false;
    places[At(a)] = places[At(b)] = std::clamp((places[At(a)] + places[At(b)]) / 2, lo, hi);
    return true;
}

std::vector<double> ConstraintGraph::Solve(double squeeze) {
    DropRepeatedArcs();
    const Walk upwards = WalkOf(true);
    std::vector<double> up;
    for (bool contradiction = true; contradiction;) {
        contradiction = false;
        up = Push(upwards, true, squeeze, contradiction);
    }
    bool none = false;
    const std::vector<double> down = Push(WalkOf(false), false, squeeze, none);
    for (std::size_t i = 0; i < up.size(); ++i) up[i] = (up[i] + down[i]) / 2;
    return up;
}

}  // namespace norvelis::layout
