#include "layout/routing/orthogonal.h"

#include <cstddef>
#include <optional>

#include "layout/geometry/obstacles.h"
#include "layout/routing/corridor.h"
#include "layout/routing/parallel_runs.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

bool IsHorizontal(Side side) {
    return side == Side::Left || side == Side::Right;
}

/// A vertical segment before it has its place: where it may be, and the heights that it may reach at most.
struct Vertical {
    double lo = 0, hi = 0;
    double bottom = 0, top = 0;
    double x = 0;
};

class OrthogonalRouter {
  public:
    OrthogonalRouter(const std::vector<Rect>& boxes, const RouteRule& rule, double lineGap, double clearance,
                     double margin)
        : boxes_(boxes),
          rule_(rule),
          clearance_(clearance),
          space_(boxes, clearance, margin),
          search_(space_, boxes, rule, lineGap),
          obstacles_(boxes),
          verticals_(lineGap, BoundsOf(boxes).x0 - margin, BoundsOf(boxes).x1 + margin),
          horizontals_(lineGap, BoundsOf(boxes).y0 - margin, BoundsOf(boxes).y1 + margin) {}

    std::optional<std::vector<Point>> Route(int line, int from, int to);
    int Crowded() const { return crowded_; }

  private:
    struct Range {
        double lo, hi;
    };
    double EdgeX(const Exit& exit, int box) const {
        return exit.side == Side::Left ? boxes_[At(box)].x0 : boxes_[At(box)].x1;
    }
    double EdgeY(const Exit& exit, int box) const {
        return exit.side == Side::Bottom ? boxes_[At(box)].y0 : boxes_[At(box)].y1;
    }
    std::vector<Vertical> VerticalsOf(const Corridor& corridor, int from, int to,
                                      std::vector<int>& turns) const;
    Range FreeHeights(int cell, double x0, double x1) const;
    double TakeHorizontal(double wish, Range range, double x0, double x1, int net);

    const std::vector<Rect>& boxes_;
    RouteRule rule_;
    double clearance_;
    FreeSpace space_;
    CorridorSearch search_;
    Obstacles obstacles_;
    ParallelRuns verticals_, horizontals_;
    int crowded_ = 0;
};

/// Goes up or down as long as one x serves all portals, and turns in the cell where none does any more: the
/// fewest bends that the corridor allows. `turns` are the cells of the horizontal segments, one before each
/// vertical and one after the last; -1 where a vertical segment meets a box.
std::vector<Vertical> OrthogonalRouter::VerticalsOf(const Corridor& corridor, int from, int to,
                                                    std::vector<int>& turns) const {
    std::vector<Vertical> verticals;
    std::optional<Vertical> current;
    turns = {-1};
    const auto cell = [&](std::size_t i) -> const Rect& {
        return space_.Cells()[At(corridor.cells[i])].area;
    };
    const auto reach = [](Vertical& vertical, double y) {
        vertical.bottom = std::min(vertical.bottom, y);
        vertical.top = std::max(vertical.top, y);
    };
    const auto reachCell = [&](Vertical& vertical, std::size_t i) {
        reach(vertical, cell(i).y0);
        reach(vertical, cell(i).y1);
    };
    const auto pass = [&](double lo, double hi, double y, std::size_t inCell) {
        if (current) {
            const double a = std::max(current->lo, lo), b = std::min(current->hi, hi);
            if (b > a) {
                current->lo = a;
                current->hi = b;
                reach(*current, y);
                return;
            }
            reachCell(*current, inCell);
            verticals.push_back(*current);
            turns.push_back(corridor.cells[inCell]);
        } else {
            turns.back() = corridor.cells[inCell];
        }
        current = Vertical{lo, hi, y, y, 0};
        reachCell(*current, inCell);
    };
    if (!IsHorizontal(corridor.from.side)) {
        const double y = EdgeY(corridor.from, from);
        current = Vertical{corridor.from.lo, corridor.from.hi, y, y, 0};
    }
    for (std::size_t i = 0; i < corridor.portals.size(); ++i)
        pass(corridor.portals[i].lo, corridor.portals[i].hi, corridor.portals[i].y, i);
    const std::size_t last = corridor.cells.size() - 1;
    if (!IsHorizontal(corridor.to.side)) {
        pass(corridor.to.lo, corridor.to.hi, EdgeY(corridor.to, to), last);
        verticals.push_back(*current);
        turns.push_back(-1);
    } else {
        if (current) {
            reachCell(*current, last);
        } else {  // from side to side at different heights
            const double a = EdgeX(corridor.from, from), b = EdgeX(corridor.to, to);
            turns.back() = corridor.cells[last];
            current = Vertical{std::min(a, b), std::max(a, b), 0, 0, 0};
            const double space = std::min(clearance_, (current->hi - current->lo) / 4);
            current->lo += space;
            current->hi -= space;
            current->bottom = std::min(corridor.from.lo, corridor.to.lo);
            current->top = std::max(corridor.from.hi, corridor.to.hi);
        }
        verticals.push_back(*current);
        turns.push_back(corridor.cells[last]);
    }
    return verticals;
}

