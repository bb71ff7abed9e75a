#pragma once

#include <string_view>

#include "store/connection.h"

// Sets (rows of Connection_Details: owner in Recordname, member in next_step) and indexes (rows of
// Index_Details: index in Recordname, member in next_step).
namespace norvelis::dictionary {

/// Columns schemaname, recordname, next_step, set and connection of every set of every schema, by owner and
/// member.
Recordset Sets(Connection& store);

/// Columns schemaname, set and connection of the sets between two records, whatever the schema.
Recordset SetsBetween(Connection& store, std::string_view owner, std::string_view member);

/// Columns schemaname, Recordname, next_step and set of the sets in which a record of that name is the member
/// or the owner, whatever the schema; by the name at the other end.
Recordset SetsOfMember(Connection& store, std::string_view member);
Recordset SetsOfOwner(Connection& store, std::string_view owner);

Recordset Indexes(Connection& store);
Recordset IndexesOf(Connection& store, std::string_view member);

}  // namespace norvelis::dictionary
