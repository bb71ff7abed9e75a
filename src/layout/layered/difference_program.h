#pragma once

#include <cstdint>
#include <vector>

namespace norvelis::layout {

/// Whole numbers that keep least distances from each other and lie as near to wished distances as they can:
/// the form that ranking and coordinate assignment share (Gansner, Koutsofios, North, Vo: A technique for
/// drawing directed graphs, 1993). Solved exactly, as the dual of a minimum cost flow, by the primal network
/// simplex method with strongly feasible trees and block search (Ahuja, Magnanti, Orlin: Network flows, 1993,
/// chapter 11).
class DifferenceProgram {
  public:
    explicit DifferenceProgram(int variables) : count_(variables), excess_(variables) {}

    /// x[to] - x[from] >= least. The constraints must not contradict each other: a cycle of them is never
    /// solved.
    void Keep(int from, int to, std::int64_t least);

    /// Costs weight for each unit by which x[to] - x[from] is less than `least` or more than `most`.
    void Pull(int from, int to, std::int64_t least, std::int64_t most, std::int64_t weight);

    /// Costs weight for each unit of x[to] - x[from], which some constraints must keep from falling for ever.
    void Shorten(int from, int to, std::int64_t weight);

    /// An optimal solution, the least value being 0. The variables must hang together.
    std::vector<std::int64_t> Solve() const;

  private:
    friend class NetworkSimplex;
    struct Arc {
        int source, target;
        std::int64_t cost, capacity;
    };
    int count_;
    std::vector<std::int64_t> excess_;
    std::vector<Arc> arcs_;
};

}  // namespace norvelis::layout
