#include "drawing/render/outline.h"

#include <QLineF>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawing/render/free_curves.h"

namespace norvelis::drawing::render {

namespace {

constexpr double kPi = std::numbers::pi;

/// An arc of the unit circle's image under `toCircle` inverted, from one angle over `sweep`, as cubic curves.
void AddArc(QPainterPath& path, QPointF center, double radius, double from, double sweep,
            const QTransform& back) {
    const int curves = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (kPi / 2))));
    const double step = sweep / curves, reach = 4.0 / 3 * std::tan(step / 4) * radius;
    for (int i = 0; i < curves; ++i) {
        const double start = from + i * step, end = start + step;
        const QPointF a = center + radius * QPointF(std::cos(start), std::sin(start));
        const QPointF b = center + radius * QPointF(std::cos(end), std::sin(end));
        path.cubicTo(back.map(a + reach * QPointF(-std::sin(start), std::cos(start))),
                     back.map(b - reach * QPointF(-std::sin(end), std::cos(end))), back.map(b));
    }
}

/// The arc through three points of an ellipse whose long axis is turned by `angle` and `ratio` times the
/// other; a line when they do not lie on one.
void EllipticalArcTo(QPainterPath& path, QPointF to, QPointF through, double angle, double ratio) {
    if (!(std::abs(ratio) > 1e-9)) return path.lineTo(to);
    QTransform toCircle;  // Turns the long axis horizontal and squeezes the ellipse to a circle.
    toCircle.scale(1 / ratio, 1);
    toCircle.rotateRadians(-angle);
    const QPointF p = toCircle.map(path.currentPosition()), q = toCircle.map(through), r = toCircle.map(to);
    const double area = 2 * (p.x() * (q.y() - r.y()) + q.x() * (r.y() - p.y()) + r.x() * (p.y() - q.y()));
    const double extent = std::max(
        {std::abs(p.x() - r.x()), std::abs(p.y() - r.y()), std::abs(p.x() - q.x()), std::abs(p.y() - q.y())});
    if (!(std::abs(area) > 1e-9 * extent * extent) || extent == 0) return path.lineTo(to);
    const auto square = [](QPointF point) { return QPointF::dotProduct(point, point); };
    const QPointF center(
        (square(p) * (q.y() - r.y()) + square(q) * (r.y() - p.y()) + square(r) * (p.y() - q.y())) / area,
        (square(p) * (r.x() - q.x()) + square(q) * (p.x() - r.x()) + square(r) * (q.x() - p.x())) / area);
    const double radius = std::hypot(p.x() - center.x(), p.y() - center.y());
    const auto angleOf = [&center](QPointF point) {
        return std::atan2(point.y() - center.y(), point.x() - center.x());
    };
    const double from = angleOf(p);
    const auto onward = [from](double other) { return std::fmod(other - from + 4 * kPi, 2 * kPi); };
    const double end = onward(angleOf(r)), middle = onward(angleOf(q));
    AddArc(path, center, radius, from, middle <= end ? end : end - 2 * kPi, toCircle.inverted());
}

/// `bow` is the distance of the arc's middle from the middle of its chord, to the right when
/// positive.
void ArcTo(QPainterPath& path, QPointF to, double bow) {
    const QPointF from = path.currentPosition(), way = to - from;
    const double length = std::hypot(way.x(), way.y());
    if (length == 0 || std::abs(bow) < 1e-9) return path.lineTo(to);
    const QPointF right(way.y() / length, -way.x() / length);
    EllipticalArcTo(path, to, (from + to) / 2 + right * bow, 0, 1);
}

/// Centre, and an end of each axis.
void Ellipse(QPainterPath& path, QPointF center, QPointF first, QPointF second) {
    const QPointF u = first - center, v = second - center;
    const QTransform place(u.x(), u.y(), v.x(), v.y(), center.x(), center.y());
    path.moveTo(first);
    AddArc(path, {0, 0}, 1, 0, 2 * kPi, place);
    path.closeSubpath();
}

