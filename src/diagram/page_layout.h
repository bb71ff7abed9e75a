#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "core/host.h"
#include "engine/drawing_engine.h"

// The choice of LayoutTypes as cells of the page layout row; placing and routing are the engine's.
namespace norvelis {

struct LayoutType {
    std::string_view name;
    int placeStyle;  ///< 1 top to bottom, 2 left to right, 3 radial, 6 circular.
    int placeDepth;
    int routeStyle;
    int fourthCell, fourthValue;
};

/// In the order of the list. The first writes place and route style alone.
extern const std::array<LayoutType, 8> kLayoutTypes;

/// The place of a layout in the list by its name, letter case, hyphens around it and the word " layout"
/// ignored.
std::optional<int> LayoutIndex(std::string_view name);

/// Writes the choice, an index that is none as zeros, and has the engine lay the page out, like `former`
/// where that is not null.
void ApplyLayout(Host& host, engine::Page& page, int index,
                 const engine::Ref<engine::Page>& former = nullptr);

/// How high a label of six points is when the page is made smaller to fit one A0 sheet, in points; six where
/// it fits as it is.
double PointsOnA0(engine::Page& page);

/// One cell of the page layout row.
void SetLayoutCell(engine::Page& page, int cell, int value);

}  // namespace norvelis
