#include "drawing/layout/coordinates.h"

#include <algorithm>
#include <cmath>

#include "drawing/layout/difference_program.h"

namespace norvelis::layout {

namespace {

constexpr double unitsPerInch = 1000;

std::int64_t Units(double inches) { return std::llround(inches * unitsPerInch); }

/// A line's meeting with a box: the box, the place next to it on the line's way, and which port it is.
struct Meeting {
    int line, next;
    bool atUpper;
    double offset;
};

class Coordinates {
  public:
    Coordinates(const Graph& graph, const Style& style, bool trunks, Grid& grid)
        : graph_(graph), style_(style), trunks_(trunks), grid_(grid), strand_(grid.places.size(), -1) {
        CollectMeetings();
        SpreadPorts();
        JoinStrands();
    }

    std::vector<Ports> Assign() {
        Solve();
        return FitPorts();
    }

  private:
    void CollectMeetings();
    void SpreadPorts();
    void JoinStrands();
    void Solve();
    std::vector<Ports> FitPorts() const;
    bool IsTrunk(const Meeting& meeting) const {
        return trunks_ && meeting.atUpper && graph_.lines[meeting.line].from == grid_.ways[meeting.line].front();
    }
    double Margin(double width) const { return std::min(style_.lineGap, width / 8); }

