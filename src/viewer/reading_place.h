#pragma once

#include <cstdint>
#include <string>

// Where a person was in the report that was read last, in section "ViewIDMSReport" of Local.Ini.
namespace norvelis::viewer {

inline constexpr int kSmallestText = 7, kUsualText = 13, kLargestText = 40;

struct ReadingPlace {
    std::uint64_t line = 0;     ///< The first in sight, from 0; 0 also in another report.
    int textSize = kUsualText;  ///< In pixels.
};

ReadingPlace ReadReadingPlace(const std::string& ini, const std::string& report);
void WriteReadingPlace(const std::string& ini, const std::string& report, const ReadingPlace& place);

}  // namespace norvelis::viewer
