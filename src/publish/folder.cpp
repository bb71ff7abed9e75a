#include "publish/folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "base/failure.h"
#include "base/paths.h"

namespace norvelis::publish {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void Refuse(const fs::path& folder, const std::string& reason) {
    throw RuntimeFailure(FailureNumber::PathFileAccess, folder.string() + ": " + reason);
}

/// The folder itself where the path is a link to it, without a separator at its end.
fs::path RealFolder(const std::string& folder) {
    std::error_code error;
    fs::path path = fs::weakly_canonical(Resolve(folder), error);
    if (error) Refuse(folder, error.message());
    if (path.filename().empty()) path = path.parent_path();
    return path;
}

/// A new folder beside another one, removed at the end of the scope with all that is then in it.
class FolderBeside {
  public:
    explicit FolderBeside(const fs::path& folder) : path_(folder) {
        path_ += ".new-" + std::to_string(getpid());
        std::error_code error;
        if (!fs::create_directories(path_, error))
            Refuse(path_, error ? error.message() : "it is there already");
        const fs::file_status former = fs::status(folder, error);
        if (fs::exists(former)) fs::permissions(path_, former.permissions(), error);
    }
    ~FolderBeside() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    FolderBeside(const FolderBeside&) = delete;
    FolderBeside& operator=(const FolderBeside&) = delete;

    const fs::path& Path() const { return path_; }

  private:
    fs::path path_;
};

/// File systems that cannot exchange two names take two steps, the second of which is taken back.
void ExchangeInSteps(const fs::path& one, const fs::path& other) {
    fs::path aside = other;
    aside += ".old";
    fs::rename(other, aside);
    std::error_code error;
    fs::rename(one, other, error);
    if (error) {
        fs::rename(aside, other);
        throw fs::filesystem_error("", error);
    }
    fs::rename(aside, one);
}

void Exchange(const fs::path& one, const fs::path& other) {
    if (renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0) return;
    if (errno != EINVAL && errno != ENOSYS) throw fs::filesystem_error("", {errno, std::generic_category()});
    ExchangeInSteps(one, other);
}

}  // namespace

std::optional<std::string> ReadEditionFile(const std::string& folder) {
    const fs::path path = RealFolder(folder);
    std::error_code error;
    if (!fs::exists(path, error) && !error) return std::nullopt;
    if (!fs::is_directory(path, error)) Refuse(path, "it is no folder");
    bool hasPage = false, hasEdition = false;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename();
        const bool isPage = name == kPageFile, isEdition = name == kEditionFile;
        if (!isPage && !isEdition)
            Refuse(path,
                   "the folder holds other files (" + name + "). Choose an empty one, or one of an edition");
        hasPage = hasPage || isPage;
        hasEdition = hasEdition || isEdition;
    }
    if (error) Refuse(path, error.message());
    if (hasPage && !hasEdition)
        Refuse(path, "the folder holds a page that is no edition. Choose an empty one, or one of an edition");
    if (!hasEdition) return std::nullopt;
    return ReadFile((path / kEditionFile).string());
}

void ReplaceFolder(const std::string& folder, const std::string& page, const std::string& edition) {
    const fs::path path = RealFolder(folder);
    const FolderBeside fresh(path);
    WriteFile((fresh.Path() / kPageFile).string(), page);
    WriteFile((fresh.Path() / kEditionFile).string(), edition);
    try {
        if (fs::exists(path)) {
            Exchange(fresh.Path(), path);
        } else {
            fs::rename(fresh.Path(), path);
        }
    } catch (const fs::filesystem_error& failure) {
        Refuse(path, failure.code().message());
    }
}

}  // namespace norvelis::publish
