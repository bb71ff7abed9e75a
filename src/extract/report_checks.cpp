#include "extract/report_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>

#include "base/text.h"
#include "base/whole_number.h"
#include "extract/format/keywords.h"
#include "extract/repair/report_form.h"

namespace norvelis {

namespace {

using namespace keywords;

constexpr std::string_view kTotals = "TOTAL", kRecords = " RECORDS", kSets = " SETS";
/// Totals are printed before the sections or behind them.
constexpr std::size_t kWhereTotalsAre = 65536;

// The number before a word: 14 in "TOTALS: 14 RECORDS".
std::optional<std::size_t> NumberBefore(std::string_view line, std::string_view word) {
    const std::size_t column = Column(line, word);
    if (column == 0) return std::nullopt;
    const std::string_view before = TrimEnd(line.substr(0, column - 1));
    return WholeNumber<std::size_t>(before.substr(before.find_last_not_of("0123456789") + 1));
}

// Where the line begins.
std::optional<std::size_t> FindTotals(const Report& report) {
    const std::size_t size = report.Bytes().size();
    for (const std::size_t start : {std::size_t(0), size - std::min(size, kWhereTotalsAre)}) {
        std::size_t position = start;
        while (position < std::min(start + kWhereTotalsAre, size)) {
            const std::size_t begin = position;
            const std::string_view line = *report.NextLine(position);
            if (Column(line, kTotals) != 0 && NumberBefore(line, kRecords)) return begin;
        }
    }
    return std::nullopt;
}

void CompareTotal(ExtractionState& state, std::size_t begin, std::string_view word, std::size_t found) {
    std::size_t position = begin;
    const auto total = NumberBefore(*state.report.NextLine(position), word);
    if (!total || *total <= found) return;
    state.Find(FindingKind::TotalsShort, begin, {},
               fmt::format("the report's totals say {}{}, it has sections for {}", *total, word, found));
}

void CheckTotals(ExtractionState& state) {
    const auto totals = FindTotals(state.report);
    if (!totals) return;
    std::size_t records = 0, sets = 0;
    for (const ReportLine& line : state.report.Lines()) {
        if (line.Has(KeywordKind::RecordName)) ++records;
        if (line.Has(KeywordKind::SetAtStart) && !line.Has(KeywordKind::CalcSet)) ++sets;
    }
    CompareTotal(state, *totals, kRecords, records);
    CompareTotal(state, *totals, kSets, sets);
}

// A last line that belongs to a section and has no end was hardly printed so.
void CheckEnd(ExtractionState& state) {
    const std::string_view bytes = state.report.Bytes();
    const auto& lines = state.report.Lines();
    if (lines.empty() || bytes.ends_with('\n')) return;
    if (lines.back().Begin() + state.report.TextOf(lines.back()).size() <
        bytes.size() - bytes.ends_with('\r'))
        return;
    state.Find(FindingKind::FileCutOff, lines.back().Begin(), {},
               "the file ends in the middle of a section's line");
}

}  // namespace

std::vector<Finding> CheckForm(std::string_view bytes) {
    const repair::ReportForm form = repair::FormOf(bytes);
    std::vector<Finding> findings;
    if (form.encoding != repair::Encoding::SingleByte) {
        findings.push_back(
            {FindingKind::Encoding, 0, {}, fmt::format("the file is {}", repair::NameOf(form.encoding))});
    }
    if (form.lineEnds == repair::LineEnds::Return)
        findings.push_back(
            {FindingKind::LineEnds, 0, {}, "lines end with CR alone, so the file is one line"});
    if (form.lineEnds == repair::LineEnds::None) {
        findings.push_back(
            {FindingKind::LineEnds,
             0,
             {},
             fmt::format("the file has no line ends, its lines are {} bytes long", form.lineLength)});
    }
    if (form.firstTab != 0)
        findings.push_back({FindingKind::Tabs, form.firstTab, {}, "tabs take the place of columns"});
    if (form.shift < 0)
        findings.push_back({FindingKind::ColumnsShifted, 0, {}, "the column of carriage control is missing"});
    if (form.shift > 0) {
        findings.push_back({FindingKind::ColumnsShifted,
                            0,
                            {},
                            fmt::format("every line begins in column {}", form.shift + 1)});
    }
    if (form.cutAt != 0) {
        findings.push_back({FindingKind::ColumnsCut,
                            0,
                            {},
                            fmt::format("no line is longer than {} columns: pictures and positions of the "
                                        "fields are cut off",
                                        form.cutAt)});
    }
    return findings;
}

void CheckReport(ExtractionState& state) {
    std::vector<Finding> form = CheckForm(state.report.Bytes());
    // The cause of all the others comes first.
    state.findings.insert(state.findings.begin(), std::make_move_iterator(form.begin()),
                          std::make_move_iterator(form.end()));
    CheckTotals(state);
    CheckEnd(state);
}

}  // namespace norvelis
