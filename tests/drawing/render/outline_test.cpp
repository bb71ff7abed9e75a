#include <gtest/gtest.h>

#include "drawing/render/outline.h"

namespace norvelis::drawing::render {
namespace {

OutlineRow Row(Name type, double x, double y, double a = 0, double b = 0, double c = 0, double d = 0) {
    return {type, x, y, a, b, c, d};
}

void ExpectBox(const QPainterPath& path, double left, double bottom, double right, double top) {
    const QRectF box = path.boundingRect();
    EXPECT_NEAR(box.left(), left, 1e-3);
    EXPECT_NEAR(box.top(), bottom, 1e-3);  // Upwards, so the rectangle's top is the lower edge.
    EXPECT_NEAR(box.right(), right, 1e-3);
    EXPECT_NEAR(box.bottom(), top, 1e-3);
}

TEST(Outline, RelativeRowsCountInTheShapesSize) {
    ExpectBox(
        Outline({Row(Name::RelMoveTo, 0, 0), Row(Name::RelLineTo, 1, 0), Row(Name::RelLineTo, 0.5, 1)}, 4, 3),
        0, 0, 4, 3);
    ExpectBox(Outline({Row(Name::MoveTo, 1, 1), Row(Name::LineTo, 2, 2)}, 4, 3), 1, 1, 2, 2);
}

TEST(Outline, AnArcsBowLiesToTheRightOfItsWay) {
    ExpectBox(Outline({Row(Name::MoveTo, 0, 0), Row(Name::ArcTo, 2, 0, 1)}, 1, 1), 0, -1, 2, 0);
    ExpectBox(Outline({Row(Name::MoveTo, 0, 0), Row(Name::ArcTo, 2, 0, -1)}, 1, 1), 0, 0, 2, 1);
    ExpectBox(Outline({Row(Name::MoveTo, 0, 0), Row(Name::ArcTo, 2, 0, 0)}, 1, 1), 0, 0, 2, 0);
}

TEST(Outline, AnEllipticalArcGoesThroughItsPoint) {
    // The upper half of an ellipse twice as wide as high.
    ExpectBox(Outline({Row(Name::MoveTo, 0, 0), Row(Name::EllipticalArcTo, 4, 0, 2, 1, 0, 2)}, 1, 1), 0, 0, 4,
              1);
    // Three points in a row have no arc.
    ExpectBox(Outline({Row(Name::MoveTo, 0, 0), Row(Name::EllipticalArcTo, 4, 0, 2, 0, 0, 2)}, 1, 1), 0, 0, 4,
              0);
}

TEST(Outline, AnEllipseIsGivenByItsCentreAndAxes) {
    ExpectBox(Outline({Row(Name::Ellipse, 2, 1, 4, 1, 2, 2)}, 1, 1), 0, 0, 4, 2);
}

TEST(Outline, RoundingCutsCornersAndNothingElse) {
    const QPainterPath square =
        Outline({Row(Name::RelMoveTo, 0, 0), Row(Name::RelLineTo, 1, 0), Row(Name::RelLineTo, 1, 1),
                 Row(Name::RelLineTo, 0, 1), Row(Name::RelLineTo, 0, 0)},
                2, 2);
    const QPainterPath rounded = Rounded(square, 0.5);
    EXPECT_TRUE(square.contains(QPointF(0.02, 0.02)));
    EXPECT_FALSE(rounded.contains(QPointF(0.02, 0.02)));
    EXPECT_FALSE(rounded.contains(QPointF(1.98, 1.98)));
    EXPECT_TRUE(rounded.contains(QPointF(1, 0.02)));
    EXPECT_EQ(rounded.boundingRect(), square.boundingRect());
    EXPECT_TRUE(Rounded(square, 5).contains(QPointF(1, 1)));
}

}  // namespace
}  // namespace norvelis::drawing::render
