#pragma once

#include <vector>

#include "base/geometry.h"

namespace norvelis::layout {

/// The parallel segments of lines on the page, all horizontal or all vertical: each runs at one coordinate,
/// from lo to hi on the other. Finds space for another one at least `spacing` from all that it runs beside
/// (the separation that Wybrow, Marriott, Stuckey: Orthogonal connector routing (2009) call nudging, done
/// line by line).
class ParallelRuns {
  public:
    ParallelRuns(double spacing, double first, double last);

    struct Run {
        double at = 0, lo = 0, hi = 0;
        int net = 0;  ///< Runs of one net may lie on one another: the trunk of a tree.
    };
    struct Space {
        double at = 0;
        bool crowded = false;  ///< No place kept even half the spacing; this is the middle of the widest gap.
    };

    /// The free place nearest to the wish, within from..to, for a run from lo to hi.
    Space Nearest(double wish, double from, double to, double lo, double hi, int net) const;
    void Add(const Run& run);
    void Remove(const Run& run);

  private:
    std::size_t Shelf(double at) const;

    double spacing_, first_;
    std::vector<std::vector<Run>> shelves_;
};

}  // namespace norvelis::layout
