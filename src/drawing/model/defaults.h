#pragma once

#include <span>
#include <string_view>

#include "drawing/model/names.h"

// What cells hold when nobody states them, as the file format publishes it.
namespace norvelis::drawing {

struct CellDefault {
    std::string_view cell;
    double number = 0;
    const char* text = nullptr;  ///< Of a cell that holds a text.
};

/// Of sheets themselves, then of the rows of text formats; in the order in which files list them.
std::span<const CellDefault> SheetDefaults();
std::span<const CellDefault> CharacterDefaults();
std::span<const CellDefault> ParagraphDefaults();

/// 0 for a cell that the lists do not have.
double DefaultNumber(Name cell);

}  // namespace norvelis::drawing
