#include "ui/frame/arrange.h"

#include <algorithm>
#include <cmath>

namespace norvelis::ui {

namespace {

constexpr double kUsualShape = 850.0 / 510;
constexpr int kStep = 40;  // A caption's height.

int Columns(QSize area, QSize smallest, int count) {
    int best = 1;
    double bestCost = 1e9;
    for (int columns = 1; columns <= count; ++columns) {
        const int rows = (count + columns - 1) / columns;
        const double width = static_cast<double>(area.width()) / columns,
                     height = static_cast<double>(area.height()) / rows;
        const double hidden = std::max(0.0, smallest.width() - width) / area.width() +
                              std::max(0.0, smallest.height() - height) / area.height();
        constexpr double kWorse = 1e3;  // Than any shape.
        const double cost = kWorse * hidden + std::abs(std::log(width / height / kUsualShape));
        if (cost < bestCost) {
            bestCost = cost;
            best = columns;
        }
    }
    return best;
}

}  // namespace

std::vector<QRect> Tiles(QSize area, const std::vector<QSize>& smallest) {
    const int count = static_cast<int>(smallest.size());
    if (count == 0 || area.isEmpty()) return {};
    QSize largest;
    for (const QSize& size : smallest) largest = largest.expandedTo(size);
    const int columns = Columns(area, largest, count), rows = (count + columns - 1) / columns;
    std::vector<QRect> places;
    for (int i = 0; i < count; ++i) {
        const int row = i / columns, column = i % columns;
        const int inRow = std::min(columns, count - row * columns);  // The last row may have fewer.
        const auto part = [](int length, int at, int parts) { return length * at / parts; };
        QRect place(
            QPoint(part(area.width(), column, inRow), part(area.height(), row, rows)),
            QPoint(part(area.width(), column + 1, inRow) - 1, part(area.height(), row + 1, rows) - 1));
        const QSize& least = smallest[static_cast<std::size_t>(i)];
        place.setSize(place.size().expandedTo(least));
        place.moveTo(std::max(0, std::min(place.x(), area.width() - place.width())),
                     std::max(0, std::min(place.y(), area.height() - place.height())));
        places.push_back(place);
    }
    return places;
}

std::vector<QRect> Cascade(QSize area, const std::vector<QSize>& sizes) {
    std::vector<QRect> places;
    QPoint corner;
    for (const QSize& size : sizes) {
        const QRect place(corner, size);
        const bool fits = place.right() < area.width() && place.bottom() < area.height();
        if (!fits) corner = QPoint();
        places.emplace_back(corner, size);
        corner += QPoint(kStep, kStep);
    }
    return places;
}

}  // namespace norvelis::ui
