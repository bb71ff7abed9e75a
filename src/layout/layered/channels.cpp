#include "layout/layered/channels.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <set>
#include <tuple>

namespace norvelis::layout {

namespace {

/// Why a segment must lie above another: so that their lines do not cross without need, or so that one does
/// not come down over the place where the other goes on, which a detour can mend.
enum class Reason { None, Overlap, Crossing };

struct Demand {
    int segment;
    Reason reason;
};

/// Jogs that share a track for sure: one line, or the lines of one trunk, or those of them that go in one
/// direction.
struct Segment {
    double left, right;
    int trunk;
    std::vector<int> jogs;
    std::vector<Demand> below;  ///< On segments that must lie lower.
    int highestTrack = 0;
};

std::vector<Segment> SegmentsOf(const std::vector<Jog>& jogs, const std::set<int>& halvedTrunks) {
    std::vector<Segment> segments;
    std::map<std::pair<int, bool>, std::size_t> trunks;
    for (std::size_t i = 0; i < jogs.size(); ++i) {
        const Jog& jog = jogs[i];
        if (jog.from == jog.to) continue;
        std::size_t at = segments.size();
        const bool isRightHalf = halvedTrunks.count(jog.trunk) > 0 && jog.to > jog.from;
        if (jog.trunk >= 0) at = trunks.try_emplace({jog.trunk, isRightHalf}, at).first->second;
        if (at == segments.size()) segments.push_back({jog.from, jog.from, jog.trunk, {}, {}});
        segments[at].jogs.push_back(static_cast<int>(i));
        segments[at].left = std::min({segments[at].left, jog.from, jog.to});
        segments[at].right = std::max({segments[at].right, jog.from, jog.to});
    }
    return segments;
}

/// Why segment a must lie above segment b: of two lines that need not cross the one that is farther in the
/// direction that both go; and where a's line comes down right over the place where b's goes on, they must
/// not run together.
Reason MustLieAbove(const Segment& a, const Segment& b, const std::vector<Jog>& jogs, double gap) {
    Reason reason = Reason::None;
    for (const int i : a.jogs) {
        for (const int k : b.jogs) {
            const Jog &x = jogs[i], &y = jogs[k];
            if (x.from < x.to && y.from < y.to && x.from > y.from && x.to > y.to) return Reason::Crossing;
            if (x.from > x.to && y.from > y.to && x.from < y.from && x.to < y.to) return Reason::Crossing;
            if (std::abs(x.from - y.to) < gap * 0.99) reason = Reason::Overlap;
        }
    }
    return reason;
}

/// Returns the trunks that would have to lie both above and below another piece.
std::set<int> Constrain(std::vector<Segment>& segments, const std::vector<Jog>& jogs, double gap) {
    std::set<int> torn;
    std::vector<int> byLeft(segments.size());
    for (std::size_t i = 0; i < segments.size(); ++i) byLeft[i] = static_cast<int>(i);
    std::sort(byLeft.begin(), byLeft.end(),
              [&](int a, int b) { return segments[a].left < segments[b].left; });
    for (std::size_t i = 0; i < byLeft.size(); ++i) {
        const int a = byLeft[i];
        for (std::size_t k = i + 1; k < byLeft.size(); ++k) {
            const int b = byLeft[k];
            if (segments[b].left >= segments[a].right + gap) break;
            const Reason aAbove = MustLieAbove(segments[a], segments[b], jogs, gap);
            const Reason bAbove = MustLieAbove(segments[b], segments[a], jogs, gap);
            if (aAbove != Reason::None && bAbove != Reason::None)
                torn.insert({segments[a].trunk, segments[b].trunk});
            if (aAbove > bAbove) segments[a].below.push_back({b, aAbove});
            if (bAbove > aAbove) segments[b].below.push_back({a, bAbove});
        }
    }
    torn.erase(-1);
    return torn;
}

/// Drops demands so that no ring of them is left: of those that a ring waits for, first such as a detour
/// mends. Returns the segments from above.
std::vector<int> BreakRings(std::vector<Segment>& segments) {
    struct Waiting {
        int crossings = 0, overlaps = 0;
        bool isDone = false;
    };
    std::vector<Waiting> waiting(segments.size());
    const auto countOf = [&](const Demand& demand) -> int& {
        Waiting& at = waiting[demand.segment];
        return demand.reason == Reason::Crossing ? at.crossings : at.overlaps;
    };
    for (const Segment& segment : segments)
        for (const Demand& demand : segment.below) ++countOf(demand);
    std::set<std::tuple<int, int, int>> next;  // what it waits for, and the segment
    const auto keyOf = [&](int at) { return std::tuple(waiting[at].crossings, waiting[at].overlaps, at); };
    for (std::size_t i = 0; i < segments.size(); ++i) next.insert(keyOf(static_cast<int>(i)));
    std::vector<int> order;
    while (!next.empty()) {
        const int at = std::get<2>(*next.begin());
        next.erase(next.begin());
        waiting[at].isDone = true;
        order.push_back(at);
        std::erase_if(segments[at].below,
                      [&](const Demand& demand) { return waiting[demand.segment].isDone; });
        for (const Demand& demand : segments[at].below) {
            next.erase(keyOf(demand.segment));
            --countOf(demand);
            next.insert(keyOf(demand.segment));
        }
    }
    return order;
}

/// The segments so that each comes before those that must lie lower, those with the longest chain under them
/// first.
std::vector<int> FromAbove(std::vector<Segment>& segments) {
    std::vector<int> order = BreakRings(segments), chain(segments.size());
    for (auto at = order.rbegin(); at != order.rend(); ++at)
        for (const Demand& demand : segments[*at].below)
            chain[*at] = std::max(chain[*at], chain[demand.segment] + 1);
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        return std::tuple(-chain[a], segments[a].left, a) < std::tuple(-chain[b], segments[b].left, b);
    });
    return order;
}