/// The heights at which a horizontal segment from x0 to x1, seen from its cell, stays off the boxes.
OrthogonalRouter::Range OrthogonalRouter::FreeHeights(int cell, double x0, double x1) const {
    constexpr double kFarthest = 2.0;
    const Rect& area = space_.Cells()[At(cell)].area;
    Range range{area.y0 - kFarthest, area.y1 + kFarthest};
    obstacles_.Near(Rect{x0, range.lo, x1, range.hi}.Grown(clearance_), [&](int i) {
        const Rect box = boxes_[At(i)].Grown(clearance_);
        if (box.x1 <= x0 || box.x0 >= x1) return true;
        if (box.y1 <= area.y0 + 1e-9) range.lo = std::max(range.lo, box.y1);
        if (box.y0 >= area.y1 - 1e-9) range.hi = std::min(range.hi, box.y0);
        return true;
    });
    return {std::min(range.lo, area.y0), std::max(range.hi, area.y1)};
}

double OrthogonalRouter::TakeHorizontal(double wish, Range range, double x0, double x1, int net) {
    const double lo = std::min(x0, x1), hi = std::max(x0, x1);
    const ParallelRuns::Space space = horizontals_.Nearest(wish, range.lo, range.hi, lo, hi, net);
    crowded_ += space.crowded;
    horizontals_.Add({space.at, lo, hi, net});
    return space.at;
}

