#include "layout/layered/depth_limit.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace norvelis::layout {

namespace {

/// A line as one of its boxes sees it.
struct End {
    int box;
    bool isBelow;  ///< The other box should be.
};

/// The lines of each box that are on cycles when nobody looks at directions, or join such cycles.
std::vector<std::vector<End>> WithoutHangingTrees(const Graph& graph) {
    std::vector<std::vector<End>> ends(graph.boxes.size());
    for (const Line& line : graph.lines) {
        if (line.from == line.to) continue;
        ends[line.from].push_back({line.to, true});
        ends[line.to].push_back({line.from, false});
    }
    std::vector<int> leaves;
    for (std::size_t i = 0; i < ends.size(); ++i)
        if (ends[i].size() == 1) leaves.push_back(static_cast<int>(i));
    while (!leaves.empty()) {
        const int leaf = leaves.back();
        leaves.pop_back();
        if (ends[leaf].empty()) continue;  // two leaves with one line
        const int other = ends[leaf].front().box;
        ends[leaf].clear();
        std::erase_if(ends[other], [&](const End& end) { return end.box == leaf; });
        if (ends[other].size() == 1) leaves.push_back(other);
    }
    return ends;
}

/// Each box in turn moves to the rank where its lines cost least, until none does.
void Settle(const std::vector<std::vector<End>>& ends, int ranks, int costOfReversed,
            std::vector<int>& rank) {
    constexpr int kMostRounds = 20, kLevel = 40;
    const auto costOf = [&](int down) { return down > 0 ? down : down < 0 ? costOfReversed - down : kLevel; };
    bool moved = true;
    for (int round = 0; round < kMostRounds && moved; ++round) {
        moved = false;
        for (std::size_t box = 0; box < rank.size(); ++box) {
            const auto costOn = [&](int at) {
                int cost = 0;
                for (const End& end : ends[box])
                    cost += costOf(end.isBelow ? rank[end.box] - at : at - rank[end.box]);
                return cost;
            };
            int best = rank[box], least = costOn(best);
            for (int at = 0; at < ranks; ++at) {
                const int cost = costOn(at);
                if (cost < least) least = cost, best = at;
            }
            moved |= best != rank[box];
            rank[box] = best;
        }
    }
}

}  // namespace

Reversed ReversedForDepth(const Graph& graph, const std::vector<int>& ranks, int mostRanks,
                          int costOfReversed) {
    const std::vector<std::vector<End>> ends = WithoutHangingTrees(graph);
    const int deepest = *std::max_element(ranks.begin(), ranks.end());
    std::vector<int> rank;
    for (const int deep : ranks) rank.push_back(deep * mostRanks / (deepest + 1));
    Settle(ends, mostRanks, costOfReversed, rank);
    Reversed reversed;
    for (const Line& line : graph.lines) {
        const auto place = [&](int box) { return std::tuple(rank[box], ranks[box], box); };
        const bool isOnCycle = !ends[line.from].empty() && !ends[line.to].empty();
        reversed.push_back(isOnCycle && place(line.from) > place(line.to));
    }
    return reversed;
}

}  // namespace norvelis::layout
