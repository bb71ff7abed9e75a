#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sqlconv/sql_state.h"

namespace norvelis {

/// What a conversion does to the screen that started it; each may be empty.
struct ConversionScreen {
    std::function<void(const std::string& text)> status;
    std::function<void()> disconnect;
    std::function<void()> connect;  ///< Shows the server's tables again.
};

/// One conversion of a schema: on which data source, and what came of it.
struct Conversion {
    SqlState& sql;
    std::string dsn;
    ConversionScreen screen;

    std::string refusal;               ///< Why it ended early, in the server's words where it was the server.
    std::string createdDatabase;       ///< Empty until the server has created it.
    std::vector<std::string> created;  ///< Records that have become tables.
};

/// Executes "CREATE DATABASE" and refreshes the screen; asks for the name when it is empty. False, with the
/// reason in `refusal`, when no name was given or the name or the server refused.
bool CreateDatabase(Conversion& conversion, std::string& name);

/// Executes the statement of one record, if the dictionary has it. SqlFailure when the server refuses.
bool CreateRecordTable(Conversion& conversion, std::string_view recordName, std::string_view databaseName);

/// Creates the database and a table for each record of the schema. Nothing is executed when something is
/// missing or a name is unsafe. False with the reason, the record and what was created before in `refusal`.
bool ConvertSchema(Conversion& conversion, const std::string& schemaname, std::string_view databaseName);

}  // namespace norvelis
