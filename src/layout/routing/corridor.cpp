#include "layout/routing/corridor.h"

#include <cstddef>
#include <limits>

namespace norvelis::layout {

namespace {

constexpr double kBendCost = 1.0;       // inches that a line goes out of its way to save a bend
constexpr double kCrossingCost = 0.3;   // inches to save a crossing
constexpr double kWrongSideCost = 4.0;  // inches to keep the side that the style asks for

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

double Distance(double lo, double hi, double from, double to) {
    return std::max({0.0, from - hi, lo - to});
}

bool IsHorizontal(Side side) {
    return side == Side::Left || side == Side::Right;
}

double SideX(const Exit& exit, const Rect& box) {
    return exit.side == Side::Left ? box.x0 : box.x1;
}
double SideY(const Exit& exit, const Rect& box) {
    return exit.side == Side::Bottom ? box.y0 : box.y1;
}

}  // namespace

CorridorSearch::CorridorSearch(const FreeSpace& space, const std::vector<Rect>& boxes, const RouteRule& rule,
                               double lineGap)
    : space_(space),
      boxes_(boxes),
      rule_(rule),
      lineGap_(std::max(lineGap, 1e-6)),
      portalUse_(At(space.PortalCount())),
      exitUse_(At(space.ExitCount())),
      horizontalUse_(space.Cells().size()),
      passed_(space.Cells().size()),
      states_(At(space.ExitCount() + 2 * space.PortalCount())) {}

double CorridorSearch::PortalToll(int portal, double width) const {
    const double share = (portalUse_[At(portal)] + 1) * lineGap_ / std::max(width, 1e-6);
    return share <= 0.5 ? share * 0.2 : share <= 1 ? 0.1 + (share - 0.5) * 4 : 2.1 + (share - 1) * 20;
}

double CorridorSearch::ExitToll(const Exit& exit, bool leaves) const {
    const double share = (exitUse_[At(exit.id)] + 1) * lineGap_ / std::max(exit.hi - exit.lo, 1e-6);
    double toll = share <= 0.7 ? share * 0.3 : share <= 1 ? 0.2 + (share - 0.7) * 6 : 2 + (share - 1) * 10;
    if (rule_.hasSides && exit.side != (leaves ? rule_.leave : rule_.arrive)) toll += kWrongSideCost;
    if (rule_.horizontalFirst && IsHorizontal(exit.side) != leaves) toll += kWrongSideCost;
    if (rule_.verticalFirst && IsHorizontal(exit.side) == leaves) toll += kWrongSideCost;
    return toll;
}

/// Of a horizontal segment: its length, more in a crowd, and the verticals that it may be expected to cross.
double CorridorSearch::HorizontalCost(int cell, double length) const {
    const Rect& area = space_.Cells()[At(cell)].area;
    const double width = std::max(area.Width(), 1e-6);
    const double share = horizontalUse_[At(cell)] * lineGap_ / std::max(width * area.Height(), 1e-6);
    return length * (1 + std::min(4.0, 2 * share * share) + kCrossingCost * passed_[At(cell)] / width);
}

/// Of a vertical segment: the horizontal ones that it may be expected to cross.
double CorridorSearch::PassCost(int cell) const {
    return kCrossingCost * horizontalUse_[At(cell)] / std::max(space_.Cells()[At(cell)].area.Width(), 1e-6);
}

/// The state with its vertical segment, or the next one after a horizontal segment in the cell, between lo
/// and hi.
CorridorSearch::State CorridorSearch::Narrow(State state, int cell, double lo, double hi) const {
    if (!state.horizontal && std::max(state.lo, lo) < std::min(state.hi, hi)) {
        const double paid = Distance(state.fromLo, state.fromHi, state.lo, state.hi);
        state.lo = std::max(state.lo, lo);
        state.hi = std::min(state.hi, hi);
        const double more = Distance(state.fromLo, state.fromHi, state.lo, state.hi) - paid;
        if (more > 0) state.cost += HorizontalCost(state.horizontalCell, more);
        return state;
    }
    // The vertical segment is as near to where it must go on as it can.
    const double edge = lo >= state.hi ? state.hi : hi <= state.lo ? state.lo : std::clamp(state.lo, lo, hi);
    const double paid = Distance(state.fromLo, state.fromHi, state.lo, state.hi);
    const double more = Distance(state.fromLo, state.fromHi, edge, edge) - paid;
    if (more > 0) state.cost += HorizontalCost(state.horizontalCell, more);
    state.cost +=
        HorizontalCost(cell, Distance(edge, edge, lo, hi)) + (state.horizontal ? kBendCost : 2 * kBendCost);
    state.fromLo = state.fromHi = edge;
    state.horizontalCell = cell;
    state.lo = lo;
    state.hi = hi;
    state.horizontal = false;
    return state;
}

double CorridorSearch::GoalCost(const State& state, int cell, const Exit& goal, const Rect& target) const {
    const double toll = ExitToll(goal, false);
    if (IsHorizontal(goal.side)) {
        const double x = SideX(goal, target);
        if (state.horizontal) {
            const double apart = Distance(state.start->lo, state.start->hi, goal.lo, goal.hi);
            return state.cost + toll + std::abs(x - state.lo) + apart +
                   (apart > 0 || goal.hi < state.start->lo ? 2 * kBendCost : 0);
        }
        // The path from the last horizontal segment to the side, by the vertical segment's nearest place.
        const double from = std::clamp(x, state.fromLo, state.fromHi);
        const double detour = Distance(state.lo, state.hi, std::min(from, x), std::max(from, x));
        const double paid = Distance(state.fromLo, state.fromHi, state.lo, state.hi);
        return state.cost + toll + HorizontalCost(cell, std::abs(x - from) + 2 * detour - paid) + kBendCost;
    }
    return Narrow(state, cell, goal.lo, goal.hi).cost + toll + std::abs(SideY(goal, target) - state.y);
}

CorridorSearch::State CorridorSearch::StartAt(const Exit& exit, const Rect& source) {
    State state;
    state.start = &exit;
    state.cell = exit.cell;
    state.horizontal = IsHorizontal(exit.side);
    state.lo = state.horizontal ? SideX(exit, source) : exit.lo;
    state.hi = state.horizontal ? state.lo : exit.hi;
    state.y = state.horizontal ? (exit.lo + exit.hi) / 2 : SideY(exit, source);
    state.fromLo = state.lo;
    state.fromHi = state.hi;
    return state;
}

std::optional<Corridor> CorridorSearch::Find(int from, int to) {
    ++search_;
    queue_.clear();
    const Rect& source = boxes_[At(from)];
    const Rect& target = boxes_[At(to)];
    const bool loop = from == to;
    // A state for each exit and for each direction through a portal.
    const auto push = [&](int number, const State& state) {
        State& known = states_[At(number)];
        if (known.done == search_ || (known.seen == search_ && known.cost <= state.cost)) return;
        known = state;
        known.seen = search_;
        const double paid = Distance(state.fromLo, state.fromHi, state.lo, state.hi);
        const double ahead = std::max(Distance(state.lo, state.hi, target.x0, target.x1),
                                      Distance(state.fromLo, state.fromHi, target.x0, target.x1) - paid) +
                             Distance(state.y, state.y, target.y0, target.y1);
        queue_.push_back({state.cost + ahead, number});
        std::push_heap(queue_.begin(), queue_.end());
    };
    for (const Exit& exit : space_.ExitsOf(from)) {
        if (loop && IsHorizontal(exit.side)) continue;
        State state = StartAt(exit, source);
        if (state.horizontal) state.y = std::clamp((target.y0 + target.y1) / 2, exit.lo, exit.hi);
        state.cost = ExitToll(exit, true);
        push(exit.id, state);
    }

    double best = std::numeric_limits<double>::infinity();
    int bestState = -1;
    const Exit* bestGoal = nullptr;
    while (!queue_.empty() && queue_.front().estimate < best) {
        const int number = queue_.front().state;
        std::pop_heap(queue_.begin(), queue_.end());
        queue_.pop_back();
        State& state = states_[At(number)];
        if (state.done == search_) continue;
        state.done = search_;
        const int cell = state.cell;
        for (const Exit& goal : space_.ExitsOf(to)) {
            if (goal.cell != cell || (loop && !IsHorizontal(goal.side))) continue;
            const double cost = GoalCost(state, cell, goal, target);
            if (cost < best) {
                best = cost;
                bestState = number;
                bestGoal = &goal;
            }
        }
        const FreeCell& here = space_.Cells()[At(cell)];
        for (std::size_t i = 0; i < here.portals.size(); ++i) {
            const Portal& portal = here.portals[i];
            const int through = space_.ExitCount() + 2 * portal.id + (portal.to > cell ? 1 : 0);
            const int back = space_.ExitCount() + 2 * portal.id + (portal.to > cell ? 0 : 1);
            if (number == back || states_[At(through)].done == search_) continue;
            State next = Narrow(state, cell, portal.lo, portal.hi);
            next.done = -1;
            next.cell = portal.to;
            next.parent = number;
            next.portal = static_cast<int>(i);
            next.y = portal.y;
            next.cost +=
                std::abs(portal.y - state.y) + PortalToll(portal.id, portal.hi - portal.lo) + PassCost(cell);
            push(through, next);
        }
    }
    if (bestState < 0) return std::nullopt;

    const State* state = &states_[At(bestState)];
    Corridor corridor{*state->start, *bestGoal, {}, {state->cell}};
    for (; state->parent >= 0; state = &states_[At(state->parent)]) {
        const int before = states_[At(state->parent)].cell;
        corridor.portals.push_back(space_.Cells()[At(before)].portals[At(state->portal)]);
        corridor.cells.push_back(before);
    }
    std::reverse(corridor.portals.begin(), corridor.portals.end());
    std::reverse(corridor.cells.begin(), corridor.cells.end());
    return corridor;
}

void CorridorSearch::Take(const Corridor& corridor, int from) {
    ++exitUse_[At(corridor.from.id)];
    ++exitUse_[At(corridor.to.id)];
    State state = StartAt(corridor.from, boxes_[At(from)]);
    const auto use = [&](double lo, double hi, std::size_t i) {
        const State next = Narrow(state, corridor.cells[i], lo, hi);
        if (next.horizontalCell >= 0) {
            const bool isNew = next.fromLo != state.fromLo || next.horizontalCell != state.horizontalCell;
            const double paid = isNew ? 0 : Distance(state.fromLo, state.fromHi, state.lo, state.hi);
            horizontalUse_[At(next.horizontalCell)] +=
                Distance(next.fromLo, next.fromHi, next.lo, next.hi) - paid;
        }
        state = next;
    };
    for (std::size_t i = 0; i < corridor.portals.size(); ++i) {
        const Portal& portal = corridor.portals[i];
        ++portalUse_[At(portal.id)];
        ++passed_[At(corridor.cells[i])];
        use(portal.lo, portal.hi, i);
    }
    if (!IsHorizontal(corridor.to.side)) use(corridor.to.lo, corridor.to.hi, corridor.portals.size());
}

}  // namespace norvelis::layout
