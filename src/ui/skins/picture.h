#pragma once

#include <QColor>
#include <QMarginsF>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <functional>
#include <memory>

namespace norvelis::ui {

/// A picture of a skin in all its sharpnesses: the plain file and its variants for displays with more pixels
/// to the point. Painting takes the variant that fits the display. Cheap to copy; sizes are in points.
class Picture {
  public:
    Picture() = default;  ///< No picture; painting it does nothing.

    /// No picture when the file is not there or cannot be read.
    static Picture FromFile(const QString& path);
    /// Drawn by `draw` at the sharpness that is asked for.
    static Picture Drawn(QSize size, std::function<void(QPainter&)> draw);

    bool IsNull() const { return !data_; }
    QSize Size() const;
    QColor At(QPoint place) const;

    /// Fills the target.
    void Paint(QPainter& painter, const QRectF& target) const;
    /// Fills the target without distorting: what does not fit is cut off at the left and top.
    void PaintCovering(QPainter& painter, const QRectF& target) const;
    /// Fills the target with a part of the picture.
    void PaintPart(QPainter& painter, const QRectF& target, const QRectF& part) const;
    /// Fills the target as nine patches: corners keep their size, and what is between them stretches. Where
    /// the target is smaller than the picture the middle is cut instead.
    void PaintPatches(QPainter& painter, const QRectF& target, const QMarginsF& margins) const;

  private:
    struct Data;
    std::shared_ptr<Data> data_;
};

/// A border just inside `area`, whole at every sharpness of the display.
void PaintEdge(QPainter& painter, const QRectF& area, const QColor& color, double width);

}  // namespace norvelis::ui
