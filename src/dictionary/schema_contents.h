#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/connection.h"

// One schema of the dictionary read at once, for what looks at all of it: conversion, comparison, publishing,
// search. Texts are as stored, null as empty text; names are to be compared by SameName, or found by NameKey.
namespace norvelis::dictionary {

/// A row of Record_layout. The picture may hold the start position behind a run of blanks: its columns in the
/// report overlap. Positions are blank on groups of some reports.
struct FieldContents {
    std::string level, name, usage, picture, start, end;
    bool operator==(const FieldContents&) const = default;
};

struct RecordContents {
    std::string name, mode, dn, area, id, key;
    std::string lengthKind, length;  ///< Columns rectype and reclen.
    std::string information;         ///< The text of the record's box; empty when its section was not read.
    std::array<std::string, 8> indexes;
    std::vector<FieldContents> fields;  ///< In the order of the report.
    bool operator==(const RecordContents&) const = default;
};

/// A row of Connection_Details. Owner or member may be no record of the schema.
struct SetContents {
    std::string name, owner, member;
    std::string connection;  ///< Its second line has membership and order.
    bool operator==(const SetContents&) const = default;
};

/// A row of Index_Details.
struct IndexContents {
    std::string name, member, information, sortOption;
    std::vector<std::pair<std::string, std::string>> keys;  ///< Each with its order, "ASC" or "DSC".
    bool operator==(const IndexContents&) const = default;
};

struct SchemaContents {
    std::string name, release, version, date;
    std::vector<std::string> entryRecords;
    std::vector<RecordContents> records;
    std::vector<SetContents> sets;
    std::vector<IndexContents> indexes;
    bool operator==(const SchemaContents&) const = default;
};

/// The schema of that name in any letter case; one without rows is empty but for the name. Rows of other
/// schemas are left out, as are fields of records that have no row.
SchemaContents ReadSchema(Connection& store, std::string_view schema);

/// Writes the schema into a store that has no rows of it, in one transaction. What is read back is equal;
/// what only serves the tree and drawings, as the list of members, follows from the sets.
void WriteSchema(Connection& store, const SchemaContents& contents);

}  // namespace norvelis::dictionary
