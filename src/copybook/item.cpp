#include "copybook/item.h"

#include <algorithm>
#include <cctype>

#include "base/text.h"

namespace norvelis::copybook {

namespace {

constexpr int kFirstLevel = 2, kLastLevel = 49;
constexpr std::size_t kMostFigures = 7;

/// A whole number above 0 of at most seven figures; nothing for any other text.
std::optional<long> NumberIn(std::string_view text) {
    text = Trim(text);
    const bool isNumber = !text.empty() && text.size() <= kMostFigures &&
                          std::ranges::all_of(text, [](unsigned char c) { return std::isdigit(c) != 0; });
    const long number = isNumber ? static_cast<long>(Val(text)) : 0;
    return number > 0 ? std::optional(number) : std::nullopt;
}

cobol::Usage UsageOf(const dictionary::FieldContents& field, bool hasPicture) {
    using enum cobol::Usage::Form;
    cobol::Usage usage = cobol::ReadUsage(field.usage);
    if (usage.word.empty()) {
        usage.form = hasPicture ? Display : Group;
        usage.word = hasPicture ? "DISPLAY" : "GROUP";
    }
    return usage;
}

}  // namespace

bool Item::IsFiller() const {
    return name.empty() || EqualIgnoringCase(name, "FILLER");
}

Item ReadItem(const dictionary::FieldContents& field) {
    Item item;
    item.level = static_cast<int>(
        std::clamp<long>(NumberIn(field.level).value_or(kFirstLevel), kFirstLevel, kLastLevel));
    item.name = Trim(field.name);
    item.start = NumberIn(field.start);
    item.end = NumberIn(field.end);
    if (!item.start || !item.end || *item.end < *item.start) item.end.reset();
    // The column of the picture runs into that of the start, which may be all that is in it.
    if (Trim(field.picture) != Trim(field.start)) item.picture = UpperCase(cobol::PictureWord(field.picture));
    item.usage = UsageOf(field, !item.picture.empty());
    item.occurs = std::max(item.usage.most, 1L);
    if (item.IsGroup()) item.picture.clear();
    return item;
}

}  // namespace norvelis::copybook
