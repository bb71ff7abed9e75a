#include "layout/layered/difference_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace norvelis::layout {
namespace {

struct Demand {
    int from, to;
    std::int64_t least, most, weight;
};

std::int64_t CostOf(const std::vector<std::int64_t>& x, const std::vector<Demand>& pulls) {
    std::int64_t cost = 0;
    for (const Demand& pull : pulls) {
        const std::int64_t d = x[pull.to] - x[pull.from];
        cost += pull.weight *
                (std::max<std::int64_t>(0, pull.least - d) + std::max<std::int64_t>(0, d - pull.most));
    }
    return cost;
}

/// The least cost over all values from 0 to the limit, by trying them all.
std::int64_t LeastCost(int variables, int limit, const std::vector<Demand>& keeps,
                       const std::vector<Demand>& pulls) {
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    std::vector<std::int64_t> x(variables);
    for (;;) {
        bool isAllowed = true;
        for (const Demand& keep : keeps) isAllowed &= x[keep.to] - x[keep.from] >= keep.least;
        if (isAllowed) best = std::min(best, CostOf(x, pulls));
        int i = 0;
        while (i < variables && ++x[i] > limit) x[i++] = 0;
        if (i == variables) return best;
    }
}

TEST(DifferenceProgram, KeepsDistancesAtTheLeastCost) {
    std::mt19937 random(1);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    constexpr int kVariables = 5, kLimit = 7;
    for (int round = 0; round < 60; ++round) {
        std::vector<Demand> keeps, pulls;
        for (int i = 1; i < kVariables; ++i) keeps.push_back({below(i), i, below(3), 0, 0});
        for (int i = 0; i < 8; ++i) {
            const int from = below(kVariables), to = (from + 1 + below(kVariables - 1)) % kVariables;
            const int least = below(5) - 2;
            pulls.push_back({from, to, least, least + below(3), 1 + below(4)});
        }
        DifferenceProgram program(kVariables);
        for (const Demand& keep : keeps) program.Keep(keep.from, keep.to, keep.least);
        for (const Demand& pull : pulls) program.Pull(pull.from, pull.to, pull.least, pull.most, pull.weight);
        const std::vector<std::int64_t> x = program.Solve();
        for (const Demand& keep : keeps) ASSERT_GE(x[keep.to] - x[keep.from], keep.least);
        EXPECT_EQ(*std::min_element(x.begin(), x.end()), 0);
        EXPECT_EQ(CostOf(x, pulls), LeastCost(kVariables, kLimit, keeps, pulls)) << "round " << round;
    }
}

TEST(DifferenceProgram, ShortensAsFarAsTheOthersLet) {
    DifferenceProgram program(4);
    program.Keep(0, 1, 3);
    program.Keep(1, 3, 2);
    program.Keep(0, 2, 1);
    program.Keep(2, 3, 1);
    program.Shorten(0, 3, 1);
    program.Pull(0, 2, 9, 9, 5);
    const std::vector<std::int64_t> x = program.Solve();
    EXPECT_EQ(x[2] - x[0], 9) << "the stronger pull wins";
    EXPECT_EQ(x[3] - x[0], 10);
}

}  // namespace
}  // namespace norvelis::layout