    const Graph& graph_;
    const Style& style_;
    bool trunks_;
    Grid& grid_;
    std::vector<std::vector<Meeting>> sides_;  ///< Two for each box: lines from above, lines from below.
    std::vector<int> strand_;                  ///< For each place, the variable it moves with.
    int strands_ = 0;
};

void Coordinates::CollectMeetings() {
    std::vector<int> index(grid_.places.size());
    for (const auto& row : grid_.rows)
        for (std::size_t i = 0; i < row.size(); ++i) index[row[i]] = static_cast<int>(i);
    sides_.resize(2 * graph_.boxes.size());
    for (std::size_t k = 0; k < grid_.ways.size(); ++k) {
        const auto& way = grid_.ways[k];
        if (way.empty()) continue;
        const int line = static_cast<int>(k);
        sides_[2 * way.front() + 1].push_back({line, way[1], true, 0});
        sides_[2 * way.back()].push_back({line, way[way.size() - 2], false, 0});
    }
    for (auto& side : sides_)
        std::sort(side.begin(), side.end(),
                  [&](const Meeting& a, const Meeting& b) { return index[a.next] < index[b.next]; });
}

/// Ports stand as far apart as the places they lead to, where the box is wide enough.
void Coordinates::SpreadPorts() {
    for (std::size_t s = 0; s < sides_.size(); ++s) {
        auto& side = sides_[s];
        const double width = graph_.boxes[s / 2].width;
        double span = 0;
        for (std::size_t i = 0; i < side.size(); ++i) {
            if (i > 0 && !(IsTrunk(side[i - 1]) && IsTrunk(side[i])))
                span += LeastDistance(grid_.places[side[i - 1].next], grid_.places[side[i].next], style_);
            side[i].offset = span;
        }
        const double room = width - 2 * Margin(width);
        const double factor = span > room ? room / span : 1;
        for (Meeting& meeting : side) meeting.offset = (meeting.offset - span / 2) * factor;
    }
}

/// A line's places in neighbouring rows move as one unless that crosses another such pair: of all the pairs between two
/// rows, the longest sequence without a crossing.
void Coordinates::JoinStrands() {
    std::vector<int> below(grid_.places.size(), -1), index(grid_.places.size());
    for (const auto& way : grid_.ways)
        for (std::size_t i = 2; i + 1 < way.size(); ++i) below[way[i - 1]] = way[i];
    std::vector<int> joined(grid_.places.size(), -1);  // for each place the one above it that it moves with
    for (std::size_t r = 0; r + 1 < grid_.rows.size(); ++r) {
        const auto &row = grid_.rows[r], &next = grid_.rows[r + 1];
        for (std::size_t i = 0; i < next.size(); ++i) index[next[i]] = static_cast<int>(i);
        std::vector<int> tails, before(row.size(), -1);  // patience sorting
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (below[row[i]] < 0) continue;
            const auto at = std::lower_bound(tails.begin(), tails.end(), index[below[row[i]]],
                                             [&](int t, int value) { return index[below[row[t]]] < value; });
            if (at != tails.begin()) before[i] = *(at - 1);
            if (at == tails.end()) {
                tails.push_back(static_cast<int>(i));
            } else {
                *at = static_cast<int>(i);
            }
        }
        for (int i = tails.empty() ? -1 : tails.back(); i >= 0; i = before[i]) joined[below[row[i]]] = row[i];
    }
    for (const auto& row : grid_.rows)
        for (const int place : row) strand_[place] = joined[place] >= 0 ? strand_[joined[place]] : strands_++;
}

void Coordinates::Solve() {
    constexpr std::int64_t bent = 8, atBox = 2;
    const int left = strands_, right = strands_ + 1;
    DifferenceProgram program(strands_ + 2);
    for (const auto& row : grid_.rows) {
        if (row.empty()) continue;
        program.Keep(left, strand_[row.front()], Units(grid_.places[row.front()].before));
        program.Keep(strand_[row.back()], right, Units(grid_.places[row.back()].after));
        for (std::size_t i = 1; i < row.size(); ++i)
            program.Keep(strand_[row[i - 1]], strand_[row[i]],
                         Units(LeastDistance(grid_.places[row[i - 1]], grid_.places[row[i]], style_)));
    }
    for (std::size_t s = 0; s < sides_.size(); ++s)
        for (const Meeting& meeting : sides_[s])
            program.Pull(strand_[s / 2], strand_[meeting.next], Units(meeting.offset), atBox);
    for (const auto& way : grid_.ways)
        for (std::size_t i = 2; i + 1 < way.size(); ++i) program.Pull(strand_[way[i - 1]], strand_[way[i]], 0, bent);
    program.Shorten(left, right, 1 + static_cast<std::int64_t>(graph_.lines.size() / 50));

    const std::vector<std::int64_t> solution = program.Solve();
    for (std::size_t i = 0; i < grid_.places.size(); ++i)
        grid_.places[i].x = static_cast<double>(solution[strand_[i]]) / unitsPerInch;
}

/// The values nearest to those given (least sum of differences) that never fall: pool adjacent violators with medians.
std::vector<double> NearestRising(const std::vector<double>& values) {
    struct Pool {
        std::vector<double> values;
        double Median() const { return values[(values.size() - 1) / 2]; }
    };
    std::vector<Pool> pools;
    for (const double value : values) {
        pools.push_back({{value}});
        while (pools.size() > 1 && pools[pools.size() - 2].Median() > pools.back().Median()) {
            const Pool last = std::move(pools.back());
            pools.pop_back();
            auto& merged = pools.back().values;
            merged.insert(merged.end(), last.values.begin(), last.values.end());
            std::sort(merged.begin(), merged.end());
        }
    }
    std::vector<double> result;
    for (const Pool& pool : pools) result.insert(result.end(), pool.values.size(), pool.Median());
    return result;
}

/// Ports slide along their box to stand right under or over the places they lead to.
std::vector<Ports> Coordinates::FitPorts() const {
    std::vector<Ports> ports(grid_.ways.size());
    for (std::size_t s = 0; s < sides_.size(); ++s) {
        const auto& side = sides_[s];
        if (side.empty()) continue;
        const double x = grid_.places[s / 2].x, width = graph_.boxes[s / 2].width;
        std::vector<double> rise(side.size()), wished(side.size());
        double steps = 0;
        for (std::size_t i = 1; i < side.size(); ++i)
            rise[i] = steps += IsTrunk(side[i - 1]) && IsTrunk(side[i]) ? 0 : 1;
        const double room = width - 2 * Margin(width);
        const double step = steps > 0 ? std::min(style_.lineGap, room / steps) : 0;
        for (std::size_t i = 0; i < side.size(); ++i)
            wished[i] = (IsTrunk(side[i]) ? x + side[i].offset : grid_.places[side[i].next].x) - rise[i] * step;
        const std::vector<double> fitted = NearestRising(wished);
        const double first = x - room / 2, last = x + room / 2 - steps * step;
        for (std::size_t i = 0; i < side.size(); ++i) {
            const double at = std::clamp(fitted[i], first, std::max(first, last)) + rise[i] * step;
            (side[i].atUpper ? ports[side[i].line].upper : ports[side[i].line].lower) = at;
        }
    }
    return ports;
}

}  // namespace

std::vector<Ports> AssignCoordinates(const Graph& graph, const Style& style, bool trunks, Grid& grid) {
    return Coordinates(graph, style, trunks, grid).Assign();
}

}  // namespace norvelis::layout
