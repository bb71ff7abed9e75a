#include "layout/former/former_places.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

namespace norvelis::layout {

bool FormerPlaces::AreMost() const {
    const auto known = static_cast<std::size_t>(
        std::count_if(centers.begin(), centers.end(), [](const auto& center) { return center.has_value(); }));
    return known > 0 && 3 * known >= 2 * centers.size();
}

FormerPlaces PartOf(const FormerPlaces& former, const Component& component) {
    FormerPlaces part;
    if (former.centers.empty()) return part;
    for (const int box : component.boxes)
        part.centers.push_back(former.centers[static_cast<std::size_t>(box)]);
    for (const int line : component.lines)
        part.routes.push_back(former.routes[static_cast<std::size_t>(line)]);
    return part;
}

std::vector<int> RowsOf(const std::vector<Rect>& boxes) {
    std::vector<std::size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto middle = [&](std::size_t box) { return boxes[box].Center().y; };
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return middle(a) < middle(b); });
    std::vector<int> rows(boxes.size());
    int row = -1;
    double first = 0, least = 0;
    for (const std::size_t box : order) {
        const double height = boxes[box].Height();
        if (row < 0 || middle(box) - first > std::min(least, height) / 2) {
            ++row;
            first = middle(box);
            least = height;
        }
        least = std::min(least, height);
        rows[box] = row;
    }
    return rows;
}

bool AreInRows(const Graph& graph, const FormerPlaces& former) {
    constexpr double kHair = 1e-3;
    std::vector<Rect> boxes;
    for (std::size_t i = 0; i < former.centers.size(); ++i)
        if (former.centers[i])
            boxes.push_back(RectAround(*former.centers[i], graph.boxes[i].width, graph.boxes[i].height));
    std::sort(boxes.begin(), boxes.end(),
              [](const Rect& a, const Rect& b) { return a.Center().y < b.Center().y; });
    double middle = -std::numeric_limits<double>::infinity(), top = middle, topOfRow = middle;
    for (const Rect& box : boxes) {
        if (std::abs(box.Center().y - middle) > kHair) {
            middle = box.Center().y;
            top = topOfRow;
        }
        if (box.y0 < top) return false;
        topOfRow = std::max(topOfRow, box.y1);
    }
    return true;
}

}  // namespace norvelis::layout
