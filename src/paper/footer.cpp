#include "paper/footer.h"

#include <fmt/format.h>

#include <string_view>

namespace norvelis::paper {

std::string DrawingWords(const Footer& footer) {
    std::string words = footer.name;
    const auto add = [&words](std::string_view before, const std::string& text) {
        if (text.empty()) return;
        words += (words.empty() ? "" : "   ") + std::string(before) + text;
    };
    add("schema version ", footer.schemaVersion);
    add("report of ", footer.reportDate);
    add("printed ", footer.printDate);
    return words;
}

std::string SheetWords(int sheet, int count, int row, int column) {
    return fmt::format("sheet {} of {}, row {} column {}", sheet, count, row, column);
}

}  // namespace norvelis::paper
