#include "sqlconv/tables/names.h"

#include <algorithm>
#include <cstdint>

#include "base/name_key.h"
#include "base/text.h"
#include "base/words.h"

namespace norvelis::tables {

namespace {

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

std::size_t Characters(std::string_view text) {
    return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, ContinuesCharacter));
}

/// The first `most` bytes or characters, whole characters only.
std::string_view Beginning(std::string_view text, std::size_t most, bool inBytes) {
    std::size_t end = 0;
    for (std::size_t at = 0, count = 0; at < text.size();) {
        const std::size_t begin = at++;
        while (at < text.size() && ContinuesCharacter(text[at])) ++at;
        count += inBytes ? at - begin : 1;
        if (count > most) break;
        end = at;
    }
    return text.substr(0, end);
}

/// FNV-1a of 32 bits, as eight digits.
std::string HashDigits(std::string_view text) {
    std::uint32_t hash = 2166136261u;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    std::string digits;
    for (int shift = 28; shift >= 0; shift -= 4) digits += "0123456789abcdef"[(hash >> shift) & 15];
    return digits;
}

}  // namespace

std::string Names::Of(std::string_view dictionaryName) const {
    std::string name(Trim(dictionaryName));
    for (char& c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '-' || byte <= 0x20 || byte == 0x7F) c = '_';
    }
    return lowerCase_ ? LowerCase(name) : name;
}

std::string Names::Fitting(const std::string& name) const {
    constexpr std::size_t kHash = 9;  // Underscore and eight digits.
    if ((limits_.nameInBytes ? name.size() : Characters(name)) <= limits_.name) return name;
    return std::string(Beginning(name, limits_.name - kHash, limits_.nameInBytes)) + "_" + HashDigits(name);
}

UsedNames::UsedNames(std::string_view taken, std::string_view takenPrefix) : takenPrefix_(takenPrefix) {
    for (auto word = NextWord(taken); !word.empty(); word = NextWord(taken)) used_.emplace(word);
}

std::string UsedNames::Allowed(const std::string& name) const {
    const bool begins = !takenPrefix_.empty() && UpperCase(name).starts_with(takenPrefix_);
    return begins ? "_" + name : name;
}

bool UsedNames::TakeFree(const std::string& name) {
    return used_.insert(NameKey(name)).second;
}

std::string UsedNames::Take(const Names& names, std::initializer_list<std::string> candidates) {
    for (const auto& candidate : candidates) {
        const std::string name = names.Fitting(Allowed(candidate));
        if (TakeFree(name)) return name;
    }
    for (int number = 2;; ++number) {
        const std::string name = names.Fitting(Allowed(std::data(candidates)[candidates.size() - 1]) + "_" +
                                               std::to_string(number));
        if (TakeFree(name)) return name;
    }
}

}  // namespace norvelis::tables
