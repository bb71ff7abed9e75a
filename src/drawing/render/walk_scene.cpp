#include "drawing/render/walk_scene.h"

#include <QPolygonF>

namespace norvelis::drawing::render {

namespace {

Point PointOf(QPointF at) {
    return {at.x(), at.y()};
}

Rect RectOf(const QRectF& rect) {
    return {rect.left(), rect.top(), rect.right(), rect.bottom()};
}

Rect Around(const Rect& a, const Rect& b) {
    return {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
}

walk::Outline OutlineOf(const QPolygonF& polygon, double width, bool filled) {
    walk::Outline outline{{}, width, filled};
    outline.points.reserve(static_cast<std::size_t>(polygon.size()));
    for (const QPointF& at : polygon) outline.points.push_back(PointOf(at));
    return outline;
}

void AddMark(const Mark& mark, walk::PageShape& shape) {
    if (mark.clipped) return;
    const bool filled = mark.fill.style() != Qt::NoBrush;
    const double width = mark.line.style() == Qt::NoPen ? 0 : std::max(mark.line.widthF(), 1e-3);
    if (!filled && width <= 0) return;
    for (const QPolygonF& polygon : mark.path.toSubpathPolygons())
        shape.outlines.push_back(OutlineOf(polygon, width, filled));
}

void AddFigure(const Figure& figure, walk::PageShape& shape) {
    const Rect bounds = RectOf(figure.bounds);
    shape.bounds = shape.outlines.empty() && !shape.label ? bounds : Around(shape.bounds, bounds);
    for (const Mark& mark : figure.marks) AddMark(mark, shape);
    if (!figure.picture.isNull())
        shape.outlines.push_back(OutlineOf(figure.picturePlace.map(QPolygonF(QRectF(0, 0, 1, 1))), 0, true));
    if (figure.text.fragments.empty()) return;
    const Rect text = RectOf(figure.text.place.mapRect(figure.text.bounds));
    shape.label = shape.label ? Around(*shape.label, text) : text;
}

}  // namespace

walk::PageWalk WalkOf(const Scene& scene) {
    std::vector<walk::PageShape> shapes(scene.shapes.size());
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const ShapeOnPage& from = scene.shapes[i];
        shapes[i].name = from.name.toStdString();
        shapes[i].text = from.text.toStdString();
        shapes[i].tip = from.tip.toStdString();
        shapes[i].address = from.address.toStdString();
        shapes[i].locked = from.locked;
        shapes[i].begin = from.begin;
        shapes[i].end = from.end;
    }
    for (const Figure& figure : scene.figures) {
        if (figure.onPage >= 0) AddFigure(figure, shapes[static_cast<std::size_t>(figure.onPage)]);
    }
    return {std::move(shapes), RectOf(QRectF(QPointF(), scene.size))};
}

}  // namespace norvelis::drawing::render
