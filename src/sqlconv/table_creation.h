#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sqlconv/conversion.h"
#include "sqlconv/kept_tables.h"
#include "sqlconv/sql_state.h"

// Creates the tables of a schema with types, keys and relations on the server of a data source.
namespace norvelis {

/// What happens to a table of the server that has the name of one to be created.
enum class ExistingTables { Fail, Skip, Replace };

struct TableCreation {
    TableCreation(SqlState& state, std::string source) : sql(state), dsn(std::move(source)) {}

    SqlState& sql;
    std::string dsn;
    std::string database;  ///< To be created first; empty: the tables go where the data source leads.
    ExistingTables existing = ExistingTables::Fail;
    tables::Options options;
    ConversionScreen screen;

    std::string refusal;               ///< Why it ended early, and what there is of it all the same.
    std::string createdDatabase;       ///< Empty until the server has created it.
    std::vector<std::string> created;  ///< Names of tables that stay.
};

/// What the schema becomes on the server of the data source, which says itself of what kind it is. Connects
/// if need be. SqlFailure when the server refuses or is of no known kind.
tables::KeptTables KeptTablesFor(SqlState& sql, const std::string& dsn, const std::string& schema,
                                 const tables::Options& options);

/// Creates database and tables, in one transaction where the server can: all tables or none. False with the
/// reason in `refusal`. The connection is closed afterwards.
bool CreateKeptTables(TableCreation& creation, const std::string& schema);

}  // namespace norvelis
