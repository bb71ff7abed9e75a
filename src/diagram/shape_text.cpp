#include "diagram/shape_text.h"

#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace norvelis {

using engine::CharProperty;

namespace {

/// A text behind what is there, in bold.
bool Append(engine::Characters& characters, const std::string& text, int color, int size) {
    const auto end = characters.End();
    return end && characters.SetBegin(*end) && characters.SetText(text) &&
           characters.SetCharProps(CharProperty::Color, color) &&
           characters.SetCharProps(CharProperty::Style, engine::kStyleBold) &&
           characters.SetCharProps(CharProperty::Size, size);
}

struct Piece {
    std::string text;
    int color;
    int size;
};

/// One behind the other, as far as the engine takes them.
void WritePieces(engine::Shape& shape, const std::vector<Piece>& pieces) {
    const auto characters = shape.Characters();
    if (!characters) return;
    for (const Piece& piece : pieces) {
        if (!Append(*characters, piece.text, piece.color, piece.size)) return;
    }
    SetDiagramFont(*characters);
}

void SetCharacterSize(engine::Page& page, const std::string& cell, const std::string& size) {
    const auto shapes = page.Shapes();
    const int count = shapes ? shapes->Count() : 0;
    for (int i = 1; i <= count; ++i) {
        if (const ShapeRef shape = shapes->Item(i)) SetFormula(shape->Cells(cell), size);
    }
}

std::vector<PageRef> PagesOf(engine::Document& drawing) {
    std::vector<PageRef> found;
    const auto pages = drawing.Pages();
    const int count = pages ? pages->Count() : 0;
    for (int i = 1; i <= count; ++i) {
        if (PageRef page = pages->Item(i)) found.push_back(std::move(page));
    }
    return found;
}

}  // namespace

int LineBreakPosition(const std::string& text) {
    const auto at = text.find(kLineBreak);
    return at == std::string::npos ? 0 : engine::CharacterCount(std::string_view(text).substr(0, at)) + 1;
}

bool SetDiagramFont(engine::Characters& characters) {
    const auto drawing = characters.Document();
    const auto fonts = drawing ? drawing->Fonts() : nullptr;
    const auto font = fonts ? fonts->Item("Times New Roman") : nullptr;
    const auto id = font ? font->ID() : std::nullopt;
    return id && characters.SetCharProps(CharProperty::Font, *id);
}

void FormatShapeText(const BoxFields& box, engine::Shape& shape) {
    constexpr int kNameSize = 10, kSize = 8;
    const std::string separator = " | ";
    const std::string rule = "\n" + std::string(52, '-');
    WritePieces(shape, {
                           {box.gBoxRecordName, engine::kRed, kNameSize},
                           {rule, engine::kBlack, kSize},
                           {"\n" + box.gBoxTableId, engine::kBlue, kSize},
                           {separator, engine::kBlack, kSize},
                           {box.gBoxRecType, engine::kBlue, kSize},
                           {separator, engine::kBlack, kSize},
                           {box.gBoxRecLen, engine::kBlue, kSize},
                           {separator, engine::kBlack, kSize},
                           {box.gBoxRecMode, engine::kBlue, kSize},
                           {rule, engine::kBlack, kSize},
                           {"\n" + box.gBoxRecKey + separator + box.gBoxDn, engine::kBlue, kSize},
                           {rule, engine::kBlack, kSize},
                           {"\n" + box.gBoxArea, engine::kBlue, kSize},
                       });
}

void FormatReferenceText(const std::string& record, const std::string& page, engine::Shape& shape) {
    constexpr int kNameSize = 8, kSize = 6;
    WritePieces(shape, {{record, engine::kRed, kNameSize}, {"\npage " + page, engine::kBlack, kSize}});
}

void TextFieldAndFormattingDemo(engine::Shape& shape) {
    constexpr int kSize = 6;
    const auto characters = shape.Characters();
    if (!characters || !characters->SetBegin(0)) return;
    const auto text = characters->Text();
    if (!text) return;
    const int length = engine::CharacterCount(Trim(*text));
    if (!characters->SetEnd(LineBreakPosition(*text)) ||
        !characters->SetCharProps(CharProperty::Color, engine::kRed) ||
        !characters->SetCharProps(CharProperty::Style, engine::kStyleBold) ||
        !characters->SetCharProps(CharProperty::Size, kSize)) {
        return;
    }
    const auto end = characters->End();
    if (!end || !characters->SetBegin(*end) || !characters->SetEnd(length) ||
        !characters->SetCharProps(CharProperty::Color, engine::kBlue) ||
        !characters->SetCharProps(CharProperty::Size, kSize)) {
        return;
    }
    SetDiagramFont(*characters);
}

void FontChange(engine::Page& page) {
    SetCharacterSize(page, "Char.Size", kSixPoints);
}

void FontChange(engine::Document& drawing) {
    for (const PageRef& page : PagesOf(drawing)) FontChange(*page);
}

void fMakeChart(engine::Document& drawing) {
    for (const PageRef& page : PagesOf(drawing)) SetCharacterSize(*page, "Char.Size[1]", "= 6 pt.");
}

}  // namespace norvelis
