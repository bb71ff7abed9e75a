#pragma once

#include <utility>
#include <vector>

namespace norvelis::layout {

/// Places along one axis that must keep distances from one another, as in the compaction of circuits: an arc
/// for each pair of neighbours, and pairs that must stay within reach of each other. Liao, Wong: An algorithm
/// to compact a VLSI symbolic layout with mixed constraints (1983).
class ConstraintGraph {
  public:
    /// Where all are now.
    explicit ConstraintGraph(std::vector<double> places) : places_(std::move(places)) {}

    /// The upper one keeps at least `distance` from the lower one. Less than 0: it may be so far below it, as
    /// what hangs on the one may face what hangs on the other.
    void KeepApart(int lower, int upper, double distance);
    /// The two are at most `reach` from each other.
    void KeepWithin(int a, int b, double reach);

    /// New places: the middle between moving what is too near only upwards and moving it only downwards, so
    /// that all spreads to both sides. All want to be at `squeeze` times their place: less than 1 draws
    /// them together around 0. Where distances and reaches contradict each other, distances shrink to what
    /// they are now.
    std::vector<double> Solve(double squeeze);

    /// Moves two to one place, if all distances leave space for that; `places` as solved.
    bool Join(int a, int b, std::vector<double>& places);

  private:
    struct Arc {
        int from, to;
        double distance;
        bool mayShrink;
    };
    /// The arcs by where they start, seen in one direction.
    struct Walk {
        std::vector<int> order;  ///< Variables as they are.
        std::vector<int> first;  ///< For each place in the order, its first one in arcs; one more at the end.
        std::vector<int> arcs;
    };
    void DropRepeatedArcs();
    Walk WalkOf(bool upwards) const;
    std::vector<double> Push(const Walk& walk, bool upwards, double squeeze, bool& contradiction);
    bool ShrinkContradictions(const std::vector<int>& cause);
    /// Where one of them may be while all but the other stay.
    std::pair<double, double> SpaceOf(int variable, int other, const std::vector<double>& places) const;

    std::vector<double> places_;
    std::vector<Arc> arcs_;
    std::vector<std::vector<int>> arcsAt_;  ///< Of each variable, once it is asked for.
};

}  // namespace norvelis::layout
