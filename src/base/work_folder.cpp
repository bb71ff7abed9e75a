#include "base/work_folder.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "base/failure.h"
#include "base/paths.h"

namespace norvelis {

namespace {

std::string MakeFolder() {
    const char* set = std::getenv("TMPDIR");
    std::error_code error;
    const std::string parent = std::filesystem::temp_directory_path(error).string();
    std::string folder = parent + "/norvelis-XXXXXX";
    if (!error && mkdtemp(folder.data()) != nullptr) return NativePath(folder);
    const std::string reason = error ? error.message() : std::generic_category().message(errno);
    throw RuntimeFailure(FailureNumber::PathFileAccess,
                         "the folder for temporary files (" +
                             (parent.empty() ? std::string(set ? set : "/tmp") : parent) + "): " + reason);
}

}  // namespace

WorkFolder::WorkFolder() : path_(MakeFolder()) {}

WorkFolder::~WorkFolder() {
    DeleteFolder(path_);
}

}  // namespace norvelis
