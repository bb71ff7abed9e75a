#include "layout/graph/components.h"

#include <numeric>

namespace norvelis::layout {

namespace {

/// Disjoint sets with path halving; the least member represents its set.
class Sets {
  public:
    explicit Sets(std::size_t count) : parent_(count) { std::iota(parent_.begin(), parent_.end(), 0); }

    int Find(int i) {
        while (parent_[i] != i) i = parent_[i] = parent_[parent_[i]];
        return i;
    }
    void Join(int a, int b) {
        a = Find(a);
        b = Find(b);
        if (a < b) {
            parent_[b] = a;
        } else {
            parent_[a] = b;
        }
    }

  private:
    std::vector<int> parent_;
};

}  // namespace

std::vector<Component> ComponentsOf(const Graph& graph) {
    const int count = static_cast<int>(graph.boxes.size());
    const auto isBox = [&](int i) { return i >= 0 && i < count; };
    Sets sets(graph.boxes.size());
    for (const Line& line : graph.lines)
        if (isBox(line.from) && isBox(line.to)) sets.Join(line.from, line.to);

    std::vector<Component> components;
    std::vector<int> componentOf(graph.boxes.size()), place(graph.boxes.size());
    for (int i = 0; i < count; ++i) {
        const int first = sets.Find(i);
        if (first == i) {
            componentOf[i] = static_cast<int>(components.size());
            components.emplace_back();
        }
        componentOf[i] = componentOf[first];
        Component& component = components[componentOf[i]];
        place[i] = static_cast<int>(component.boxes.size());
        component.boxes.push_back(i);
        component.graph.boxes.push_back(graph.boxes[i]);
    }
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        Line line = graph.lines[k];
        if (!isBox(line.from) || !isBox(line.to)) continue;
        Component& component = components[componentOf[line.from]];
        line.from = place[line.from];
        line.to = place[line.to];
        component.lines.push_back(static_cast<int>(k));
        component.graph.lines.push_back(line);
    }
    return components;
}

}  // namespace norvelis::layout
