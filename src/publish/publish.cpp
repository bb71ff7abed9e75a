#include "publish/publish.h"

#include <optional>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "compare/comparison.h"
#include "compare/comparison_text.h"
#include "publish/edition_file.h"
#include "publish/folder.h"
#include "publish/page.h"

namespace norvelis::publish {

namespace {

std::optional<KeptEdition> ReadFormer(const std::string& folder, std::string_view schema) {
    const auto text = ReadEditionFile(folder);
    if (!text) return std::nullopt;
    const auto refuse = [&folder](const std::string& reason) {
        throw RuntimeFailure(FailureNumber::PathFileAccess,
                             folder + ": " + reason + ". Choose another folder, or remove this one");
    };
    std::optional<KeptEdition> former;
    try {
        former = ReadEdition(*text);
    } catch (const RuntimeFailure& failure) {
        refuse("its " + std::string(kEditionFile) + " cannot be used, " + failure.Detail());
    }
    if (!SameName(former->schema.name, schema)) refuse("it is an edition of schema " + former->schema.name);
    return former;
}

/// "the edition of 03/14/24, version 100"
std::string InWords(const dictionary::SchemaContents& schema) {
    const std::string date(Trim(schema.date)), version(Trim(schema.version));
    return "the edition" + (date.empty() ? "" : " of " + date) +
           (version.empty() ? "" : ", version " + version);
}

/// What the page shows as changed. An edition that is published again shows what it showed before.
std::optional<Changes> ChangesSince(const std::optional<KeptEdition>& former,
                                    const dictionary::SchemaContents& present) {
    if (!former) return std::nullopt;
    if (SameContents(former->schema, present)) return former->changes;
    const compare::Comparison differences = compare::Compare(former->schema, present);
    return Changes{InWords(former->schema), compare::Summary(differences), compare::Rows(differences)};
}

}  // namespace

void CheckFolder(const std::string& folder, std::string_view schema) {
    ReadFormer(folder, schema);
}

std::string Publish(const Edition& edition, const std::string& folder) {
    const auto former = ReadFormer(folder, edition.schema.name);
    const auto changes = ChangesSince(former, edition.schema);
    WriteFolder(folder, PageText(edition, changes), EditionText({edition.schema, changes}));
    return NativePath(folder + "\\" + std::string(kPageFile));
}

}  // namespace norvelis::publish
