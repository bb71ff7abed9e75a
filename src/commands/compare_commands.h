#pragma once

#include <optional>
#include <string>

#include "compare/edition.h"
#include "core/app_state.h"

// Two editions of a schema for a comparison: from the dictionary, or from report files, which leave the
// dictionary as it is.
namespace norvelis::commands {

/// An edition, or in words why there is none.
struct EditionRead {
    std::optional<compare::Edition> edition;
    std::string refusal;
};

/// A schema of the dictionary by its name in any letter case.
EditionRead EditionInDictionary(AppState& app, const std::string& schema);

/// A schema report, extracted into a store of its own. One that breaks off is compared as far as it goes; its
/// findings say so. RuntimeFailure when the file is there and cannot be read.
EditionRead EditionInReport(AppState& app, const std::string& path);

/// What a person names: a schema of the dictionary if there is one of that name, else a file. What has a
/// separator in it is a file.
EditionRead ReadEdition(AppState& app, const std::string& schemaOrPath);

/// Both editions compared, or in words why not.
struct EditionsCompared {
    std::optional<compare::ComparedEditions> editions;
    std::string refusal;
};
EditionsCompared CompareEditions(EditionRead former, EditionRead present);

/// Why a list of the differences may not be written to the file: it is one of the reports.
std::optional<std::string> WhyNotWrittenTo(const std::string& file,
                                           const compare::ComparedEditions& editions);

}  // namespace norvelis::commands
