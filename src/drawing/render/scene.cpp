#include "drawing/render/scene.h"

namespace norvelis::drawing::render {

const Figure* Scene::At(QPointF point, double slack) const {
    const QRectF around(point.x() - slack, point.y() - slack, 2 * slack, 2 * slack);
    for (auto figure = figures.rbegin(); figure != figures.rend(); ++figure) {
        if (!figure->bounds.adjusted(-slack, -slack, slack, slack).contains(point)) continue;
        if (slack > 0 ? figure->touch.intersects(around) : figure->touch.contains(point)) return &*figure;
    }
    return nullptr;
}

}  // namespace norvelis::drawing::render
