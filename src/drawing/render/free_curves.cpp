#include "drawing/render/free_curves.h"

#include <QLineF>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

#include "drawing/model/cell.h"

namespace norvelis::drawing::render {

namespace {

constexpr int kHighestDegree = 25;  // As the file format has it.
constexpr int kCurvesOfASpan = 4;   // Cubic curves in place of one span between knots.

/// A point with its weight; the coordinates are multiplied by it.
struct Weighted {
    double x = 0, y = 0, w = 0;
    static Weighted Of(QPointF point, double weight) {
        return {point.x() * weight, point.y() * weight, weight};
    }
    Weighted operator+(const Weighted& o) const { return {x + o.x, y + o.y, w + o.w}; }
    Weighted operator-(const Weighted& o) const { return {x - o.x, y - o.y, w - o.w}; }
    Weighted operator*(double f) const { return {x * f, y * f, w * f}; }
};

struct Curve {
    std::vector<Weighted> points;
    std::vector<double> knots;
    int degree = 0;

    bool IsSound() const {
        return degree >= 1 && degree <= kHighestDegree && points.size() > static_cast<std::size_t>(degree) &&
               knots.size() == points.size() + static_cast<std::size_t>(degree) + 1 &&
               std::is_sorted(knots.begin(), knots.end()) &&
               std::all_of(points.begin(), points.end(), [](const Weighted& each) { return each.w > 0; });
    }

    /// Knots of a file that leave no space for the curve are replaced by evenly spaced ones between its ends.
    void MendKnots() {
        const auto p = static_cast<std::size_t>(degree);
        if (!IsSound() || knots[p] < knots[points.size()]) return;
        for (std::size_t i = 0; i < knots.size(); ++i)
            knots[i] = static_cast<double>(std::clamp(i, p, points.size()));
    }

    /// The curve's point before division by its weight (de Boor), in the span that begins at knot `span`.
    Weighted At(std::size_t span, double u) const {
        const auto p = static_cast<std::size_t>(degree);
        std::vector<Weighted> d(points.begin() + static_cast<std::ptrdiff_t>(span - p),
                                points.begin() + static_cast<std::ptrdiff_t>(span) + 1);
        for (std::size_t r = 1; r <= p; ++r) {
            for (std::size_t j = p; j >= r; --j) {
                const double low = knots[span - p + j], high = knots[span + 1 + j - r];
                const double share = high > low ? (u - low) / (high - low) : 0;
                d[j] = d[j - 1] * (1 - share) + d[j] * share;
            }
        }
        return d[p];
    }

    /// Curve of the derivatives of x, y and weight.
    Curve Derivative() const {
        Curve slope;
        slope.degree = degree - 1;
        slope.knots.assign(knots.begin() + 1, knots.end() - 1);
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const double length = knots[i + static_cast<std::size_t>(degree) + 1] - knots[i + 1];
            slope.points.push_back(length > 0 ? (points[i + 1] - points[i]) * (degree / length) : Weighted());
        }
        return slope;
    }
};

/// Straight lines for degree 1, otherwise cubic curves with the right points and directions at their ends:
/// exact for cubic curves without weights, very near for all others.
void AddCurve(QPainterPath& path, const Curve& curve) {
    const Curve slope = curve.Derivative();
    const auto p = static_cast<std::size_t>(curve.degree);
    const auto point = [](const Weighted& at) { return QPointF(at.x / at.w, at.y / at.w); };
    for (std::size_t span = p; span < curve.points.size(); ++span) {
        const double from = curve.knots[span], length = curve.knots[span + 1] - from;
        if (!(length > 0)) continue;
        const auto direction = [&](double u) {
            const Weighted at = curve.At(span, u), by = slope.At(span - 1, u);
            return (QPointF(by.x, by.y) - point(at) * by.w) / at.w;
        };
        const int curves = p == 1 ? 1 : kCurvesOfASpan;
        const double step = length / curves;
        for (int part = 0; part < curves; ++part) {
            const double u = from + part * step, v = part + 1 == curves ? from + length : u + step;
            const QPointF start = point(curve.At(span, u)), end = point(curve.At(span, v));
            if (p == 1)
                path.lineTo(end);
            else
                path.cubicTo(start + direction(u) * (step / 3), end - direction(v) * (step / 3), end);
        }
    }
    const QPointF end = point(curve.points.back());  // A file's knots may keep the curve off it.
    if (QLineF(path.currentPosition(), end).length() > 1e-6) path.lineTo(end);
}

/// The numbers of "NAME(1,2,3)"; nothing when it is not that.
std::optional<std::vector<double>> Arguments(std::string_view data, std::string_view name) {
    if (!data.starts_with(name) || data.size() < name.size() + 2 || data[name.size()] != '(')
        return std::nullopt;
    data.remove_prefix(name.size() + 1);
    std::vector<double> numbers;
    for (;;) {
        data.remove_prefix(std::min(data.find_first_not_of(' '), data.size()));
        double number = 0;
        const auto [end, error] = std::from_chars(data.data(), data.data() + data.size(), number);
        if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
        numbers.push_back(std::clamp(number, -kFarthest, kFarthest));
        data.remove_prefix(static_cast<std::size_t>(end - data.data()));
        data.remove_prefix(std::min(data.find_first_not_of(' '), data.size()));
        if (data.empty() || (data[0] != ',' && data[0] != ';')) break;
        data.remove_prefix(1);
    }
    return data == ")" ? std::optional(numbers) : std::nullopt;
}

/// Coordinates of such a list are fractions of the shape's size when their kind is 0, lengths when it is 1.
double Length(double value, double kind, double size) {
    return kind == 0 ? value * size : value;
}

}  // namespace

