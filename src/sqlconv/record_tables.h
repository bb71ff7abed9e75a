#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

// The statements of a conversion, made from the dictionary without a server.
namespace norvelis {

/// The names of a schema's records, trimmed, in the order in which they become tables.
std::vector<std::string> RecordsOf(Connection& store, std::string_view schemaname);

/// "Create Table ..." for a record; empty when the dictionary has no such record. Records of that name in
/// every schema count, so a name that two schemas use gives each column twice, which servers refuse.
/// RuntimeFailure 9 at the 151st field.
std::string RecordTableStatement(Connection& store, std::string_view recordName,
                                 std::string_view databaseName);

std::string DatabaseStatement(std::string_view databaseName);

/// Takes a statement of a conversion; the record is empty for that of the database.
using StatementReceiver = std::function<void(const std::string& record, const std::string& statement)>;
/// Hands over all statements of a conversion in their order. Names are as they are, safe or not. A record
/// that has no statement ends it by std::runtime_error with the record's name and the reason.
void ReadStatements(Connection& store, std::string_view schemaname, std::string_view databaseName,
                    const StatementReceiver& take);

/// The names that a record's statement takes from the dictionary, before they are cleaned.
struct TableNames {
    std::vector<std::string> keys;    ///< Of the surrogate key columns.
    std::vector<std::string> fields;  ///< Of the fields that become columns.
};
TableNames NamesOf(Connection& store, std::string_view recordName);

}  // namespace norvelis
