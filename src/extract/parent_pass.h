#pragma once

#include <cstddef>
#include <string>

#include "extract/extraction_state.h"

namespace norvelis {

/// First pass over a schema report: reads the header, clears what the store holds of the schema, and finds
/// every record with its location mode: a row of Parents for each entry record, a skeleton for each record.
/// RuntimeFailure 62 when the report ends where a location mode should be.
void CollectParentandChildren(ExtractionState& state);

/// What the first pass would find, without a store.
struct ReportContents {
    std::string schema;   ///< As the header names it, UTF-8; empty when it does not.
    std::size_t records;  ///< Of different names.
};
ReportContents ContentsOf(const Report& report);

}  // namespace norvelis
