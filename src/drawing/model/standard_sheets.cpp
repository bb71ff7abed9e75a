#include "drawing/model/defaults.h"
#include "drawing/model/document.h"

namespace norvelis::drawing {

namespace {

constexpr double kPoint = 1.0 / 72;

/// Every cell there is at the file format's own default.
void StateDefaults(NamePool& names, StyleSheet& style) {
    const auto state = [&names](CellList& cells, std::span<const CellDefault> defaults) {
        for (const CellDefault& each : defaults) {
            const Name name = names.Intern(each.cell);
            each.text ? cells.SetText(name, each.text) : cells.Set(name, each.number);
        }
    };
    const auto firstRow = [&style](Name section) -> CellList& {
        return style.At(section).At(RowKey::Number(0)).cells;
    };
    state(style.cells, SheetDefaults());
    state(firstRow(Name::Character), CharacterDefaults());
    state(firstRow(Name::Paragraph), ParagraphDefaults());
    firstRow(Name::Tabs);
}

StyleSheet& AddStyle(Document& document, const char* name, const StyleSheet* basedOn) {
    auto& style = document.styles.emplace_back(std::make_unique<StyleSheet>());
    style->id = static_cast<int>(document.styles.size()) - 1;
    style->name = name;
    style->lineStyle = style->fillStyle = style->textStyle = basedOn;
    if (basedOn) {
        style->cells.Set(Name::EnableLineProps, 1)
            .Set(Name::EnableFillProps, 1)
            .Set(Name::EnableTextProps, 1);
        style->cells.Set(Name::HideForApply, 0);
    }
    return *style;
}

}  // namespace

void AddStandardStyles(Document& document) {
    if (!document.styles.empty()) return;
    document.FontIndex("Arial");
    StyleSheet& noStyle = AddStyle(document, "No Style", nullptr);
    StateDefaults(document.names, noStyle);

    StyleSheet& textOnly = AddStyle(document, "Text Only", &noStyle);
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

    document.sheet.lineStyle = document.sheet.fillStyle = document.sheet.textStyle = &noStyle;
    for (const Name cell : {Name::OutputFormat, Name::LockPreview, Name::AddMarkup, Name::ViewMarkup,
                            Name::PreviewQuality, Name::PreviewScope})
        document.sheet.cells.Set(cell, 0);
    document.sheet.cells.SetText(Name::DocLangID, "en-US");
}

int PaperOrientation(double width, double height) {
    constexpr int kUpright = 1, kLying = 2;
    return width > height ? kLying : kUpright;
}

void StatePage(const Document& document, Shape& sheet, double width, double height) {
    constexpr double kCustomSize = 3;  // A page of its own size and not the printer's.
    sheet.lineStyle = sheet.fillStyle = sheet.textStyle = document.FindStyle("No Style");
    sheet.cells.Set(Name::PageWidth, width).Set(Name::PageHeight, height);
    sheet.cells.Set(Name::ShdwOffsetX, 0.125).Set(Name::ShdwOffsetY, -0.125);
    for (const Name scale : {Name::PageScale, Name::DrawingScale}) {
        sheet.cells.Set(scale, 1);
        sheet.cells.At(scale).unit = Name::IN;
    }
    sheet.cells.Set(Name::DrawingSizeType, kCustomSize);
    for (const Name cell :
         {Name::DrawingScaleType, Name::InhibitSnap,     Name::UIVisibility,      Name::ShdwType,
          Name::ShdwObliqueAngle, Name::ShdwScaleFactor, Name::DrawingResizeType, Name::ResizePage,
          Name::EnableGrid,       Name::DynamicsOff,     Name::CtrlAsInput,       Name::AvoidPageBreaks,
          Name::PlaceStyle,       Name::RouteStyle,      Name::PlaceDepth,        Name::PlowCode,
          Name::LineJumpCode,     Name::LineJumpStyle,   Name::PageLineJumpDirX,  Name::PageLineJumpDirY,
          Name::LineToNodeX,      Name::LineToNodeY,     Name::BlockSizeX,        Name::BlockSizeY,
          Name::AvenueSizeX,      Name::AvenueSizeY,     Name::LineToLineX,       Name::LineToLineY,
          Name::LineJumpFactorX,  Name::LineJumpFactorY, Name::LineAdjustFrom,    Name::LineAdjustTo,
          Name::PlaceFlip,        Name::LineRouteExt,    Name::PageShapeSplit})
        sheet.cells.Set(cell, DefaultNumber(cell));
    sheet.cells.Set(Name::PrintPageOrientation, PaperOrientation(width, height));
}

}  // namespace norvelis::drawing
