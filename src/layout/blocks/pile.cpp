#include "layout/blocks/pile.h"

#include <cmath>

namespace norvelis::layout {

namespace {

/// From the track over a row to its boxes.
double TapLength(double labelHeight, const Style& style) {
    return std::max(2 * style.lineGap + labelHeight, style.boxGapY - style.lineGap);
}

}  // namespace

double RowWidthFor(const std::vector<Pile::Cell>& cells, double ratio, double rowGap, const Style& style) {
    double area = 0, widest = 0;
    for (const Pile::Cell& cell : cells) {
        const double width = cell.Width() + style.boxGapX;
        area += width * (cell.Height() + style.lineGap + TapLength(cell.labelHeight, style) + rowGap);
        widest = std::max(widest, width);
    }
    return std::max(widest, std::sqrt(area * ratio));
}

Pile::Pile(const std::vector<Cell>& cells, double rowWidth, Margin margin, const Style& style)
    : side_(margin == Margin::Around ? 2 * style.lineGap : 0), places_(cells.size()) {
    constexpr double kHair = 1e-9;
    double left = 0, right = 0, y = 0;  // of the trunk
    for (std::size_t first = 0, last; first < cells.size(); first = last) {
        double width = 0, height = 0, label = 0;
        for (last = first; last < cells.size(); ++last) {
            const double more = cells[last].Width() + style.boxGapX;
            if (last > first && width + more > rowWidth + kHair) break;
            width += more;
            height = std::max(height, cells[last].Height());
            label = std::max(label, cells[last].labelHeight);
        }
        // The trunk passes all rows but the last between two boxes, as near to the middle as can be.
        double before = width / 2;
        if (last < cells.size()) {
            double passed = 0;
            before = 0;
            for (std::size_t i = first; i < last; ++i) {
                passed += cells[i].Width() + style.boxGapX;
                if (std::abs(width / 2 - passed) < std::abs(width / 2 - before)) before = passed;
            }
        }
        left = std::max(left, before);
        right = std::max(right, width - before);
        const double track = y + style.lineGap, top = track + TapLength(label, style);
        double x = -before;
        for (std::size_t i = first; i < last; ++i) {
            const Cell& cell = cells[i];
            const double step = cell.Width() + style.boxGapX;
            const double boxTop = top + cell.Top();
            places_[i] = {{x + step / 2 + cell.aside, boxTop + cell.box.height / 2},
                          boxTop,
                          (track + top) / 2,
                          tracks_.size()};
            x += step;
        }
        tracks_.push_back(track);
        y = top + height;
    }
    size_ = {left + right - style.boxGapX + 2 * side_, y + style.lineGap};
    trunk_ = (left - right) / 2;
    const double up = size_.height / 2;
    for (double& track : tracks_) track -= up;
    for (Place& place : places_) {
        place.center = place.center + Point{trunk_, -up};
        place.top -= up;
        place.label -= up;
    }
}

bool Pile::EntersFromBelow(Point entry) const {
    const double below = std::abs(size_.height / 2 - entry.y);
    return below < std::abs(size_.height / 2 + entry.y) &&
           below < std::min(std::abs(size_.width / 2 - entry.x), std::abs(size_.width / 2 + entry.x));
}

std::vector<Point> Pile::Trunk(std::size_t row, Point entry) const {
    constexpr double kTouch = 1e-6;
    if (entry.y < -size_.height / 2 + kTouch) {
        if (row == 0) return {entry, {entry.x, tracks_[0]}};
        return {entry, {entry.x, tracks_[0]}, {trunk_, tracks_[0]}, {trunk_, tracks_[row]}};
    }
    const double x = std::copysign((size_.width - side_) / 2, entry.x);
    return {entry, {x, entry.y}, {x, tracks_[row]}};
}

std::vector<Point> Pile::PathTo(std::size_t cell, Point entry) const {
    const Place& place = places_[cell];
    std::vector<Point> path = Trunk(place.row, entry);
    path.push_back({place.center.x, tracks_[place.row]});
    path.push_back({place.center.x, place.top});
    return path;
}

std::vector<Point> Pile::PathThrough(Point entry, Point exit) const {
    return {entry, {entry.x, tracks_[0]}, {trunk_, tracks_[0]}, {trunk_, exit.y}, exit};
}

}  // namespace norvelis::layout
