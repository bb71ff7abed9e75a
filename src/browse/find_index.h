#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "browse/find_text.h"
#include "store/connection.h"

namespace norvelis {

/// Something of the dictionary that was found by its name, spelled as it is stored.
struct FoundName {
    FindKind kind;
    std::string name, schema;
    std::string record;  ///< Itself; of a field, an area, an id, an index; the owner of a set.
    std::string member;  ///< Of a set.

    bool operator==(const FoundName&) const = default;
};

/// The names of a dictionary, as they were when it was read, made ready to be searched at every key stroke.
/// An area or an id is listed with each record that has it.
///
/// The names of one kind are one text, so that looking for something is one scan of it; a name costs its
/// letters twice and eight bytes.
class FindIndex {
  public:
    FindIndex() = default;                  ///< Of nothing.
    explicit FindIndex(Connection& store);  ///< RuntimeFailure when the store refuses.

    struct Answer {
        std::vector<FoundName> best;  ///< Best first.
        std::size_t count = 0;        ///< Of all that were found.
    };

    /// Names that hold the text, or that are what the pattern describes: first those that are the text, then
    /// those that begin with it, those with a word that does, and the others; among these by kind, then by
    /// name. Of what is equally good and of one kind the first `most` of the dictionary are listed. A field
    /// that is in its record several times in a row is listed once.
    Answer Find(const FindText& wanted, std::size_t most) const;

    /// Fields of this name, of this ending at a word, of this ending anywhere; with a pattern those that it
    /// describes. Among these by their records.
    Answer WhereUsed(const FindText& wanted, std::size_t most) const;

  private:
    friend class FindIndexReader;

    using Entry = std::uint32_t;

    /// What all names of one place have in common.
    struct Place {
        std::string schema, record, member;
    };

    /// All names of one kind, each followed by a line feed.
    struct Names {
        std::string text, folded;           ///< As stored, and in upper case.
        std::vector<std::uint32_t> begins;  ///< Of each name; one more for the end.
        std::vector<std::uint32_t> places;
        std::array<std::uint32_t, 256> counts{};  ///< Of each byte in `folded`.

        void Add(std::string_view name, std::uint32_t place);
        void Complete();
        Entry Count() const { return static_cast<Entry>(places.size()); }
        std::string_view In(const std::string& letters, Entry entry) const;
        /// Calls visit(entry, where in `folded`) for every name that holds the text, at its first place.
        template <typename Visit>
        void ForEachWith(std::string_view wanted, const Visit& visit) const;
    };

    class Hits;
    const Names& Of(FindKind kind) const { return names_[static_cast<std::size_t>(kind)]; }
    FoundName Found(FindKind kind, Entry entry) const;

    std::array<Names, kFindKinds> names_;
    std::vector<Place> places_;
};

}  // namespace norvelis
