#pragma once

#include <string>
#include <vector>

#include "cli/command.h"

namespace norvelis::cli {

struct FindOptions {
    std::string text;
    std::vector<std::string> in;  ///< Kinds by name; empty: all.
    bool whereUsed = false, json = false;

    /// Whether it asks for names of any kind, and not for places of the record tree.
    bool IsForNames() const;
};

/// Why `--in` does not take a name; empty when it does.
std::string CheckFindKind(const std::string& name);

/// Prints what of the dictionary is named so: kind, name, place and schema in a line, or as a JSON array.
int FindNames(CommandContext& context, const FindOptions& options);

}  // namespace norvelis::cli
