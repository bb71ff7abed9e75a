#include "copybook/item.h"

#include <algorithm>

#include "base/text.h"
#include "base/whole_number.h"

namespace norvelis::copybook {

namespace {

constexpr int kFirstLevel = 2, kLastLevel = 49;
constexpr long kLargest = 9'999'999;

/// A whole number from 1; nothing for any other text, and for what is no level and no byte of a record.
std::optional<long> NumberIn(std::string_view text) {
    const auto number = WholeNumber<long>(Trim(text));
    return number && *number > 0 && *number <= kLargest ? number : std::nullopt;
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
