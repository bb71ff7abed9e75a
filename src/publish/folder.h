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

/// Puts both files in place of all that the folder holds, at once: whoever looks sees the former edition or
/// this one. RuntimeFailure with the reason when that fails; the folder is then as it was.
void ReplaceFolder(const std::string& folder, const std::string& page, const std::string& edition);

}  // namespace norvelis::publish
