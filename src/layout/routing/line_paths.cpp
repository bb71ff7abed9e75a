#include "layout/routing/line_paths.h"

#include <cstddef>
#include <numeric>

namespace norvelis::layout {

std::vector<int> ShortLinesFirst(const std::vector<Rect>& boxes, const std::vector<Line>& lines) {
    std::vector<double> lengths;
    for (const Line& line : lines) {
        const Point path = boxes[static_cast<std::size_t>(line.to)].Center() -
                           boxes[static_cast<std::size_t>(line.from)].Center();
        lengths.push_back(std::abs(path.x) + std::abs(path.y));
    }
    std::vector<int> order(lines.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return lengths[static_cast<std::size_t>(a)] < lengths[static_cast<std::size_t>(b)];
    });
    return order;
}

}  // namespace norvelis::layout
