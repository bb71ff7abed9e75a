#include "drawing/render/ink.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace norvelis::drawing::render {

namespace {

QBrush Gradient(QGradient* gradient, const FillStyle& style, bool mirrored) {
    gradient->setCoordinateMode(QGradient::ObjectMode);
    gradient->setColorAt(mirrored ? 0.5 : 0, style.foreground);
    gradient->setColorAt(1, style.background);
    if (mirrored) gradient->setColorAt(0, style.background);
    return QBrush(*gradient);
}

/// From one corner or side of the outline's box to another.
QBrush Linear(const FillStyle& style, QPointF from, QPointF to, bool mirrored = false) {
    QLinearGradient gradient(from, to);
    return Gradient(&gradient, style, mirrored);
}

QBrush Radial(const FillStyle& style, QPointF center, double radius) {
    QRadialGradient gradient(center, radius);
    return Gradient(&gradient, style, false);
}

/// A family of parallel strokes: their direction and distance.
struct Strokes {
    double degrees, distance;
};

std::vector<Strokes> HatchOf(int pattern) {
    switch (pattern) {
        case 2:
            return {{45, 60}};
        case 3:
            return {{0, 60}, {90, 60}};
        case 4:
            return {{45, 60}, {135, 60}};
        case 5:
            return {{135, 60}};
        case 6:
            return {{0, 60}};
        case 7:
            return {{90, 60}};
        case 13:
        case 19:
            return {{0, 30}};
        case 14:
        case 20:
            return {{90, 30}};
        case 15:
        case 21:
            return {{135, 30}};
        case 16:
        case 22:
            return {{45, 30}};
        case 17:
            return {{0, 30}, {90, 30}};
        case 18:
            return {{45, 30}, {135, 30}};
        default:
            return {{0, 20}, {90, 20}};  // Screens and bricks: a close net.
    }
}

/// Lengths of dashes and gaps in line widths. Seven rhythms (2 to 8), the same short (9 to 15) and long (16
/// to 22), and fine dots.
QList<qreal> DashesOf(int pattern) {
    const qreal dot = 1, dash = 6, longDash = 14, gap = 4;
    static const QList<qreal> rhythms[] = {{dash, gap},
                                           {dot, 3},
                                           {dash, gap, dot, gap},
                                           {dash, gap, dot, gap, dot, gap},
                                           {dash, gap, dash, gap, dot, gap},
                                           {longDash, gap, dash, gap},
                                           {longDash, gap, dash, gap, dash, gap}};
    if (pattern < 2 || pattern > 22) return {dot, 1};
    QList<qreal> dashes = rhythms[(pattern - 2) % 7];
    const qreal scale = pattern < 9 ? 1 : pattern < 16 ? 0.5 : 2;
    for (qreal& length : dashes) length = std::max(length * scale, dot);
    return dashes;
}

enum class End {
    Triangle,
    Sharp,
    Open,
    Circle,
    Square,
    Diamond,
    Slash,
    BackSlash,
    Bar,
    TwoBars,
    Crow,
    BarAndCrow,
    CircleAndCrow,
    CircleAndBar,
    TwoTriangles,
};

struct EndKind {
    End shape;
    bool filled;
};

/// By the published numbers; what differs in angle alone is drawn alike.
constexpr EndKind kEnds[] = {
    {End::Open, false},        {End::Triangle, true},       {End::Open, false},          // 1 to 3
    {End::Triangle, true},     {End::Sharp, true},          {End::Triangle, true},       // 4 to 6
    {End::Open, false},        {End::Sharp, true},          {End::Slash, false},         // 7 to 9
    {End::Circle, true},       {End::Square, true},         {End::Open, false},          // 10 to 12
    {End::Sharp, true},        {End::Triangle, false},      {End::Triangle, false},      // 13 to 15
    {End::Triangle, false},    {End::Sharp, false},         {End::Sharp, false},         // 16 to 18
    {End::Sharp, false},       {End::Circle, false},        {End::Square, false},        // 19 to 21
    {End::Diamond, false},     {End::BackSlash, false},     {End::Bar, false},           // 22 to 24
    {End::TwoBars, false},     {End::TwoBars, false},       {End::Crow, false},          // 25 to 27
    {End::BarAndCrow, false},  {End::CircleAndCrow, false}, {End::CircleAndBar, false},  // 28 to 30
    {End::Circle, false},      {End::Circle, false},        {End::Circle, false},        // 31 to 33
    {End::Circle, false},      {End::Circle, true},         {End::Circle, true},         // 34 to 36
    {End::Circle, true},       {End::Circle, true},         {End::TwoTriangles, true},   // 37 to 39
    {End::TwoTriangles, true}, {End::Circle, false},        {End::Circle, true},         // 40 to 42
    {End::Open, false},        {End::Open, false},          {End::Open, false},          // 43 to 45
};

}  // namespace

QBrush FillBrush(const FillStyle& style) {
    const QPointF left(0, 0.5), right(1, 0.5), top(0.5, 0), bottom(0.5, 1), middle(0.5, 0.5);
    switch (style.pattern) {
        case 0:
            return Qt::NoBrush;
        case 25:
            return Linear(style, left, right);
        case 26:
            return Linear(style, left, right, true);
        case 27:
            return Linear(style, right, left);
        case 28:
            return Linear(style, top, bottom);
        case 29:
            return Linear(style, top, bottom, true);
        case 30:
            return Linear(style, bottom, top);
        case 31:
            return Linear(style, {0, 0}, {1, 1});
        case 32:
            return Linear(style, {1, 0}, {0, 1});
        case 33:
            return Linear(style, {0, 1}, {1, 0});
        case 34:
            return Linear(style, {1, 1}, {0, 0});
        case 36:
            return Radial(style, {0, 0}, 1.4);
        case 37:
            return Radial(style, {1, 0}, 1.4);
        case 38:
            return Radial(style, {0, 1}, 1.4);
        case 39:
            return Radial(style, {1, 1}, 1.4);
        case 35:
        case 40:
            return Radial(style, middle, 0.7);
        default:
            return style.pattern == 1 ? style.foreground : style.background;
    }
}

