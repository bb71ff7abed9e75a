#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "extract/repair/repaired_report.h"

namespace norvelis::repair {

/// Repairs what stands between the lines of a report in plain form: a header that the reader does not
/// understand or that the first record begins in, page headings and blank lines where they keep a record's
/// location mode or a key's field from being found. Elsewhere they do no harm and stay.
void RepairSections(RepairedReport& report);

/// A header line with "SCHEMA name VERSION n", as it should read; nothing for any other line.
std::optional<std::string> WithSchemaKeyword(std::string_view line);

}  // namespace norvelis::repair
