#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

namespace norvelis {

inline constexpr std::string_view kFindingsHeading =
    "SEVERITY|SCHEMA|LINE|ABOUT|WHAT IS LOST|WHAT TO DO|KIND";

/// What reading the dictionary's reports lost: warnings, then notes, each in the order of its report.
struct FindingsList {
    std::vector<std::array<std::string, 7>> rows;
    std::size_t warnings = 0;  ///< How many of the rows.
};

/// A list that a newer program wrote is a RuntimeFailure with words that say so.
FindingsList LoadFindings(Connection& store);

/// Warnings alone; 0 also where a newer program wrote the list.
std::size_t CountFoundWarnings(Connection& store);

}  // namespace norvelis
