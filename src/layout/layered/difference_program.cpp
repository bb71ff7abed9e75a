#include "layout/layered/difference_program.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace norvelis::layout {

namespace {

constexpr std::int64_t kUnlimited = std::numeric_limits<std::int64_t>::max() / 4;

}  // namespace

// The dual: a distance to keep is an arc without limit against its direction, a wished distance a pair of
// arcs of capacity `weight`; the potentials of the cheapest flow are the numbers sought.
void DifferenceProgram::Keep(int from, int to, std::int64_t least) {
    if (from != to) arcs_.push_back({to, from, -least, kUnlimited});
}

void DifferenceProgram::Pull(int from, int to, std::int64_t least, std::int64_t most, std::int64_t weight) {
    if (from == to || weight <= 0) return;
    arcs_.push_back({from, to, most, weight});
    arcs_.push_back({to, from, -least, weight});
}

void DifferenceProgram::Shorten(int from, int to, std::int64_t weight) {
    excess_[to] += weight;
    excess_[from] -= weight;
}

class NetworkSimplex {
  public:
    explicit NetworkSimplex(const DifferenceProgram& program);

    void Run() {
        while (FindEntering()) Pivot();
    }
    std::int64_t Potential(int node) const { return nodes_[node].potential; }

  private:
    enum State : std::int8_t { AtCapacity = -1, InTree = 0, Empty = 1 };
    struct Arc {
        int source, target;
        std::int64_t cost, capacity, flow;
        State state;
    };
    /// A node of the spanning tree, its children in a doubly linked list.
    struct Node {
        std::int64_t potential = 0;
        int parent = -1, arc = -1, depth = 0;
        bool up = true;  ///< The arc leads to the parent.
        int firstChild = -1, next = -1, previous = -1;
    };

    int FirstArc(const std::vector<int>& leaving) const;
    bool FindEntering();
    void Pivot();
    int Join(int a, int b) const;
    void PushFlow(int join, std::int64_t amount);
    void Hang(int node, int parent, int arc);
    void Unhang(int node);
    void MoveSubtree(int root, std::int64_t raise);

    std::vector<Arc> arcs_;
    std::vector<Node> nodes_;
    int searchable_, next_ = 0, entering_ = 0;
    std::vector<int> stack_;
};

// The first tree: each variable in turn, after all from which it is to keep a distance, hangs on one of those
// before it at the very distance that is wished or kept. So most wishes are met from the start, and all arcs
// are empty and lead to the root, as strong feasibility asks.
NetworkSimplex::NetworkSimplex(const DifferenceProgram& program)
    : nodes_(program.count_ + 1), searchable_(static_cast<int>(program.arcs_.size())) {
    const int root = program.count_;
    std::int64_t dearest = 1;
    std::vector<std::vector<int>> leaving(program.count_), kept(program.count_);
    std::vector<int> open(program.count_), ready;
    for (const auto& arc : program.arcs_) {
        const int at = static_cast<int>(arcs_.size());
        arcs_.push_back({arc.source, arc.target, arc.cost, arc.capacity, 0, Empty});
        dearest = std::max(dearest, std::abs(arc.cost));
        leaving[arc.source].push_back(at);
        if (arc.capacity < kUnlimited) continue;
        kept[arc.target].push_back(arc.source);
        ++open[arc.source];
    }
    const std::int64_t artificial = (dearest + 1) * (root + 1);
    for (int i = root - 1; i >= 0; --i)
        if (open[i] == 0) ready.push_back(i);
    while (!ready.empty()) {
        const int node = ready.back();
        ready.pop_back();
        if (const std::int64_t excess = program.excess_[node]; excess < 0) {
            arcs_.push_back({root, node, artificial, kUnlimited, -excess, InTree});
            Hang(node, root, static_cast<int>(arcs_.size()) - 1);
            nodes_[node].potential = artificial;
            nodes_[node].depth = 1;
        } else if (const int arc = excess > 0 ? -1 : FirstArc(leaving[node]); arc >= 0) {
            const Node& parent = nodes_[arcs_[arc].target];
            arcs_[arc].state = InTree;
            Hang(node, arcs_[arc].target, arc);
            nodes_[node].potential = parent.potential - arcs_[arc].cost;
            nodes_[node].depth = parent.depth + 1;
        } else {
            arcs_.push_back({node, root, 0, kUnlimited, excess, InTree});
            Hang(node, root, static_cast<int>(arcs_.size()) - 1);
            nodes_[node].depth = 1;
        }
        for (auto next = kept[node].rbegin(); next != kept[node].rend(); ++next)
            if (--open[*next] == 0) ready.push_back(*next);
    }
}

/// The arc to a node of the tree by which its source keeps all distances to such nodes, and one of the
/// weightiest wishes where that can be. -1 when no arc leads to the tree.
int NetworkSimplex::FirstArc(const std::vector<int>& leaving) const {
    const auto valueBy = [&](int arc) { return nodes_[arcs_[arc].target].potential - arcs_[arc].cost; };
    const auto isTaken = [&](int arc) { return nodes_[arcs_[arc].target].depth > 0; };
    int best = -1;
    for (const int arc : leaving)
        if (arcs_[arc].capacity == kUnlimited && isTaken(arc) && (best < 0 || valueBy(arc) > valueBy(best)))
            best = arc;
    const int kept = best;
    for (const int arc : leaving)
        if (arcs_[arc].capacity < kUnlimited && isTaken(arc) && (kept < 0 || valueBy(arc) > valueBy(kept)) &&
            (best == kept || arcs_[arc].capacity > arcs_[best].capacity))
            best = arc;
    return best;
}

