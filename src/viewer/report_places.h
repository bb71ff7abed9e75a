#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "viewer/report_lines.h"

// Where in a report the things are that the dictionary has of it. Names are UTF-8 in any letter case; lines
// count from 0.
namespace norvelis::viewer {

/// Of the report itself, as its header has it; empty when it has none.
std::string SchemaOf(const ReportLines& report);

/// The line that lists a field in the section that begins on line `section`, as far as the report is indexed.
std::optional<std::uint64_t> LineOfField(const ReportLines& report, std::uint64_t section,
                                         std::string_view field);

/// The line on which the section of a set or an index set begins; the report is indexed up to it.
std::optional<std::uint64_t> LineOfSet(ReportLines& report, std::string_view set);

}  // namespace norvelis::viewer
