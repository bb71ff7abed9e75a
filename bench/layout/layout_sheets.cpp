#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "layout/dot.h"
#include "layout/elk.h"
#include "layout/metrics.h"
#include "layout/place_and_route.h"
#include "layout/schema_graphs.h"
#include "layout/svg.h"

// Draws one graph by ourselves, by Graphviz dot and by ELK, and shows the three on sheets of A0 side by side,
// each as large as it fits: what one would see on the wall.
namespace norvelis::layout {

namespace {

constexpr double kSheetWidth = 46.8, kSheetHeight = 33.1, kGap = 1.5, kCaption = 2.4;  ///< Inches.

std::optional<Graph> GraphNamed(const std::string& name) {
    for (const auto& graphs : {WallGraphs(), BenchmarkGraphs()})
        for (const NamedGraph& named : graphs)
            if (named.name == name) return named.graph;
    return std::nullopt;
}

/// The picture put into a sheet. A drawing that is higher than wide lies on a portrait sheet, which is shown
/// smaller.
std::string Sheet(double left, const std::string& by, const Graph& graph, const Placement& placement) {
    const Quality quality = Measure(graph, placement);
    const bool portrait = quality.Ratio() < 1;
    const double height = kSheetHeight, width = portrait ? kSheetHeight / kPaperRatio : kSheetWidth;
    const double x = left + (kSheetWidth - width) / 2;
    std::string picture = SvgPicture(graph, placement);
    picture.replace(0, picture.find("viewBox"),
                    fmt::format("<svg x=\"{:.2f}\" y=\"0.3\" width=\"{:.2f}\" height=\"{:.2f}\" ", x + 0.3,
                                width - 0.6, height - 0.6));
    return fmt::format(
        "<rect x=\"{:.2f}\" y=\"0\" width=\"{:.2f}\" height=\"{:.2f}\" fill=\"#ffffff\" stroke=\"#777777\" "
        "stroke-width=\"0.1\"/>\n{}<text x=\"{:.2f}\" y=\"{:.2f}\" font-size=\"1.3\" "
        "text-anchor=\"middle\">{}: "
        "{:.0f} x {:.0f} in, {} crossings, {} labels crossed; label {:.1f} pt</text>\n",
        x, width, height, picture, left + kSheetWidth / 2, height + kCaption * 0.7, by, quality.width,
        quality.height, quality.crossings, quality.labelsCrossed, quality.LabelOnA0());
}

}  // namespace

}  // namespace norvelis::layout

int main(int argc, char** argv) {
    using namespace norvelis::layout;
    CLI::App app{"One graph drawn by us, by dot and by ELK, on sheets of A0 side by side"};
    std::string name = "flat 120", elk, out;
    app.add_option("--graph", name, "A graph of layout_bench")->capture_default_str();
    app.add_option("--elk", elk, "Folder with the npm package elkjs")
        ->required()
        ->check(CLI::ExistingDirectory);
    app.add_option("out", out, "SVG file to write")->required();
    CLI11_PARSE(app, argc, argv);
    const std::optional<Graph> graph = GraphNamed(name);
    const auto dot = graph ? DrawWithDot(*graph, false) : std::nullopt;
    const auto byElk = graph ? DrawWithElk(*graph, elk) : std::nullopt;
    if (!dot || !byElk) {
        fmt::print(stderr, "{}\n",
                   !graph ? "there is no such graph"
                   : !dot ? "dot is missing"
                          : "elkjs is missing");
        return 1;
    }
    std::string sheets;
    double left = 0;
    const auto add = [&](const char* by, const Placement& placement) {
        sheets += Sheet(left, by, *graph, placement);
        left += kSheetWidth + kGap;
    };
    add("Norvelis, default", PlaceAndRoute(*graph, StyleOfCells(1, 0, 5, 0)));
    add("dot", dot->placement);
    add("ELK, layered", *byElk);
    std::ofstream(out) << fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"-0.2 -0.2 {:.2f} {:.2f}\" "
        "font-family=\"sans-serif\">\n{}</svg>\n",
        left - kGap + 0.4, kSheetHeight + kCaption + 0.2, sheets);
    return 0;
}
