#include "sqlconv/kept_tables.h"

#include "sqlconv/dialects/difference_script.h"
#include "sqlconv/tables/build_model.h"

namespace norvelis::tables {

KeptTables MakeKeptTables(const dictionary::SchemaContents& contents, const Options& options,
                          const Dialect& dialect) {
    SchemaModel model = BuildModel(contents, options, dialect.ServerLimits());
    Script script = MakeScript(model, dialect);
    return {dialect, std::move(model), std::move(script)};
}

KeptTables MakeDifference(const dictionary::SchemaContents& earlier,
                          const dictionary::SchemaContents& contents, const Options& options,
                          const Dialect& dialect) {
    const SchemaModel before = BuildModel(earlier, options, dialect.ServerLimits());
    SchemaModel model = BuildModel(contents, options, dialect.ServerLimits());
    Script script = MakeDifferenceScript(before, model, dialect);
    return {dialect, std::move(model), std::move(script)};
}

}  // namespace norvelis::tables
