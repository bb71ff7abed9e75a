#pragma once

#include <optional>
#include <string>

#include "dictionary/schema_contents.h"
#include "publish/changes.h"

// The data of an edition, kept in its folder as JSON so that the next edition finds what changed.
namespace norvelis::publish {

struct KeptEdition {
    dictionary::SchemaContents schema;
    std::optional<Changes> changes;  ///< Against the edition before it, when there was one.
};

/// Text that is UTF-8 comes back as it was.
std::string EditionText(const KeptEdition& edition);

/// RuntimeFailure with the reason for a text that is no edition, or one of a newer program.
KeptEdition ReadEdition(const std::string& text);

/// True when both would be kept as the same: another edition of it shows nothing new.
bool SameContents(const dictionary::SchemaContents& a, const dictionary::SchemaContents& b);

}  // namespace norvelis::publish
