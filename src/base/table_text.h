#pragma once

#include <span>
#include <string>
#include <string_view>

// Rows of cells as text that other programs take: the clipboard's form and CSV files.
namespace norvelis {

/// One line as spreadsheets exchange it through the clipboard: cells apart by tabs, an end of line behind the
/// last. A cell that holds a tab, a line break or a double quote is put in double quotes.
void AppendTabLine(std::string& text, std::span<const std::string_view> cells);

/// One line of a CSV file, with CR LF at its end. A cell that a spreadsheet program would take as a formula
/// (its first visible character is = + - or @, and it is no number) gets an apostrophe before it, so that
/// opening the file never calculates or runs anything.
void AppendCsvLine(std::string& text, std::span<const std::string_view> cells);

}  // namespace norvelis
