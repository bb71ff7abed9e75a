#include "layout/dot.h"

#include <fmt/format.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace norvelis::layout {

namespace {

constexpr double kPointsPerInch = 72;

void WriteGraph(const std::filesystem::path& path, const Graph& graph, bool leftToRight) {
    std::ofstream out(path);
    out << "digraph g {\n"
        << (leftToRight ? "rankdir=LR;\n" : "") << "node [shape=box fixedsize=true label=\"\"];\n";
    for (std::size_t i = 0; i < graph.boxes.size(); ++i)
        out << fmt::format("n{} [width={} height={}];\n", i, graph.boxes[i].width, graph.boxes[i].height);
    for (const Line& line : graph.lines) {
        // A table without a border is the only label whose size can be given.
        out << fmt::format(
            "n{} -> n{} [arrowhead=none label=<<table border=\"0\" cellborder=\"0\" cellspacing=\"0\" "
            "cellpadding=\"0\" "
            "fixedsize=\"true\" width=\"{:.0f}\" height=\"{:.0f}\"><tr><td></td></tr></table>>];\n",
            line.from, line.to, line.labelWidth * kPointsPerInch, line.labelHeight * kPointsPerInch);
    }
    out << "}\n";
}

/// The control points of a chain of cubic Bézier curves as a line of straight segments.
std::vector<Point> Flatten(const std::vector<Point>& control) {
    constexpr int kSteps = 8;
    std::vector<Point> points;
    if (!control.empty()) points.push_back(control.front());
    for (std::size_t i = 0; i + 3 < control.size(); i += 3) {
        for (int step = 1; step <= kSteps; ++step) {
            const double t = static_cast<double>(step) / kSteps, u = 1 - t;
            const double weight[] = {u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t};
            Point point;
            for (std::size_t c = 0; c < 4; ++c) {
                point.x += weight[c] * control[i + c].x;
                point.y += weight[c] * control[i + c].y;
            }
            points.push_back(point);
        }
    }
    return points;
}

/// Reads dot's plain output. Lines of one pair come in the order given.
Placement ReadPlain(const std::filesystem::path& path, const Graph& graph) {
    Placement placement;
    placement.centers.resize(graph.boxes.size());
    placement.routes.resize(graph.lines.size());
    std::vector<bool> drawn(graph.lines.size());
    std::ifstream in(path);
    for (std::string text; std::getline(in, text);) {
        std::istringstream words(text);
        std::string word, from, to;
        words >> word;
        if (word == "node") {
            words >> from;
            Point& center = placement.centers[std::stoul(from.substr(1))];
            words >> center.x >> center.y;
        } else if (word == "edge") {
            std::size_t count = 0;
            words >> from >> to >> count;
            std::vector<Point> control(count);
            for (Point& point : control) words >> point.x >> point.y;
            std::vector<std::string> rest;
            while (words >> word) rest.push_back(word);
            const int owner = std::stoi(from.substr(1)), member = std::stoi(to.substr(1));
            for (std::size_t k = 0; k < graph.lines.size(); ++k) {
                if (drawn[k] || graph.lines[k].from != owner || graph.lines[k].to != member) continue;
                drawn[k] = true;
                placement.routes[k].points = Flatten(control);
                if (rest.size() >= 4)
                    placement.routes[k].label = {std::stod(rest[rest.size() - 4]),
                                                 std::stod(rest[rest.size() - 3])};
                break;
            }
        }
    }
    return placement;
}

}  // namespace

std::optional<DotDrawing> DrawWithDot(const Graph& graph, bool leftToRight) {
    static const bool installed = std::system("dot -V >/dev/null 2>&1") == 0;
    if (!installed) return std::nullopt;
    const auto folder = std::filesystem::temp_directory_path() / fmt::format("layout_bench.{}", std::rand());
    std::filesystem::create_directories(folder);
    const auto input = folder / "graph.dot", output = folder / "graph.plain";
    WriteGraph(input, graph, leftToRight);
    const std::string command =
        fmt::format("dot -Tplain '{}' -o '{}' 2>/dev/null", input.string(), output.string());
    DotDrawing drawing;
    const auto start = std::chrono::steady_clock::now();
    const bool done = std::system(command.c_str()) == 0;
    drawing.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (done) drawing.placement = ReadPlain(output, graph);
    std::filesystem::remove_all(folder);
    return done ? std::optional(std::move(drawing)) : std::nullopt;
}

}  // namespace norvelis::layout
