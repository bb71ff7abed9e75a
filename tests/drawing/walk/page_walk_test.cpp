#include "drawing/walk/page_walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/walk/walker.h"

namespace norvelis::drawing::walk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

PageShape Box(const std::string& name, double x, double y, const std::string& text = "\r\n1 F CALC") {
    PageShape box;
    box.name = name;
    box.text = name + text;
    box.bounds = RectAround({x, y}, 10, 6);
    const Rect& b = box.bounds;
    box.outlines = {{{{b.x0, b.y0}, {b.x1, b.y0}, {b.x1, b.y1}, {b.x0, b.y1}}, 0, true}};
    box.label = box.bounds;
    return box;
}

PageShape Line(const std::string& set, int begin, int end, std::vector<Point> points) {
    PageShape line;
    line.name = "Dynamic connector." + std::to_string(begin) + std::to_string(end);
    line.text = set + "\r\nNPO\r\nMA LAST";
    line.begin = begin, line.end = end;
    line.bounds = RectOf(points.front(), points.back());
    line.outlines = {{points, 0.2, false}};
    line.label = RectAround(Between(points.front(), points.back(), 0.5), 4, 2);
    return line;
}

/// Three boxes in a row, two sets from the first to the second, one from the second to the third, a note
/// beside the third; the lines lie behind the boxes.
enum Shapes { kOrders, kMakes, kParts, kClient, kOrder, kPart, kNote, kTitle };
PageWalk Sample() {
    PageShape note = Box("Annotation", 90, 5, "");
    note.text = "PART-IX\r\nPART-NAME ASC";
    note.begin = kPart;
    PageShape title = Box("Title", 50, 50);
    title.locked = true;
    return {{Line("CLIENT-ORDERS", kClient, kOrder, {{10, 20}, {40, 20}}),
             Line("CLIENT-MAKES", kClient, kOrder, {{10, 20}, {25, 40}, {40, 20}}),
             Line("ORDER-PARTS", kOrder, kPart, {{40, 20}, {70, 20}}), Box("CLIENT", 10, 20),
             Box("ORDER", 40, 20), Box("PART", 70, 20), note, title},
            {0, 0, 100, 60}};
}

TEST(PageWalk, MeetsTheFrontmostShapeAndLinesWithinReach) {
    const PageWalk page = Sample();
    const struct {
        Point at;
        double slack;
        int shape;
    } cases[] = {{{10, 20}, 0, kClient},     // Over the lines' ends, which are behind it.
                 {{18, 20.05}, 0, kOrders},  // On the line itself.
                 {{18, 20.9}, 0, kNone},     // Beside it,
                 {{18, 20.9}, 1, kOrders},   // and within reach.
                 {{25, 20.5}, 0, kMakes},    // On two labels.
                 {{25, 39}, 1.5, kMakes},    // At its corner.
                 {{25, 36}, 0.5, kNone},     // In its bounds, far from it.
                 {{50, 50}, 5, kNone},       // Locked.
                 {{-500, 9000}, 3, kNone}};
    for (const auto& [at, slack, shape] : cases)
        EXPECT_EQ(page.At(at, slack), shape) << at.x << ' ' << at.y << ' ' << slack;
    EXPECT_EQ(PageWalk().At({0, 0}, 1), kNone);
}

TEST(PageWalk, ADamagedLineWithoutEndIsIndexedInTime) {
    PageWalk page({Line("FAR", kNone, kNone, {{-1e9, 20}, {1e9, 20}})}, {0, 0, 100, 60});
    EXPECT_EQ(page.At({70, 20}, 1), 0);
}

TEST(PageWalk, NamesAreOfBoxesThenOfSets) {
    const PageWalk page = Sample();
    EXPECT_EQ(page.Named("order  "), kOrder);
    EXPECT_EQ(page.Named("ORDER-PARTS"), kParts);
    EXPECT_EQ(page.Named("part-ix"), kNote);
    EXPECT_EQ(page.Named("ORDER-"), kNone);
    EXPECT_EQ(page.Named(" "), kNone);
}

