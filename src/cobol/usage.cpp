#include "cobol/usage.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "base/text.h"
#include "base/whole_number.h"
#include "base/words.h"

namespace norvelis::cobol {

namespace {

constexpr long kMostBinaryDigits = 18, kMostTimes = 9'999'999;

Usage::Form FormOf(std::string name) {
    using enum Usage::Form;
    constexpr std::array<std::pair<std::string_view, Usage::Form>, 16> kForms = {{{"", Display},
                                                                                  {"DISPLAY", Display},
                                                                                  {"DISP", Display},
                                                                                  {"DISPLAY-1", DoubleByte},
                                                                                  {"NATIONAL", DoubleByte},
                                                                                  {"GROUP", Group},
                                                                                  {"COMP", Binary},
                                                                                  {"COMP-4", Binary},
                                                                                  {"COMP-5", Binary},
                                                                                  {"BINARY", Binary},
                                                                                  {"COMP-3", Packed},
                                                                                  {"PACKED-DECIMAL", Packed},
                                                                                  {"COMP-1", SingleFloat},
                                                                                  {"COMP-2", DoubleFloat},
                                                                                  {"INDEX", Index},
                                                                                  {"POINTER", Pointer}}};
    constexpr std::string_view kLong = "COMPUTATIONAL";
    if (name.starts_with(kLong)) name.replace(0, kLong.size(), "COMP");
    const auto found = std::ranges::find(kForms, name, [](const auto& form) { return form.first; });
    return found == kForms.end() ? Other : found->second;
}

/// A whole number; nothing for any other word, and for numbers that no compiler takes.
std::optional<long> NumberIn(const std::string& word) {
    const auto number = WholeNumber<long>(word);
    return number && *number >= 0 && *number <= kMostTimes ? number : std::nullopt;
}

/// Reads "OCCURS 6" or "OCCURS 1 TO 6" at the given word, and takes it away. An OCCURS whose number is cut
/// off, or is 0, stays for a person to read.
void TakeOccurs(std::vector<std::string>& words, std::size_t at, Usage& usage) {
    const auto number = [&words](std::size_t i) {
        return i < words.size() ? NumberIn(words[i]) : std::nullopt;
    };
    const std::string next = at + 2 < words.size() ? words[at + 2] : "";
    const std::optional<long> least = number(at + 1), most = next == "TO" ? number(at + 3) : least;
    usage.occurs = true;
    usage.least = least.value_or(0);
    usage.most = most.value_or(0);
    usage.never = most == 0 && next != "T";  // Of a TO that is cut.
    if (usage.most == 0) return;
    const auto first = words.begin() + static_cast<std::ptrdiff_t>(at);
    words.erase(first, first + (next == "TO" ? 4 : 2));
}

}  // namespace

Usage ReadUsage(std::string_view stored) {
    const std::string text = UpperCase(stored);
    std::string_view rest = text;
    std::vector<std::string> words;
    for (std::string_view word = NextWord(rest); !word.empty(); word = NextWord(rest))
        words.emplace_back(word);
    Usage usage;
    if (!words.empty() && words.front() != "OCCURS") {
        usage.word = words.front();
        words.erase(words.begin());
    }
    usage.form = FormOf(usage.word);
    const auto occurs = std::ranges::find(words, "OCCURS");
    if (occurs != words.end()) TakeOccurs(words, static_cast<std::size_t>(occurs - words.begin()), usage);
    for (const std::string& word : words)
        if (word != "TIMES") usage.otherWords += (usage.otherWords.empty() ? "" : " ") + word;
    return usage;
}

long StoredBytes(const Picture& picture, const Usage& usage) {
    using enum Usage::Form;
    const bool isNumber = picture.kind == Picture::Kind::Number;
    switch (usage.form) {
        case SingleFloat:
        case Index:
        case Pointer:
            return 4;
        case DoubleFloat:
            return 8;
        case Packed:
            return isNumber ? picture.nines / 2 + 1 : 0;
        case Binary:
            if (!isNumber || picture.nines > kMostBinaryDigits) return 0;
            return picture.nines <= 4 ? 2 : picture.nines <= 9 ? 4 : 8;
        case Display:
            if (picture.kind == Picture::Kind::WideText) return 2 * picture.width;
            return isNumber ? picture.nines : picture.width;
        case DoubleByte:
            return 2 * (isNumber ? picture.nines : picture.width);
        default:
            return 0;
    }
}

bool IsSignedDisplay(const Picture& picture, const Usage& usage) {
    return usage.form == Usage::Form::Display && picture.isSigned;
}

}  // namespace norvelis::cobol
