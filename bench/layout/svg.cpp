#include "layout/svg.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>

#include "layout/graph/notes.h"

namespace norvelis::layout {

namespace {

std::string Rectangle(const Point& center, double width, double height, const char* look) {
    return fmt::format("<rect x=\"{:.3f}\" y=\"{:.3f}\" width=\"{:.3f}\" height=\"{:.3f}\" {}/>\n",
                       center.x - width / 2, -center.y - height / 2, width, height, look);
}

std::string Text(const Point& center, double size, const std::string& text) {
    return fmt::format("<text x=\"{:.3f}\" y=\"{:.3f}\" font-size=\"{}\">{}</text>\n", center.x,
                       -center.y + size * 0.35, size, text);
}

/// Corners of curved routes are quadratic curves between the middles of their segments.
std::string Path(const Route& route) {
    const auto& points = route.points;
    std::string path = fmt::format("M {:.3f} {:.3f}", points.front().x, -points.front().y);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const Point &a = points[i - 1], &b = points[i], &c = points[i + 1];
        if (route.curved) {
            path += fmt::format(" L {:.3f} {:.3f} Q {:.3f} {:.3f} {:.3f} {:.3f}", (a.x + b.x) / 2,
                                -(a.y + b.y) / 2, b.x, -b.y, (b.x + c.x) / 2, -(b.y + c.y) / 2);
        } else {
            path += fmt::format(" L {:.3f} {:.3f}", b.x, -b.y);
        }
    }
    return path + fmt::format(" L {:.3f} {:.3f}", points.back().x, -points.back().y);
}

}  // namespace

std::string SvgPicture(const Graph& graph, const Placement& placement) {
    constexpr double kMargin = 0.5, kBoxText = 0.4, kLabelText = 0.16;
    std::string shapes;
    Point low{1e9, 1e9}, high{-1e9, -1e9};
    const auto reach = [&](const Point& point, double width, double height) {
        low = {std::min(low.x, point.x - width / 2), std::min(low.y, point.y - height / 2)};
        high = {std::max(high.x, point.x + width / 2), std::max(high.y, point.y + height / 2)};
    };
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const Box& box = graph.boxes[i];
        reach(placement.centers[i], box.width, box.height);
        shapes +=
            Rectangle(placement.centers[i], box.width, box.height, "fill=\"#dfeaf7\" stroke=\"#335577\"");
        shapes += Text(placement.centers[i], kBoxText, std::to_string(i));
        if (!box.HasNote()) continue;
        const Rect note = NoteBeside(BoxAt(box, placement.centers[i]), box.noteWidth, box.noteHeight,
                                     placement.noteSides[i]);
        reach(note.Center(), note.Width(), note.Height());
        shapes +=
            Rectangle(note.Center(), note.Width(), note.Height(), "fill=\"#f7d9c4\" stroke=\"#b0965c\"");
    }
    for (const Route& route : placement.routes) {
        if (route.points.empty()) continue;
        for (const Point& point : route.points) reach(point, 0, 0);
        shapes += fmt::format("<path d=\"{}\" fill=\"none\" stroke=\"#222222\"/>\n", Path(route));
    }
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        const Point& label = placement.routes[k].label;
        reach(label, line.labelWidth, line.labelHeight);
        shapes += Rectangle(label, line.labelWidth, line.labelHeight, "fill=\"#fff3c4\" stroke=\"none\"");
        shapes += Text(label, kLabelText, fmt::format("{}-{}", line.from, line.to));
    }
    return fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.2f}in\" height=\"{1:.2f}in\" "
        "viewBox=\"{2:.3f} {3:.3f} "
        "{0:.3f} {1:.3f}\" stroke-width=\"0.02\" font-family=\"sans-serif\" "
        "text-anchor=\"middle\">\n{4}</svg>\n",
        high.x - low.x + 2 * kMargin, high.y - low.y + 2 * kMargin, low.x - kMargin, -high.y - kMargin,
        shapes);
}

void WriteSvg(const std::filesystem::path& path, const Graph& graph, const Placement& placement) {
    std::ofstream(path) << SvgPicture(graph, placement);
}

}  // namespace norvelis::layout
