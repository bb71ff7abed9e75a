#pragma once

#include <string>

#include "diagram/drawing_state.h"

// What a person wants drawings of the screens to look like, as Local.Ini keeps it in section "Drawings".
// Command line and schedules do not look there: they draw what they were told.
namespace norvelis {

/// Puts what is kept into the options: pages by area, what fills mean, lines by owner. What is not kept, or
/// in words that nobody knows, is as usual.
void TakeKeptLook(const std::string& ini, DrawOptions& options);
void KeepLook(const std::string& ini, const DrawOptions& options);

}  // namespace norvelis
