#include "drawing/stencils/definition.h"

namespace norvelis::drawing::stencils {

namespace {

using Cells = std::vector<CellDefinition>;

/// Grows with the page, so that it can be read on a print of any page that was made smaller to fit its paper.
const char* const kFactsSize = "MAX(5 pt,MIN(ThePage!PageWidth,ThePage!PageHeight)*0.006)";

GeometryDefinition Rectangle() {
    GeometryDefinition geometry;
    for (const auto& [x, y] : {std::pair{"0", "0"}, {"1", "0"}, {"1", "1"}, {"0", "1"}, {"0", "0"}})
        geometry.rows.push_back({geometry.rows.empty() ? "RelMoveTo" : "RelLineTo", {{"X", x}, {"Y", y}}});
    return geometry;
}

/// A part between the given edges of the block, by formulas of the block's size.
ShapeDefinition Part(const std::string& left, const std::string& bottom, const std::string& width,
                     const std::string& height, Cells look) {
    ShapeDefinition part;
    part.cells = {{"Width", width}, {"Height", height}, {"LocPinX", "0"},
                  {"LocPinY", "0"}, {"PinX", left},     {"PinY", bottom}};
    part.cells.insert(part.cells.end(), look.begin(), look.end());
    part.geometry = {Rectangle()};
    return part;
}

/// The block is as large as its title and the facts below it ask. Its pin is where the page formulas of a
/// drawn title (a fifth of the width and 0.875 in from the left edge, a tenth of the height and 0.375 in
/// below the top) bring its upper left corner to a quarter inch from the page's edges.
///
/// The facts are the last part: "Sheet.13".
MasterDefinition TitleBlockDeco() {
    const char* ink = "RGB(31,56,88)";
    ShapeDefinition block;
    block.cells = {{"Width", "MAX(2.25 in,TEXTWIDTH(TheText)+0.62 in,Sheet.13!Width+0.2 in)"},
                   {"Height", "Sheet.13!Height+0.33 in"},
                   {"LocPinX", "Width*0.2+0.625 in"},
                   {"LocPinY", "Height*0.9-0.125 in"},
                   {"TxtPinX", "0.12 in"},
                   {"TxtPinY", "Height-0.28 in"},
                   {"TxtLocPinX", "0"},
                   {"TxtLocPinY", "0"},
                   {"TxtWidth", "Width-0.5 in"},
                   {"TxtHeight", "0.25 in"},
                   {"LeftMargin", "4 pt"},
                   {"RightMargin", "4 pt"},
                   {"TopMargin", "2 pt"},
                   {"BottomMargin", "2 pt"},
                   {"VerticalAlign", "1"},
                   {"Para.HorzAlign", "0"},
                   {"Char.Size", "9 pt"},
                   {"Char.Style", "1"},
                   {"Char.Color", ink},
                   {"FillPattern", "0"},
                   {"LinePattern", "0"},
                   {"DisplayMode", "2"},
                   {"ObjType", "4"}};
    const Cells noLine = {{"LinePattern", "0"}, {"FillPattern", "1"}};
    const auto filled = [&noLine](const char* color) {
        Cells cells = noLine;
        cells.push_back({"FillForegnd", color});
        return cells;
    };
    ShapeDefinition plate = Part("0", "0", "Sheet.5!Width", "Sheet.5!Height",
                                 {{"FillPattern", "1"},
                                  {"FillForegnd", "RGB(255,255,255)"},
                                  {"LineColor", "RGB(198,208,220)"},
                                  {"LineWeight", "0.5 pt"}});
    ShapeDefinition bar = Part("0", "0", "0.07 in", "Sheet.5!Height", filled(ink));
    ShapeDefinition accent = Part("0.07 in", "0", "0.02 in", "Sheet.5!Height", filled("RGB(214,160,72)"));
    ShapeDefinition rule = Part("0.176 in", "Sheet.13!Height+0.035 in", "Sheet.5!Width-0.266 in", "0.006 in",
                                filled("RGB(198,208,220)"));
    // An owner, a line, a member: the mark at the right, above the rule.
    const std::string left = "Sheet.5!Width-0.25 in";
    const auto below = [](const char* top) { return std::string("Sheet.5!Height-") + top; };
    ShapeDefinition owner = Part(left, below("0.115 in"), "0.16 in", "0.065 in", filled(ink));
    ShapeDefinition line =
        Part("Sheet.5!Width-0.176 in", below("0.18 in"), "0.012 in", "0.07 in", filled("RGB(150,164,184)"));
    ShapeDefinition member = Part(left, below("0.245 in"), "0.16 in", "0.065 in",
                                  {{"FillPattern", "1"},
                                   {"FillForegnd", "RGB(255,255,255)"},
                                   {"LineColor", ink},
                                   {"LineWeight", "0.75 pt"}});
    ShapeDefinition facts = Part("0.12 in", "0.02 in", "TEXTWIDTH(TheText)", "TEXTHEIGHT(TheText,Width)",
                                 {{"LinePattern", "0"},
                                  {"FillPattern", "0"},
                                  {"LeftMargin", "4 pt"},
                                  {"RightMargin", "4 pt"},
                                  {"TopMargin", "0 pt"},
                                  {"BottomMargin", "1 pt"},
                                  {"VerticalAlign", "1"},
                                  {"Para.HorzAlign", "0"},
                                  {"Char.Size", kFactsSize},
                                  {"Char.Color", "RGB(84,100,122)"}});
    facts.name = "Facts";
    facts.text = "Bachman diagram";
    block.parts = {plate, bar, accent, rule, line, owner, member, facts};
    return {"Title block deco", "A title that rides at the page's upper left.", block};
}

/// A shape of a legend with its pin at the upper left, which takes no text itself.
ShapeDefinition LegendShape(const std::string& width, const std::string& height) {
    ShapeDefinition shape;
    shape.cells = {{"Width", width},      {"Height", height},   {"LocPinX", "0"},
                   {"LocPinY", "Height"}, {"FillPattern", "0"}, {"LinePattern", "0"},
                   {"DisplayMode", "2"},  {"HideText", "1"},    {"ObjType", "4"}};
    return shape;
}

/// Its text, as high as the facts of the title. `style` is of the characters.
ShapeDefinition LegendText(const std::string& left, const char* style) {
    // A little wider, so that it stays on its line in programs with wider letters.
    ShapeDefinition text = Part(left, "0", "TEXTWIDTH(TheText)*1.1", "TEXTHEIGHT(TheText,Width)",
                                {{"LinePattern", "0"},
                                 {"FillPattern", "0"},
                                 {"LeftMargin", "0 pt"},
                                 {"RightMargin", "0 pt"},
                                 {"TopMargin", "1 pt"},
                                 {"BottomMargin", "1 pt"},
                                 {"VerticalAlign", "1"},
                                 {"Para.HorzAlign", "0"},
                                 {"Char.Size", kFactsSize},
                                 {"Char.Style", style},
                                 {"Char.Color", "RGB(31,56,88)"}});
    text.name = "Name";
    text.text = "Meaning";
    return text;
}

/// A line of text ("Sheet.6").
MasterDefinition LegendHeading() {
    ShapeDefinition heading = LegendShape("Sheet.6!Width", "Sheet.6!Height");
    heading.parts = {LegendText("0", "1")};
    return {"Legend heading", "What a legend is about.", heading};
}

/// A swatch ("Sheet.6") and what it means ("Sheet.7").
MasterDefinition LegendEntry() {
    ShapeDefinition entry = LegendShape("Sheet.7!Width+Height*3.2", "Sheet.7!Height");
    ShapeDefinition swatch = Part("0", "Sheet.5!Height*0.1", "Sheet.5!Height*2.7", "Sheet.5!Height*0.8",
                                  {{"FillPattern", "1"},
                                   {"FillForegnd", "RGB(255,255,255)"},
                                   {"LineColor", "RGB(84,100,122)"},
                                   {"LineWeight", "0.75 pt"}});
    swatch.name = "Swatch";
    entry.parts = {swatch, LegendText("Sheet.5!Height*3.2", "0")};
    return {"Legend entry", "What a color means.", entry};
}

}  // namespace

StencilDefinition BordersAndTitles() {
    return {"Borders and Titles (US units).vss",
            "Borders and Titles",
            {TitleBlockDeco(), LegendHeading(), LegendEntry()}};
}

}  // namespace norvelis::drawing::stencils
