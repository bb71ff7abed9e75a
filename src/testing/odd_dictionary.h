#pragma once

#include <cstdint>

#include "store/connection.h"
#include "testing/literal_extraction.h"

namespace norvelis {

/// Dictionary tables that no report gives: few names in any letter case, shared
/// by several schemas, joined by many sets, columns null or empty. Equal seeds give equal tables.
literal::Dictionary GenerateOddDictionary(std::uint64_t seed);

/// Puts the rows in place of those of the store.
void WriteDictionary(Connection& store, const literal::Dictionary& tables);

}  // namespace norvelis
