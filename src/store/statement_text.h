#pragma once

#include <string>
#include <string_view>

namespace norvelis {

/// A classic statement in the words of the store's engine.
struct StatementText {
    std::string sql;
    /// The table of a "Select * FROM table …", empty for every other statement. `sql` then selects the row
    /// ids.
    std::string table;
};

/// Rewrites what the classic shape has and the engine lacks: "Delete * FROM", the bare column `set`, #date#
/// literals, true and false, insertion order where none is asked for. RuntimeFailure 13 when a # literal
/// holds no date.
StatementText Translate(std::string_view classic);

}  // namespace norvelis
