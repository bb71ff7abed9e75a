#include "layout/schema_graphs.h"

#include <fmt/format.h>

#include <algorithm>
#include <random>

namespace norvelis::layout {

namespace {

constexpr int kHubMembers = 40;

class Maker {
  public:
    explicit Maker(const SchemaShape& shape) : shape_(shape), random_(shape.seed) {}

    Graph Make() {
        for (int i = 0; i < shape_.records; ++i) graph_.boxes.push_back(RecordBox());
        const int parts = std::min(shape_.parts, shape_.records);
        for (int part = 0; part < parts; ++part) {
            const int first = shape_.records * part / parts, last = shape_.records * (part + 1) / parts;
            MakePart(first, last, part < shape_.hubs ? (shape_.hubs + parts - 1 - part) / parts : 0);
        }
        return std::move(graph_);
    }

  private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    /// Seven lines of small text; the rule between them sets the width unless a name is longer.
    Box RecordBox() {
        const double width = Below(8) == 0 ? 2.05 + 0.05 * Below(12) : 2.05;
        return {width, 1.1 + (Below(6) == 0 ? 0.12 : 0)};
    }

    void AddSet(int owner, int member) {
        graph_.lines.push_back({owner, member, 0.6 + 0.05 * Below(13), 0.2});
    }

    /// An owner among the records before this one: mostly a near one, so that there are neighbourhoods.
    int OwnerFor(int record, int first) {
        const int before = record - first;
        if (Below(4) == 0) return first + Below(before);
        return record - 1 - Below(std::min(before, 4 + before / 3));
    }

    void MakePart(int first, int last, int hubs) {
        std::vector<int> hubLeft;
        int hub = first;
        for (int i = 0; i < hubs; ++i) hubLeft.push_back(kHubMembers);
        for (int record = first + 1; record < last; ++record) {
            const int at = record - first - 1;
            if (!hubLeft.empty() && at % 2 == 0) {
                AddSet(hub, record);
                if (--hubLeft.back() == 0) {
                    hubLeft.pop_back();
                    hub = record;
                }
            } else {
                AddSet(OwnerFor(record, first), record);
            }
        }
        if (shape_.shape == Shape::Tree) return;
        const int count = last - first;
        const int more = static_cast<int>(count * shape_.setsPerRecord) - (count - 1);
        for (int i = 0; i < more && count > 1; ++i) {
            const int member = first + 1 + Below(count - 1);
            const int owner = OwnerFor(member, first);
            const bool upwards = shape_.shape == Shape::Network && Below(8) == 0;
            AddSet(upwards ? member : owner, upwards ? owner : member);
            if (Below(30) == 0) AddSet(owner, member);  // two sets between one pair
        }
    }

