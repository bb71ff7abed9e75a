#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "layout/choices.h"
#include "layout/dot.h"
#include "layout/graph/graph.h"
#include "layout/metrics.h"
#include "layout/note_metrics.h"
#include "layout/place_and_route.h"
#include "layout/redraw.h"
#include "layout/schema_graphs.h"
#include "layout/svg.h"

// Lays out graphs shaped like schemas by each layout choice and prints what came out, one row a graph and
// choice, with Graphviz dot's figures for the same graph beside those of the layered ones.
namespace norvelis::layout {

namespace {

struct Options {
    std::vector<std::string> choices;
    std::vector<std::string> graphs;
    bool wall = false, growth = false, notes = false, redraws = false;
    std::string pictures;
    bool withDot = true;
    int runs = 1;
    std::uint32_t seeds = 0;
};

struct Drawing {
    Quality quality;
    NoteQuality notes;
    double seconds = 0;  ///< Median of the runs.
};

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

Drawing Draw(const NamedGraph& named, const Choice& choice, const Options& options) {
    Placement placement;
    std::vector<double> seconds;
    for (int run = 0; run < options.runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        placement = PlaceAndRoute(named.graph, choice.style);
        seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    if (!options.pictures.empty())
        WriteSvg(std::filesystem::path(options.pictures) / fmt::format("{} {}.svg", named.name, choice.name),
                 named.graph, placement);
    return {Measure(named.graph, placement), MeasureNotes(named.graph, placement), Median(seconds)};
}

/// Notes are boxes to dot.
std::optional<Drawing> DrawByDot(const Graph& withNotes, bool toRight, const Options& options) {
    const Graph graph = WithNotesAsBoxes(withNotes);
    std::optional<DotDrawing> drawing;
    std::vector<double> seconds;
    for (int run = 0; run < options.runs; ++run) {
        drawing = DrawWithDot(graph, toRight);
        if (!drawing) return std::nullopt;
        seconds.push_back(drawing->seconds);
    }
    return Drawing{Measure(graph, drawing->placement), {}, Median(seconds)};
}

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

void PrintHead() {
    fmt::print(
        "| graph | choice | overlaps | boxes crossed | label collisions | labels crossed | labels astray | "
        "label off, in | shared pieces | crossings | of dot | in a pair | at one end | crossed twice | "
        "crowded sides | closest ports, in | bends | length, in | page, in | ratio | "
        "label on A0, pt | area, sq in | to dot's | seconds | of dot | "
        "notes | notes on others | over lines | at strangers | leaders barred | crossed | longest, in |\n"
        "|---|---|{}\n",
        Repeated("--:|", 30));
}

void PrintRow(const std::string& graph, const char* choice, const Drawing& drawing,
              const std::optional<Drawing>& dot) {
    const Quality& q = drawing.quality;
    const NoteQuality& n = drawing.notes;
    const std::string dotCrossings = dot ? std::to_string(dot->quality.crossings) : "";
    const std::string areaRatio = dot ? fmt::format("{:.2f}", q.Area() / dot->quality.Area()) : "";
    const std::string dotSeconds = dot ? fmt::format("{:.2f}", dot->seconds) : "";
    fmt::print(
        "| {} | {} | {} | {} | {} | {} | {} | {:.2f} | {} | {} | {} | {} | {} | {} | {} of {} | {:.3f} | {} "
        "| "
        "{:.0f} | {:.0f} x {:.0f} | {:.2f} | {:.1f} | {:.0f} | {} | {:.2f} | {} | {} | {} | {} | {} | {} | "
        "{} | "
        "{:.2f} |\n",
        graph, choice, q.boxOverlaps, q.boxesCrossed, q.labelCollisions, q.labelsCrossed, q.labelsAstray,
        q.labelDistance, q.sharedSegments, q.crossings, dotCrossings, q.pairCrossings, q.sharedEndCrossings,
        q.crossedTwice, q.crowdedSides, q.portSides, q.closestPorts, q.bends, q.length, q.width, q.height,
        q.Ratio(), q.LabelOnA0(), q.Area(), areaRatio, drawing.seconds, dotSeconds, n.notes, n.collisions,
        n.overLines, n.strangers, n.barredLeaders, n.crossedLeaders, n.longestLeader);
    std::fflush(stdout);
}

bool IsWanted(const Choice& choice, const Options& options) {
    return options.choices.empty() ||
           std::find(options.choices.begin(), options.choices.end(), choice.name) != options.choices.end();
}

bool IsWanted(const NamedGraph& named, const Options& options) {
    return options.graphs.empty() ||
           std::any_of(options.graphs.begin(), options.graphs.end(),
                       [&](const std::string& part) { return named.name.find(part) != std::string::npos; });
}

void Compare(const Options& options) {
    PrintHead();
    for (NamedGraph& named : options.wall ? WallGraphs() : BenchmarkGraphs()) {
        if (!IsWanted(named, options)) continue;
        if (options.notes) AddNotes(named.graph, 1);
        for (const Choice& choice : choices) {
            if (!IsWanted(choice, options)) continue;
            const Drawing drawing = Draw(named, choice, options);
            const bool leftToRight = choice.style.placeStyle == PlaceStyle::LeftToRight;
            const bool isLayered = leftToRight || choice.style.placeStyle == PlaceStyle::TopToBottom;
            PrintRow(
                named.name, choice.name, drawing,
                options.withDot && isLayered ? DrawByDot(named.graph, leftToRight, options) : std::nullopt);
        }
    }
}

void CompareRedraws(const Options& options) {
    fmt::print(
        "| choice | records | one record | median move, in | kept | 90 in 100 within, in | kept | crossings "
        "before | "
        "after | kept | area to fresh | seconds to fresh | faults |\n|---|--:|---|{}\n",
        Repeated("--:|", 10));
    for (const Choice& choice : choices)
        if (IsWanted(choice, options)) PrintRedraws(choice.name, choice.style);
}

bool IsFaulty(const Drawing& drawing) {
    const Quality& q = drawing.quality;
    const NoteQuality& n = drawing.notes;
    return q.boxOverlaps + q.boxesCrossed + q.labelCollisions + n.collisions + n.overLines + n.strangers +
               n.barredLeaders >
           0;
}

/// Prints only drawings with faults. Returns how many there are.
int LookForFaults(const Options& options) {
    int faulty = 0, drawn = 0;
    PrintHead();
    for (std::uint32_t seed = 1; seed <= options.seeds; ++seed) {
        for (NamedGraph& named : GraphsOfSeed(seed)) {
            if (!IsWanted(named, options)) continue;
            if (options.notes) AddNotes(named.graph, seed);
            for (const Choice& choice : choices) {
                if (!IsWanted(choice, options)) continue;
                const Drawing drawing = Draw(named, choice, options);
                ++drawn;
                if (!IsFaulty(drawing)) continue;
                ++faulty;
                PrintRow(named.name, choice.name, drawing, std::nullopt);
            }
        }
    }
    fmt::print("\n{} of {} drawings have faults\n", faulty, drawn);
    return faulty;
}

/// Processor time: what else the machine does counts less.
double ProcessorSeconds(const Graph& graph, const Style& style) {
    const std::clock_t start = std::clock();
    PlaceAndRoute(graph, style);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Time over the number of boxes, and the exponent of the curve through the first and the last size.
void PrintGrowth(const Options& options) {
    constexpr int kSizes[] = {500, 1000, 2000, 4000};
    const struct {
        const char* name;
        Shape shape;
        double setsPerRecord;
    } kinds[] = {{"tree", Shape::Tree, 1},
                 {"dag", Shape::Dag, 1.2},
                 {"network", Shape::Network, 1.5},
                 {"dense", Shape::Network, 2}};
    fmt::print(
        "| graph | sets a record | choice | s for 500 | 1,000 | 2,000 | 4,000 | exponent "
        "|\n|---|--:|---|{}\n",
        Repeated("--:|", 5));
    for (const auto& [name, shape, sets] : kinds) {
        for (const Choice& choice : choices) {
            if (!IsWanted(choice, options) || !IsWanted(NamedGraph{name, {}}, options)) continue;
            std::vector<double> seconds;
            for (const int boxes : kSizes) {
                const Graph graph = SchemaGraph({shape, boxes, sets, boxes / 250, 1, 41});
                std::vector<double> runs;
                for (int run = 0; run < options.runs; ++run)
                    runs.push_back(ProcessorSeconds(graph, choice.style));
                seconds.push_back(Median(runs));
            }
            fmt::print("| {} | {:.1f} | {} | {:.2f} | {:.2f} | {:.2f} | {:.2f} | {:.2f} |\n", name, sets,
                       choice.name, seconds[0], seconds[1], seconds[2], seconds[3],
                       std::log(seconds.back() / seconds.front()) / std::log(8.0));
            std::fflush(stdout);
        }
    }
}

}  // namespace

}  // namespace norvelis::layout

int main(int argc, char** argv) {
    using namespace norvelis::layout;
    CLI::App app{"Quality and speed of the layouts, beside Graphviz dot where it is installed"};
    Options options;
    app.add_option("--choice", options.choices, "Only these layout choices");
    app.add_option("--graph", options.graphs, "Only graphs with one of these in their name");
    app.add_flag("--wall", options.wall, "Draw flat schemas, stars, pairs, chains and such instead");
    app.add_flag("--growth", options.growth, "Instead print how the time grows from 500 to 4,000 boxes");
    app.add_flag("--notes", options.notes, "Give two records of five a note");
    app.add_flag("--redraws", options.redraws,
                 "Instead change one record of schemas and print how far the other boxes move");
    app.add_option("--pictures", options.pictures, "Write the drawings as SVG files into this folder")
        ->check(CLI::ExistingDirectory);
    app.add_option("--runs", options.runs, "Print the median time of so many runs")
        ->check(CLI::PositiveNumber);
    app.add_option("--seeds", options.seeds,
                   "Instead draw so many sets of random graphs and print those with faults");
    app.add_flag("!--no-dot", options.withDot, "Leave dot out");
    CLI11_PARSE(app, argc, argv);
    if (options.seeds > 0) return LookForFaults(options) > 0 ? 1 : 0;
    if (options.redraws) {
        CompareRedraws(options);
    } else if (options.growth) {
        PrintGrowth(options);
    } else {
        Compare(options);
    }
    return 0;
}
