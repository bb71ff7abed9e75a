#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>

#include "layout/choices.h"
#include "layout/graph/graph.h"
#include "layout/metrics.h"
#include "layout/place_and_route.h"
#include "layout/schema_graphs.h"

// Draws random graphs of 1 to 200 boxes, each by one of the eight layout choices, and looks whether the rules
// hold that no drawing may break: boxes do not overlap, no line runs through a box, no label covers a box or
// a label, nothing is missing, none hangs. Prints the drawings that break one, and fails then.
namespace norvelis::layout {

namespace {

constexpr unsigned kHangs = 120;  ///< Seconds after which a drawing counts as hanging.

class RandomGraph {
  public:
    explicit RandomGraph(std::uint32_t seed) : random_(seed) {}

    Graph Make() {
        const int boxes = 1 + Below(200);
        return Below(3) == 0 ? Tangle(boxes) : Schema(boxes);
    }

  private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    Graph Schema(int records) {
        const auto shape = static_cast<Shape>(Below(3));
        return SchemaGraph({shape, records, 1 + 0.1 * Below(11), Below(1 + records / 40),
                            Below(3) == 0 ? 1 + records / 20 : 1, static_cast<std::uint32_t>(random_())});
    }

    /// Boxes of any size and lines between any two, some from a box to itself, some without a label.
    Graph Tangle(int boxes) {
        Graph graph;
        const bool alike = Below(2) == 0;
        for (int i = 0; i < boxes; ++i)
            graph.boxes.push_back(alike ? Box{2.05, 1.1} : Box{0.3 + 0.2 * Below(40), 0.2 + 0.2 * Below(30)});
        const int lines = boxes * Below(9) / 4;
        for (int i = 0; i < lines; ++i) {
            const bool labeled = Below(4) > 0;
            graph.lines.push_back({Below(boxes), Below(boxes), labeled ? 0.3 + 0.1 * Below(25) : 0,
                                   labeled ? 0.1 + 0.1 * Below(4) : 0});
        }
        return graph;
    }

    std::mt19937 random_;
};

bool IsSound(const Point& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

int Missing(const Graph& graph, const Placement& placement) {
    if (placement.centers.size() != graph.boxes.size() || placement.routes.size() != graph.lines.size())
        return static_cast<int>(graph.boxes.size() + graph.lines.size());
    const auto boxes = std::ranges::count_if(placement.centers, [](const Point& at) { return !IsSound(at); });
    const auto lines = std::ranges::count_if(placement.routes, [](const Route& route) {
        return route.points.size() < 2 || !std::ranges::all_of(route.points, IsSound);
    });
    return static_cast<int>(boxes + lines);
}

/// Says which drawing hangs, in the words of one that a signal has interrupted.
char drawn[128];
void TellHanging(int) {
    [[maybe_unused]] const auto written = write(STDERR_FILENO, drawn, std::string_view(drawn).size());
    _exit(2);
}

struct Options {
    std::uint32_t first = 1, graphs = 1000;
};

/// The number of drawings that break a rule.
int Draw(const Options& options) {
    int faulty = 0;
    double slowest = 0, total = 0;
    std::string slowestName;
    signal(SIGALRM, TellHanging);
    for (std::uint32_t i = 0; i < options.graphs; ++i) {
        const std::uint32_t seed = options.first + i;
        const auto& [choice, style] = choices[seed % std::size(choices)];
        const Graph graph = RandomGraph(seed).Make();
        const std::string name = fmt::format("graph {}, {} boxes, {} lines, {}", seed, graph.boxes.size(),
                                             graph.lines.size(), choice);
        std::snprintf(drawn, sizeof(drawn), "%s: hangs\n", name.c_str());
        alarm(kHangs);
        const auto start = std::chrono::steady_clock::now();
        const Placement placement = PlaceAndRoute(graph, style);
        const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        alarm(0);
        total += seconds;
        if (seconds > slowest) {
            slowest = seconds;
            slowestName = name;
        }
        const int missing = Missing(graph, placement);
        const Quality quality = missing > 0 ? Quality{} : Measure(graph, placement);
        if (missing + quality.boxOverlaps + quality.boxesCrossed + quality.labelCollisions == 0) continue;
        ++faulty;
        fmt::print("{}: {} missing, {} overlaps, {} boxes crossed, {} labels on boxes or labels\n", name,
                   missing, quality.boxOverlaps, quality.boxesCrossed, quality.labelCollisions);
        std::fflush(stdout);
    }
    fmt::print("{} of {} drawings break a rule; {:.1f} ms a drawing, the slowest {:.2f} s ({})\n", faulty,
               options.graphs, 1000 * total / options.graphs, slowest, slowestName);
    return faulty;
}

}  // namespace

}  // namespace norvelis::layout

int main(int argc, char** argv) {
    CLI::App app{"Looks for random graphs that are drawn against the rules"};
    norvelis::layout::Options options;
    app.add_option("--graphs", options.graphs, "So many graphs")->capture_default_str();
    app.add_option("--first", options.first, "Seed of the first graph")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    return norvelis::layout::Draw(options) > 0 ? 1 : 0;
}
