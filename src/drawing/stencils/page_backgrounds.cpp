#include <fmt/format.h>

#include "drawing/stencils/backgrounds.h"
#include "drawing/stencils/definition.h"

// Backgrounds as masters: a group over the whole page, one part a layer, everything tied to the page's size
// by formulas, so that a background fits whatever the page becomes.
namespace norvelis::drawing::stencils {

namespace {

constexpr const char* kWidth = "Sheet.5!Width";
constexpr const char* kHeight = "Sheet.5!Height";
constexpr const char* kShortSide = "MIN(Sheet.5!Width,Sheet.5!Height)";

std::string Number(double value) {
    return fmt::format("{:.5g}", value);
}

/// "#RRGGBB" as a formula.
std::string Rgb(const std::string& color) {
    const auto part = [&color](std::size_t at) { return std::stoi(color.substr(at, 2), nullptr, 16); };
    return fmt::format("RGB({},{},{})", part(1), part(3), part(5));
}

GeometryDefinition Geometry(const Layer& layer) {
    GeometryDefinition geometry;
    geometry.noFill = layer.fill == Fill::None;
    geometry.noLine = layer.line.empty();
    for (const Segment& segment : layer.outline.Segments()) {
        const std::string x = Number(segment.to.x), y = Number(segment.to.y);
        switch (segment.kind) {
            case Segment::Move:
                geometry.rows.push_back({"RelMoveTo", {{"X", x}, {"Y", y}}});
                break;
            case Segment::Line:
                geometry.rows.push_back({"RelLineTo", {{"X", x}, {"Y", y}}});
                break;
            case Segment::Curve:
                geometry.rows.push_back({"RelCubBezTo",
                                         {{"X", x},
                                          {"Y", y},
                                          {"A", Number(segment.control1.x)},
                                          {"B", Number(segment.control1.y)},
                                          {"C", Number(segment.control2.x)},
                                          {"D", Number(segment.control2.y)}}});
                break;
        }
    }
    return geometry;
}

std::vector<CellDefinition> Place(const Frame& frame) {
    std::vector<CellDefinition> cells;
    if (frame.square) {
        const std::string side = fmt::format("{}*{}", kShortSide, Number(frame.side));
        const auto pin = [&frame](const char* extent, double anchor) {
            return fmt::format("{}*{}+{}*{}", extent, Number(anchor), kShortSide,
                               Number((0.5 - anchor) * (frame.side + 2 * frame.margin)));
        };
        cells = {{"PinX", pin(kWidth, frame.anchorX)},
                 {"PinY", pin(kHeight, frame.anchorY)},
                 {"Width", side},
                 {"Height", side}};
    } else {
        const auto times = [](const char* extent, double factor) {
            return fmt::format("{}*{}", extent, Number(factor));
        };
        cells = {{"PinX", times(kWidth, (frame.left + frame.right) / 2)},
                 {"PinY", times(kHeight, (frame.bottom + frame.top) / 2)},
                 {"Width", times(kWidth, frame.right - frame.left)},
                 {"Height", times(kHeight, frame.top - frame.bottom)}};
    }
    cells.push_back({"LocPinX", "Width*0.5"});
    cells.push_back({"LocPinY", "Height*0.5"});
    return cells;
}

ShapeDefinition Part(const Layer& layer) {
    ShapeDefinition part;
    part.cells = Place(layer.frame);
    part.cells.push_back({"FillPattern", std::to_string(static_cast<int>(layer.fill))});
    if (layer.fill != Fill::None) part.cells.push_back({"FillForegnd", Rgb(layer.color)});
    if (!layer.color2.empty()) part.cells.push_back({"FillBkgnd", Rgb(layer.color2)});
    part.cells.push_back({"LinePattern", layer.line.empty() ? "0" : std::to_string(layer.dash)});
    if (!layer.line.empty()) {
        part.cells.push_back({"LineColor", Rgb(layer.line)});
        part.cells.push_back({"LineWeight", fmt::format("{}*{}", kShortSide, Number(layer.weight / 1000))});
    }
    part.geometry = {Geometry(layer)};
    return part;
}

MasterDefinition Master(const Background& background) {
    ShapeDefinition group;
    group.cells = {{"Width", "ThePage!PageWidth"},
                   {"Height", "ThePage!PageHeight"},
                   {"PinX", "GUARD(ThePage!PageWidth*0.5)"},
                   {"PinY", "GUARD(ThePage!PageHeight*0.5)"},
                   {"LocPinX", "Width*0.5"},
                   {"LocPinY", "Height*0.5"},
                   {"FillPattern", "0"},
                   {"LinePattern", "0"},
                   {"ObjType", "4"}};
    for (const Layer& layer : background.layers) group.parts.push_back(Part(layer));
    const std::string motif = background.name.substr(background.name.find(' ') + 1);
    return {background.name,
            motif == "none" ? "A page without background." : "Page background: " + motif + ".", group};
}

}  // namespace

StencilDefinition PageBackgrounds() {
    StencilDefinition stencil{"Backgrounds (US units).vss", "Backgrounds", {}};
    for (const Background& background : Backgrounds()) stencil.masters.push_back(Master(background));
    return stencil;
}

}  // namespace norvelis::drawing::stencils
