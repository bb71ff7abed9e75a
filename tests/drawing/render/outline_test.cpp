#include <gtest/gtest.h>

#include <cmath>

#include "drawing/render/outline.h"

namespace norvelis::drawing::render {
namespace {

OutlineRow Row(Name type, double x, double y, double a = 0, double b = 0, double c = 0, double d = 0) {
    return {type, x, y, a, b, c, d, {}};
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

TEST(Outline, AnArcsBowLiesToTheRightOfItsDirection) {
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

/// How far the outline gets from a circle's line, looked at in many places.
double DistanceFromCircle(const QPainterPath& path, double radius) {
    double worst = 0;
    for (int i = 0; i <= 200; ++i) {
        const QPointF at = path.pointAtPercent(i / 200.0);
        worst = std::max(worst, std::abs(std::hypot(at.x(), at.y()) - radius));
    }
    return worst;
}

OutlineRow DataRow(Name type, double x, double y, double a, double b, double c, double d, std::string data) {
    return {type, x, y, a, b, c, d, std::move(data)};
}

TEST(Outline, ARationalSplineIsTheCircle) {
    // A quarter of a circle of radius 2: degree 2, the middle point with the weight of a half root of two.
    const auto quarter = [](const std::string& middle) {
        return Outline({Row(Name::MoveTo, 2, 0), DataRow(Name::NURBSTo, 0, 2, 0, 1, 0, 1,
                                                         "NURBS(1,2," + middle + ",0,0.7071067811865476)")},
                       4, 8);
    };
    EXPECT_LT(DistanceFromCircle(quarter("1,1,2,2"), 2), 1e-3);
    EXPECT_LT(DistanceFromCircle(quarter("0,0,0.5,0.25"), 2), 1e-3);  // The same in fractions of the size.
    EXPECT_EQ(quarter("1,1,2,2").currentPosition(), QPointF(0, 2));
}

TEST(Outline, ACubicSplineOfOneSpanIsTheBezierCurveOfItsPoints) {
    const auto bezier = [](QPointF a, QPointF b, QPointF c, QPointF d, double t) {
        const double s = 1 - t;
        return a * (s * s * s) + b * (3 * s * s * t) + c * (3 * s * t * t) + d * (t * t * t);
    };
    const auto expectBezier = [&bezier](const QPainterPath& path) {
        const int curves = path.elementCount() / 3;
        for (int i = 0; i < curves; ++i) {
            const auto at = [&](int k) { return QPointF(path.elementAt(3 * i + k)); };
            for (const double t : {0.25, 0.5, 1.0}) {
                const QPointF found = bezier(at(0), at(1), at(2), at(3), t);
                const QPointF expected = bezier({0, 0}, {1, 3}, {2, -3}, {3, 1}, (i + t) / curves);
                EXPECT_NEAR(found.x(), expected.x(), 1e-9) << i;
                EXPECT_NEAR(found.y(), expected.y(), 1e-9) << i;
            }
        }
        EXPECT_GT(curves, 0);
    };
    expectBezier(Outline({Row(Name::MoveTo, 0, 0), DataRow(Name::NURBSTo, 3, 1, 0, 1, 0, 1,
                                                           "NURBS(1, 3, 1, 1, 1, 3, 0, 1, 2, -3, 0, 1)")},
                         1, 1));
    // The same in rows: second point with its knot, the first knot, the last, the degree; then the others.
    expectBezier(Outline({Row(Name::MoveTo, 0, 0), Row(Name::SplineStart, 1, 3, 0, 0, 1, 3),
                          Row(Name::SplineKnot, 2, -3, 0), Row(Name::SplineKnot, 3, 1, 0)},
                         1, 1));
}

TEST(Outline, KnotsThatLeaveNoRoomGiveACurveBetweenItsEnds) {
    const QPainterPath path = Outline({Row(Name::MoveTo, 0, 0), DataRow(Name::NURBSTo, 3, 1, 1, 1, 0, 1,
                                                                        "NURBS(1,3,1,1,1,3,0,1,2,-3,0,1)")},
                                      1, 1);
    EXPECT_EQ(path.currentPosition(), QPointF(3, 1));
    EXPECT_LT(path.boundingRect().top(), -0.35);
}

TEST(Outline, ASplineGoesOnToTheRowBehindIt) {
    const QPainterPath path = Outline({Row(Name::MoveTo, 0, 0), Row(Name::SplineStart, 1, 1, 0, 0, 1, 2),
                                       Row(Name::SplineKnot, 2, 0, 0), Row(Name::LineTo, 5, 0)},
                                      1, 1);
    EXPECT_EQ(path.currentPosition(), QPointF(5, 0));
    ExpectBox(path, 0, 0, 5, 0.5);
}

TEST(Outline, APolylineHoldsItsPointsInOneRow) {
    ExpectBox(Outline({Row(Name::MoveTo, 0, 0),
                       DataRow(Name::PolylineTo, 4, 0, 0, 0, 0, 0, "POLYLINE(0, 1, 0.25, 2, 0.5, -1)")},
                      4, 9),
              0, -1, 4, 2);
}

TEST(Outline, AnInfiniteLineLeavesEveryPage) {
    const QRectF box = Outline({Row(Name::InfiniteLine, 0, 1, 1, 1)}, 1, 1).boundingRect();
    EXPECT_LT(box.left(), -500);
    EXPECT_GT(box.right(), 500);
    EXPECT_NEAR(box.top(), 1, 1e-9);
}

TEST(Outline, NumbersThatMakeNoCurveGiveALine) {
    for (const char* data :
         {"", "NURBS", "NURBS()", "NURBS(1,3,1,1,1,3,0)", "NURBS(1,99,1,1,1,3,0,1)", "NURBS(1,0,1,1,1,3,0,1)",
          "NURBS(1,2,1,1,1,3,5,1)", "NURBS(1,2,1,1,1,3,0,0)", "NURBS(1,2,1,1,nan,3,0,1)", "NURBS(x)",
          "POLYLINE(1)", "NURBS(1,2,1,1,1,3,0,1"}) {
        ExpectBox(Outline({Row(Name::MoveTo, 0, 0), DataRow(Name::NURBSTo, 4, 0, 0, 1, 0, 1, data)}, 1, 1), 0,
                  0, 4, 0);
    }
    EXPECT_TRUE(Outline({Row(Name::InfiniteLine, 1, 1, 1, 1)}, 1, 1).isEmpty());
    ExpectBox(Outline({Row(Name::MoveTo, 0, 0), Row(Name::SplineStart, 1, 1, 9, 0, 1, 3),
                       Row(Name::SplineKnot, 2, 0)},
                      1, 1),
              0, 0, 2, 1);
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
