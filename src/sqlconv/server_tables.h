#pragma once

#include <string>
#include <vector>

#include "sqlconv/diagnostics.h"
#include "sqlconv/sql_state.h"

namespace norvelis {

struct ServerTable {
    std::string shown;   ///< In upper case, as the list shows it.
    std::string name;    ///< As the server spells it.
    std::string schema;  ///< Empty where the list does not tell it.
    std::string from;    ///< What stands behind "SELECT * FROM ".
};

struct ServerField {
    std::string name;  ///< In upper case.
    std::string type;  ///< The type text of the number.
    int number = 0;    ///< The classic number of its type.
};

/// The tables of a data source, which is gSqlDsn from then on. The list comes from the statement that SQL
/// Server understands; a server that refuses it is asked through the driver, and its refusal goes to the
/// process log. SqlFailure when that fails too. A connection that was not open is closed again.
std::vector<ServerTable> TablesOf(SqlState& sql, const std::string& dsn);

/// The fields of a table of gSqlDsn; no more than one row is asked for. Connection and failures as above.
std::vector<ServerField> FieldsOf(SqlState& sql, const ServerTable& table);

/// What a person reads when the fields cannot be shown.
std::string FieldsFailureText(const SqlFailure& failure);

}  // namespace norvelis
