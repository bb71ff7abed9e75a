#pragma once

#include <string>

namespace norvelis::paper {

/// What the footer says of the drawing beside the sheet's number; an empty text is left out.
struct Footer {
    std::string name, schemaVersion, reportDate, printDate;
};

/// "EMPSCHM   schema version 0001   report of 03/14/24   printed 11/25/2026"
std::string DrawingWords(const Footer& footer);

/// "sheet 3 of 6, row 1 column 3"
std::string SheetWords(int sheet, int count, int row, int column);

}  // namespace norvelis::paper
