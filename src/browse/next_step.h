#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvelis {

/// The members of a record: its next_step column, trimmed as a whole and cut at the commas, in their order.
/// Blanks around a single name stay; an empty list has no items.
std::vector<std::string> SplitNextStep(std::string_view list);

}  // namespace norvelis
