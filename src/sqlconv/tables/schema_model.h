#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "sqlconv/tables/column_type.h"

// A schema of the dictionary as tables with keys and relations, in no server's words.
namespace norvelis::tables {

struct Column {
    static constexpr std::size_t kAdded = static_cast<std::size_t>(-1);

    std::string name;
    ColumnType type;
    std::size_t item = kAdded;  ///< Place among the fields of the record, or added by the conversion.
    std::string comment;        ///< What the dictionary knows of it, in one line.
    bool required = false;      ///< NOT NULL.
    bool identity = false;      ///< The server gives the number: the key of a table without one of its own.
    bool notNegative = false;   ///< Values below 0 are refused.
    long most = 0;              ///< When above 0: values are 1 to so much.
};

struct ForeignKey {
    std::string name;
    std::string set;  ///< Of the dictionary; empty within the tables of one record.
    std::vector<std::string> columns;
    std::string owner;  ///< The table referred to, by its primary key.
    std::vector<std::string> ownerColumns;
    bool cascade = false;     ///< Rows go with their owner: a table of repetitions or further columns.
    bool cyclic = false;      ///< Part of a cycle of sets.
    bool ownerLater = false;  ///< The owner comes behind this table.
};

struct Index {
    struct Key {
        std::string column;
        bool descending = false;
        bool operator==(const Key&) const = default;
    };
    std::string name;
    std::vector<Key> keys;
    bool unique = false;
    std::vector<std::string> optional;  ///< Columns that are null in rows outside the set.
};

struct Table {
    std::string name;
    std::string record;   ///< Of the dictionary.
    std::string comment;  ///< In one line.
    std::vector<Column> columns;
    std::string keyName;  ///< Of the primary key.
    std::vector<std::string> primaryKey;
    std::vector<ForeignKey> foreignKeys;
    std::vector<Index> indexes;
    std::vector<std::string> notes;  ///< What the table does not say, a line each.

    const Column* Find(std::string_view column) const;
};

/// What became of one thing of the dictionary, for the report.
struct Outcome {
    enum class Subject { Record, Field, Set, Index, Option };
    Subject subject;
    std::string record;  ///< The record that it belongs to; the member of a set or index.
    std::string name;
    std::string became;  ///< Empty: it was left out.
    std::string why;
    bool lookAt = false;  ///< A person should.
    ColumnType type;      ///< Of a field.
    bool isValue = true;  ///< Of a field: no group and no filler.
};

struct SchemaModel {
    std::string schema, release, version, date;
    std::vector<Table> tables;  ///< Owners before members, as far as there is no cycle.
    std::vector<Outcome> outcomes;
};

}  // namespace norvelis::tables
