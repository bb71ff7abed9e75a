#include "layout/layered/start_orders.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace norvelis::layout {

std::vector<int> BreadthFirstOrder(const BlockOrder& blocks, int first) {
    std::vector<bool> seen(blocks.Size());
    std::vector<int> order;
    const auto meet = [&](int block) {
        if (!seen[block]) order.push_back(block);
        seen[block] = true;
    };
    meet(first);
    for (std::size_t at = 0; at < order.size(); ++at) {
        const int block = order[at];
        for (const auto& end : blocks.Below(block)) meet(end.block);
        for (const auto& end : blocks.Above(block)) meet(end.block);
    }
    for (int block = 0; block < blocks.Size(); ++block) meet(block);
    return order;
}

std::vector<int> DepthFirstOrder(const BlockOrder& blocks, int first) {
    std::vector<bool> seen(blocks.Size());
    std::vector<int> order, stack;
    const auto walkFrom = [&](int start) {
        stack.assign(1, start);
        while (!stack.empty()) {
            const int block = stack.back();
            stack.pop_back();
            if (seen[block]) continue;
            seen[block] = true;
            order.push_back(block);
            for (const auto* ends : {&blocks.Above(block), &blocks.Below(block)})
                for (auto end = ends->rbegin(); end != ends->rend(); ++end) stack.push_back(end->block);
        }
    };
    walkFrom(first);
    for (int block = 0; block < blocks.Size(); ++block) walkFrom(block);
    return order;
}

std::vector<int> SpectralOrder(const BlockOrder& blocks, int steps, std::mt19937& random) {
    const int count = blocks.Size();
    std::vector<double> value(count), next(count), degree(count);
    double lines = 0;
    for (int i = 0; i < count; ++i) {
        value[i] = static_cast<double>(random()) / std::mt19937::max() - 0.5;
        for (const auto* ends : {&blocks.Above(i), &blocks.Below(i)})
            for (const auto& end : *ends) degree[i] += end.weight;
        lines += degree[i];
    }
    for (int step = 0; step < steps && lines > 0; ++step) {
        double mean = 0, square = 0;  // the constant mode is taken out, and the size kept
        for (int i = 0; i < count; ++i) mean += degree[i] * value[i] / lines;
        for (double& v : value) square += (v - mean) * (v - mean);
        const double scale = square > 0 ? 1 / std::sqrt(square) : 1;
        for (double& v : value) v = (v - mean) * scale;
        for (int i = 0; i < count; ++i) {
            double sum = 0;
            for (const auto* ends : {&blocks.Above(i), &blocks.Below(i)})
                for (const auto& end : *ends) sum += end.weight * value[end.block];
            next[i] = degree[i] > 0 ? (value[i] + sum / degree[i]) / 2 : value[i];
        }
        value.swap(next);
    }
    std::vector<int> order(count);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return value[a] < value[b]; });
    return order;
}

}  // namespace norvelis::layout
