#include "compare/values.h"

#include <algorithm>
#include <cctype>

#include "base/text.h"

namespace norvelis::compare {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// Calls `use` with each word of the text.
template <class Use>
void ForEachWord(std::string_view text, Use use) {
    for (std::size_t at = text.find_first_not_of(kBlanks); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
        use(text.substr(at, end - at));
        at = text.find_first_not_of(kBlanks, end);
    }
}

bool AllDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](unsigned char c) { return std::isdigit(c) != 0; });
}

std::string_view WithoutZeros(std::string_view number) {
    return number.substr(std::min(number.find_first_not_of('0'), number.size()));
}

}  // namespace

std::string Plain(std::string_view text) {
    std::string plain;
    ForEachWord(text, [&plain](std::string_view word) {
        if (!plain.empty()) plain += ' ';
        plain += word;
    });
    return plain;
}

bool SameText(std::string_view a, std::string_view b) {
    return a == b || EqualIgnoringCase(Plain(a), Plain(b));
}

std::string Picture(const dictionary::FieldContents& field) {
    const std::string_view text = Trim(field.picture);
    const std::size_t blank = text.rfind(' ');
    if (blank == std::string_view::npos) return std::string(text);
    const bool isStart = Trim(field.start).starts_with(text.substr(blank + 1));
    return Plain(isStart ? text.substr(0, blank) : text);
}

std::string Position(const dictionary::FieldContents& field) {
    const std::string start = Plain(field.start), end = Plain(field.end);
    return end.empty() || start == end ? start : start + "-" + end;
}

std::string DefinitionKey(const dictionary::FieldContents& field) {
    return UpperCase(Plain(field.level) + '\t' + Plain(field.usage) + '\t' + Picture(field));
}

bool IsFiller(const dictionary::FieldContents& field) {
    return SameName(field.name, "FILLER");
}

std::string_view Stem(std::string_view field, std::string_view recordId) {
    field = TrimEnd(field);
    const std::size_t dash = field.rfind('-');
    if (dash == std::string_view::npos || dash == 0) return {};
    const std::string_view suffix = field.substr(dash + 1), id = Trim(recordId);
    if (!AllDigits(suffix) || !AllDigits(id) || WithoutZeros(suffix) != WithoutZeros(id)) return {};
    return field.substr(0, dash);
}

double Likeness(std::string_view a, std::string_view b) {
    const std::string first = NameKey(a), second = NameKey(b);
    const auto shorter = static_cast<std::ptrdiff_t>(std::min(first.size(), second.size()));
    const auto longer = std::max(first.size(), second.size());
    if (longer == 0) return 1;
    const auto begin = std::mismatch(first.begin(), first.begin() + shorter, second.begin()).first;
    const auto equalBegin = begin - first.begin();
    const auto end =
        std::mismatch(first.rbegin(), first.rbegin() + (shorter - equalBegin), second.rbegin()).first;
    return static_cast<double>(equalBegin + (end - first.rbegin())) / static_cast<double>(longer);
}

std::string Renames::PresentWords(std::string_view text) const {
    std::string present;
    ForEachWord(text, [&](std::string_view word) {
        if (!present.empty()) present += ' ';
        present += Present(word);
    });
    return present;
}

}  // namespace norvelis::compare
