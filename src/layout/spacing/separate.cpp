#include "layout/spacing/separate.h"

#include <algorithm>
#include <cstddef>

namespace norvelis::layout {

std::vector<double> Separate(const std::vector<double>& wishes, const std::vector<double>& distance) {
    struct Block {
        double sum;
        int count;
        double Mean() const { return sum / count; }
    };
    std::vector<Block> blocks;
    std::vector<double> offset(wishes.size());
    for (std::size_t i = 0; i < wishes.size(); ++i) {
        offset[i] = i > 0 ? offset[i - 1] + distance[i] : 0;
        blocks.push_back({wishes[i] - offset[i], 1});
        while (blocks.size() > 1 && blocks[blocks.size() - 2].Mean() >= blocks.back().Mean()) {
            const Block last = blocks.back();
            blocks.pop_back();
            blocks.back().sum += last.sum;
            blocks.back().count += last.count;
        }
    }
    std::vector<double> places;
    for (const Block& block : blocks)
        for (int k = 0; k < block.count; ++k) places.push_back(block.Mean() + offset[places.size()]);
    return places;
}

std::vector<double> SeparateWithin(const std::vector<double>& wishes, double distance, double lo, double hi) {
    const double steps = static_cast<double>(wishes.size()) - 1;
    if (steps > 0) distance = std::min(distance, (hi - lo) / steps);
    std::vector<double> places = Separate(wishes, std::vector<double>(wishes.size(), distance));
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double first = lo + distance * static_cast<double>(i);
        places[i] =
            std::clamp(places[i], first, std::max(first, hi - (steps - static_cast<double>(i)) * distance));
    }
    return places;
}

}  // namespace norvelis::layout
