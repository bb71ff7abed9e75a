#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

// What a person reads about one record or schema: the two grids of the isolate and list screens and the two
// tool tips, as rows of text. Nothing here fails: a store that refuses leaves what was read until then.
namespace norvelis {

inline constexpr std::string_view kIsolateDetailsHeading = "RECORD ITEM|RECORD VALUE";
inline constexpr std::string_view kListDetailsHeading = "ITEM|VALUE";
inline constexpr std::string_view kLayoutHeading = "LVL|NAME|PICTURE|USAGE|OCCURS|OCCUR COUNT";

struct RecordDetails {
    std::string currentRecord;  ///< "CURRENT RECORD: " and the name; empty when there is no such record.
    std::vector<std::array<std::string, 2>> items;   ///< Item and value, from row 1 of the grid.
    std::vector<std::array<std::string, 6>> layout;  ///< One row a field, at least thirty.
};

RecordDetails getinfo(Connection& store, std::string_view recordName);  ///< For the isolate screen.
RecordDetails getinfo2(Connection& store,
                       std::string_view recordName);  ///< For the list screen, in its shorter words.

/// The labels of frmToolTip and of the list screen's record box, by their names.
struct RecordLabels {
    std::string lblRecordname, lblareaname, lbltableid, lblrecmode, lblreckey, lblreclen;
    std::string lbldn;   ///< Holds the record type.
    std::string lblDN2;  ///< Holds the duplicates flag.

    bool operator==(const RecordLabels&) const = default;
};
/// Of the record with this name, in `schema` when that is not empty.
std::optional<RecordLabels> ReadRecordLabels(Connection& store, std::string_view schema,
                                             std::string_view recordName);

/// What the list screen shows of one record by itself: the result of getinfo2, and the labels of its box, for
/// one statement less than both cost.
struct ListedRecord {
    RecordDetails details;
    std::optional<RecordLabels> labels;
};
ListedRecord ReadListedRecord(Connection& store, std::string_view recordName);

/// The labels of frmToolTip2.
struct SchemaLabels {
    std::string lblRecordname, lblSchemaRelease, lblschemaVersion, lblschemadate;

    bool operator==(const SchemaLabels&) const = default;
};
std::optional<SchemaLabels> ReadSchemaLabels(Connection& store, std::string_view schema);

}  // namespace norvelis
