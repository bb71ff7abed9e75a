#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

class QPainter;

namespace norvelis::ui {

/// A drawing file made ready to be shown; made and first painted in a thread of its own, used by one thread
/// at a time. Places are in page units, y downwards from the upper left corner.
class DrawingPicture {
  public:
    struct Shape {
        QString name, tip;
        QString address;  ///< Where its link leads; empty for none.
        QRectF bounds;
    };

    virtual ~DrawingPicture() = default;
    virtual QSizeF PageSize() const = 0;
    virtual double UnitsPerInch() const = 0;
    /// Paints `view`, a rectangle in pixels of the page at `scale` (pixels to the unit), so that its corner
    /// falls on the painter's origin.
    virtual void Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio) = 0;
    /// The frontmost shape at a place or within `slack` of it.
    virtual std::optional<Shape> ShapeAt(QPointF place, double slack) const = 0;
    /// Letter case does not count.
    virtual std::optional<Shape> ShapeNamed(const QString& name) const = 0;
};

/// Reads a drawing file; RuntimeFailure with the reason when it can not be shown.
using OpenDrawing = std::function<std::unique_ptr<DrawingPicture>(const QString& path)>;

}  // namespace norvelis::ui