/// What is taken on each track.
class TrackUse {
  public:
    explicit TrackUse(double gap) : gap_(gap) {}

    int Count() const { return static_cast<int>(taken_.size()); }

    /// The highest free track that is not above the given one.
    int Take(int highest, double left, double right) {
        const auto isTaken = [&](const std::vector<std::pair<double, double>>& track) {
            return std::any_of(track.begin(), track.end(), [&](const auto& taken) {
                return left < taken.second + gap_ && taken.first < right + gap_;
            });
        };
        auto track = static_cast<std::size_t>(highest);
        while (track < taken_.size() && isTaken(taken_[track])) ++track;
        taken_.resize(std::max(taken_.size(), track + 1));
        taken_[track].emplace_back(left, right);
        return static_cast<int>(track);
    }

  private:
    double gap_;
    std::vector<std::vector<std::pair<double, double>>> taken_;
};

/// Where demands contradict each other a line may come down over the place where another goes on. That other
/// one steps off its track, to where the other lines are farthest away.
class DetourFinder {
  public:
    DetourFinder(const std::vector<Jog>& jogs, double gap) : jogs_(jogs), gap_(gap) {
        for (std::size_t i = 0; i < jogs.size(); ++i) byStart_.push_back(static_cast<int>(i));
        std::sort(byStart_.begin(), byStart_.end(),
                  [&](int a, int b) { return jogs[a].from < jogs[b].from; });
        for (const Jog& jog : jogs) columns_.insert({jog.from, jog.to});
    }

    void AddDetours(TrackUse& use, Tracks& tracks) {
        for (std::size_t i = 0; i < jogs_.size(); ++i) {
            if (tracks.track[i] < 0) continue;
            const Jog& jog = jogs_[i];
            const int below = LowestOver(jog.to, tracks);
            if (below <= tracks.track[i]) continue;
            const double x = FreestNear(jog.to);
            columns_.insert(x);
            const int track = use.Take(below + 1, std::min(x, jog.to), std::max(x, jog.to));
            tracks.detours.push_back({static_cast<int>(i), track, x});
        }
    }

  private:
    /// The lowest track to which a line comes down right over x; -1 when there is none.
    int LowestOver(double x, const Tracks& tracks) const {
        const double near = gap_ * 0.49;
        int lowest = -1;
        auto at = std::lower_bound(byStart_.begin(), byStart_.end(), x - near,
                                   [&](int a, double value) { return jogs_[a].from < value; });
        for (; at != byStart_.end() && jogs_[*at].from < x + near; ++at)
            lowest = std::max(lowest, tracks.track[*at]);
        return lowest;
    }

    double FreestNear(double x) const {
        double best = x, space = 0;
        for (const int step : {1, -1, 2, -2, 3, -3, 4, -4}) {
            const double column = x + step * gap_ / 4;
            const auto next = columns_.lower_bound(column);
            const double after = next == columns_.end() ? gap_ : *next - column;
            const double before = next == columns_.begin() ? gap_ : column - *std::prev(next);
            if (std::min(before, after) <= space) continue;
            space = std::min(before, after);
            best = column;
        }
        return best;
    }

    const std::vector<Jog>& jogs_;
    double gap_;
    std::vector<int> byStart_;
    std::set<double> columns_;  ///< Where lines run up and down.
};

}  // namespace

Tracks AssignTracks(const std::vector<Jog>& jogs, double gap) {
    std::vector<Segment> segments = SegmentsOf(jogs, {});
    if (const std::set<int> torn = Constrain(segments, jogs, gap); !torn.empty()) {
        segments = SegmentsOf(jogs, torn);
        Constrain(segments, jogs, gap);
    }

    Tracks tracks;
    tracks.track.assign(jogs.size(), -1);
    TrackUse use(gap);
    for (const int at : FromAbove(segments)) {
        const Segment& segment = segments[at];
        const int track = use.Take(segment.highestTrack, segment.left, segment.right);
        for (const int jog : segment.jogs) tracks.track[jog] = track;
        for (const Demand& demand : segment.below) {
            int& highest = segments[demand.segment].highestTrack;
            highest = std::max(highest, track + 1);
        }
    }
    DetourFinder(jogs, gap).AddDetours(use, tracks);
    tracks.count = use.Count();
    return tracks;
}

}  // namespace norvelis::layout
