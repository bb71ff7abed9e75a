#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvelis::publish {

/// The files of a published folder.
inline constexpr std::string_view kPageFile = "index.html", kEditionFile = "edition.json";

/// The edition file of the folder; nothing when there is no such folder, or an empty one. RuntimeFailure with
/// words when it holds anything else.
std::optional<std::string> ReadEditionFile(const std::string& folder);

/// Puts both files into the folder, one after the other, each whole. A folder that is not there appears with
/// both in it; one that is there stays the same folder, and its parent need not be writable. RuntimeFailure
/// with the reason when that fails; the folder is then as it was.
void WriteFolder(const std::string& folder, const std::string& page, const std::string& edition);

}  // namespace norvelis::publish