void AddNurbs(QPainterPath& path, const OutlineRow& row, double width, double height) {
    // Last knot, degree, kinds of x and y; then x, y, knot and weight of each point between the ends.
    const auto numbers = Arguments(row.data, "NURBS");
    const QPointF end(row.x, row.y);
    if (!numbers || numbers->size() < 4 || numbers->size() % 4 != 0) return path.lineTo(end);
    const std::vector<double>& n = *numbers;
    Curve curve;
    curve.degree = static_cast<int>(n[1]);
    curve.points.push_back(Weighted::Of(path.currentPosition(), row.d));
    curve.knots.push_back(row.c);
    for (std::size_t i = 4; i < n.size(); i += 4) {
        curve.points.push_back(
            Weighted::Of({Length(n[i], n[2], width), Length(n[i + 1], n[3], height)}, n[i + 3]));
        curve.knots.push_back(n[i + 2]);
    }
    curve.points.push_back(Weighted::Of(end, row.b));
    curve.knots.push_back(row.a);
    if (curve.degree < 1 || curve.degree > kHighestDegree) return path.lineTo(end);
    curve.knots.resize(curve.points.size() + static_cast<std::size_t>(curve.degree) + 1, n[0]);
    curve.MendKnots();
    if (!curve.IsSound()) return path.lineTo(end);
    AddCurve(path, curve);
}

void AddPolyline(QPainterPath& path, const OutlineRow& row, double width, double height) {
    const auto numbers = Arguments(row.data, "POLYLINE");
    if (numbers && numbers->size() >= 2) {
        const std::vector<double>& n = *numbers;
        for (std::size_t i = 2; i + 1 < n.size(); i += 2)
            path.lineTo(Length(n[i], n[0], width), Length(n[i + 1], n[1], height));
    }
    path.lineTo(row.x, row.y);
}

Spline::Spline(QPointF from, const OutlineRow& start)
    : points_{from, {start.x, start.y}},
      knots_{start.b, start.a},
      lastKnot_(start.c),
      degree_(static_cast<int>(start.d)) {}

void Spline::AddKnot(const OutlineRow& knot) {
    points_.emplace_back(knot.x, knot.y);
    knots_.push_back(knot.a);
}

void Spline::AddTo(QPainterPath& path) {
    if (points_.empty()) return;
    Curve curve;
    curve.degree = std::clamp(degree_, 0, kHighestDegree);
    for (const QPointF& point : points_) curve.points.push_back(Weighted::Of(point, 1));
    curve.knots = knots_;
    curve.knots.resize(curve.points.size() + static_cast<std::size_t>(curve.degree) + 1, lastKnot_);
    curve.MendKnots();
    if (degree_ > 0 && curve.IsSound()) {
        AddCurve(path, curve);
    } else {
        for (const QPointF& point : points_) path.lineTo(point);
    }
    points_.clear();
}

}  // namespace norvelis::drawing::render
