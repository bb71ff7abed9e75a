#pragma once

#include <cstddef>
#include <vector>

#include "base/geometry.h"
#include "layout/geometry/spatial_index.h"

namespace norvelis::layout {

/// Where two paths cross: numbers of the paths, the first one lower, and of their segments.
struct Crossing {
    std::size_t first = 0, second = 0;
    std::size_t firstSegment = 0, secondSegment = 0;
    Point at;
};

/// Finds where paths cross that change from time to time. The paths must outlive it, and stay about where
/// the page was when it was made.
class CrossingFinder {
  public:
    explicit CrossingFinder(const std::vector<std::vector<Point>>& paths);

    /// Takes the path as it is now, in place of what it was.
    void Update(std::size_t path);

    /// All points where segments of two paths cross inside both, of pairs with at least one path that is
    /// wanted; in the order of the paths, then along the first.
    std::vector<Crossing> Find(const std::vector<char>& isWanted);

  private:
    struct Segment {
        std::size_t path, number;
        Point a, b;
    };
    static Point Meeting(const Segment& p, const Segment& q);
    void FindOn(std::size_t id, const std::vector<char>& isWanted, std::vector<Crossing>& crossings);

    const std::vector<std::vector<Point>>& paths_;
    SpatialIndex near_;
    std::vector<Segment> segments_;          ///< Those of former paths, too.
    std::vector<std::size_t> firstSegment_;  ///< Of each path as it is now; those before are former ones.
    std::vector<std::size_t> lastSeenBy_;    ///< For each segment, the number of a search.
    std::size_t search_ = 0;
};

/// All crossings of paths that stay as they are.
std::vector<Crossing> CrossingsOf(const std::vector<std::vector<Point>>& paths);

}  // namespace norvelis::layout
