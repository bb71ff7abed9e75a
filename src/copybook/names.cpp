#include "copybook/names.h"

#include <algorithm>
#include <cctype>

#include "base/name_key.h"
#include "base/text.h"

namespace norvelis::copybook {

namespace {

constexpr std::size_t kLongestName = 30;

bool IsNameCharacter(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

/// The rest of a character of several bytes.
bool IsContinuation(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

std::string WithoutHyphensAtEnds(const std::string& name) {
    const std::size_t first = name.find_first_not_of('-');
    if (first == std::string::npos) return {};
    return name.substr(first, name.find_last_not_of('-') - first + 1);
}

std::string WithEnding(const std::string& name, std::string_view ending) {
    return WithoutHyphensAtEnds(name.substr(0, kLongestName - ending.size())).append(ending);
}

}  // namespace

std::string CobolName(std::string_view name, std::string_view ending) {
    std::string word;
    for (const char c : UpperCase(Trim(name))) {
        const auto byte = static_cast<unsigned char>(c);
        if (!IsContinuation(byte)) word += IsNameCharacter(byte) ? c : '-';
    }
    word = WithoutHyphensAtEnds(word);
    if (std::ranges::none_of(word, [](unsigned char c) { return std::isupper(c) != 0; }))
        word = word.empty() ? "NAMELESS" : "N-" + word;
    word = WithoutHyphensAtEnds(word.substr(0, kLongestName));
    return IsReservedWord(word) ? WithEnding(word, ending) : word;
}

void NameTable::Keep(std::string_view name) {
    const std::string key = NameKey(Trim(name));
    if (CobolName(name, ending_) != key) return;
    used_.insert(key);
    names_.emplace(key, key);
}

std::string NameTable::NameFor(std::string_view name) {
    const std::string key = NameKey(Trim(name));
    if (const auto known = names_.find(key); known != names_.end()) return known->second;
    const std::string wanted = CobolName(name, ending_);
    std::string word = wanted;
    for (int number = 2; !used_.insert(word).second; ++number)
        word = WithEnding(wanted, "-" + std::to_string(number));
    names_.emplace(key, word);
    return word;
}

}  // namespace norvelis::copybook
