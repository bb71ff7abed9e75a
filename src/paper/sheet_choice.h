#pragma once

#include <string>
#include <string_view>
#include <vector>

// What a person chooses about the sheets that a drawing is printed on. Lengths are millimetres.
namespace norvelis::paper {

struct Paper {
    std::string name;      ///< As printers call it, too.
    double width, height;  ///< Portrait.
    bool operator==(const Paper&) const = default;
};

/// A4 to A0 and Letter.
std::vector<Paper> Papers();
/// Letter case does not count. RuntimeFailure 5 with the known names for an unknown one.
Paper PaperNamed(std::string_view name);

enum class Fit {
    OneSheet,  ///< As large as fits, but no larger than life unless `mayEnlarge`.
    Grid,      ///< As large as fits on `columns` by `rows` sheets.
    Scale      ///< `percent` of life size, on as many sheets as that takes.
};

enum class Turn {
    Best,  ///< Fewer sheets or, with equally many, a larger picture.
    Portrait,
    Landscape
};

struct SheetChoice {
    Fit fit = Fit::OneSheet;
    bool mayEnlarge = false;
    int columns = 1, rows = 1;
    double percent = 100;
    Paper paper{"A4", 210, 297};
    Turn turn = Turn::Best;
    double overlap = 10;  ///< What two neighbors both show; at most kMostOverlap.
    bool cropMarks = true;
    bool footer = true;

    bool operator==(const SheetChoice&) const = default;
};

/// More sheets than this are printed only when the person agrees.
inline constexpr int kSheetsWithoutQuestion = 50;

inline constexpr int kMostSheetsInRow = 100;
inline constexpr double kLeastPercent = 1, kMostPercent = 1000, kMostOverlap = 50;

/// "3x2" is three columns and two rows. Each Parse throws RuntimeFailure 5 that says what was expected.
void ParseGrid(std::string_view text, SheetChoice& choice);
/// "10mm", "1cm", "0.5in"; a bare number is millimetres.
double ParseLength(std::string_view text);
/// "1 sheet", "6 sheets".
std::string CountedSheets(std::size_t count);

/// "3,5-6": sheets by their numbers from 1, in that order.
std::vector<int> ParseSheetNumbers(std::string_view text);

}  // namespace norvelis::paper
