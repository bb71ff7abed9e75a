#include "copybook/item.h"

#include <algorithm>
#include <cctype>
#include <vector>

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

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (text = Trim(text); !text.empty(); text = Trim(text)) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.push_back(UpperCase(text.substr(0, end)));
        text.remove_prefix(end);
    }
    return words;
}

void ReadUsage(std::string_view column, Item& item) {
    const std::vector<std::string> words = WordsOf(column);
    std::size_t i = 0;
    const auto number = [&words](std::size_t at) {
        return at < words.size() ? NumberIn(words[at]) : std::nullopt;
    };
    if (i < words.size() && words[i] != "OCCURS") item.usage = words[i++];
    for (; i < words.size(); ++i) {
        if (words[i] == "OCCURS" && number(i + 1)) {
            item.occurs = *number(++i);
            if (i + 2 >= words.size() || words[i + 1] != "TO" || !number(i + 2)) continue;
            item.occursAtLeast = item.occurs;
            item.occurs = *number(i += 2);
        } else if (words[i] != "TIMES") {
            item.otherWords += (item.otherWords.empty() ? "" : " ") + words[i];
        }
    }
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
    ReadUsage(field.usage, item);
    item.start = NumberIn(field.start);
    item.end = NumberIn(field.end);
    if (!item.start || !item.end || *item.end < *item.start) item.end.reset();
    // The column of the picture runs into that of the start, which may be all that is in it.
    const auto words = WordsOf(field.picture);
    if (!words.empty() && !(words.size() == 1 && words[0] == Trim(field.start))) item.picture = words[0];
    if (item.usage.empty()) item.usage = item.picture.empty() ? "GROUP" : "DISPLAY";
    if (item.IsGroup()) item.picture.clear();
    return item;
}

}  // namespace norvelis::copybook
