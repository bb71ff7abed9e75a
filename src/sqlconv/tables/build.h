#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "dictionary/schema_contents.h"
#include "sqlconv/tables/names.h"
#include "sqlconv/tables/options.h"
#include "sqlconv/tables/record_items.h"
#include "sqlconv/tables/schema_model.h"

// What the steps of BuildModel share. Each step is a function over a Build.
namespace norvelis::tables {

/// A record on its way to tables.
struct RecordPlan {
    const dictionary::RecordContents* record = nullptr;
    const RecordOptions* wishes = nullptr;
    std::vector<Item> items;
    std::string suffix;  ///< What names of items lose at their end.
    Table table;
    std::vector<Table> children;  ///< Of repetitions, and of columns that are too many; parents first.
    UsedNames columns;            ///< Of `table`.
    std::string keyReason;        ///< Why the key is what it is.
    bool lookAt = false;
};

struct Build {
    Build(const dictionary::SchemaContents& schema, const Options& wishes, const Limits& server)
        : contents(schema),
          options(wishes),
          limits(server),
          names(wishes.lowerCase, server),
          objects({}, server.takenPrefix) {}

    const dictionary::SchemaContents& contents;
    const Options& options;
    const Limits& limits;
    Names names;
    UsedNames objects;  ///< Tables, indexes and constraints share one space of names on some servers.
    std::vector<RecordPlan> plans;
    std::unordered_map<std::string, std::size_t> planOf;  ///< By NameKey; records without a table have none.
    std::vector<Outcome> outcomes;

    RecordPlan* PlanOf(std::string_view record);
};

/// The step of the records: tables with columns and keys, and those of repetitions.
void PlanRecords(Build& build);
/// The step of the sets: foreign keys, columns for the order of members, and their indexes.
void AddSets(Build& build);
/// The step of the index sets and of CALC keys with duplicates.
void AddIndexes(Build& build);
/// Tables of more columns than the server takes are cut in several.
void SplitWideTables(Build& build);
/// The order in which tables are created. Marks the foreign keys of cycles.
std::vector<std::size_t> OwnersFirst(Build& build);

/// The fields that a CALC key names.
std::vector<std::string> KeyWords(const dictionary::RecordContents& record);

/// The columns that a key of the dictionary means, or why there are none.
struct KeyColumns {
    std::vector<std::string> columns;
    std::string why;
};
/// Of the item of that name: a group stands for what it holds.
KeyColumns ColumnsOfKey(const RecordPlan& plan, std::string_view name);
/// Of the one item whose name begins so: the names of sort keys are cut in some places.
KeyColumns ColumnsOfCutKey(const RecordPlan& plan, std::string_view beginning);

/// Bytes of a value in a key of the server.
double KeyBytes(const ColumnType& type, const Limits& limits);
double KeyBytes(const Table& table, const std::vector<std::string>& columns, const Limits& limits);

std::string PrimaryKeyName(Build& build, const std::string& table);

/// What the index of a set is called.
std::string IndexName(const Build& build, std::string_view set, std::string_view member);

/// Adds an index under a free name, unless its columns are too many or too long for the server: then the
/// table gets a note and the result says why.
std::string AddIndex(Build& build, Table& table, Index index);

}  // namespace norvelis::tables
