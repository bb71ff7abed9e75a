#pragma once

#include <string>
#include <vector>

#include "dictionary/schema_contents.h"

// Which records of a schema a smaller drawing shows, and on which page: among nine hundred boxes nobody can
// follow a line.
namespace norvelis {

/// The name of drawings of a schema that has none.
inline const std::string kNameless = "nameless";

/// What a drawing with a page for each area is called behind the name of its schema.
inline const std::string kByAreaDrawing = " by area";

struct RecordChoice {
    enum class Kind {
        All,
        Around,  ///< One record and those that few sets lead to.
        Area,    ///< Those of one area.
        AreaOf,  ///< Those of the area of one record.
        ByArea,  ///< All, each area on a page of its own.
    };
    enum class Direction { Both, Up, Down };  ///< Along sets: up to owners, down to members.

    Kind kind = Kind::All;
    std::string name{};  ///< The record, or the area.
    int steps = 1;       ///< Around a record: as many sets at most.
    Direction direction = Direction::Both;
    /// Patterns of names, as MatchesPattern takes them, in any letter case. Of the records that fit one of
    /// `only` (all, when it is empty) and none of `except` the others are chosen; sets do not lead through
    /// those left out.
    std::vector<std::string> only{}, except{};
};

/// A record of another page, at the other end of a set.
struct PageReference {
    std::string record, page;
};

struct ChosenPage {
    std::string name, title;
    std::vector<std::string> records;       ///< In the order of the dictionary.
    std::vector<PageReference> references;  ///< In the order of the sets.
};

struct ChosenRecords {
    std::string drawing;            ///< The file's name without ending; no schema or record can be called so.
    std::vector<ChosenPage> pages;  ///< By the names of the areas, records without one last.
    std::string refusal;            ///< Why there is nothing to draw; empty as a rule.
};

ChosenRecords ChooseRecords(const dictionary::SchemaContents& schema, const RecordChoice& choice);

}  // namespace norvelis