bool NetworkSimplex::FindEntering() {
    const int block = std::max(20, static_cast<int>(std::sqrt(searchable_)));
    std::int64_t best = 0;
    int inBlock = block;
    for (int seen = 0; seen < searchable_; ++seen) {
        const Arc& arc = arcs_[next_];
        const std::int64_t reduced =
            arc.state * (arc.cost + nodes_[arc.source].potential - nodes_[arc.target].potential);
        if (reduced < best) {
            best = reduced;
            entering_ = next_;
        }
        if (++next_ == searchable_) next_ = 0;
        if (--inBlock == 0) {
            if (best < 0) return true;
            inBlock = block;
        }
    }
    return best < 0;
}

int NetworkSimplex::Join(int a, int b) const {
    while (a != b) {
        if (nodes_[a].depth >= nodes_[b].depth) {
            a = nodes_[a].parent;
        } else {
            b = nodes_[b].parent;
        }
    }
    return a;
}

void NetworkSimplex::PushFlow(int join, std::int64_t amount) {
    Arc& entering = arcs_[entering_];
    entering.flow += amount;
    for (int u = entering.source; u != join; u = nodes_[u].parent)
        arcs_[nodes_[u].arc].flow += nodes_[u].up ? -amount : amount;
    for (int u = entering.target; u != join; u = nodes_[u].parent)
        arcs_[nodes_[u].arc].flow += nodes_[u].up ? amount : -amount;
}

// The leaving arc is the last that blocks around the cycle from its join: that keeps the tree
// strongly feasible, so that pivots without a push of flow cannot go round for ever.
void NetworkSimplex::Pivot() {
    Arc& entering = arcs_[entering_];
    const bool forward = entering.state == Empty;
    const int first = forward ? entering.source : entering.target;
    const int second = forward ? entering.target : entering.source;
    const int join = Join(first, second);

    std::int64_t push = entering.capacity;
    int leaving = -1;
    bool onFirst = false;
    const auto space = [&](int u, bool against) {
        const Arc& arc = arcs_[nodes_[u].arc];
        return nodes_[u].up == against      ? arc.flow
               : arc.capacity >= kUnlimited ? kUnlimited
                                            : arc.capacity - arc.flow;
    };
    for (int u = first; u != join; u = nodes_[u].parent) {
        if (const auto r = space(u, true); r < push) {
            push = r;
            leaving = u;
            onFirst = true;
        }
    }
    for (int u = second; u != join; u = nodes_[u].parent) {
        if (const auto r = space(u, false); r <= push) {
            push = r;
            leaving = u;
            onFirst = false;
        }
    }
    if (push > 0) PushFlow(join, forward ? push : -push);
    if (leaving < 0) {
        entering.state = forward ? AtCapacity : Empty;
        return;
    }
    entering.state = InTree;
    Arc& left = arcs_[nodes_[leaving].arc];
    left.state = left.flow == 0 ? Empty : AtCapacity;

    // The part of the tree below the leaving arc is hung up at the entering arc's other end.
    const int newChild = onFirst ? first : second, newParent = onFirst ? second : first;
    int node = newChild, parent = newParent, arc = entering_;
    for (bool last = false; !last;) {
        last = node == leaving;
        const int oldParent = nodes_[node].parent, oldArc = nodes_[node].arc;
        Unhang(node);
        Hang(node, parent, arc);
        parent = node;
        node = oldParent;
        arc = oldArc;
    }
    const std::int64_t cost = nodes_[newChild].up ? entering.cost : -entering.cost;
    MoveSubtree(newChild, nodes_[newParent].potential - nodes_[newChild].potential - cost);
}

void NetworkSimplex::Hang(int node, int parent, int arc) {
    Node& n = nodes_[node];
    n.parent = parent;
    n.arc = arc;
    n.up = arcs_[arc].source == node;
    n.previous = -1;
    n.next = nodes_[parent].firstChild;
    if (n.next >= 0) nodes_[n.next].previous = node;
    nodes_[parent].firstChild = node;
}

void NetworkSimplex::Unhang(int node) {
    const Node& n = nodes_[node];
    if (n.previous >= 0) {
        nodes_[n.previous].next = n.next;
    } else {
        nodes_[n.parent].firstChild = n.next;
    }
    if (n.next >= 0) nodes_[n.next].previous = n.previous;
}

void NetworkSimplex::MoveSubtree(int root, std::int64_t raise) {
    stack_.assign(1, root);
    while (!stack_.empty()) {
        Node& node = nodes_[stack_.back()];
        stack_.pop_back();
        node.potential += raise;
        node.depth = nodes_[node.parent].depth + 1;
        for (int child = node.firstChild; child >= 0; child = nodes_[child].next) stack_.push_back(child);
    }
}

std::vector<std::int64_t> DifferenceProgram::Solve() const {
    std::vector<std::int64_t> solution(count_);
    if (count_ == 0) return solution;
    NetworkSimplex simplex(*this);
    simplex.Run();
    std::int64_t least = kUnlimited;
    for (int i = 0; i < count_; ++i) least = std::min(least, solution[i] = simplex.Potential(i));
    for (auto& value : solution) value -= least;
    return solution;
}

}  // namespace norvelis::layout
