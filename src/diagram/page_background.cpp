#include "diagram/page_background.h"

#include <filesystem>
#include <string_view>

#include "core/settings.h"
#include "diagram/common.h"
#include "diagram/page_layout.h"
#include "diagram/title_facts.h"

namespace norvelis {

using engine::Ref;

namespace {

const std::string kBackgroundStencil = "Backgrounds (US units).vss";
const std::string kTitleStencil = "Borders and Titles (US units).vss";

/// Where the title block is: a quarter inch in from the upper left corner, wherever the page ends.
constexpr std::string_view kTitleInset = "0.25";
const std::string kTitlePinY =
    "ThePage!PageHeight-Height * 0.1 - 0.125 - " + std::string(kTitleInset) + " in";
std::string TitlePinX(std::string_view distance) {
    return "Width * 0.2 + " + std::string(distance) + " + " + std::string(kTitleInset) + " in";
}

Ref<engine::Master> MasterOf(const Ref<engine::Document>& stencil, const std::string& name) {
    const auto masters = stencil ? stencil->Masters() : nullptr;
    return masters ? masters->Item(name) : nullptr;
}

/// The drawing's own copy of the background, which asks nothing when it is dropped.
Ref<engine::Master> CopyBackground(engine::Document& document, const Ref<engine::Master>& master) {
    const auto copy = master ? document.Drop(master, 0, 0) : nullptr;
    const auto open = copy ? copy->Open() : nullptr;
    if (!open) return copy;
    const auto shapes = open->Shapes();
    const ShapeRef first = shapes ? shapes->Item(1) : nullptr;
    if (first) SetFormulaU(first->CellsSRC(engine::kEventDrop), QuoteFormula(""));
    open->Close();
    return copy;
}

/// Drops background and title on a locked layer; the title's shape.
ShapeRef DecoratePage(DrawingState& drawing, engine::Page& page, const PageMasters& masters,
                      const std::string& title, std::string_view titleDistance) {
    const auto layers = page.Layers();
    const auto layer = layers ? layers->Add(kDecorationLayer) : nullptr;
    ShowText(drawing, "Formating Page " + title);
    if (const ShapeRef background = masters.background ? page.Drop(masters.background, 0, 0) : nullptr) {
        background->SendToBack();
        if (layer) layer->Add(background, 0);
    }
    const ShapeRef block = masters.title ? page.Drop(masters.title, 0, 0) : nullptr;
    if (block) {
        block->SetText(title);
        if (layer) layer->Add(block, 0);
        SetFormulaU(block->CellsSRC(engine::kPinX), TitlePinX(titleDistance));
        SetFormulaU(block->CellsSRC(engine::kPinY), kTitlePinY);
    }
    if (layer) SetFormulaU(layer->CellsC(engine::kLayerLockCell), "TRUE");
    return block;
}

}  // namespace

PageMasters PreparePageMasters(DrawingState& drawing, engine::Document& document) {
    PageMasters result;
    const auto application = document.Application();
    const auto documents = application ? application->Documents() : nullptr;
    const auto backgrounds = GetStencil(drawing.reportOnce, documents, kBackgroundStencil);
    if (!backgrounds) return result;
    const std::string name = drawing.options.background.value_or(getvisiobackground(drawing.app));
    result.background = CopyBackground(document, MasterOf(backgrounds, name));
    const auto titles = GetStencil(drawing.reportOnce, documents, kTitleStencil);
    if (!titles) return result;
    result.title = MasterOf(titles, "Title block deco");
    if (HasLegend(drawing))
        result.legend = {MasterOf(titles, "Legend heading"), MasterOf(titles, "Legend entry")};
    result.complete = true;
    drawing.app.host.Yield();
    return result;
}

void formatPageBackground(DrawingState& drawing, const PageRef& page, const std::string& title) {
    const auto document = page ? page->Document() : nullptr;
    if (document) formatPageBackground(drawing, page, PreparePageMasters(drawing, *document), title);
}

void formatPageBackground(DrawingState& drawing, const PageRef& page, const PageMasters& masters,
                          const std::string& title) {
    if (!masters.complete) return;
    const ShapeRef block = DecoratePage(drawing, *page, masters, title, "0.625");
    drawing.app.host.Yield();
    if (block) {
        SetFormula(block->Cells("Char.Size"), kSixPoints);
        if (const ShapeRef facts = PartOf(*block, "Facts")) facts->SetText(TitleFacts(drawing));
        AddLegend(drawing, page, masters.legend, *block);
    }
    drawing.app.host.Yield();
    ApplyLayout(drawing.app.host, *page, drawing.options.layout, drawing.formerPage);
    page->ResizeToFitContents();
    page->CenterDrawing();
}

void formatBackgroundAndTitle(DrawingState& drawing, engine::Document& document, const std::string& title) {
    document.SetFooterLeft("&d &t");
    const PageMasters masters = PreparePageMasters(drawing, document);
    if (!masters.complete) return;
    const auto pages = document.Pages();
    const int count = pages ? pages->Count() : 0;
    for (int i = 1; i <= count; ++i) {
        if (const PageRef page = pages->Item(i)) DecoratePage(drawing, *page, masters, title, "0.425");
    }
}

engine::SaveResult SaveWithBackground(DrawingState& drawing, engine::Document& document,
                                      const std::string& fileName) {
    formatBackgroundAndTitle(drawing, document, std::filesystem::path(fileName).stem().string());
    return document.SaveAs(fileName);
}

}  // namespace norvelis
