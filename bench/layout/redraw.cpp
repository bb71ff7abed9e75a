#include "layout/redraw.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "layout/former/match.h"
#include "layout/metrics.h"
#include "layout/place_and_route.h"
#include "layout/schema_graphs.h"

namespace norvelis::layout {

namespace {

/// A schema after a change, with the box of before for each of its boxes; -1 for one whose name is new.
struct Changed {
    Graph graph;
    std::vector<int> named;
};

Changed Same(const Graph& graph) {
    Changed same{graph, {}};
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) same.named.push_back(static_cast<int>(i));
    return same;
}

/// With a record of two owners among the others, as names sort it in.
Changed WithRecordAdded(const Graph& graph, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return static_cast<int>(random() % limit); };
    const int at = below(graph.boxes.size());
    Changed changed = Same(graph);
    changed.graph.boxes.insert(changed.graph.boxes.begin() + at, {2.05, 1.1});
    changed.named.insert(changed.named.begin() + at, -1);
    for (Line& line : changed.graph.lines)
        for (int* end : {&line.from, &line.to}) *end += *end >= at ? 1 : 0;
    // Owners that have a set in common: the new record joins a neighbourhood.
    const Line near = changed.graph.lines[static_cast<std::size_t>(below(changed.graph.lines.size()))];
    for (const int owner : {near.from, near.to}) {
        const int place = below(changed.graph.lines.size());
        changed.graph.lines.insert(changed.graph.lines.begin() + place, {owner, at, 0.9, 0.2});
    }
    return changed;
}

Changed WithRecordRemoved(const Graph& graph, std::mt19937& random) {
    const int at = static_cast<int>(random() % graph.boxes.size());
    Changed changed = Same(graph);
    changed.graph.boxes.erase(changed.graph.boxes.begin() + at);
    changed.named.erase(changed.named.begin() + at);
    std::erase_if(changed.graph.lines, [&](const Line& line) { return line.from == at || line.to == at; });
    for (Line& line : changed.graph.lines)
        for (int* end : {&line.from, &line.to}) *end -= *end > at ? 1 : 0;
    return changed;
}

/// A longer name, and so a wider box, at another place among the records.
Changed WithRecordRenamed(const Graph& graph, std::mt19937& random) {
    const auto count = static_cast<int>(graph.boxes.size());
    const int from = static_cast<int>(random() % graph.boxes.size());
    const int to = static_cast<int>(random() % graph.boxes.size());
    std::vector<int> order;  // of the boxes of before
    for (int i = 0; i < count; ++i)
        if (i != from) order.push_back(i);
    order.insert(order.begin() + to, from);
    Changed changed{graph, order};
    std::vector<int> place(order.size());
    for (int i = 0; i < count; ++i) {
        const auto box = static_cast<std::size_t>(order[static_cast<std::size_t>(i)]);
        changed.graph.boxes[static_cast<std::size_t>(i)] = graph.boxes[box];
        place[box] = i;
    }
    for (Line& line : changed.graph.lines)
        for (int* end : {&line.from, &line.to}) *end = place[static_cast<std::size_t>(*end)];
    changed.named[static_cast<std::size_t>(to)] = -1;
    changed.graph.boxes[static_cast<std::size_t>(to)].width += 0.2;
    return changed;
}

double Quantile(std::vector<double> values, double part) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

/// How far boxes of the same name are from where they were, when both pages are laid on each other as well as
/// can be.
std::vector<double> MovesOf(const Changed& changed, const Placement& before, const Placement& after) {
    std::vector<double> x, y;
    for (std::size_t i = 0; i < changed.named.size(); ++i) {
        if (changed.named[i] < 0) continue;
        const Point by = after.centers[i] - before.centers[static_cast<std::size_t>(changed.named[i])];
        x.push_back(by.x);
        y.push_back(by.y);
    }
    const Point shift{Quantile(x, 0.5), Quantile(y, 0.5)};
    std::vector<double> moves;
    for (std::size_t i = 0; i < x.size(); ++i) moves.push_back(Length(Point{x[i], y[i]} - shift));
    return moves;
}

/// Sums over the schemas of one size and change.
struct Figures {
    std::vector<double> moves;  ///< Of all boxes.
    int crossings = 0, faults = 0;
    double area = 0, seconds = 0;

    void Add(const Changed& changed, const Placement& before, const FormerPlaces& former,
             const Style& style) {
        const auto start = std::chrono::steady_clock::now();
        const Placement after = PlaceAndRoute(changed.graph, style, former);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        const std::vector<double> all = MovesOf(changed, before, after);
        moves.insert(moves.end(), all.begin(), all.end());
        const Quality quality = Measure(changed.graph, after);
        crossings += quality.crossings;
        faults += quality.boxOverlaps + quality.boxesCrossed + quality.labelCollisions;
        area += quality.Area();
    }
};

}  // namespace

void PrintRedraws(const char* choice, const Style& style) {
    constexpr std::uint32_t kSchemas = 6;
    const struct {
        const char* name;
        Changed (*change)(const Graph&, std::mt19937&);
    } changes[] = {
        {"added", WithRecordAdded}, {"removed", WithRecordRemoved}, {"renamed", WithRecordRenamed}};
    for (const int records : {40, 120, 300}) {
        for (const auto& [name, change] : changes) {
            std::mt19937 random(17);
            Figures fresh, kept;
            int crossings = 0;  // before
            for (std::uint32_t seed = 1; seed <= kSchemas; ++seed) {
                const Shape shape = seed % 2 == 0 ? Shape::Network : Shape::Dag;
                const Graph graph = SchemaGraph({shape, records, 1.3, records / 100, 1, seed});
                const Placement before = PlaceAndRoute(graph, style);
                crossings += Measure(graph, before).crossings;
                const Changed changed = change(graph, random);
                fresh.Add(changed, before, {}, style);
                const Matches matches = MatchGraphs(changed.graph, graph, changed.named);
                kept.Add(changed, before, PlacesOf(matches, before), style);
            }
            fmt::print(
                "| {} | {} | {} | {:.1f} | {:.1f} | {:.1f} | {:.1f} | {} | {} | {} | {:.2f} | {:.2f} | {} "
                "|\n",
                choice, records, name, Quantile(fresh.moves, 0.5), Quantile(kept.moves, 0.5),
                Quantile(fresh.moves, 0.9), Quantile(kept.moves, 0.9), crossings, fresh.crossings,
                kept.crossings, kept.area / fresh.area, kept.seconds / fresh.seconds, kept.faults);
            std::fflush(stdout);
        }
    }
}

}  // namespace norvelis::layout
