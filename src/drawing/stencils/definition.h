#pragma once

#include <string>
#include <utility>
#include <vector>

// Masters as they are written down: the cells that differ from the default with their formulas, geometry
// rows, text, parts. Formulas are in universal syntax; lengths without a unit are inches.
namespace norvelis::drawing::stencils {

struct CellDefinition {
    std::string name, formula;  ///< Of "Char.Font" the name of the font.
};

struct RowDefinition {
    std::string type;  ///< MoveTo, LineTo, ArcTo, RelMoveTo, RelLineTo, RelCubBezTo ...
    std::vector<CellDefinition> cells;
};

struct GeometryDefinition {
    bool noFill = false, noLine = false;
    std::vector<RowDefinition> rows;
};

/// A custom property that the shape brings along.
struct PropertyDefinition {
    std::string row, label;
};

struct ShapeDefinition {
    std::string name;
    std::vector<CellDefinition> cells;
    std::vector<GeometryDefinition> geometry;
    std::vector<PropertyDefinition> properties;
    std::string text;
    std::vector<ShapeDefinition> parts;  ///< With parts the shape is a group, "Sheet.5" to its parts.
};

struct MasterDefinition {
    std::string name;
    std::string prompt;  ///< What the master is for, as the stencil window shows it.
    ShapeDefinition shape;
};

struct StencilDefinition {
    std::string file;  ///< Name with ending, as drawings ask for it.
    std::string title;
    std::vector<MasterDefinition> masters;
};

StencilDefinition FlowchartShapes();
StencilDefinition PageBackgrounds();
StencilDefinition BordersAndTitles();

/// The template of new drawings: one empty page, no masters. Its page is US letter, lying.
inline constexpr const char* kTemplateFile = "Basic Flowchart (US Units).vst";

}  // namespace norvelis::drawing::stencils