/// A line through two points that goes beyond every page.
void AddInfiniteLine(QPainterPath& path, QPointF one, QPointF other) {
    constexpr double kReach = 1000;  // Inches.
    const QLineF line(one, other);
    if (!(line.length() > 1e-9)) return;
    const QPointF way = (other - one) / line.length() * kReach;
    path.moveTo(one - way);
    path.lineTo(one + way);
}

bool HasCurves(const QPainterPath& path) {
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).isCurveTo()) return true;
    }
    return false;
}

}  // namespace

QPainterPath Outline(const std::vector<OutlineRow>& rows, double width, double height) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    Spline spline;
    for (const OutlineRow& row : rows) {
        if (row.type != Name::SplineKnot) spline.AddTo(path);
        const QPointF at(row.x, row.y);
        const auto part = [&](double x, double y) { return QPointF(x * width, y * height); };
        switch (row.type) {
            case Name::MoveTo:
                path.moveTo(at);
                break;
            case Name::RelMoveTo:
                path.moveTo(part(row.x, row.y));
                break;
            case Name::RelLineTo:
                path.lineTo(part(row.x, row.y));
                break;
            case Name::RelCubBezTo:
                path.cubicTo(part(row.a, row.b), part(row.c, row.d), part(row.x, row.y));
                break;
            case Name::RelQuadBezTo:
                path.quadTo(part(row.a, row.b), part(row.x, row.y));
                break;
            case Name::ArcTo:
                ArcTo(path, at, row.a);
                break;
            case Name::EllipticalArcTo:
                EllipticalArcTo(path, at, {row.a, row.b}, row.c, row.d);
                break;
            case Name::RelEllipticalArcTo:
                EllipticalArcTo(path, part(row.x, row.y), part(row.a, row.b), row.c, row.d);
                break;
            case Name::Ellipse:
                Ellipse(path, at, {row.a, row.b}, {row.c, row.d});
                break;
            case Name::LineTo:
                path.lineTo(at);
                break;
            case Name::PolylineTo:
                AddPolyline(path, row, width, height);
                break;
            case Name::NURBSTo:
                AddNurbs(path, row, width, height);
                break;
            case Name::SplineStart:
                spline = Spline(path.currentPosition(), row);
                break;
            case Name::SplineKnot:
                spline.AddKnot(row);
                break;
            case Name::InfiniteLine:
                AddInfiniteLine(path, at, {row.a, row.b});
                break;
            default:
                break;
        }
    }
    spline.AddTo(path);
    return path;
}

QPainterPath Rounded(const QPainterPath& outline, double radius) {
    if (radius <= 0 || HasCurves(outline)) return outline;
    QPainterPath rounded;
    rounded.setFillRule(outline.fillRule());
    for (const QPolygonF& polygon : outline.toSubpathPolygons()) {
        const int count = static_cast<int>(polygon.size());
        if (count < 3) {
            rounded.addPolygon(polygon);
            continue;
        }
        const bool closed = polygon.isClosed();
        const int corners = closed ? count - 1 : count;
        const auto corner = [&](int i) { return polygon[(i + corners) % corners]; };
        const auto towards = [&](QPointF from,
                                 QPointF to) {  // Half a side at most, so that neighbours do not meet.
            const QLineF line(from, to);
            return line.length() > 0 ? line.pointAt(std::min(radius / line.length(), 0.5)) : from;
        };
        if (closed)
            rounded.moveTo(towards(corner(0), corner(1)));
        else
            rounded.moveTo(corner(0));
        for (int i = 1; i < (closed ? corners + 1 : corners - 1); ++i) {
            const QPointF at = corner(i), start = towards(at, corner(i - 1)),
                          end = towards(at, corner(i + 1));
            rounded.lineTo(start);
            rounded.cubicTo(start + (at - start) * 0.5523, end + (at - end) * 0.5523, end);
        }
        if (closed)
            rounded.closeSubpath();
        else
            rounded.lineTo(corner(corners - 1));
    }
    return rounded;
}

}  // namespace norvelis::drawing::render
