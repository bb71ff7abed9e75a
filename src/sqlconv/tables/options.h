#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sqlconv/tables/item_type.h"

namespace norvelis::tables {

struct FieldOptions {
    std::size_t line = 0;  ///< Of its section, for messages.
    std::string name, type;
    bool leaveOut = false;
    bool occursAsColumns = false;
};

struct RecordOptions {
    std::size_t line = 0;
    std::string name;
    bool leaveOut = false;
    std::optional<std::vector<std::string>> key;  ///< Fields; none of them: a key of the table's own.
    std::size_t keyLine = 0;
    std::map<std::string, FieldOptions> fields;  ///< By NameKey.
};

/// A line of the file that was not understood, and is not in force.
struct OptionMistake {
    std::size_t line;
    std::string words;
};

/// What a person decides about a conversion. As made: what holds without a file.
struct Options {
    bool lowerCase = true;    ///< False: names in the case of the dictionary.
    bool dropSuffix = false;  ///< Of names, where each field of a record ends in the record's id.
    TypeRules types;
    bool checkUnsigned = false;  ///< Numbers without a sign refuse negative values.
    bool orderColumns = true;    ///< A column for the place of a member in a set without a sort key.
    long occursColumns = 0;      ///< Fields that occur at most so often become columns, not a table.
    std::map<std::string, RecordOptions> records;  ///< By NameKey.
    std::vector<OptionMistake> mistakes;

    const RecordOptions* Record(std::string_view name) const;
};

/// The options that a file holds for a schema: those before its first "[schema NAME]" section, and those of
/// the schema's own. A line that is not understood becomes a mistake, and the others hold.
Options ReadOptions(std::string_view text, std::string_view schema);

/// A file that says nothing, with each option in a comment.
std::string_view SampleOptions();

}  // namespace norvelis::tables
