#include "drawing/model/document.h"

namespace norvelis::drawing {

namespace {

constexpr double kPoint = 1.0 / 72;

/// Every cell that formats can differ in, at the file format's own default.
void StateDefaults(StyleSheet& style) {
    using enum drawing::Name;
    const CellRef cells[] = {
        EnableLineProps, EnableFillProps,  EnableTextProps, HideForApply,     LineWeight,     LineColor,
        LinePattern,     Rounding,         EndArrowSize,    BeginArrow,       EndArrow,       LineCap,
        BeginArrowSize,  LineColorTrans,   FillForegnd,     FillBkgnd,        FillPattern,    ShdwForegnd,
        ShdwPattern,     FillForegndTrans, FillBkgndTrans,  ShdwForegndTrans, LeftMargin,     RightMargin,
        TopMargin,       BottomMargin,     VerticalAlign,   TextBkgnd,        DefaultTabStop, TextDirection,
        TextBkgndTrans};
    for (const auto& ref : cells) style.LocalAt(ref).SetNumber(DefaultNumber(ref));
    for (const auto on : {EnableLineProps, EnableFillProps, EnableTextProps}) style.cells.Set(on, 1);
    const auto row = [](drawing::Name section, drawing::Name cell) {
        return CellRef(section, 0, RowKey::Number(0), cell);
    };
    for (const auto cell : {Font, Color, Style, Case, Pos, FontScale, Size, Letterspace, ColorTrans}) {
        style.LocalAt(row(Character, cell)).SetNumber(DefaultNumber(cell));
    }
    for (const auto cell : {IndFirst, IndLeft, IndRight, SpLine, SpBefore, SpAfter, HorzAlign, Bullet}) {
        style.LocalAt(row(Paragraph, cell)).SetNumber(DefaultNumber(cell));
    }
}

StyleSheet& AddStyle(Document& document, const char* name, const StyleSheet* basedOn) {
    auto& style = document.styles.emplace_back(std::make_unique<StyleSheet>());
    style->id = static_cast<int>(document.styles.size()) - 1;
    style->name = name;
    style->lineStyle = style->fillStyle = style->textStyle = basedOn;
    return *style;
}

}  // namespace

void AddStandardStyles(Document& document) {
    if (!document.styles.empty()) return;
    document.FontIndex("Arial");
    StyleSheet& noStyle = AddStyle(document, "No Style", nullptr);
    StateDefaults(noStyle);

    StyleSheet& textOnly = AddStyle(document, "Text Only", &noStyle);
    textOnly.cells.Set(Name::EnableLineProps, 1).Set(Name::EnableFillProps, 1).Set(Name::EnableTextProps, 1);
    textOnly.cells.Set(Name::LinePattern, 0).Set(Name::FillPattern, 0).Set(Name::VerticalAlign, 0);
    textOnly.LocalAt({Name::Paragraph, 0, RowKey::Number(0), Name::HorzAlign}).SetNumber(0);

    StyleSheet& none = AddStyle(document, "None", &noStyle);
    none.cells.Set(Name::LinePattern, 0).Set(Name::FillPattern, 0);

    StyleSheet& normal = AddStyle(document, "Normal", &noStyle);
    for (const Name margin : {Name::LeftMargin, Name::RightMargin, Name::TopMargin, Name::BottomMargin}) {
        normal.cells.Set(margin, 4 * kPoint);
    }
    normal.LocalAt({Name::Character, 0, RowKey::Number(0), Name::Size}).SetNumber(8 * kPoint);

    StyleSheet& connector = AddStyle(document, "Connector", &normal);
    connector.cells.Set(Name::TextBkgnd, 2).Set(Name::FillPattern, 0);
}

}  // namespace norvelis::drawing
