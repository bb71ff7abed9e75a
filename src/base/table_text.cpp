#include "base/table_text.h"

#include "base/text.h"

namespace norvelis {

namespace {

void AppendCell(std::string& text, std::string_view cell, std::string_view quotedFor) {
    if (cell.find_first_of(quotedFor) == std::string_view::npos) {
        text += cell;
        return;
    }
    text += '"';
    for (const char c : cell) text.append(c == '"' ? 2 : 1, c);
    text += '"';
}

bool WouldBeFormula(std::string_view cell) {
    const auto first = cell.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return false;
    return std::string_view("=+-@").find(cell[first]) != std::string_view::npos && !IsNumeric(cell);
}

}  // namespace

void AppendTabLine(std::string& text, std::span<const std::string_view> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) text += '\t';
        AppendCell(text, cells[i], "\t\r\n\"");
    }
    text += '\n';
}

// Semicolons part cells where the comma is the decimal sign, and blanks at the ends are often cut: cells with
// either are quoted as well.
void AppendCsvLine(std::string& text, std::span<const std::string_view> cells) {
    std::string protectedCell;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) text += ',';
        std::string_view cell = cells[i];
        if (WouldBeFormula(cell)) cell = protectedCell = '\'' + std::string(cell);
        const bool blankEnds = Trim(cell).size() != cell.size();
        AppendCell(text, cell, blankEnds ? " ,;\t\r\n\"" : ",;\t\r\n\"");
    }
    text += kLineBreak;
}

}  // namespace norvelis
