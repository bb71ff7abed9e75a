#include "browse/find_text.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace norvelis {

namespace {

struct KindNames {
    std::string_view one, many;
};
constexpr std::array<KindNames, kFindKinds> kKindNames = {{{"schema", "schemas"},
                                                           {"record", "records"},
                                                           {"set", "sets"},
                                                           {"index", "indexes"},
                                                           {"area", "areas"},
                                                           {"id", "ids"},
                                                           {"field", "fields"}}};
constexpr std::string_view kWildCards = "*?";

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string_view NameOf(FindKind kind) {
    return kKindNames[static_cast<std::size_t>(kind)].one;
}

std::optional<FindKind> FindKindNamed(std::string_view name) {
    for (std::size_t i = 0; i < kFindKinds; ++i) {
        if (EqualIgnoringCase(name, kKindNames[i].one) || EqualIgnoringCase(name, kKindNames[i].many))
            return static_cast<FindKind>(i);
    }
    return std::nullopt;
}

FindText ReadFindText(std::string_view typed, FindKinds kinds) {
    if (const auto colon = typed.find(':'); colon != std::string_view::npos) {
        if (const auto kind = FindKindNamed(Trim(typed.substr(0, colon)))) {
            kinds &= Only(*kind);
            typed.remove_prefix(colon + 1);
        }
    }
    const std::string_view trimmed = Trim(typed);
    const std::string_view text = trimmed.empty() ? typed : trimmed;
    return {UpperCase(text), kinds, text.find_first_of(kWildCards) != std::string_view::npos};
}

// After a mismatch the last * takes one byte more: one of them is enough, for what an earlier one would take
// more this one can take too.
bool MatchesPattern(std::string_view name, std::string_view pattern) {
    constexpr std::size_t kNone = std::string_view::npos;
    std::size_t n = 0, p = 0, star = kNone, taken = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() && pattern[p] == '?' && !ContinuesCharacter(name[n])) {
            ++p;
            for (++n; n < name.size() && ContinuesCharacter(name[n]); ++n) {
            }
        } else if (p < pattern.size() && pattern[p] != '?' && pattern[p] == name[n]) {
            ++p;
            ++n;
        } else if (star != kNone) {
            p = star + 1;
            n = ++taken;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

std::string_view LongestLiteral(std::string_view pattern) {
    std::string_view longest;
    while (!pattern.empty()) {
        const std::string_view literal = pattern.substr(0, pattern.find_first_of(kWildCards));
        if (literal.size() > longest.size()) longest = literal;
        pattern.remove_prefix(std::min(literal.size() + 1, pattern.size()));
    }
    return longest;
}

}  // namespace norvelis
