#pragma once

#include <optional>

#include "drawing/model/cell.h"
#include "engine/drawing_engine.h"

namespace norvelis::drawing {

/// The cell that a published address of section, row and cell number means; nothing for numbers that no
/// drawing uses.
std::optional<CellRef> CellAt(const engine::CellAddress& address);

/// The cell of a layer's row by its published number.
std::optional<Name> LayerCell(int number);

}  // namespace norvelis::drawing
