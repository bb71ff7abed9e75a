#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

// Paths and files. A path may hold backslashes, double separators and letters in the wrong case: every
// function here takes it as it comes and finds the file that is meant. Texts are UTF-8.
namespace norvelis {

/// The path with the platform's separator, double separators folded: what messages and settings show.
std::string NativePath(std::string_view path);

/// NativePath, each part that does not exist as written replaced by the one that exists in another letter
/// case. Parts that exist in no case stay as written, so the result serves for creating too.
std::string Resolve(std::string_view path);

bool FileExists(std::string_view path);  ///< A regular file: no folder, and no device, which has no end.
bool FolderExists(std::string_view path);
bool CreateFolder(std::string_view path);  ///< One level or more; true when the folder is there afterwards.
bool DeleteFile(std::string_view path);    ///< True when no such file is there afterwards.
bool DeleteFolder(std::string_view path);  ///< With all that is in it.

std::vector<std::string> FilesIn(std::string_view folder);  ///< Names, sorted.

/// The file's bytes. RuntimeFailure 53, 70, 75 or 57 with the path when it cannot be read.
std::string ReadFile(std::string_view path);

/// Writes beside the target and renames over it, so that it is the old file or the whole new one; a symbolic
/// link stays one. RuntimeFailure with the path when that fails; the target is then as it was.
void WriteFile(std::string_view path, std::string_view content);

/// The same for content that another library writes: `write` gets the temporary name. When it throws, the
/// temporary file is removed and the failure goes on to the caller.
void WriteFileThrough(std::string_view path, const std::function<void(const std::string& temporary)>& write);

}  // namespace norvelis
