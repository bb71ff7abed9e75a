#include "paper/sheet_choice.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/failure.h"
#include "base/text.h"
#include "base/whole_number.h"

namespace norvelis::paper {

namespace {

struct KnownPaper {
    std::string_view name;
    double width, height;
};
constexpr std::array<KnownPaper, 6> kPapers = {{{"A4", 210, 297},
                                                {"A3", 297, 420},
                                                {"A2", 420, 594},
                                                {"A1", 594, 841},
                                                {"A0", 841, 1189},
                                                {"Letter", 215.9, 279.4}}};

[[noreturn]] void Refuse(const std::string& words) {
    throw RuntimeFailure(FailureNumber::InvalidCall, words);
}

/// A whole number of at most six digits from 1.
std::optional<int> Number(std::string_view text) {
    const auto number = WholeNumber<int>(Trim(text));
    return number && *number >= 1 && *number <= 999'999 ? number : std::nullopt;
}

}  // namespace

std::vector<Paper> Papers() {
    std::vector<Paper> papers;
    for (const auto& [name, width, height] : kPapers) papers.push_back({std::string(name), width, height});
    return papers;
}

Paper PaperNamed(std::string_view name) {
    std::string known;
    for (const Paper& paper : Papers()) {
        if (EqualIgnoringCase(paper.name, Trim(name))) return paper;
        known += (known.empty() ? "" : ", ") + paper.name;
    }
    Refuse("there is no paper " + std::string(name) + "; known are " + known);
}

void ParseGrid(std::string_view text, SheetChoice& choice) {
    const auto by = text.find_first_of("xX");
    const auto columns = Number(text.substr(0, by));
    const auto rows = by == std::string_view::npos ? std::nullopt : Number(text.substr(by + 1));
    if (!columns || !rows || *columns > kMostSheetsInRow || *rows > kMostSheetsInRow)
        Refuse("sheets are columns and rows from 1 to " + std::to_string(kMostSheetsInRow) +
               ", such as 3x2, not " + std::string(text));
    choice.fit = Fit::Grid;
    choice.columns = *columns;
    choice.rows = *rows;
}

double ParseLength(std::string_view text) {
    static constexpr std::pair<std::string_view, double> kUnits[] = {{"mm", 1}, {"cm", 10}, {"in", 25.4}};
    const std::string lower = LowerCase(Trim(text));
    std::string_view number = lower;
    double unit = 1;
    for (const auto& [name, millimetres] : kUnits) {
        if (!number.ends_with(name)) continue;
        number.remove_suffix(name.size());
        unit = millimetres;
        break;
    }
    if (!IsNumeric(number) || Val(number) < 0 || Val(number) * unit > kMostOverlap)
        Refuse("an overlap is a length from 0 to " + std::to_string(static_cast<int>(kMostOverlap)) +
               "mm, such as 10mm, not " + std::string(text));
    return Val(number) * unit;
}

std::string CountedSheets(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " sheet" : " sheets");
}

std::vector<int> ParseSheetNumbers(std::string_view text) {
    std::vector<int> numbers;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string_view part = text.substr(begin, end - begin);
        const auto dash = part.find('-');
        const auto first = Number(part.substr(0, dash));
        const auto last = dash == std::string_view::npos ? first : Number(part.substr(dash + 1));
        if (!first || !last || *last < *first)
            Refuse("sheets are numbers and ranges such as 3,5-6, not " + std::string(text));
        for (int number = *first; number <= *last; ++number) numbers.push_back(number);
        begin = end + 1;
    }
    return numbers;
}

}  // namespace norvelis::paper
