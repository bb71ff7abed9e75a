#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace norvelis {

enum class Severity {
    Warning,  ///< A row is missing, empty, or holds what belongs to another section.
    Note      ///< The report has it and the dictionary has no place for it.
};

enum class FindingKind {
    Encoding,
    LineEnds,
    ColumnsCut,
    ColumnsShifted,
    Tabs,
    FileCutOff,
    TotalsShort,
    SchemaUnnamed,
    NameInHeader,
    NameMissing,
    NameTooLong,
    NamePassedOver,
    NameRepeated,
    LocationModeMissing,
    LengthMissing,
    DataItemsMissing,
    SectionWithoutEnd,
    ValueMissing,
    SectionOfAnother,
    FieldGap,
    FieldRepeated,
    SetsMissing,
    SetWithoutRows,
    OwnerUnknown,
    MemberUnknown,
    SetOfAnother,
    MemberOfAnother,
    MembershipUnmatched,
    IndexWithoutKeys,
    KeyOfAnother,
    KeyWithoutField,
    LevelLeftOut,
    OwnerSystem,
    CalcSet,
    SetToItself,
    NinthIndex,
    SeventeenthKey
};

/// One loss, or what the dictionary cannot hold.
struct Finding {
    FindingKind kind;
    std::size_t line;     ///< In the file, from 1; 0 when it is about the whole report.
    std::string subject;  ///< The record, set or index that it is about; may be empty. UTF-8, as the reason.
    std::string reason;   ///< What was found, as a sentence without its full stop.
};

Severity SeverityOf(FindingKind kind);
std::string_view NameOf(Severity severity);    ///< "warning" or "note".
std::string_view NameOf(FindingKind kind);     ///< Stable, for scripts: "location-mode-missing".
std::string_view RemedyFor(FindingKind kind);  ///< What a person can do about it; empty for notes.

/// "line 4711, CUSTOMER: the reason (the remedy)", without severity.
std::string WordsOf(const Finding& finding);

/// How many of them are warnings.
std::size_t CountWarnings(const std::vector<Finding>& findings);

}  // namespace norvelis
