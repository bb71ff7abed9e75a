#pragma once

#include <string_view>
#include <vector>

#include "extract/extraction_state.h"
#include "extract/findings.h"

namespace norvelis {

/// What is wrong with the form of a file, be it a report or not: its encoding, line ends and columns.
std::vector<Finding> CheckForm(std::string_view bytes);

/// What both passes together show: the form, sections that are missing by the report's own totals, an end
/// that was cut off.
void CheckReport(ExtractionState& state);

}  // namespace norvelis
