#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "compare/comparison.h"

// A comparison in words.
namespace norvelis::compare {

std::string_view NameOf(Kind kind);      ///< "record".
std::string_view NameOf(Change change);  ///< "added".

/// "+2 records, -1 set, 14 fields changed": how many of each kind. "no differences" when there are none but
/// the schema's own name, release, version and date.
std::string Summary(const Comparison& comparison);

inline constexpr std::array<std::string_view, 7> kRowHeadings = {"KIND", "CHANGE", "NAME",   "IN",
                                                                 "WHAT", "FORMER", "PRESENT"};
using Row = std::array<std::string, kRowHeadings.size()>;

/// A row for each value of each difference.
std::vector<Row> Rows(const Comparison& comparison);

}  // namespace norvelis::compare
