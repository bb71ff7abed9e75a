#include "drawing/render/scene.h"

namespace norvelis::drawing::render {

namespace {

bool Meets(const Mark& mark, QPointF point, double slack) {
    if (mark.clipped) return false;
    if (mark.fill.style() != Qt::NoBrush && mark.path.contains(point)) return true;
    if (mark.line.style() == Qt::NoPen) return false;
    QPainterPathStroker stroker;
    stroker.setWidth(mark.line.widthF() + 2 * slack);
    return stroker.createStroke(mark.path).contains(point);
}

bool Meets(const Figure& figure, QPointF point, double slack) {
    for (const Mark& mark : figure.marks) {
        if (Meets(mark, point, slack)) return true;
    }
    if (!figure.picture.isNull() && figure.picturePlace.mapRect(QRectF(0, 0, 1, 1)).contains(point))
        return true;
    return !figure.text.fragments.empty() && figure.text.place.mapRect(figure.text.bounds).contains(point);
}

}  // namespace

const Figure* Scene::At(QPointF point, double slack) const {
    for (auto figure = figures.rbegin(); figure != figures.rend(); ++figure) {
        if (!figure->locked && figure->bounds.adjusted(-slack, -slack, slack, slack).contains(point) &&
            Meets(*figure, point, slack))
            return &*figure;
    }
    return nullptr;
}

}  // namespace norvelis::drawing::render
