#include "drawing/layout/packing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace norvelis::layout {

namespace {

struct Packed {
    std::vector<Point> corners;  ///< y grows downwards from the top of the page.
    double width = 0, height = 0;
};

/// First fit decreasing height. Beneath a rectangle that is lower than its shelf, others of the same width or
/// less are stacked, so that small ones fill the room beside a great one.
Packed PackOnShelves(const std::vector<Box>& sizes, const std::vector<int>& byHeight, double pageWidth,
                     double gap) {
    struct Column {
        double x, width, used;
    };
    struct Shelf {
        double y, height, used;
        std::vector<Column> columns;
    };
    std::vector<Shelf> shelves;
    Packed packed;
    packed.corners.resize(sizes.size());
    const auto put = [&](int i, Shelf& shelf) {
        const Box& size = sizes[i];
        for (Column& column : shelf.columns) {
            if (size.width > column.width || column.used + gap + size.height > shelf.height) continue;
            packed.corners[i] = {column.x, shelf.y + column.used + gap};
            column.used += gap + size.height;
            return true;
        }
        const double x = shelf.columns.empty() ? 0 : shelf.used + gap;
        if (!shelf.columns.empty() && x + size.width > pageWidth) return false;
        packed.corners[i] = {x, shelf.y};
        shelf.columns.push_back({x, size.width, size.height});
        shelf.used = x + size.width;
        return true;
    };
    for (const int i : byHeight) {
        if (std::any_of(shelves.begin(), shelves.end(), [&](Shelf& shelf) { return put(i, shelf); }))
            continue;
        const double y = shelves.empty() ? 0 : shelves.back().y + shelves.back().height + gap;
        shelves.push_back({y, sizes[i].height, 0, {}});
        put(i, shelves.back());
    }
    for (const Shelf& shelf : shelves) {
        packed.width = std::max(packed.width, shelf.used);
        packed.height = shelf.y + shelf.height;
    }
    return packed;
}

}  // namespace

std::vector<Point> PackSideBySide(const std::vector<Box>& sizes, double gap) {
    if (sizes.empty()) return {};
    std::vector<int> byHeight(sizes.size());
    std::iota(byHeight.begin(), byHeight.end(), 0);
    std::stable_sort(byHeight.begin(), byHeight.end(),
                     [&](int a, int b) { return sizes[a].height > sizes[b].height; });
    double widest = 0, area = 0;
    for (const Box& size : sizes) {
        widest = std::max(widest, size.width);
        area += (size.width + gap) * (size.height + gap);
    }

    constexpr int trials = 24;
    constexpr double mostWide = 2.5, mostHigh = 1.25;
    Packed best;
    double bestCost = std::numeric_limits<double>::infinity();
    for (int trial = 0; trial < trials; ++trial) {
        const double pageWidth = std::max(widest, std::sqrt(area) * (0.8 + 0.06 * trial));
        Packed packed = PackOnShelves(sizes, byHeight, pageWidth, gap);
        const double outOfShape = std::max(
            {1.0, packed.width / (mostWide * packed.height), packed.height / (mostHigh * packed.width)});
        const double cost = packed.width * packed.height * outOfShape;
        if (cost < bestCost) {
            bestCost = cost;
            best = std::move(packed);
        }
    }
    for (std::size_t i = 0; i < sizes.size(); ++i)
        best.corners[i].y = best.height - best.corners[i].y - sizes[i].height;
    return best.corners;
}

}  // namespace norvelis::layout
