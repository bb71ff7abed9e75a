#include "layout/layered/ranking.h"
#include "layout/graph/graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "layout/layered/cycle_removal.h"
#include "layout/routing/drawing_rules.h"

namespace norvelis::layout {
namespace {

Graph WithLines(int boxes, const std::vector<std::pair<int, int>>& lines) {
    Graph graph{std::vector<Box>(static_cast<std::size_t>(boxes), Box{2, 1}), {}};
    for (const auto& [from, to] : lines) graph.lines.push_back({from, to, 0.8, 0.2});
    return graph;
}

int Against(const Graph& graph) {
    const std::vector<Reversed> breaks = CycleBreaks(graph);
    const auto countOf = [](const Reversed& lines) {
        return static_cast<int>(std::count(lines.begin(), lines.end(), true));
    };
    for (const Reversed& lines : breaks) EXPECT_EQ(countOf(lines), countOf(breaks.front()));
    return countOf(breaks.front());
}

/// The fewest lines that run backwards in any order of the boxes.
int FewestAgainst(const Graph& graph) {
    std::vector<int> place(graph.boxes.size());
    std::iota(place.begin(), place.end(), 0);
    int fewest = static_cast<int>(graph.lines.size());
    do {
        int against = 0;
        for (const Line& line : graph.lines)
            against += place[static_cast<std::size_t>(line.from)] > place[static_cast<std::size_t>(line.to)];
        fewest = std::min(fewest, against);
    } while (std::next_permutation(place.begin(), place.end()));
    return fewest;
}

TEST(CycleRemoval, ReversesNoLineOfAGraphWithoutCyclesAndOneOfARing) {
    EXPECT_EQ(Against(WithLines(4, {{3, 2}, {2, 1}, {1, 0}, {3, 0}})), 0);
    EXPECT_EQ(Against(WithLines(4, {{0, 1}, {1, 2}, {2, 3}, {3, 0}})), 1);
    EXPECT_EQ(Against(WithLines(2, {{0, 1}, {1, 0}, {0, 1}})), 1) << "the two that agree stay";
    EXPECT_EQ(Against(WithLines(1, {{0, 0}})), 0);
}

TEST(CycleRemoval, ReversesHardlyMoreThanItMust) {
    int reversed = 0, fewest = 0;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        Graph graph = SchemaLike(7, 2.2, seed);
        std::erase_if(graph.lines, [](const Line& line) { return line.from == line.to; });
        reversed += Against(graph);
        fewest += FewestAgainst(graph);
    }
    EXPECT_LE(reversed, fewest + 2);
}

TEST(Ranking, OwnersAreAboveMembersAndLinesAreShort) {
    const Graph graph = WithLines(7, {{0, 1}, {1, 2}, {2, 3}, {0, 3}, {4, 3}, {4, 5}, {5, 6}});
    const std::vector<int> ranks = RanksOf(graph, SpansOf(graph, CycleBreaks(graph).front()));
    EXPECT_EQ(ranks, (std::vector<int>{0, 1, 2, 3, 2, 3, 4})) << "4 comes down to its member 3";
}

TEST(Ranking, BoxesWithAChoiceGoToTheLeastCrowdedRank) {
    // 6 may be on any rank between 0 and 5; ranks 1 and 2 have two boxes more than 3.
    const Graph graph =
        WithLines(9, {{0, 1}, {1, 2}, {2, 3}, {3, 4}, {0, 6}, {6, 4}, {0, 7}, {7, 8}, {1, 8}});
    const std::vector<int> ranks = RanksOf(graph, SpansOf(graph, CycleBreaks(graph).front()));
    EXPECT_EQ(ranks[4] - ranks[0], 4);
    EXPECT_EQ(ranks[6], 3);
}

}  // namespace
}  // namespace norvelis::layout
