#include "viewer/reading_place.h"

#include <algorithm>

#include "base/ini.h"
#include "base/text.h"

namespace norvelis::viewer {

namespace {

constexpr auto kSection = "ViewIDMSReport", kReport = "Report", kLine = "Line", kTextSize = "TextSize";

}  // namespace

ReadingPlace ReadReadingPlace(const std::string& ini, const std::string& report) {
    ReadingPlace place;
    const double size = Val(ReadINIValue(kSection, kTextSize, ini));
    if (size > 0) place.textSize = static_cast<int>(std::clamp<double>(size, kSmallestText, kLargestText));
    if (ReadINIValue(kSection, kReport, ini) == report)
        place.line =
            static_cast<std::uint64_t>(std::clamp(Val(ReadINIValue(kSection, kLine, ini)), 0.0, 1e15));
    return place;
}

void WriteReadingPlace(const std::string& ini, const std::string& report, const ReadingPlace& place) {
    WriteINIValue(kSection, kReport, report, ini);
    WriteINIValue(kSection, kLine, std::to_string(place.line), ini);
    WriteINIValue(kSection, kTextSize, std::to_string(place.textSize), ini);
}

}  // namespace norvelis::viewer
