#pragma once

#include <optional>
#include <vector>

#include "layout/routing/free_space.h"

// The coarse path of each line: from cell to cell of the free space, by A* over a length that also counts
// bends and the crowd of the lines before (global routing, as it is done for circuits: Lee 1961; Hart,
// Nilsson, Raphael 1968).
namespace norvelis::layout {

struct Corridor {
    Exit from, to;
    std::vector<Portal> portals;  ///< Passed one after the other.
    std::vector<int> cells;       ///< One more than portals.
};

class CorridorSearch {
  public:
    CorridorSearch(const FreeSpace& space, const std::vector<Rect>& boxes, const RouteRule& rule,
                   double lineGap);

    /// Nothing when a box is walled in.
    std::optional<Corridor> Find(int from, int to);

    /// Counts the line in, so that the next ones see the crowd.
    void Take(const Corridor& corridor, int from);

  private:
    struct State {
        double cost = 0;        ///< So far.
        double lo = 0, hi = 0;  ///< Where the vertical segment that arrives may be.
        double fromLo = 0,
               fromHi = 0;  ///< Where the horizontal segment before it comes from; `cost` pays up to here.
        int horizontalCell = -1;  ///< The cell of that segment.
        double y = 0;
        bool horizontal = false;  ///< Still on the horizontal segment that left a box's side.
        int cell = -1;
        int parent = -1;  ///< State.
        int portal = -1;  ///< Of the parent's cell's portals.
        const Exit* start = nullptr;
        int seen = -1, done = -1;  ///< Search in which this was reached, finished.
    };
    struct Entry {
        double estimate;
        int state;
        bool operator<(const Entry& other) const {
            return estimate != other.estimate ? estimate > other.estimate : state > other.state;
        }
    };
    double PortalToll(int portal, double width) const;
    double ExitToll(const Exit& exit, bool leaves) const;
    double HorizontalCost(int cell, double length) const;
    double PassCost(int cell) const;
    static State StartAt(const Exit& exit, const Rect& source);
    State Narrow(State state, int cell, double lo, double hi) const;
    double GoalCost(const State& state, int cell, const Exit& goal, const Rect& target) const;

    const FreeSpace& space_;
    const std::vector<Rect>& boxes_;
    RouteRule rule_;
    double lineGap_;
    std::vector<int> portalUse_, exitUse_;
    std::vector<double> horizontalUse_;  ///< Inches of horizontal segments in each cell.
    std::vector<int> passed_;            ///< Vertical segments through each cell.
    std::vector<State> states_;
    std::vector<Entry> queue_;
    int search_ = -1;
};

}  // namespace norvelis::layout
