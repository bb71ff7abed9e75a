#pragma once

#include <span>
#include <string>
#include <string_view>

#include "store/connection.h"

// Names must not become statements: what a server executes is checked here before anything is created.
// What is only printed is not checked.
namespace norvelis {

/// Why a database of this name is not created; empty when it may be. The name goes to the server as typed.
std::string RefusedDatabaseName(std::string_view name);

/// The warning that belongs to a name that the statement of the database takes as typed and those of the
/// tables do not; empty for other names.
std::string TwoDatabasesWarning(std::string_view name);

/// Which name of these records a server could read as more than a name: record, field and character in one
/// line; empty when every name is safe.
std::string RefusedRecordName(Connection& store, std::span<const std::string> records);

}  // namespace norvelis
