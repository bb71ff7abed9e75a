#include "extract/findings.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "dictionary/findings.h"

namespace norvelis {

namespace {

using enum Severity;

constexpr std::string_view kRepair = "extract it with --repair";
constexpr std::string_view kPrintAgain = "print the report again, or mend the line";
constexpr std::string_view kSendWhole = "send the whole file again";
constexpr std::string_view kCheckNames = "check the rows of both";

struct KindText {
    FindingKind kind;
    Severity severity;
    std::string_view name, remedy;
};
// In the order of the kinds.
constexpr std::array kKinds = {
    KindText{FindingKind::Encoding, Warning, "encoding", kRepair},
    KindText{FindingKind::LineEnds, Warning, "line-ends", kRepair},
    KindText{FindingKind::ColumnsCut, Warning, "columns-cut", "send the file with lines of 133 columns"},
    KindText{FindingKind::ColumnsShifted, Warning, "columns-shifted", kRepair},
    KindText{FindingKind::Tabs, Warning, "tabs", kRepair},
    KindText{FindingKind::FileCutOff, Warning, "file-cut-off", kSendWhole},
    KindText{FindingKind::TotalsShort, Warning, "totals-short", kSendWhole},
    KindText{FindingKind::SchemaUnnamed, Warning, "schema-unnamed",
             "extract it with --schema NAME or --repair"},
    KindText{FindingKind::NameInHeader, Warning, "name-in-header", kRepair},
    KindText{FindingKind::NameMissing, Warning, "name-missing", kPrintAgain},
    KindText{FindingKind::NameTooLong, Warning, "name-too-long", "shorten the name in the report"},
    KindText{FindingKind::NamePassedOver, Warning, "name-passed-over", kPrintAgain},
    KindText{FindingKind::NameRepeated, Warning, "name-repeated", "remove one of the sections"},
    KindText{FindingKind::LocationModeMissing, Warning, "location-mode-missing", kRepair},
    KindText{FindingKind::LengthMissing, Warning, "length-missing", kPrintAgain},
    KindText{FindingKind::DataItemsMissing, Warning, "data-items-missing", kPrintAgain},
    KindText{FindingKind::SectionWithoutEnd, Warning, "section-without-end", kSendWhole},
    KindText{FindingKind::ValueMissing, Warning, "value-missing", kPrintAgain},
    KindText{FindingKind::SectionOfAnother, Warning, "section-of-another", kCheckNames},
    KindText{FindingKind::FieldGap, Warning, "field-gap", kPrintAgain},
    KindText{FindingKind::FieldRepeated, Warning, "field-repeated", "remove one of the lines"},
    KindText{FindingKind::SetsMissing, Warning, "sets-missing", kRepair},
    KindText{FindingKind::SetWithoutRows, Warning, "set-without-rows", kPrintAgain},
    KindText{FindingKind::OwnerUnknown, Warning, "owner-unknown", kPrintAgain},
    KindText{FindingKind::MemberUnknown, Warning, "member-unknown", kPrintAgain},
    KindText{FindingKind::SetOfAnother, Warning, "set-of-another", kCheckNames},
    KindText{FindingKind::MemberOfAnother, Warning, "member-of-another", kCheckNames},
    KindText{FindingKind::MembershipUnmatched, Warning, "membership-unmatched", kPrintAgain},
    KindText{FindingKind::IndexWithoutKeys, Warning, "index-without-keys", kPrintAgain},
    KindText{FindingKind::KeyOfAnother, Warning, "key-of-another", kCheckNames},
    KindText{FindingKind::KeyWithoutField, Warning, "key-without-field", kRepair},
    KindText{FindingKind::LevelLeftOut, Note, "level-left-out", {}},
    KindText{FindingKind::OwnerSystem, Note, "owner-system", {}},
    KindText{FindingKind::CalcSet, Note, "calc-set", {}},
    KindText{FindingKind::SetToItself, Note, "set-to-itself", {}},
    KindText{FindingKind::NinthIndex, Note, "ninth-index", {}},
    KindText{FindingKind::SeventeenthKey, Note, "seventeenth-key", {}},
};
static_assert(kKinds.back().kind == FindingKind::SeventeenthKey);
static_assert(kKinds.size() == static_cast<std::size_t>(FindingKind::SeventeenthKey) + 1);

const KindText& TextOf(FindingKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

}  // namespace

Severity SeverityOf(FindingKind kind) {
    return TextOf(kind).severity;
}

std::string_view NameOf(Severity severity) {
    return severity == Warning ? dictionary::kWarning : dictionary::kNote;
}

std::string_view NameOf(FindingKind kind) {
    return TextOf(kind).name;
}

std::string_view RemedyFor(FindingKind kind) {
    return TextOf(kind).remedy;
}

std::string WordsOf(const Finding& finding) {
    std::string words;
    if (finding.line != 0) words += fmt::format("line {}", finding.line);
    if (!finding.subject.empty()) words += (words.empty() ? "" : ", ") + finding.subject;
    if (!words.empty()) words += ": ";
    words += finding.reason;
    if (const auto remedy = RemedyFor(finding.kind); !remedy.empty()) words += fmt::format(" ({})", remedy);
    return words;
}

std::size_t CountWarnings(const std::vector<Finding>& findings) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& finding) { return SeverityOf(finding.kind) == Warning; }));
}

}  // namespace norvelis
