#include "drawing/stencils/definition.h"

// The shapes of a Bachman diagram: the record box, its siblings, the note, and the line of a set.
namespace norvelis::drawing::stencils {

namespace {

using Cells = std::vector<CellDefinition>;

GeometryDefinition Polygon(const std::vector<std::pair<const char*, const char*>>& corners) {
    GeometryDefinition geometry;
    for (const auto& [x, y] : corners)
        geometry.rows.push_back({geometry.rows.empty() ? "RelMoveTo" : "RelLineTo", {{"X", x}, {"Y", y}}});
    geometry.rows.push_back({"RelLineTo", {{"X", corners.front().first}, {"Y", corners.front().second}}});
    return geometry;
}

/// What the boxes have in common: a light fill, a thin line, text in the middle. The margins above and below
/// leave space for programs whose lines are a little higher.
Cells BoxCells(const char* width, const char* height, const char* fill, const char* line) {
    return {{"Width", width},          {"Height", height},        {"LocPinX", "Width*0.5"},
            {"LocPinY", "Height*0.5"}, {"FillForegnd", fill},     {"FillPattern", "1"},
            {"LineColor", line},       {"LineWeight", "0.75 pt"}, {"LeftMargin", "6 pt"},
            {"RightMargin", "6 pt"},   {"TopMargin", "7 pt"},     {"BottomMargin", "7 pt"},
            {"VerticalAlign", "1"},    {"Para.HorzAlign", "1"},   {"Char.Size", "8 pt"},
            {"Char.Color", "0"},       {"ObjType", "1"},          {"Char.Font", "Times New Roman"}};
}

const std::vector<PropertyDefinition> kWorkProperties = {{"Duration", "Duration"},
                                                         {"Resources", "Resources"}};

MasterDefinition Process() {
    ShapeDefinition shape;
    shape.cells = BoxCells("1.5 in", "1 in", "RGB(249,251,253)", "RGB(84,100,122)");
    shape.cells.push_back({"Rounding", "0.04 in"});
    shape.geometry = {Polygon({{"0", "0"}, {"1", "0"}, {"1", "1"}, {"0", "1"}})};
    shape.properties = kWorkProperties;
    return {"Process", "A record of the schema.", shape};
}

MasterDefinition Decision() {
    ShapeDefinition shape;
    shape.cells = BoxCells("1.5 in", "1 in", "RGB(253,250,243)", "RGB(138,112,60)");
    shape.geometry = {Polygon({{"0", "0.5"}, {"0.5", "0"}, {"1", "0.5"}, {"0.5", "1"}})};
    shape.properties = kWorkProperties;
    return {"Decision", "A choice between two ways on.", shape};
}

MasterDefinition Terminator() {
    ShapeDefinition shape;
    shape.cells = BoxCells("1.5 in", "0.5 in", "RGB(246,250,247)", "RGB(76,116,96)");
    GeometryDefinition outline;
    outline.rows = {
        {"MoveTo", {{"X", "MIN(Width,Height)*0.5"}, {"Y", "0"}}},
        {"LineTo", {{"X", "Width-MIN(Width,Height)*0.5"}, {"Y", "0"}}},
        {"ArcTo", {{"X", "Width-MIN(Width,Height)*0.5"}, {"Y", "Height"}, {"A", "MIN(Width,Height)*0.5"}}},
        {"LineTo", {{"X", "MIN(Width,Height)*0.5"}, {"Y", "Height"}}},
        {"ArcTo", {{"X", "MIN(Width,Height)*0.5"}, {"Y", "0"}, {"A", "MIN(Width,Height)*0.5"}}}};
    shape.geometry = {outline};
    shape.properties = kWorkProperties;
    return {"Terminator", "A beginning or an end.", shape};
}

/// A plate that points on. Its text ends before the point.
MasterDefinition OffPageReference() {
    ShapeDefinition shape;
    shape.cells = BoxCells("1.25 in", "0.375 in", "RGB(238,243,249)", "RGB(84,100,122)");
    shape.cells.push_back({"RightMargin", "14 pt"});
    const char* shoulder = "Width-10 pt";
    GeometryDefinition outline;
    outline.rows = {{"MoveTo", {{"X", "0"}, {"Y", "0"}}},
                    {"LineTo", {{"X", shoulder}, {"Y", "0"}}},
                    {"LineTo", {{"X", "Width"}, {"Y", "Height*0.5"}}},
                    {"LineTo", {{"X", shoulder}, {"Y", "Height"}}},
                    {"LineTo", {{"X", "0"}, {"Y", "Height"}}},
                    {"LineTo", {{"X", "0"}, {"Y", "0"}}}};
    shape.geometry = {outline};
    shape.properties = kWorkProperties;
    return {"Off-page reference", "A record that is on another page.", shape};
}

/// A note is above and to the right of its pin, at the foot of its block and only as large as its text, so
/// that it covers nothing of the box whose pin it is dropped beside. Beside its first line it carries the
/// sign of an index, a triangle on a stem; the stem is on the side that faces the begin point, and the leader
/// runs from there to it. Gluing the begin point to a box ties the note to it. It is one-dimensional (it has
/// end points), but neither placed nor routed.
MasterDefinition Annotation() {
    ShapeDefinition shape;
    shape.cells = {{"BeginX", "PinX-0.35"},
                   {"BeginY", "PinY-0.35"},
                   {"EndX", "GUARD(PinX)"},
                   {"EndY", "GUARD(PinY)"},
                   {"Width", "1.25 in"},
                   {"Height", "0.5 in"},
                   {"LocPinX", "GUARD(0)"},
                   {"LocPinY", "GUARD(0)"},
                   {"FillForegnd", "RGB(255,253,244)"},
                   {"FillPattern", "1"},
                   {"FillForegndTrans", "0.15"},
                   {"LineColor", "RGB(146,116,56)"},
                   {"LineWeight", "0.5 pt"},
                   {"LeftMargin", "IF(BeginX>PinX+0.2 in,3 pt,10 pt)"},
                   {"RightMargin", "IF(BeginX>PinX+0.2 in,10 pt,3 pt)"},
                   {"TopMargin", "3 pt"},
                   {"BottomMargin", "3 pt"},
                   {"VerticalAlign", "2"},
                   {"Para.HorzAlign", "0"},
                   {"Char.Size", "6 pt"},
                   {"Char.Color", "0"},
                   {"ObjType", "4"},
                   {"BeginArrow", "10"},
                   {"BeginArrowSize", "0"}};
    const char* right = "MIN(Width,TEXTWIDTH(TheText))";
    const char* top = "MIN(Height,TEXTHEIGHT(TheText,Width))";
    GeometryDefinition plate;
    plate.noLine = true;
    plate.rows = {{"MoveTo", {{"X", "0"}, {"Y", "0"}}},
                  {"LineTo", {{"X", right}, {"Y", "0"}}},
                  {"LineTo", {{"X", right}, {"Y", top}}},
                  {"LineTo", {{"X", "0"}, {"Y", top}}},
                  {"LineTo", {{"X", "0"}, {"Y", "0"}}}};
    // One path, so that programs draw its begin arrow once: from the begin point to the edge of the plate and
    // to the stem, around the triangle, down the stem. What comes from above ends at the triangle's tip.
    const char* edge = "IF(Geometry2.X1<0,0,IF(Geometry2.X1>Geometry1.X2,Geometry1.X2,Geometry2.X3))";
    const char* height =
        "IF(Geometry2.Y1>Geometry2.Y6,IF(Geometry2.X2=Geometry2.X3,Geometry2.Y6,Geometry2.Y8),"
        "MIN(MAX(Geometry2.Y1,0),Geometry2.Y8))";
    const char* stem = "IF(LeftMargin<RightMargin,Geometry1.X2-0.07 in,0.07 in)";
    GeometryDefinition leader;
    leader.noFill = true;
    leader.rows = {
        {"MoveTo", {{"X", "BeginX-PinX"}, {"Y", "BeginY-PinY"}}},
        {"LineTo", {{"X", edge}, {"Y", height}}},
        {"LineTo", {{"X", stem}, {"Y", "Geometry2.Y2"}}},
        {"LineTo", {{"X", "IF(Geometry2.Y2>Geometry2.Y8,Geometry2.X7,Geometry2.X3)"}, {"Y", "Geometry2.Y8"}}},
        {"LineTo", {{"X", "Geometry2.X3-0.05 in"}, {"Y", "Geometry2.Y8"}}},
        {"LineTo", {{"X", "Geometry2.X3"}, {"Y", "Geometry1.Y3-0.05 in"}}},
        {"LineTo", {{"X", "Geometry2.X3+0.05 in"}, {"Y", "Geometry2.Y8"}}},
        {"LineTo", {{"X", "Geometry2.X3"}, {"Y", "MAX(0,Geometry1.Y3-0.14 in)"}}},
        {"LineTo", {{"X", "Geometry2.X3"}, {"Y", "0"}}}};
    shape.geometry = {plate, leader};
    shape.properties = kWorkProperties;
    return {"Annotation", "A note with a leader to what it explains.", shape};
}

MasterDefinition DynamicConnector() {
    ShapeDefinition shape;
    shape.cells = {{"BeginX", "0"},
                   {"BeginY", "1"},
                   {"EndX", "1"},
                   {"EndY", "0"},
                   {"PinX", "GUARD((BeginX+EndX)/2)"},
                   {"PinY", "GUARD((BeginY+EndY)/2)"},
                   {"Width", "GUARD(EndX-BeginX)"},
                   {"Height", "GUARD(EndY-BeginY)"},
                   {"LocPinX", "GUARD(Width*0.5)"},
                   {"LocPinY", "GUARD(Height*0.5)"},
                   {"Angle", "GUARD(0DA)"},
                   {"FlipX", "GUARD(FALSE)"},
                   {"FlipY", "GUARD(FALSE)"},
                   {"Controls.TextPosition", "Width*0.5"},
                   {"Controls.TextPosition.Y", "Height*0.5"},
                   {"Controls.TextPosition.XDyn", "Controls.TextPosition"},
                   {"Controls.TextPosition.YDyn", "Controls.TextPosition.Y"},
                   {"Controls.TextPosition.XCon", "0"},
                   {"Controls.TextPosition.YCon", "0"},
                   {"Controls.TextPosition.CanGlue", "FALSE"},
                   {"Controls.TextPosition.Prompt", "\"Moves the text\""},
                   {"TxtPinX", "SETATREF(Controls.TextPosition)"},
                   {"TxtPinY", "SETATREF(Controls.TextPosition.Y)"},
                   {"TxtWidth", "MAX(TEXTWIDTH(TheText),5*Char.Size)"},
                   {"TxtHeight", "TEXTHEIGHT(TheText,TxtWidth)"},
                   {"TxtLocPinX", "TxtWidth*0.5"},
                   {"TxtLocPinY", "TxtHeight*0.5"},
                   {"LeftMargin", "2 pt"},
                   {"RightMargin", "2 pt"},
                   {"TopMargin", "1 pt"},
                   {"BottomMargin", "1 pt"},
                   {"VerticalAlign", "1"},
                   {"Para.HorzAlign", "1"},
                   {"Char.Size", "6 pt"},
                   {"Char.Color", "0"},
                   {"TextBkgnd", "RGB(255,255,255)"},
                   {"TextBkgndTrans", "0.25"},
                   {"LineColor", "RGB(84,100,122)"},
                   {"LineWeight", "0.75 pt"},
                   {"EndArrow", "13"},
                   {"EndArrowSize", "1"},
                   {"FillPattern", "0"},
                   {"LockHeight", "1"},
                   {"LockCalcWH", "1"},
                   {"NoAlignBox", "1"},
                   {"DynFeedback", "2"},
                   {"GlueType", "2"},
                   {"ObjType", "2"},
                   {"NoLiveDynamics", "1"},
                   {"ShapeSplittable", "1"}};
    GeometryDefinition line;
    line.noFill = true;
    line.rows = {{"MoveTo", {{"X", "0"}, {"Y", "0"}}}, {"LineTo", {{"X", "Width"}, {"Y", "Height"}}}};
    shape.geometry = {line};
    return {"Dynamic connector", "A line from a set's owner to its member; it follows both.", shape};
}

}  // namespace

StencilDefinition FlowchartShapes() {
    return {"Basic Flowchart Shapes (US units).vss",
            "Basic Flowchart Shapes",
            {Process(), Decision(), Terminator(), OffPageReference(), Annotation(), DynamicConnector()}};
}

}  // namespace norvelis::drawing::stencils
