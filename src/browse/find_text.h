#pragma once

#include <bitset>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What a person types to find anything of the dictionary by its name.
namespace norvelis {

/// In the order in which equally good hits are listed.
enum class FindKind { Schema, Record, Set, Index, Area, Id, Field };
inline constexpr std::size_t kFindKinds = 7;
using FindKinds = std::bitset<kFindKinds>;

std::string_view NameOf(FindKind kind);  ///< "record", "set", ...; "id" is a record's number.
/// The kind of that name, or of its plural, in any letter case.
std::optional<FindKind> FindKindNamed(std::string_view name);

constexpr FindKinds Only(FindKind kind) {
    return FindKinds(1ULL << static_cast<std::size_t>(kind));
}
inline bool Has(FindKinds kinds, FindKind kind) {
    return kinds.test(static_cast<std::size_t>(kind));
}

struct FindText {
    std::string text;  ///< Letters A to Z in upper case; empty: everything of these kinds.
    FindKinds kinds;
    bool isPattern = false;  ///< It has wild cards and is the whole name; otherwise it is a part of one.
};

/// Takes "field:" and the like from the front, which then is the one kind that is looked for. Blanks around
/// the text do not count, unless it is blanks alone.
FindText ReadFindText(std::string_view typed, FindKinds kinds = FindKinds().set());

/// Whether a name is what a pattern describes: * is any characters or none, ? is one character. Letters as
/// they are.
bool MatchesPattern(std::string_view name, std::string_view pattern);

/// The longest part of a pattern without wild cards, which any name that matches it holds.
std::string_view LongestLiteral(std::string_view pattern);

}  // namespace norvelis
