#include "layout/packing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {
namespace {

using Part = std::vector<Rect>;

/// The parts where they were put.
std::vector<Part> Pack(std::vector<Part> parts, double gap) {
    const std::vector<Point> moves = PackParts(parts, gap);
    for (std::size_t i = 0; i < parts.size(); ++i)
        for (Rect& rect : parts[i])
            rect = {rect.x0 + moves[i].x, rect.y0 + moves[i].y, rect.x1 + moves[i].x, rect.y1 + moves[i].y};
    return parts;
}

Rect PageOf(const std::vector<Part>& parts) {
    std::vector<Rect> all;
    for (const Part& part : parts) all.insert(all.end(), part.begin(), part.end());
    return BoundsOf(all);
}

bool AreApart(const std::vector<Part>& parts, double gap) {
    for (std::size_t i = 0; i < parts.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            for (const Rect& a : parts[i])
                for (const Rect& b : parts[k])
                    if (Overlap(a.Grown(gap / 2 - 1e-6), b.Grown(gap / 2 - 1e-6))) return false;
    return true;
}

TEST(Packing, KeepsPartsApartOnAPageOfGoodShape) {
    std::mt19937 random(1);
    const auto below = [&](int limit) {
        return static_cast<double>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 40; ++round) {
        std::vector<Part> parts(1 + random() % 60);
        double area = 0;
        for (Part& part : parts) {
            const double x = below(50) - 25, y = below(50) - 25, width = 0.5 + 0.1 * below(100),
                         height = 0.5 + 0.1 * below(60);
            part = {{x, y, x + width, y + height}};
            area += (width + 0.5) * (height + 0.5);
        }
        const std::vector<Part> packed = Pack(parts, 0.5);
        EXPECT_TRUE(AreApart(packed, 0.5));
        const Rect page = PageOf(packed);
        EXPECT_NEAR(page.x0, 0, 1e-9);
        EXPECT_NEAR(page.y0, 0, 1e-9);
        if (parts.size() < 12) continue;
        EXPECT_LT(page.Width() * page.Height(), 1.5 * area);
        EXPECT_LT(page.Width(), 2.6 * page.Height());
        EXPECT_LT(page.Height(), 1.35 * page.Width());
    }
}

TEST(Packing, FillsTheCornersOfGreatPartsButNotTheirInside) {
    // A tree with a wide top, and an empty frame.
    const Part tree{{0, 8, 20, 10}, {0, 0, 4, 8}},
        frame{{0, 0, 20, 1}, {0, 9, 20, 10}, {0, 1, 1, 9}, {19, 1, 20, 9}};
    const Part box{{0, 0, 3, 2}};
    const std::vector<Part> beside = Pack({tree, box, box, box}, 0.5);
    EXPECT_TRUE(AreApart(beside, 0.5));
    EXPECT_NEAR(PageOf(beside).Width() * PageOf(beside).Height(), 200, 1e-9) << "no more than the tree alone";
    const std::vector<Part> framed = Pack({frame, box}, 0.5);
    EXPECT_FALSE(Overlap(BoundsOf(framed[0]), framed[1].front()));
}

TEST(Packing, ManyPartsOfOneSizeFormRows) {
    const std::vector<Part> packed = Pack(std::vector<Part>(1000, Part{{0, 0, 2.1, 1.1}}), 0.5);
    EXPECT_TRUE(AreApart(packed, 0.5));
    const Rect page = PageOf(packed);
    EXPECT_LT(page.Width() * page.Height(), 1.25 * 1000 * 2.6 * 1.6);
    EXPECT_TRUE(PackParts({}, 0.5).empty());
}

}  // namespace
}  // namespace norvelis::layout