    const SchemaShape& shape_;
    std::mt19937 random_;
    Graph graph_;
};

/// Few levels and wide: a tenth of the records own the others, mostly the first few of them; every third
/// record has a second owner.
Graph FlatSchema(int records, std::mt19937& random) {
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    Graph graph;
    for (int i = 0; i < records; ++i)
        graph.boxes.push_back({below(8) == 0 ? 2.05 + 0.05 * below(12) : 2.05, below(6) == 0 ? 1.22 : 1.1});
    const auto join = [&](int owner, int member) {
        graph.lines.push_back({owner, member, 0.6 + 0.05 * below(13), 0.2});
    };
    const int owners = records / 10, hubs = std::max(2, records / 60);
    for (int i = 1; i < owners; ++i) join(below(std::min(i, 3 + i / 2)), i);
    for (int i = owners; i < records; ++i) {
        join(below(5) < 3 ? below(hubs) : below(owners), i);
        if (below(3) == 0) join(below(2) == 0 ? below(owners) : owners + below(i - owners + 1), i);
        if (graph.lines.back().from == i) graph.lines.pop_back();
    }
    return graph;
}

/// Graphs that nobody draws, and that must come out all the same.
std::vector<NamedGraph> UnusualGraphs(std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const auto boxes = [](int count) {
        return std::vector<Box>(static_cast<std::size_t>(count), Box{2.05, 1.1});
    };
    const auto addLine = [&](Graph& graph, int from, int to) {
        graph.lines.push_back({from, to, 0.6 + 0.05 * below(13), 0.2});
    };
    const int count = 5 + below(36);
    Graph none{boxes(count * 25), {}}, star{boxes(1 + count * 7), {}}, complete{boxes(count), {}},
        pair{boxes(2), {}}, loops{boxes(3), {}}, chain{boxes(count * 5), {}}, sizes{{}, {}},
        tangle{boxes(count), {}};
    for (int i = 1; i < static_cast<int>(star.boxes.size()); ++i)
        addLine(star, below(2) == 0 ? 0 : i, 0), star.lines.back().to = star.lines.back().from == 0 ? i : 0;
    for (int i = 0; i < count; ++i)
        for (int k = 0; k < i; ++k) addLine(complete, k, i);
    for (int i = 0; i < count; ++i) addLine(pair, i % 3 == 0 ? 1 : 0, i % 3 == 0 ? 0 : 1);
    for (int i = 0; i < count; ++i) addLine(loops, i % 3, below(2) == 0 ? i % 3 : (i + 1) % 3);
    for (int i = 1; i < static_cast<int>(chain.boxes.size()); ++i) addLine(chain, i - 1, i);
    for (int i = 0; i < 2 * count; ++i) sizes.boxes.push_back({0.3 + 0.4 * below(40), 0.2 + 0.3 * below(30)});
    for (int i = 1; i < 2 * count; ++i) addLine(sizes, below(i), i);
    for (int i = 0; i < count; ++i) addLine(sizes, below(2 * count), below(2 * count));
    for (int i = 0; i < 3 * count; ++i) addLine(tangle, below(count), below(count));
    for (Line& line : tangle.lines)
        line.labelWidth = below(3) == 0 ? 0 : 0.1 * below(40),
        line.labelHeight = line.labelWidth > 0 ? 0.1 + 0.1 * below(5) : 0;
    const auto name = [&](const char* what) { return fmt::format("{} {}, seed {}", what, count, seed); };
    return {{name("no lines"), none}, {name("star"), star},    {name("complete"), complete},
            {name("pair"), pair},     {name("loops"), loops},  {name("chain"), chain},
            {name("sizes"), sizes},   {name("random"), tangle}};
}

}  // namespace

Graph SchemaGraph(const SchemaShape& shape) {
    return Maker(shape).Make();
}

std::vector<NamedGraph> BenchmarkGraphs() {
    using enum Shape;
    const struct {
        const char* name;
        SchemaShape shape;
    } shapes[] = {
        {"tree 12", {Tree, 12, 1, 0, 1, 11}},
        {"network 12", {Network, 12, 1.6, 0, 1, 12}},
        {"tree 60", {Tree, 60, 1, 1, 1, 13}},
        {"dag 60", {Dag, 60, 1.4, 0, 1, 14}},
        {"network 60", {Network, 60, 1.6, 0, 1, 15}},
        {"dag 60, 5 parts", {Dag, 60, 1.4, 0, 5, 16}},
        {"tree 200", {Tree, 200, 1, 1, 1, 17}},
        {"dag 200", {Dag, 200, 1.2, 1, 1, 18}},
        {"network 200", {Network, 200, 1.4, 1, 3, 19}},
        {"network 200, dense", {Network, 200, 2.0, 0, 1, 20}},
        {"dag 500", {Dag, 500, 1.4, 2, 1, 21}},
        {"network 500, 8 parts", {Network, 500, 1.6, 2, 8, 22}},
        {"tree 1000", {Tree, 1000, 1, 4, 1, 23}},
        {"dag 1000, 12 parts", {Dag, 1000, 1.4, 4, 12, 24}},
        {"network 1000", {Network, 1000, 1.6, 4, 1, 25}},
    };
    std::vector<NamedGraph> graphs;
    for (const auto& [name, shape] : shapes) graphs.push_back({name, SchemaGraph(shape)});
    return graphs;
}

std::vector<NamedGraph> WallGraphs() {
    std::mt19937 random(31);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const auto boxes = [](int count) {
        return std::vector<Box>(static_cast<std::size_t>(count), Box{2.05, 1.1});
    };
    const auto join = [&](Graph& graph, int from, int to) {
        graph.lines.push_back({from, to, 0.6 + 0.05 * below(13), 0.2});
    };
    std::vector<NamedGraph> graphs;
    for (const int records : {120, 300, 800})
        graphs.push_back({fmt::format("flat {}", records), FlatSchema(records, random)});
    for (const int members : {20, 100, 300}) {
        Graph star{boxes(1 + members), {}};
        for (int i = 1; i <= members; ++i) join(star, 0, i);
        graphs.push_back({fmt::format("star {}", members), star});
    }
    for (const int sets : {6, 10, 60}) {
        Graph pair{boxes(2), {}};
        for (int i = 0; i < sets; ++i) join(pair, i % 3 == 0 ? 1 : 0, i % 3 == 0 ? 0 : 1);
        graphs.push_back({fmt::format("pair {}", sets), pair});
    }
    Graph chain{boxes(60), {}}, complete{boxes(12), {}}, tree{boxes(300), {}};
    for (int i = 1; i < 60; ++i) join(chain, i - 1, i);
    for (int i = 0; i < 12; ++i)
        for (int k = 0; k < i; ++k) join(complete, k, i);
    for (int i = 1; i < 300; ++i) {
        const int other = std::max(0, i - 1 - below(12 + i / 3));
        if (below(2) == 0) {
            join(tree, other, i);
        } else {
            join(tree, i, other);
        }
    }
    graphs.push_back({"chain 60", chain});
    graphs.push_back({"complete 12", complete});
    graphs.push_back({"undirected tree 300", tree});
    return graphs;
}

void AddNotes(Graph& graph, std::uint32_t seed) {
    std::mt19937 random(seed);
    for (Box& box : graph.boxes) {
        if (random() % 5 >= 2) continue;
        box.noteWidth = 0.8 + 0.05 * static_cast<double>(random() % 13);
        box.noteHeight = 0.1 + 0.1 * static_cast<double>(1 + random() % 3);
    }
}

Graph WithNotesAsBoxes(const Graph& graph) {
    Graph result = graph;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        Box& box = result.boxes[i];
        if (!box.HasNote()) continue;
        const Box note{box.noteWidth, box.noteHeight};
        box.noteWidth = box.noteHeight = 0;
        result.lines.push_back({static_cast<int>(i), static_cast<int>(result.boxes.size()), 0, 0});
        result.boxes.push_back(note);
    }
    return result;
}

std::vector<NamedGraph> GraphsOfSeed(std::uint32_t seed) {
    using enum Shape;
    std::mt19937 random(seed);
    std::vector<NamedGraph> graphs;
    for (const int records : {2, 5, 12, 30, 60, 120, 200, 400}) {
        for (const Shape shape : {Tree, Dag, Network}) {
            const double setsPerRecord = 1.1 + 0.1 * static_cast<double>(random() % 10);
            const int hubs = static_cast<int>(random() % static_cast<unsigned>(1 + records / 50));
            const int parts = random() % 3 == 0 ? 1 + records / 40 : 1;
            const char* name = shape == Tree ? "tree" : shape == Dag ? "dag" : "network";
            graphs.push_back({fmt::format("{} {}, seed {}", name, records, seed),
                              SchemaGraph({shape, records, setsPerRecord, hubs, parts,
                                           static_cast<std::uint32_t>(random())})});
        }
    }
    for (NamedGraph& unusual : UnusualGraphs(seed)) graphs.push_back(std::move(unusual));
    return graphs;
}

}  // namespace norvelis::layout
