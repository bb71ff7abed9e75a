#pragma once

#include "sqlconv/connection_text.h"

namespace norvelis {

/// Asks the driver to hand over rows as they come in place of reading a whole result first. Some drivers do
/// so only when the connection text says it; what the text says already holds.
void AskToStream(ConnectionText& text);

}  // namespace norvelis
