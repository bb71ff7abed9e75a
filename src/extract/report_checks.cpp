#include "extract/report_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

#include "base/text.h"
#include "extract/format/keywords.h"
#include "extract/repair/report_form.h"

namespace norvelis {

namespace {

using namespace keywords;

constexpr std::string_view kTotals = "TOTAL";
/// Totals are printed before the sections or behind them.
constexpr std::size_t kWhereTotalsAre = 65536;

// The number before a word: 14 in "TOTALS: 14 RECORDS".
std::optional<std::size_t> NumberBefore(std::string_view line, std::string_view word) {
    const std::size_t column = Column(line, word);
    if (column == 0) return std::nullopt;
    const std::string_view before = TrimEnd(line.substr(0, column - 1));
    const std::string_view digits = before.substr(before.find_last_not_of("0123456789") + 1);
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && end != digits.data() ? std::optional(number) : std::nullopt;
}

void CompareTotal(ExtractionState& state, std::size_t begin, std::string_view line, std::string_view word,
                  std::size_t found) {
    const auto total = NumberBefore(line, word);
    if (!total || *total <= found) return;
    state.Find(FindingKind::TotalsShort, begin, {},
               fmt::format("the report's totals say {}{}, it has sections for {}", *total, word, found));
}

void CheckTotals(ExtractionState& state) {
    const std::string_view bytes = state.report.Bytes();
    std::size_t at = bytes.substr(0, kWhereTotalsAre).find(kTotals);
    if (at == std::string_view::npos && bytes.size() > kWhereTotalsAre)
        at = bytes.find(kTotals, bytes.size() - kWhereTotalsAre);
    if (at == std::string_view::npos) return;
    const std::size_t begin = bytes.rfind('\n', at) + 1;
    std::size_t position = begin;
    const std::string_view line = *state.report.NextLine(position);

    std::size_t records = 0, sets = 0;
    for (const ReportLine& each : state.report.Lines()) {
        if (each.Has(KeywordKind::RecordName)) ++records;
        if (each.Has(KeywordKind::SetAtStart) && !each.Has(KeywordKind::CalcSet)) ++sets;
    }
    CompareTotal(state, begin, line, " RECORDS", records);
    CompareTotal(state, begin, line, " SETS", sets);
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
                            fmt::format("everything is {} columns too far right", form.shift)});
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
