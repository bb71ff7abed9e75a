#include "publish/folder.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <utility>

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

/// What was in a file before; nothing when there was none.
class FormerFile {
  public:
    explicit FormerFile(std::string path) : path_(std::move(path)) {
        if (FileExists(path_)) content_ = ReadFile(path_);
    }
    /// As far as that can be done: whoever calls it has a failure of its own to tell.
    void PutBack() const {
        try {
            content_ ? WriteFile(path_, *content_) : static_cast<void>(DeleteFile(path_));
        } catch (const RuntimeFailure&) {
            // The page is then newer than the edition file, by which the next edition is compared.
        }
    }

  private:
    std::string path_;
    std::optional<std::string> content_;
};

void WriteInside(const fs::path& folder, const std::string& page, const std::string& edition) {
    const std::string pageFile = (folder / kPageFile).string();
    const FormerFile former(pageFile);
    WriteFile(pageFile, page);
    try {
        WriteFile((folder / kEditionFile).string(), edition);
    } catch (const RuntimeFailure&) {
        former.PutBack();
        throw;
    }
}

void WriteNewFolder(const fs::path& folder, const std::string& page, const std::string& edition) {
    const FolderBeside fresh(folder);
    WriteInside(fresh.Path(), page, edition);
    std::error_code error;
    fs::rename(fresh.Path(), folder, error);
    if (error) Refuse(folder, error.message());
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

void WriteFolder(const std::string& folder, const std::string& page, const std::string& edition) {
    const fs::path path = RealFolder(folder);
    std::error_code error;
    fs::exists(path, error) ? WriteInside(path, page, edition) : WriteNewFolder(path, page, edition);
}

}  // namespace norvelis::publish
