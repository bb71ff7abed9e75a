#pragma once

#include <string>
#include <vector>

#include "sqlconv/dialects/dialect.h"
#include "sqlconv/tables/schema_model.h"

namespace norvelis::tables {

/// The statements that make a model's tables on a server.
struct Script {
    struct Group {
        std::string table;  ///< The one that is made; empty for what only changes tables.
        std::vector<std::string> notes;
        std::vector<std::string> statements;  ///< Without semicolons.
        bool afterCommit = false;             ///< Begins a further transaction.
    };
    std::vector<std::string> heading;  ///< Lines of comment.
    std::vector<Group> groups;
};

/// Tables with their comments and indexes, then the keys that close cycles.
Script MakeScript(const SchemaModel& model, const Dialect& dialect);

/// What says from what and for whom a script was made.
std::vector<std::string> HeadingOf(const SchemaModel& model, const Dialect& dialect);

/// The whole script as a file, in a transaction where the server allows it. Equal scripts are equal bytes.
std::string ScriptText(const Script& script, const Dialect& dialect);

}  // namespace norvelis::tables
