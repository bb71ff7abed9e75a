#include "layout/elk.h"

#include <fmt/format.h>

#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>

#include "layout/graph/style.h"
#include "testing/temporary_folder.h"

namespace norvelis::layout {

namespace {

using nlohmann::json;

constexpr double kUnitsPerInch = 72;

json Described(const Graph& graph) {
    json described = {{"id", "root"},
                      {"layoutOptions",
                       {{"elk.algorithm", "layered"},
                        {"elk.direction", "DOWN"},
                        {"elk.edgeRouting", "ORTHOGONAL"},
                        {"elk.spacing.nodeNode", "36"},
                        {"elk.layered.spacing.nodeNodeBetweenLayers", "36"},
                        {"elk.aspectRatio", fmt::format("{}", kPaperRatio)}}},
                      {"children", json::array()},
                      {"edges", json::array()}};
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        described["children"].push_back({{"id", fmt::format("n{}", i)},
                                         {"width", graph.boxes[i].width * kUnitsPerInch},
                                         {"height", graph.boxes[i].height * kUnitsPerInch}});
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        json labels = json::array();
        labels.push_back({{"text", "s"},
                          {"width", line.labelWidth * kUnitsPerInch},
                          {"height", line.labelHeight * kUnitsPerInch}});
        described["edges"].push_back({{"id", fmt::format("e{}", k)},
                                      {"sources", {fmt::format("n{}", line.from)}},
                                      {"targets", {fmt::format("n{}", line.to)}},
                                      {"labels", labels}});
    }
    return described;
}

/// Their y grows downwards.
Point PointOf(const json& at) {
    return {at["x"].get<double>() / kUnitsPerInch, -at["y"].get<double>() / kUnitsPerInch};
}

Point MiddleOf(const json& rectangle) {
    const Point corner = PointOf(rectangle);
    return {corner.x + rectangle["width"].get<double>() / kUnitsPerInch / 2,
            corner.y - rectangle["height"].get<double>() / kUnitsPerInch / 2};
}

Placement Placed(const json& placed) {
    Placement placement;
    for (const json& node : placed["children"]) placement.centers.push_back(MiddleOf(node));
    for (const json& edge : placed["edges"]) {
        Route& route = placement.routes.emplace_back();
        for (const json& section : edge["sections"]) {
            route.points.push_back(PointOf(section["startPoint"]));
            for (const json& bend : section.value("bendPoints", json::array()))
                route.points.push_back(PointOf(bend));
            route.points.push_back(PointOf(section["endPoint"]));
        }
        route.label = MiddleOf(edge["labels"].at(0));
    }
    return placement;
}

}  // namespace

std::optional<Placement> DrawWithElk(const Graph& graph, const std::string& packageFolder) {
    const TemporaryFolder folder;
    const std::string input = folder.Path("graph.json"), output = folder.Path("placed.json");
    std::ofstream(input) << Described(graph);
    const std::string command = fmt::format("cd '{}' && node '{}/bench/layout/elk.mjs' <'{}' >'{}'",
                                            packageFolder, NORVELIS_SOURCE, input, output);
    if (std::system(command.c_str()) != 0) return std::nullopt;
    std::ifstream placed(output);
    return Placed(json::parse(placed));
}

}  // namespace norvelis::layout
