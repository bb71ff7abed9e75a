#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "store/inserter.h"
#include "store/transaction.h"

namespace norvelis {

/// Writes dictionary rows as an extraction leaves them, for tests and benchmarks; they are in the store when
/// the scope ends.
class SchemaRows {
  public:
    explicit SchemaRows(Connection& store, std::string schema = "EMPSCHM")
        : store_(store), transaction_(store), schema_(std::move(schema)) {}
    ~SchemaRows() { transaction_.Commit(); }
    SchemaRows(const SchemaRows&) = delete;
    SchemaRows& operator=(const SchemaRows&) = delete;

    /// A record that is found by its key, and so stands at the top of the tree.
    void Entry(std::string_view name, std::optional<std::string_view> members = std::nullopt) {
        store_.Execute("Insert into Parents (schemaname, Recordname) values (?, ?)", {schema_, name});
        Record(name, members);
    }
    /// A record of any kind.
    void Record(std::string_view name, std::optional<std::string_view> members = std::nullopt) {
        Inserter rows(store_, "Record_Details",
                      {"schemaname", "Recordname", "Recmode", "recordtype", "dn", "areaname", "tableid",
                       "reckey", "rectype", "reclen", "next_step"});
        const std::optional<std::string_view> values[] = {
            schema_, name, "CALC", "Record", "DN", "EMP-REGION", "415", "EMP-ID-0415", "F", "116", members};
        rows.Add(values);
    }
    void Set(std::string_view set, std::string_view owner, std::string_view member,
             std::string_view connection = "NPO OA LAST\r\nMANDATORY") {
        store_.Execute(
            "Insert into Connection_Details (schemaname, Recordname, next_step, connection, \"set\") values "
            "(?, ?, ?, ?, ?)",
            {schema_, owner, member, connection, set});
    }
    void Index(std::string_view index, std::string_view member, std::string_view key = "",
               std::string_view order = "", std::string_view option = "") {
        store_.Execute(
            "Insert into Index_Details (schemaname, Recordname, next_step, sortkey1, sortorder1, sortoption) "
            "values "
            "(?, ?, ?, ?, ?, ?)",
            {schema_, index, member, key, order, option});
    }

  private:
    Connection& store_;
    Transaction transaction_;
    std::string schema_;
};

}  // namespace norvelis
