#pragma once

#include "dictionary/schema_contents.h"
#include "sqlconv/tables/limits.h"
#include "sqlconv/tables/options.h"
#include "sqlconv/tables/schema_model.h"

namespace norvelis::tables {

/// Pure: equal contents, options and limits give an equal model.
SchemaModel BuildModel(const dictionary::SchemaContents& contents, const Options& options,
                       const Limits& limits);

}  // namespace norvelis::tables
