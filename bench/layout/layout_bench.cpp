#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <string>
#include <vector>

#include "layout/dot.h"
#include "layout/metrics.h"
#include "layout/schema_graphs.h"

// Lays out graphs shaped like schemas by each layout choice and prints what came out, one row a graph and choice, with
// Graphviz dot's drawing of the same graph beside the layered ones.
namespace norvelis::layout {

namespace {

struct Choice {
    const char* name;
    Style style;
};

Style MakeStyle(int place, int depth, int route, int extension) {
    Style style;
    style.placeStyle = place;
    style.placeDepth = depth;
    style.routeStyle = route;
    style.lineRouteExt = extension;
    return style;
}

const Choice choices[] = {
    {"Default", MakeStyle(1, 0, 5, 0)},          {"RadialDefault", MakeStyle(3, 2, 2, 2)},
    {"RadialRightAngle", MakeStyle(3, 3, 1, 1)}, {"RadialSimpleVH", MakeStyle(3, 3, 22, 2)},
    {"TopToBottom", MakeStyle(1, 1, 3, 1)},      {"LeftToRight", MakeStyle(2, 1, 1, 2)},
    {"CircularSimpleHV", MakeStyle(6, 2, 21, 2)}, {"CircularDeep", MakeStyle(6, 2, 0, 0)},
};

std::string Row(const std::string& name, const char* choice, const Graph& graph, const Placement& placement,
                double seconds) {
    const Quality q = Measure(graph, placement);
    return fmt::format("| {} | {} | {} | {} | {} | {} | {} | {} | {} | {} | {:.0f} | {:.0f} x {:.0f} | {:.0f} | {:.2f} |",
                       name, choice, q.boxOverlaps, q.crossings, q.boxesCrossed, q.labelCollisions, q.labelsCrossed,
                       q.labelsAstray, q.sharedPieces, q.bends, q.length, q.width, q.height, q.Area(), seconds);
}

int Run(const std::vector<std::string>& wantedChoices, const std::string& wantedGraph, bool withDot) {
    fmt::print("| graph | choice | overlaps | crossings | boxes crossed | label collisions | labels crossed | "
               "labels astray | shared pieces | bends | length, in | page, in | area, sq in | seconds |\n"
               "|---|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n");
    for (const NamedGraph& named : BenchmarkGraphs()) {
        if (named.name.find(wantedGraph) == std::string::npos) continue;
        const Graph& graph = named.graph;
        for (const Choice& choice : choices) {
            const auto wanted = std::find(wantedChoices.begin(), wantedChoices.end(), choice.name);
            if (!wantedChoices.empty() && wanted == wantedChoices.end()) continue;
            const auto start = std::chrono::steady_clock::now();
            const Placement placement = PlaceAndRoute(graph, choice.style);
            const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
            fmt::print("{}\n", Row(named.name, choice.name, graph, placement, seconds));
            std::fflush(stdout);
        }
        for (const bool leftToRight : {false, true}) {
            if (!withDot) break;
            if (const auto dot = DrawWithDot(graph, leftToRight))
                fmt::print("{}\n", Row(named.name, leftToRight ? "*dot, left to right*" : "*dot*", graph,
                                       dot->placement, dot->seconds));
            std::fflush(stdout);
        }
    }
    return 0;
}

}  // namespace

}  // namespace norvelis::layout

int main(int argc, char** argv) {
    CLI::App app{"Quality and speed of the layouts, beside Graphviz dot where it is installed"};
    std::vector<std::string> wantedChoices;
    std::string wantedGraph;
    bool withDot = true;
    app.add_option("--choice", wantedChoices, "Only these layout choices");
    app.add_option("--graph", wantedGraph, "Only graphs with this in their name");
    app.add_flag("!--no-dot", withDot, "Leave dot out");
    CLI11_PARSE(app, argc, argv);
    return norvelis::layout::Run(wantedChoices, wantedGraph, withDot);
}
