#include "drawing/automation/cell_addresses.h"

#include <algorithm>
#include <array>
#include <utility>

namespace norvelis::drawing {

namespace {

using engine::CellAddress;

constexpr int kObjectSection = 1;

constexpr std::array kObjectCells = std::to_array<std::pair<CellAddress, Name>>({
    {{1, 1, 0}, Name::PinX},
    {{1, 1, 1}, Name::PinY},
    {{1, 1, 2}, Name::Width},
    {{1, 1, 3}, Name::Height},
    {{1, 1, 4}, Name::LocPinX},
    {{1, 1, 5}, Name::LocPinY},
    {{1, 1, 6}, Name::Angle},
    {{1, 3, 0}, Name::FillForegnd},
    {{1, 3, 1}, Name::FillBkgnd},
    {{1, 3, 2}, Name::FillPattern},
    {{1, 4, 0}, Name::BeginX},
    {{1, 4, 1}, Name::BeginY},
    {{1, 4, 2}, Name::EndX},
    {{1, 4, 3}, Name::EndY},
    {{1, 5, 4}, Name::EventDrop},
    {{1, 17, 16}, Name::Comment},
    {{1, 22, 4}, Name::IsTextEditTarget},
    {{1, 24, 0}, Name::ResizePage},
    {{1, 24, 1}, Name::EnableGrid},
    {{1, 24, 2}, Name::DynamicsOff},
    {{1, 24, 3}, Name::CtrlAsInput},
    {{1, 24, 8}, Name::PlaceStyle},
    {{1, 24, 9}, Name::RouteStyle},
    {{1, 24, 10}, Name::PlaceDepth},
    {{1, 24, 29}, Name::LineRouteExt},
});

// By their published numbers; number 1 is not in use.
constexpr std::array kLayerCells = {Name::Name,  Name::None,   Name::Color, Name::Status, Name::Visible,
                                    Name::Print, Name::Active, Name::Lock,  Name::Snap,   Name::Glue};

}  // namespace

std::optional<CellRef> CellAt(const CellAddress& address) {
    if (address.section != kObjectSection) return std::nullopt;
    const auto found = std::find_if(kObjectCells.begin(), kObjectCells.end(),
                                    [&](const auto& known) { return known.first == address; });
    if (found == kObjectCells.end()) return std::nullopt;
    return CellRef(found->second);
}

std::optional<Name> LayerCell(int number) {
    if (number < 0 || number >= static_cast<int>(kLayerCells.size())) return std::nullopt;
    const Name cell = kLayerCells[static_cast<std::size_t>(number)];
    return cell == Name::None ? std::nullopt : std::optional(cell);
}

}  // namespace norvelis::drawing
