#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "layout/geometry/crossings.h"
#include "layout/routing/exchange.h"

namespace norvelis::layout {
namespace {

using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr double kGap = 0.125;
using Paths = std::vector<std::vector<Point>>;

TEST(CrossingsOf, TellsThePathsInTheirOrderAndWhereTheyCross) {
    const Paths paths{{{0, 0}, {10, 0}, {10, 4}}, {{8, 2}, {12, 2}}, {{2, -1}, {2, 1}, {4, 1}, {4, -1}}};
    const std::vector<Crossing> crossings = CrossingsOf(paths);
    ASSERT_THAT(crossings, SizeIs(3));
    EXPECT_EQ(crossings[0].second, 1u);
    EXPECT_EQ(crossings[0].at, (Point{10, 2}));
    EXPECT_EQ(crossings[1].at, (Point{2, 0}));
    EXPECT_EQ(crossings[2].at, (Point{4, 0}));
    EXPECT_EQ(crossings[2].secondSegment, 2u);
}

TEST(CrossingFinder, FindsThoseOfWantedPathsAsTheyAreNow) {
    Paths paths{{{0, 0}, {10, 0}}, {{2, -1}, {2, 1}}, {{4, -1}, {4, 1}}, {{-1, 3}, {9, 3}}};
    CrossingFinder finder(paths);
    paths[1] = {{6, -1}, {6, 4}};
    finder.Update(1);
    for (int times = 0; times < 2; ++times) {
        const std::vector<Crossing> crossings = finder.Find({0, 1, 0, 1});
        ASSERT_THAT(crossings, SizeIs(2));
        EXPECT_EQ(crossings[0].at, (Point{6, 0}));
        EXPECT_EQ(crossings[1].at, (Point{6, 3}));
        EXPECT_EQ(crossings[1].second, 3u);
    }
}

TEST(ExchangePieces, NothingCrossesThatSharesAnEndOrCrossedTwice) {
    const std::vector<Rect> boxes{{-1, -1, 1, 1}, {9, -1, 11, 1}, {9, 5, 11, 7}, {4, 2, 6, 3}};
    const struct {
        const char* name;
        Turns turns;
        std::vector<Line> lines;
        Paths paths;
    } cases[] = {
        {"one owner", Turns::Slanting, {{0, 1}, {0, 3}}, {{{1, 0.5}, {9, 0}}, {{1, -0.5}, {4, 2.5}}}},
        {"owner of one, member of the other",
         Turns::RightAngled,
         {{0, 1}, {2, 0}},
         {{{1, 0.5}, {3, 0.5}, {3, -0.5}, {9, -0.5}}, {{9, 6}, {2, 6}, {2, -0.5}, {1, -0.5}}}},
        {"both",
         Turns::RightAngled,
         {{0, 1}, {1, 0}},
         {{{1, 0.5}, {3, 0.5}, {3, -0.5}, {9, -0.5}},
          {{9, 0.5}, {4, 0.5}, {4, -0.8}, {2, -0.8}, {2, 0.8}, {1, 0.8}}}},
        {"twice",
         Turns::RightAngled,
         {{0, 1}, {2, 3}},
         {{{1, 0}, {9, 0}}, {{9, 6}, {8, 6}, {8, -0.5}, {5, -0.5}, {5, 2}}}},
        {"twice around a box",
         Turns::Slanting,
         {{0, 1}, {2, 3}},
         {{{1, 0.9}, {9, 0.9}}, {{9, 5.5}, {8, 0.5}, {6.5, 0.5}, {5, 2}}}},
    };
    for (const auto& [name, turns, lines, before] : cases) {
        ASSERT_THAT(CrossingsOf(before), Not(IsEmpty())) << name;
        Paths paths = before;
        EXPECT_EQ(ExchangePieces(paths, lines, boxes, kGap, turns), Exchanged::All) << name;
        EXPECT_THAT(CrossingsOf(paths), IsEmpty()) << name;
        EXPECT_EQ(ExchangePieces(paths, lines, boxes, kGap, turns), Exchanged::None) << name;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const auto isAt = [&](Point end, int box) {
                const Rect& rect = boxes[static_cast<std::size_t>(box)];
                return rect.Grown(1e-9).Holds(end) && !rect.Grown(-1e-9).Holds(end);
            };
            EXPECT_TRUE(isAt(paths[i].front(), lines[i].from)) << name;
            EXPECT_TRUE(isAt(paths[i].back(), lines[i].to)) << name;
            for (std::size_t k = 1; k < paths[i].size(); ++k)
                for (const Rect& box : boxes)
                    EXPECT_FALSE(SegmentHits(paths[i][k - 1], paths[i][k], box.Grown(-1e-9))) << name;
        }
    }
}

TEST(ExchangePieces, LinesThatHaveNothingInCommonMayCrossOnce) {
    Paths paths{{{0, 0}, {4, 4}}, {{0, 4}, {4, 0}}};
    const Paths before = paths;
    EXPECT_EQ(ExchangePieces(paths, {{0, 1}, {2, 3}}, {}, kGap, Turns::Slanting), Exchanged::None);
    EXPECT_EQ(paths, before);
}

}  // namespace
}  // namespace norvelis::layout
