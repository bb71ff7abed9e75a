#pragma once

#include <string_view>

#include "browse/record_tree.h"
#include "core/app_state.h"
#include "store/connection.h"

// Filling the record tree from the store: schemas from Parents, entry records below them, members through
// next_step to any depth.
namespace norvelis {

/// How the screens that show the tree differ in filling it.
struct TreeVariant {
    bool showsProgress;
    Recordset (*entryRecords)(Connection&, std::string_view schema);
};
extern const TreeVariant kTreeview;     ///< Records by name, with progress.
extern const TreeVariant kTreeviewMax;  ///< Records in the store's own order.

/// Nodes that one tree may have. A network of sets can hold more paths than any memory: at this number
/// members are no longer added, and the error log and a box say so.
inline constexpr NodeIndex kMostNodes = 10'000'000;

/// The whole tree of all schemas, completed. A record's members are found by its name alone, so that a name
/// in two schemas has the members of the first row; a member without a row gets no node. A member that is
/// already on its own path stands there once more without members, which ends every cycle of sets.
///
/// A failure of the store goes to the error log; what was read until then stays and the rest is carried on
/// with.
RecordTree loadnodesfromaccess(AppState& app, Connection& store, const TreeVariant& variant,
                               NodeIndex mostNodes = kMostNodes);

/// The same between showing and hiding the progress bars.
RecordTree process_Refresh(AppState& app, Connection& store, const TreeVariant& variant);

}  // namespace norvelis
