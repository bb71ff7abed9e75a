#pragma once

#include <QBrush>
#include <QColor>
#include <QPainterPath>
#include <QPen>
#include <optional>

// Fills, lines and line ends by the published numbers of the fill, line and arrow cells. Lengths are scene
// units.
namespace norvelis::drawing::render {

/// The scene's unit is a tenth of a point: font sizes stay whole numbers of pixels, and any output scales
/// down.
inline constexpr double kUnitsPerInch = 720;
inline constexpr double kUnitsPerPoint = 10;

struct FillStyle {
    int pattern = 1;  ///< 0 none, 1 solid, 2 to 24 hatches, 25 to 40 gradients.
    QColor foreground, background;
};

/// Solid and gradient fills as a brush; a hatch gives its ground, the lines come from HatchLines.
QBrush FillBrush(const FillStyle& style);

/// The strokes of a hatch over `area`, to be clipped to the outline. Nothing for other patterns.
std::optional<QPainterPath> HatchLines(int pattern, const QRectF& area);

struct LineStyle {
    int pattern = 1;  ///< 0 none, 1 solid, 2 to 23 dashes.
    double weight = 0;
    QColor color;
    int cap = 0;  ///< 0 round, 1 square (flat ends), 2 extended.
};

QPen LinePen(const LineStyle& style);

struct LineEnd {
    QPainterPath path;   ///< Where it is on the line.
    bool filled = true;  ///< With the line's colour; otherwise drawn with it.
    double cut = 0;      ///< What the line is to be shortened by, so that it does not show beside the tip.
};

/// The end `arrow` (0 none, 1 to 45) of `size` (0 very small to 6 colossal) for a line of `weight` that
/// arrives at `tip` from `from`.
std::optional<LineEnd> MakeLineEnd(int arrow, int size, double weight, QPointF from, QPointF tip);

}  // namespace norvelis::drawing::render
