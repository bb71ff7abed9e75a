#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "drawing/formula/recalculation.h"
#include "testing/small_drawing.h"

using namespace norvelis::drawing;

namespace {

void Require(bool holds, const char* what, std::string_view formula) {
    if (holds) return;
    std::fprintf(stderr, "%s: %.*s\n", what, static_cast<int>(formula.size()), formula.data());
    std::abort();
}

/// Two instances of a box on a page.
struct Drawing {
    Drawing() {
        AddStandardStyles(document);
        Master& master = AddBoxMaster(document, "Box");
        page = &document.AddPage("Page-1");
        StatePage(document, page->sheet, 8, 6);
        for (int i = 0; i < 2; ++i) DropInstance(*page, master, i, i).text = TextRuns{{"some text"}};
    }
    Document document;
    Page* page = nullptr;
};

void CheckValues(const Shape& shape, std::string_view formula) {
    for (const auto& cell : shape.cells) {
        Require(std::isfinite(cell.value), "a value without measure", formula);
        Require(!IsCoordinate(cell.name) || std::fabs(cell.value) <= kFarthest, "a place beyond every page",
                formula);
    }
}

}  // namespace

/// Lines "cell=formula", set in turn on the page and on two boxes: each is refused and changes nothing, or is
/// spelled so that it reads back the same; no value leaves the page.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FontLibrary fonts;
    Drawing drawing;
    Recalculation recalculation(drawing.document, fonts);
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    for (int line = 0; !rest.empty() && line < 64; ++line) {
        const std::string_view text = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), text.size() + 1));
        const auto equals = text.find('=');
        const CellRef ref = ParseCellName(drawing.document.names, text.substr(0, equals));
        if (ref.cell == Name::None || equals == std::string_view::npos) continue;
        const std::string_view formula = text.substr(equals + 1);
        Shape& sheet =
            line % 3 == 2 ? drawing.page->sheet : *drawing.page->shapes[static_cast<std::size_t>(line % 3)];
        const std::string before(FormulaOf(sheet, ref));
        if (!recalculation.SetFormula(*drawing.page, sheet, ref, formula)) {
            Require(FormulaOf(sheet, ref) == before, "a refused formula changed its cell", formula);
        } else if (const std::string now(FormulaOf(sheet, ref)); !now.empty()) {
            const auto expression = Expression::Parse(drawing.document.names, now);
            Require(expression != nullptr, "what was stored is no formula", formula);
            Require(expression->IsOpaque() || expression->Text() == now, "the spelling is not the last",
                    formula);
        }
        recalculation.Settle();
        CheckValues(drawing.page->sheet, formula);
        for (const auto& shape : drawing.page->shapes) CheckValues(*shape, formula);
    }
    return 0;
}