std::optional<std::vector<Point>> OrthogonalRouter::Route(int line, int from, int to) {
    const std::optional<Corridor> corridor = search_.Find(from, to);
    if (!corridor) return std::nullopt;
    search_.Take(*corridor, from);
    const Exit &leave = corridor->from, &arrive = corridor->to;
    const int trunk =
        rule_.family == RouteFamily::Tree ? -1 - from : line;  // all that leaves an owner is one net

    if (IsHorizontal(leave.side) && IsHorizontal(arrive.side) && corridor->portals.empty()) {
        const double lo = std::max(leave.lo, arrive.lo), hi = std::min(leave.hi, arrive.hi);
        if (lo < hi) {
            const double x0 = EdgeX(leave, from), x1 = EdgeX(arrive, to);
            const ParallelRuns::Space space =
                horizontals_.Nearest((lo + hi) / 2, lo, hi, std::min(x0, x1), std::max(x0, x1), line);
            if (!space.crowded) {
                horizontals_.Add({space.at, std::min(x0, x1), std::max(x0, x1), line});
                return std::vector<Point>{{x0, space.at}, {x1, space.at}};
            }
        }
    }

    std::vector<int> turns;
    std::vector<Vertical> verticals = VerticalsOf(*corridor, from, to, turns);
    const Rect &source = boxes_[At(from)], &target = boxes_[At(to)];
    double before = IsHorizontal(leave.side) ? EdgeX(leave, from) : source.Center().x;
    for (std::size_t i = 0; i < verticals.size(); ++i) {
        Vertical& vertical = verticals[i];
        const bool isLast = i + 1 == verticals.size();
        double after = isLast ? (IsHorizontal(arrive.side) ? EdgeX(arrive, to) : target.Center().x)
                              : std::clamp(before, verticals[i + 1].lo, verticals[i + 1].hi);
        const double middle = (vertical.lo + vertical.hi) / 2;
        double wish = std::clamp(middle, std::min(before, after), std::max(before, after));
        if (i == 0 && !IsHorizontal(leave.side) && !isLast)
            wish = (middle + std::clamp(after, vertical.lo, vertical.hi)) / 2;
        if (isLast && !IsHorizontal(arrive.side) && i > 0)
            wish = (middle + std::clamp(before, vertical.lo, vertical.hi)) / 2;
        const int net = i == 0 && !isLast ? trunk : line;
        const ParallelRuns::Space space =
            verticals_.Nearest(wish, vertical.lo, vertical.hi, vertical.bottom, vertical.top, net);
        crowded_ += space.crowded;
        vertical.x = space.at;
        verticals_.Add({space.at, vertical.bottom, vertical.top, net});
        before = vertical.x;
    }

    std::vector<Point> points;
    const auto horizontal = [&](double x0, double x1, int cell, const Exit* exit, int net) {
        Range range =
            exit ? Range{exit->lo, exit->hi} : FreeHeights(cell, std::min(x0, x1), std::max(x0, x1));
        const Rect& area = space_.Cells()[At(cell)].area;
        const double wish = exit ? (exit->lo + exit->hi) / 2 : (area.y0 + area.y1) / 2;
        const double y = TakeHorizontal(wish, range, x0, x1, net);
        points.push_back({x0, y});
        points.push_back({x1, y});
    };
    if (IsHorizontal(leave.side)) {
        horizontal(EdgeX(leave, from), verticals.front().x, leave.cell, &leave, trunk);
    } else {
        points.push_back({verticals.front().x, EdgeY(leave, from)});
    }
    for (std::size_t i = 1; i < verticals.size(); ++i)
        horizontal(verticals[i - 1].x, verticals[i].x, turns[i], nullptr,
                   i == 1 && !IsHorizontal(leave.side) ? trunk : line);
    if (IsHorizontal(arrive.side)) {
        horizontal(verticals.back().x, EdgeX(arrive, to), arrive.cell, &arrive, line);
    } else {
        points.push_back({verticals.back().x, EdgeY(arrive, to)});
    }
    return points;
}

}  // namespace

LinePaths RouteOrthogonally(const std::vector<Rect>& boxes, const std::vector<Line>& lines,
                            const RouteRule& rule, double lineGap) {
    LinePaths paths;
    paths.points.resize(lines.size());
    const double margin = 1.0 + lineGap * std::min(200.0, static_cast<double>(lines.size()));
    OrthogonalRouter router(boxes, rule, lineGap, lineGap, margin);
    std::vector<int> walledIn;
    for (const int i : ShortLinesFirst(boxes, lines)) {
        auto path = router.Route(i, lines[At(i)].from, lines[At(i)].to);
        if (path) paths.points[At(i)] = std::move(*path);
        if (!path) walledIn.push_back(i);
    }
    paths.crowded = router.Crowded() + static_cast<int>(walledIn.size());
    if (walledIn.empty()) return paths;
    // Boxes that nearly touch: squeeze through, or when they overlap go straight.
    OrthogonalRouter squeezed(boxes, rule, lineGap, lineGap / 50, margin);
    for (const int i : walledIn) {
        const int from = lines[At(i)].from, to = lines[At(i)].to;
        auto path = squeezed.Route(i, from, to);
        paths.points[At(i)] =
            path ? std::move(*path) : std::vector<Point>{boxes[At(from)].Center(), boxes[At(to)].Center()};
    }
    return paths;
}

}  // namespace norvelis::layout
