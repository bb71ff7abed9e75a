#pragma once

#include <vector>

#include "base/geometry.h"
#include "layout/graph/route_rule.h"

// The page between the boxes as flat cells, as wide as the boxes let them be (the vertical decomposition of
// computational geometry, turned by a quarter). Lines find their path from cell to cell; there are at most
// three cells a box, so that the search stays small on the largest page.
namespace norvelis::layout {

/// The shared border of a cell and one above or below it.
struct Portal {
    int to = 0;
    double lo = 0, hi = 0;  ///< From x to x.
    double y = 0;
    int id = 0;  ///< The same in both directions.
};

struct FreeCell {
    Rect area;
    std::vector<Portal> portals;
};

/// Where a line may leave a box into a cell: x from lo to hi on its top or bottom, y from lo to hi on its
/// sides.
struct Exit {
    int cell = 0;
    Side side = Side::Top;
    double lo = 0, hi = 0;
    int id = 0;
};

class FreeSpace {
  public:
    /// Cells keep `clearance` off every box; `margin` is kept free around all of them.
    FreeSpace(const std::vector<Rect>& boxes, double clearance, double margin);

    const std::vector<FreeCell>& Cells() const { return cells_; }
    const std::vector<Exit>& ExitsOf(int box) const { return exits_[static_cast<std::size_t>(box)]; }
    int PortalCount() const { return portalCount_; }
    int ExitCount() const { return exitCount_; }

  private:
    struct Gap {
        double lo, hi;
        int left, right;  ///< The boxes at its ends, -1 at the edge of the page.
        int cell;
    };
    std::vector<Gap> GapsAt(const std::vector<int>& standing, const std::vector<Rect>& grown,
                            const Rect& page) const;
    void Join(const std::vector<Gap>& below, const std::vector<Gap>& above, double y);
    void AddExits(const std::vector<Rect>& boxes, const std::vector<Gap>& gaps, int box, Side side);
    void AddSideExits(const std::vector<Rect>& boxes);

    std::vector<FreeCell> cells_;
    std::vector<int> leftBox_, rightBox_;  ///< For each cell, the boxes at its ends.
    std::vector<std::vector<Exit>> exits_;
    int portalCount_ = 0, exitCount_ = 0;
};

}  // namespace norvelis::layout
