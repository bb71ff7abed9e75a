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

Pile::Pile(const std::vector<Cell>& cells, const std::vector<std::size_t>& rows, Trunk trunk,
           const Style& style)
    : side_(trunk == Trunk::FromAnywhere ? 2 * style.lineGap : 0), places_(cells.size()) {
    double left = 0, right = 0, y = 0;  // of the trunk
    std::size_t first = 0;
    for (const std::size_t length : rows) {
        const std::size_t last = first + length;
        double width = 0, height = 0, label = 0;
        for (std::size_t i = first; i < last; ++i) {
            width += cells[i].Width() + style.boxGapX;
            height = std::max(height, cells[i].Height());
            label = std::max(label, cells[i].labelHeight);
        }
        // The trunk passes rows between two boxes, as near to the middle as can be.
        double before = width / 2;
        if (last < cells.size() || trunk == Trunk::GoesOn) {
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
        first = last;
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

std::vector<Point> Pile::TrunkTo(std::size_t row, Point entry) const {
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
    std::vector<Point> path = TrunkTo(place.row, entry);
    path.push_back({place.center.x, tracks_[place.row]});
    path.push_back({place.center.x, place.top});
    return path;
}

std::vector<Point> Pile::PathThrough(Point entry, Point exit) const {
    return {entry, {entry.x, tracks_[0]}, {trunk_, tracks_[0]}, {trunk_, exit.y}, exit};
}

}  // namespace norvelis::layout
