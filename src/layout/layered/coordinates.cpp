#include "layout/layered/coordinates.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "layout/layered/difference_program.h"
#include "layout/layered/straightening.h"

namespace norvelis::layout {

namespace {

constexpr double kUnitsPerInch = 1000;
constexpr double kClosestPorts = 0.09;  // inches, where a side has the space

/// No less than the distance.
std::int64_t UnitsFor(double distance) {
    return static_cast<std::int64_t>(std::ceil(distance * kUnitsPerInch - 1e-6));
}

std::int64_t Units(double inches) {
    return std::llround(inches * kUnitsPerInch);
}

/// The nearest distance that places can have, so that what is in line is so to the last digit.
double InUnits(double inches) {
    return static_cast<double>(Units(inches)) / kUnitsPerInch;
}

/// A line's meeting with a box: the box, the place next to it on the line's path, and which port it is.
struct Meeting {
    int line, next;
    bool atUpper;
    double offset = 0;           ///< Of the port from the box's middle, when all ports spread.
    double least = 0, most = 0;  ///< How far it can slide along the box.
};

class Coordinates {
  public:
    Coordinates(const Graph& graph, const Style& style, const std::vector<bool>& trunks, Grid& grid)
        : graph_(graph), style_(style), trunks_(trunks), grid_(grid), strand_(grid.places.size()) {
        std::iota(strand_.begin(), strand_.end(), 0);
        CollectMeetings();
        SpreadPorts();
        JoinStrands();
    }

    std::vector<Ports> Assign() {
        Solve();
        StraightenLines(style_, Reaches(), grid_);
        return FitPorts();
    }

  private:
    void CollectMeetings();
    void SpreadPorts();
    void JoinStrands();
    /// Whether more lines meet the line's box here than at its other end.
    bool IsCrowded(const Meeting& meeting) const {
        const auto& path = grid_.paths[meeting.line];
        const std::size_t below = sides_[2 * path.front() + 1].size(), above = sides_[2 * path.back()].size();
        return meeting.atUpper ? below >= above : above > below;
    }
    void Solve();
    std::int64_t WeightOfWidth() const;
    std::vector<Reach> Reaches() const;
    std::vector<Ports> FitPorts() const;
    bool IsTrunk(const Meeting& meeting) const {
        const int upper = grid_.paths[meeting.line].front();
        return meeting.atUpper && trunks_[upper] && graph_.lines[meeting.line].from == upper;
    }
    bool AreOne(const Meeting& a, const Meeting& b) const { return IsTrunk(a) && IsTrunk(b); }
    /// The part of the box's side that lines may meet, `gap` from its corners.
    double SpaceOf(std::size_t side, double gap) const {
        const double width = graph_.boxes[side / 2].width;
        return width - 2 * std::min(gap, width / 8);
    }
    std::vector<double> LeastSteps(const std::vector<Meeting>& side, double space, double gap) const;
    std::vector<double> FitSide(std::size_t side, double gap) const;
    int InLine(const std::vector<Meeting>& side, const std::vector<double>& ports) const;

