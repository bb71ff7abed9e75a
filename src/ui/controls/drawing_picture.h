#pragma once

#include <QImage>
#include <QRect>
#include <QSizeF>
#include <QString>
#include <functional>
#include <memory>

#include "drawing/walk/page_walk.h"

class QPainter;

namespace norvelis::ui {

/// A page of a drawing file made ready to be shown; made and first painted in a thread of its own, used by
/// one thread at a time. Places are in page units, y downwards from the upper left corner.
class DrawingPicture {
  public:
    virtual ~DrawingPicture() = default;
    virtual QSizeF PageSize() const = 0;
    virtual double UnitsPerInch() const = 0;
    /// The whole page, small.
    virtual const QImage& Overview() const = 0;

    /// What is to be called, in any thread, when more of what Paint was asked for is ready.
    virtual void OnReady(std::function<void()> ready) = 0;
    /// Makes `view` ready, a rectangle in pixels of the page at `scale` (pixels to the unit).
    virtual void Prepare(const QRect& view, double scale, double devicePixelRatio) = 0;
    /// Paints the view so that its corner falls on the painter's origin. It does not wait: what is not ready
    /// is blurred at first, and the answer is then false.
    virtual bool Paint(QPainter& painter, const QRect& view, double scale, double devicePixelRatio) = 0;
};

/// A drawing file that was read: one page or more, counted from 0. It does not change; any thread may use it.
class DrawingPages {
  public:
    virtual ~DrawingPages() = default;
    virtual int Count() const = 0;
    virtual QString Name(int page) const = 0;
    virtual const drawing::walk::PageWalk& Walk(int page) const = 0;
    /// Takes a while with a large page. There is one picture of a page at a time.
    virtual std::unique_ptr<DrawingPicture> Picture(int page) const = 0;
};

/// Reads a drawing file; RuntimeFailure with the reason when it can not be shown.
using OpenDrawing = std::function<std::shared_ptr<const DrawingPages>(const QString& path)>;

}  // namespace norvelis::ui
