#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"
#include "compare/links.h"
#include "compare/values.h"

// What the parts of a schema are, in a line each, for those that are only in one of two editions.
namespace norvelis::compare {

/// A text for each of several things, apart by commas.
template <class Things, class TextOf>
std::string List(const Things& things, TextOf textOf) {
    std::string list;
    for (const auto& thing : things) {
        if (!list.empty()) list += ", ";
        list += textOf(thing);
    }
    return list;
}

/// The same whatever their order, to be compared.
template <class Things, class TextOf>
std::string SortedList(const Things& things, TextOf textOf) {
    std::vector<std::string> texts;
    for (const auto& thing : things) texts.push_back(UpperCase(Plain(textOf(thing))));
    std::ranges::sort(texts);
    return List(texts, [](const std::string& text) { return text; });
}

/// "FIXED 156".
std::string Length(const dictionary::RecordContents& record);

/// "MAKER-NAME ASC, MAKER-GRADE DSC", with the present names of fields.
std::string KeyList(const IndexedRecord& member, const Renames& fields = {});

std::string Description(const dictionary::RecordContents& record);
std::string Description(const dictionary::FieldContents& field);
std::string Description(const SetOfRecords& set);
std::string Description(const Index& index);
std::string Description(const Area& area);

/// The records where a set begins and where an index belongs; the others have no place but the schema.
std::string PlaceOf(const SetOfRecords& set);
std::string PlaceOf(const Index& index);
template <class Other>
std::string PlaceOf(const Other&) {
    return {};
}

/// "1 record", "2 records".
std::string Counted(std::size_t count, const std::string& singular, const std::string& plural);

}  // namespace norvelis::compare
