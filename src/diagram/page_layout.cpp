#include "diagram/page_layout.h"

#include <algorithm>

#include "base/text.h"
#include "diagram/drawing_state.h"

namespace norvelis {

using engine::kLineRouteExtCell;
using engine::kPlaceDepthCell;
using engine::kPlaceStyleCell;
using engine::kRouteStyleCell;

const std::array<LayoutType, 8> kLayoutTypes = {{
    {"-Default Layout-", 1, 0, 5, 0, 0},
    {"RadialDefault", 3, 2, 2, kLineRouteExtCell, 2},
    {"RadialRightAngle", 3, 3, 1, kLineRouteExtCell, 1},
    {"RadialSimpleVH", 3, 3, 22, kLineRouteExtCell, 2},
    {"TopToBottom", 1, 1, 3, kLineRouteExtCell, 1},
    {"LeftToRight", 2, 1, 1, kLineRouteExtCell, 2},
    {"CircularSimpleHV", 6, 2, 21, kLineRouteExtCell, 2},
    {"CircularDeep", 6, 2, 0, 1, 1},
}};

namespace {

constexpr LayoutType kNoLayout{"", 0, 0, 0, kLineRouteExtCell, 0};

engine::Ref<engine::Cell> LayoutCell(engine::Page& page, int cell) {
    const auto sheet = page.PageSheet();
    return sheet ? sheet->CellsSRC({engine::kPageLayoutSection, engine::kPageLayoutRow, cell}) : nullptr;
}

}  // namespace

std::optional<int> LayoutIndex(std::string_view name) {
    const auto bare = [](std::string_view text) {
        while (text.starts_with('-')) text.remove_prefix(1);
        while (text.ends_with('-')) text.remove_suffix(1);
        constexpr std::string_view word = " layout";
        const std::size_t size = text.size() - std::min(text.size(), word.size());
        return EqualIgnoringCase(text.substr(size), word) ? text.substr(0, size) : text;
    };
    for (std::size_t i = 0; i < kLayoutTypes.size(); ++i) {
        if (EqualIgnoringCase(bare(kLayoutTypes[i].name), bare(name))) return static_cast<int>(i);
    }
    return std::nullopt;
}

void ApplyLayout(Host& host, engine::Page& page, int index, const engine::Ref<engine::Page>& former) {
    const bool known = index >= 0 && index < static_cast<int>(kLayoutTypes.size());
    const LayoutType& type = known ? kLayoutTypes[static_cast<std::size_t>(index)] : kNoLayout;
    if (index == 0) {
        const auto write = [&page](int number, int value) {
            if (const auto cell = LayoutCell(page, number)) cell->SetResult(engine::Unit::NoCast, value);
        };
        write(kPlaceStyleCell, type.placeStyle);
        write(kRouteStyleCell, type.routeStyle);
    } else {
        SetLayoutCell(page, kPlaceStyleCell, type.placeStyle);
        SetLayoutCell(page, kPlaceDepthCell, type.placeDepth);
        host.Yield();
        SetLayoutCell(page, kRouteStyleCell, type.routeStyle);
        SetLayoutCell(page, type.fourthCell, type.fourthValue);
    }
    former ? page.LayoutLike(former) : page.Layout();
    page.ResizeToFitContents();
    page.CenterDrawing();
}

double PointsOnA0(engine::Page& page) {
    constexpr double kLong = 46.81, kShort = 33.11;  // Sides of the sheet in inches.
    const auto sheet = page.PageSheet();
    const auto side = [&sheet](const char* name) {
        const auto cell = sheet ? sheet->Cells(name) : nullptr;
        return (cell ? cell->ResultIU() : std::nullopt).value_or(0);
    };
    const auto [shorter, longer] = std::minmax({side("PageWidth"), side("PageHeight")});
    const double scale = std::min({1.0, kLong / std::max(longer, 1.0), kShort / std::max(shorter, 1.0)});
    return scale * kLabelPoints;
}

void SetLayoutCell(engine::Page& page, int cell, int value) {
    if (const auto layoutCell = LayoutCell(page, cell)) layoutCell->SetResultIU(value);
}

}  // namespace norvelis