    const Graph& graph_;
    const Style& style_;
    const std::vector<bool>& trunks_;
    Grid& grid_;
    std::vector<int> strand_;                  ///< For each place, the one that it moves with.
    std::vector<std::vector<Meeting>> sides_;  ///< Two for each box: lines from above, lines from below.
};

void Coordinates::CollectMeetings() {
    std::vector<int> index(grid_.places.size());
    for (const auto& row : grid_.rows)
        for (std::size_t i = 0; i < row.size(); ++i) index[row[i]] = static_cast<int>(i);
    sides_.resize(2 * graph_.boxes.size());
    for (std::size_t k = 0; k < grid_.paths.size(); ++k) {
        const auto& path = grid_.paths[k];
        if (path.empty()) continue;
        const int line = static_cast<int>(k);
        sides_[2 * path.front() + 1].push_back({line, path[1], true});
        sides_[2 * path.back()].push_back({line, path[path.size() - 2], false});
    }
    for (auto& side : sides_)
        std::sort(side.begin(), side.end(),
                  [&](const Meeting& a, const Meeting& b) { return index[a.next] < index[b.next]; });
}

/// Ports are as far apart as the places they lead to, where the box is wide enough.
void Coordinates::SpreadPorts() {
    for (std::size_t s = 0; s < sides_.size(); ++s) {
        auto& side = sides_[s];
        if (side.empty()) continue;
        const double space = SpaceOf(s, style_.lineGap);
        double span = 0;
        for (std::size_t i = 0; i < side.size(); ++i) {
            if (i > 0 && !AreOne(side[i - 1], side[i]))
                span += LeastDistance(grid_.places[side[i - 1].next], grid_.places[side[i].next], style_);
            side[i].offset = span;
        }
        const double factor = span > space ? space / span : 1;
        for (Meeting& meeting : side) meeting.offset = InUnits((meeting.offset - span / 2) * factor);
        const std::vector<double> steps = LeastSteps(side, space, kClosestPorts);
        for (std::size_t i = 0; i < side.size(); ++i) {
            side[i].least = IsTrunk(side[i]) ? side[i].offset : steps[i] - space / 2;
            side[i].most = IsTrunk(side[i]) ? side[i].offset : space / 2 - (steps.back() - steps[i]);
        }
    }
}

/// On very large pages some places of a long line next to each other, between its outermost layers, move as
/// one, so that there are not too many variables. The order of such lines is the same in all rows
/// (layers.h).
void Coordinates::JoinStrands() {
    constexpr std::size_t kMostVariables = 12000;
    const std::size_t length = 1 + grid_.places.size() / kMostVariables;
    for (const auto& path : grid_.paths)
        for (std::size_t i = 2; i + 2 < path.size(); ++i)
            if ((i - 1) % length != 0 && grid_.places[path[i]].section >= 0 &&
                grid_.places[path[i]].section == grid_.places[path[i - 1]].section)
                strand_[path[i]] = strand_[path[i - 1]];
}

void Coordinates::Solve() {
    // Where fewer lines meet a box, they run straight and to its middle; at their other end they bend.
    constexpr std::int64_t kBent = 20, kOffPort[] = {8, 4}, kOffMiddle[] = {6, 1};
    const int left = static_cast<int>(grid_.places.size()), right = left + 1;
    DifferenceProgram program(right + 1);
    for (const auto& row : grid_.rows) {
        if (row.empty()) continue;
        program.Keep(left, strand_[row.front()], UnitsFor(grid_.places[row.front()].before));
        program.Keep(strand_[row.back()], right, UnitsFor(grid_.places[row.back()].after));
        for (std::size_t i = 1; i < row.size(); ++i)
            program.Keep(strand_[row[i - 1]], strand_[row[i]],
                         UnitsFor(LeastDistance(grid_.places[row[i - 1]], grid_.places[row[i]], style_)));
    }
    for (std::size_t s = 0; s < sides_.size(); ++s) {
        const int box = static_cast<int>(s / 2);
        for (const Meeting& meeting : sides_[s]) {
            const std::int64_t middle = Units(meeting.offset);
            const std::size_t isCrowded = IsCrowded(meeting) ? 1 : 0;
            program.Pull(box, strand_[meeting.next], middle, middle, kOffMiddle[isCrowded]);
            program.Pull(box, strand_[meeting.next], Units(meeting.least), Units(meeting.most),
                         kOffPort[isCrowded]);
        }
    }
    for (const auto& path : grid_.paths)
        for (std::size_t i = 2; i + 1 < path.size(); ++i)
            program.Pull(strand_[path[i - 1]], strand_[path[i]], 0, 0, kBent);
    program.Shorten(left, right, WeightOfWidth());

    const std::vector<std::int64_t> solution = program.Solve();
    for (std::size_t i = 0; i < grid_.places.size(); ++i)
        grid_.places[i].x = static_cast<double>(solution[strand_[i]]) / kUnitsPerInch;
}

/// Small drawings fit on paper whatever their width; of large ones labels become the smaller the wider the
/// page is, and straight lines are given up for it.
std::int64_t Coordinates::WeightOfWidth() const {
    constexpr double kSmall = 40, kMost = 20, kOfLines = 0.2;
    const auto lines = static_cast<double>(graph_.lines.size());
    return 1 + std::llround(kOfLines * lines * std::clamp(lines / kSmall, 1.0, kMost));
}

std::vector<Reach> Coordinates::Reaches() const {
    std::vector<Reach> reaches(grid_.paths.size());
    for (std::size_t s = 0; s < sides_.size(); ++s) {
        const double x = grid_.places[s / 2].x;
        for (const Meeting& meeting : sides_[s]) {
            Reach& reach = reaches[meeting.line];
            (meeting.atUpper ? reach.upperLeast : reach.lowerLeast) = x + meeting.least;
            (meeting.atUpper ? reach.upperMost : reach.lowerMost) = x + meeting.most;
        }
    }
    return reaches;
}

/// The values nearest to those given (least sum of differences) that never fall: pool adjacent violators with
/// medians.
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

/// How far each port is from the first at least.
std::vector<double> Coordinates::LeastSteps(const std::vector<Meeting>& side, double space,
                                            double gap) const {
    std::vector<double> steps(side.size());
    for (std::size_t i = 1; i < side.size(); ++i)
        steps[i] = steps[i - 1] + (AreOne(side[i - 1], side[i]) ? 0 : 1);
    const double step = steps.back() > 0 ? std::min(gap, space / steps.back()) : 0;
    for (double& s : steps) s *= step;
    return steps;
}

/// Ports slide along their box to be right under or over the places they lead to. Where that puts more of
/// them in line, they are closer to each other and to its corners.
std::vector<Ports> Coordinates::FitPorts() const {
    std::vector<Ports> ports(grid_.paths.size());
    for (std::size_t s = 0; s < sides_.size(); ++s) {
        const auto& side = sides_[s];
        if (side.empty()) continue;
        std::vector<double> fitted = FitSide(s, style_.lineGap);
        const std::vector<double> closer = FitSide(s, kClosestPorts);
        if (InLine(side, closer) > InLine(side, fitted)) fitted = closer;
        for (std::size_t i = 0; i < side.size(); ++i)
            (side[i].atUpper ? ports[side[i].line].upper : ports[side[i].line].lower) = fitted[i];
    }
    return ports;
}

std::vector<double> Coordinates::FitSide(std::size_t s, double gap) const {
    constexpr double kHair = 1 / kUnitsPerInch;
    const auto& side = sides_[s];
    const double x = grid_.places[s / 2].x, space = SpaceOf(s, gap);
    const std::vector<double> steps = LeastSteps(side, space, gap);
    std::vector<double> wished(side.size());
    for (std::size_t i = 0; i < side.size(); ++i)
        wished[i] = (IsTrunk(side[i]) ? x + side[i].offset : grid_.places[side[i].next].x) - steps[i];
    std::vector<double> fitted = NearestRising(wished);
    for (std::size_t i = 0; i < side.size(); ++i) {
        const double first = x - space / 2 + steps[i], last = x + space / 2 - (steps.back() - steps[i]);
        fitted[i] = std::clamp(fitted[i] + steps[i], first, std::max(first, last));
        const double next = grid_.places[side[i].next].x;
        const bool isInLine = !IsTrunk(side[i]) && std::abs(fitted[i] - next) < kHair;
        fitted[i] = isInLine ? next : InUnits(fitted[i]);
    }
    return fitted;
}

int Coordinates::InLine(const std::vector<Meeting>& side, const std::vector<double>& ports) const {
    int count = 0;
    for (std::size_t i = 0; i < side.size(); ++i) count += ports[i] == grid_.places[side[i].next].x;
    return count;
}

}  // namespace

std::vector<Ports> AssignCoordinates(const Graph& graph, const Style& style, const std::vector<bool>& trunks,
                                     Grid& grid) {
    return Coordinates(graph, style, trunks, grid).Assign();
}

}  // namespace norvelis::layout