TEST(PageWalk, TextIsFoundInReadingOrderBoxesFirstAndTheBestIsKnown) {
    const PageWalk page = Sample();
    const Hits part = page.Find(" part ");
    EXPECT_THAT(part.shapes, ElementsAre(kNote, kPart, kParts));
    EXPECT_EQ(part.shapes[part.best], kPart) << "its name is the text";
    const Hits orders = page.Find("orders");
    EXPECT_THAT(orders.shapes, ElementsAre(kOrders));
    EXPECT_THAT(page.Find("calc").shapes, ElementsAre(kClient, kOrder, kPart, kTitle)) << "all their text";
    EXPECT_THAT(page.Find("connector").shapes, IsEmpty()) << "nobody reads a line's name";
    EXPECT_THAT(page.Find("  ").shapes, IsEmpty());
    const PageWalk odd({Box("B\u00fcro \"1\"", 10, 10)}, {0, 0, 20, 20});
    EXPECT_THAT(odd.Find("b\u00fcro \"").shapes, ElementsAre(0));
}

TEST(PageWalk, SurroundingsAreLinesOtherEndsAndNotes) {
    const PageWalk page = Sample();
    const auto check = [&](int shape, const std::vector<int>& lines, const std::vector<int>& others) {
        const Surroundings around = page.Around(shape);
        EXPECT_EQ(around.lines, lines) << shape;
        EXPECT_EQ(around.others, others) << shape;
    };
    check(kOrder, {kOrders, kMakes, kParts}, {kClient, kOrder, kPart});
    check(kPart, {kParts}, {kOrder, kPart, kNote});
    check(kNote, {}, {kPart, kNote});
    check(kParts, {kParts}, {kOrder, kPart});
    const PageWalk loop({Box("SELF", 10, 10), Line("AGAIN", 0, 0, {{10, 10}, {20, 10}})}, {0, 0, 30, 30});
    EXPECT_THAT(loop.LinesOf(0), ElementsAre(1)) << "once, though both its ends are there";
    EXPECT_THAT(loop.Around(0).others, ElementsAre(0));
}

TEST(PageWalk, ALineLeadsToTheFartherEnd) {
    const PageWalk page = Sample();
    EXPECT_EQ(page.FarEnd(kOrders, {18, 20}), kOrder);
    EXPECT_EQ(page.FarEnd(kOrders, {33, 20}), kClient);
    EXPECT_EQ(page.FarEnd(kClient, {33, 20}), kNone);
    const auto set = page.SetOf(kParts);
    ASSERT_TRUE(set);
    EXPECT_THAT((std::vector{set->set, set->owner, set->member}),
                ElementsAre("ORDER-PARTS", "ORDER", "PART"));
    EXPECT_FALSE(page.SetOf(kNote));
}

TEST(Walker, GoesAlongTheLinesOfABoxAndOverToTheOtherEnd) {
    const PageWalk page = Sample();
    Walker walker(page);
    EXPECT_EQ(walker.StepLine(true), kNone);
    walker.Select(kOrder);
    std::vector<int> lines;
    for (int i = 0; i < 4; ++i) {
        walker.Select(walker.StepLine(true));
        lines.push_back(walker.Selected());
    }
    EXPECT_THAT(lines, ElementsAre(kOrders, kMakes, kParts, kOrders));
    EXPECT_EQ(walker.OtherEnd(), kClient) << "it came from the member";
    walker.Select(walker.StepLine(false));
    EXPECT_EQ(walker.Selected(), kParts);
    EXPECT_EQ(walker.OtherEnd(), kPart);
    walker.Select(kMakes);
    EXPECT_EQ(walker.OtherEnd(), kClient);
}

TEST(Walker, HitsGoAround) {
    const PageWalk page = Sample();
    Walker walker(page);
    EXPECT_EQ(walker.NextHit(true), kNone);
    walker.Find("PART");
    EXPECT_EQ(walker.PresentNumber(), 2u);
    EXPECT_EQ(walker.NextHit(true), kParts);
    EXPECT_EQ(walker.NextHit(true), kNote);
    EXPECT_EQ(walker.NextHit(false), kParts);
    walker.Find("");
    EXPECT_EQ(walker.PresentHit(), kNone);
}

}  // namespace
}  // namespace norvelis::drawing::walk
