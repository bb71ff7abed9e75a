#pragma once

#include <optional>
#include <string>

#include "publish/changes.h"
#include "publish/edition.h"

namespace norvelis::publish {

/// The page of an edition, UTF-8, with all that it needs in it. `changes` are shown when there are any to
/// compare with.
std::string PageText(const Edition& edition, const std::optional<Changes>& changes);

}  // namespace norvelis::publish
