#pragma once

#include <cstddef>
#include <cstdint>

// How much of a file is read before it is refused. Generous for drawings (ten thousand boxes with all their
// lines need less than half of each), small enough that whatever a file claims costs seconds and about a
// gigabyte at most.
namespace norvelis::drawing::limits {

inline constexpr std::uint64_t kBytes = 256u << 20;  ///< Of all parts, unpacked.
inline constexpr std::int64_t kParts = 20000;
inline constexpr std::size_t kElements = 5'000'000;  ///< Of all parts together.
inline constexpr std::size_t kAttributes = 15'000'000;
inline constexpr std::size_t kPages = 2000;
inline constexpr std::size_t kMasters = 5000;
inline constexpr std::size_t kStyles = 500;
inline constexpr std::size_t kFonts = 1000;
inline constexpr int kShapes = 400'000;
inline constexpr int kGroupDepth = 48;
inline constexpr int kMasterDepth = 16;  ///< Masters that are made of masters.
inline constexpr std::size_t kCellsOfARow = 400;
inline constexpr std::size_t kSections = 500;       ///< Of one shape.
inline constexpr int kRowNumber = 0x7000;           ///< Of rows and of geometry sections.
inline constexpr std::size_t kNameBytes = 1000;     ///< Of a page or master.
inline constexpr std::size_t kTextBytes = 256'000;  ///< Of one shape.

}  // namespace norvelis::drawing::limits
