#pragma once

#include <string>
#include <vector>

#include "compare/values.h"
#include "dictionary/schema_contents.h"

// Sets and indexes as a person counts them: the dictionary has a row for each member.
namespace norvelis::compare {

struct Membership {
    std::string member;
    std::string pointers;  ///< "NPO".
    std::string order;     ///< "MA ASC MAKER-NAME DL".
};

struct SetOfRecords {
    std::string name;
    std::vector<std::string> owners;  ///< One, in a report without faults.
    std::vector<Membership> members;
};

/// By the first row of each.
std::vector<SetOfRecords> SetsOf(const dictionary::SchemaContents& schema);

struct IndexedRecord {
    std::string member, sortOption;
    std::vector<std::pair<std::string, std::string>> keys;  ///< Each with its order.
};

struct Index {
    std::string name;
    std::vector<IndexedRecord> members;
};

/// Also those that only a record names: without keys.
std::vector<Index> IndexesOf(const dictionary::SchemaContents& schema);

struct Area {
    std::string name;
    std::vector<std::size_t> records;  ///< Their places in the schema.
};

std::vector<Area> AreasOf(const dictionary::SchemaContents& schema);

}  // namespace norvelis::compare
