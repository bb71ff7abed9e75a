#include "diagram/drawing_look.h"

#include "base/ini.h"

namespace norvelis {

namespace {

constexpr auto kSection = "Drawings", kPages = "Pages", kBoxes = "Boxes", kLines = "Lines";
constexpr auto kByArea = "area", kByMode = "mode", kByOwner = "owner", kUsual = "usual";

}  // namespace

void TakeKeptLook(const std::string& ini, DrawOptions& options) {
    const std::string boxes = ReadINIValue(kSection, kBoxes, ini);
    options.pageForEachArea = ReadINIValue(kSection, kPages, ini) == kByArea;
    options.meaning = boxes == kByArea   ? BoxMeaning::Area
                      : boxes == kByMode ? BoxMeaning::LocationMode
                                         : BoxMeaning::None;
    options.linesByOwner = ReadINIValue(kSection, kLines, ini) == kByOwner;
}

void KeepLook(const std::string& ini, const DrawOptions& options) {
    const char* boxes = options.meaning == BoxMeaning::Area           ? kByArea
                        : options.meaning == BoxMeaning::LocationMode ? kByMode
                                                                      : kUsual;
    WriteINIValue(kSection, kPages, options.pageForEachArea ? kByArea : kUsual, ini);
    WriteINIValue(kSection, kBoxes, boxes, ini);
    WriteINIValue(kSection, kLines, options.linesByOwner ? kByOwner : kUsual, ini);
}

}  // namespace norvelis
