#pragma once

#include <string>

#include "dictionary/schema_contents.h"
#include "sqlconv/dialects/dialect.h"
#include "sqlconv/dialects/script.h"
#include "sqlconv/tables/options.h"
#include "sqlconv/tables/schema_model.h"

namespace norvelis::tables {

/// A schema as tables of one kind of server: what they are, and the script that makes them.
struct KeptTables {
    const Dialect& dialect;
    SchemaModel model;
    Script script;
};
KeptTables MakeKeptTables(const dictionary::SchemaContents& contents, const Options& options,
                          const Dialect& dialect);

/// The same, the script only for what the earlier dictionary did not have.
KeptTables MakeDifference(const dictionary::SchemaContents& earlier,
                          const dictionary::SchemaContents& contents, const Options& options,
                          const Dialect& dialect);

}  // namespace norvelis::tables