std::optional<QPainterPath> HatchLines(int pattern, const QRectF& area) {
    if (pattern < 2 || pattern > 24 || area.isEmpty()) return std::nullopt;
    QPainterPath lines;
    const QPointF center = area.center();
    const double reach = std::hypot(area.width(), area.height()) / 2;
    for (const Strokes& strokes : HatchOf(pattern)) {
        const double turn = strokes.degrees * std::numbers::pi / 180;
        const QPointF along(std::cos(turn), -std::sin(turn)), across(along.y(), -along.x());
        const double distance =
            std::max(strokes.distance, reach / 200);  // Never more than some hundred strokes.
        for (double at = -reach; at <= reach; at += distance) {
            lines.moveTo(center + across * at - along * reach);
            lines.lineTo(center + across * at + along * reach);
        }
    }
    return lines;
}

QPen LinePen(const LineStyle& style) {
    if (style.pattern == 0) return Qt::NoPen;
    QPen pen(style.color, std::max(style.weight, 1.0));
    pen.setCapStyle(style.cap == 0 ? Qt::RoundCap : style.cap == 1 ? Qt::FlatCap : Qt::SquareCap);
    pen.setJoinStyle(style.cap == 0 ? Qt::RoundJoin : Qt::MiterJoin);
    if (style.pattern > 1) {
        pen.setDashPattern(DashesOf(style.pattern));
        if (style.cap == 0) pen.setCapStyle(Qt::FlatCap);
    }
    return pen;
}

std::optional<LineEnd> MakeLineEnd(int arrow, int size, double weight, QPointF from, QPointF tip) {
    const QPointF way = tip - from;
    const double distance = std::hypot(way.x(), way.y());
    if (arrow < 1 || arrow > static_cast<int>(std::size(kEnds)) || distance <= 0) return std::nullopt;
    constexpr std::array kFactors = {0.6, 0.8, 1.0, 1.25, 1.6, 2.2, 3.0};
    const double factor = kFactors[static_cast<std::size_t>(std::clamp(size, 0, 6))];
    const double length = (3 * weight + 3 * kUnitsPerPoint) * factor, half = length * 0.42;
    const QPointF along = way / distance, across(-along.y(), along.x());
    const auto at = [&](double back, double side) { return tip - along * back + across * side; };

    LineEnd end;
    const auto stroke = [&end](const QPolygonF& points) { end.path.addPolygon(points); };
    const auto bar = [&](double back) { stroke({at(back, half), at(back, -half)}); };
    const auto crow = [&] { stroke({at(0, half), at(length, 0), at(0, -half)}); };  // One line becomes three.

    const EndKind kind = kEnds[arrow - 1];
    end.filled = kind.filled;
    switch (kind.shape) {
        case End::Triangle:
            end.path.addPolygon(QPolygonF{at(0, 0), at(length, half), at(length, -half), at(0, 0)});
            end.cut = length * 0.9;
            break;
        case End::Sharp:
            end.path.addPolygon(QPolygonF{at(0, 0), at(length * 1.15, half * 0.85), at(length * 0.85, 0),
                                          at(length * 1.15, -half * 0.85), at(0, 0)});
            end.cut = length * 0.8;
            break;
        case End::Open:
            end.path.addPolygon(QPolygonF{at(length, half), at(0, 0), at(length, -half)});
            break;
        case End::Circle:
            end.path.addEllipse(tip, half, half);
            end.cut = kind.filled ? 0 : half;
            break;
        case End::Square:
            end.path.addPolygon(QPolygonF{at(-half, half), at(half, half), at(half, -half), at(-half, -half),
                                          at(-half, half)});
            end.cut = kind.filled ? 0 : half;
            break;
        case End::Diamond:
            end.path.addPolygon(
                QPolygonF{at(0, 0), at(half, half), at(2 * half, 0), at(half, -half), at(0, 0)});
            end.cut = 2 * half;
            break;
        case End::Slash:
            stroke({at(-half, -half), at(half, half)});
            break;
        case End::BackSlash:
            stroke({at(half, -half), at(-half, half)});
            break;
        case End::Bar:
            bar(half);
            break;
        case End::TwoBars:
            bar(half);
            bar(length);
            break;
        case End::Crow:
            crow();
            break;
        case End::BarAndCrow:
            crow();
            bar(length + half);
            break;
        case End::CircleAndCrow:
            crow();
            end.path.addEllipse(at(length + half, 0), half, half);
            break;
        case End::CircleAndBar:
            bar(half);
            end.path.addEllipse(at(length + half, 0), half, half);
            break;
        case End::TwoTriangles:
            for (const double back : {0.0, length}) {
                end.path.addPolygon(
                    QPolygonF{at(back, 0), at(back + length, half), at(back + length, -half), at(back, 0)});
            }
            end.cut = length * 0.9;
            break;
    }
    end.cut = std::min(end.cut, distance * 0.9);
    return end;
}

}  // namespace norvelis::drawing::render
