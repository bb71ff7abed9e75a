#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvelis::drawing {

/// What a strict reader would hold against a package: parts without a content type or that nothing leads to,
/// relationships that lead nowhere, IDs that are there twice, styles, masters, rows, layers or shapes that
/// are named but not there, texts that no row covers, lines whose glue, formulas and values do not agree.
/// Empty for a good one. Reads the bytes by itself, without our reader.
std::vector<std::string> PackageFaults(std::string_view bytes);

}  // namespace norvelis::drawing
