#pragma once

#include "layout/graph/style.h"

namespace norvelis::layout {

/// Draws schemas, changes one record of each (added with two sets, removed, renamed), draws them again from
/// their own drawings and without them, and prints how far the other boxes moved, a row a size and change.
void PrintRedraws(const char* choice, const Style& style);

}  // namespace norvelis::layout
