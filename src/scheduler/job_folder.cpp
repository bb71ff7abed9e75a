#include "scheduler/job_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"

namespace norvelis {

namespace {

namespace fs = std::filesystem;

/// The store of the job is named like its folder, with an ending, and has a journal while it is written.
constexpr std::size_t kLongestName = 220;

bool IsFolderName(const std::string& name) {
    return !name.empty() && name.size() <= kLongestName && name != "." && name != ".." &&
           name.back() != '.' && name.back() != ' ' &&
           name.find_first_of(std::string_view("/\\\0", 3)) == std::string::npos;
}

/// A file of a run that is not yet under its name: "x.mdb.new4711", or its journal.
bool IsHalfMade(std::string_view name) {
    constexpr std::string_view kJournal = "-journal";
    if (name.ends_with(kJournal)) name.remove_suffix(kJournal.size());
    const auto digits = name.find_last_not_of("0123456789") + 1;
    if (digits == name.size()) return false;
    const auto marks = {".mdb.new", ".vsd.new", ".vsdx.new"};
    return std::any_of(marks.begin(), marks.end(),
                       [&](const char* mark) { return name.substr(0, digits).ends_with(mark); });
}

/// The place of a name in the file of locks: the same in every program and at every time.
std::int64_t LockPlace(const std::string& name) {
    std::uint64_t hash = 0xCBF29CE484222325ULL;  // FNV-1a
    for (const char c : LowerCase(name)) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001B3ULL;
    }
    return static_cast<std::int64_t>(hash >> 2U);
}

struct flock LockOf(const std::string& name) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = LockPlace(name);
    lock.l_len = 1;
    return lock;
}

}  // namespace

std::string JobFolder(const AppState& app, const std::string& name) {
    if (!IsFolderName(name)) throw RuntimeFailure(FailureNumber::PathNotFound, name);
    std::string folder = Resolve(app.AppPath(places::kBatchJobs) + "/" + name);
    std::error_code error;
    const fs::file_status status = fs::symlink_status(folder, error);
    if (fs::exists(status) && !fs::is_directory(status))
        throw RuntimeFailure(FailureNumber::PathNotFound, name);
    return folder;
}

std::string MakeJobFolder(const AppState& app, const std::string& name) {
    std::string folder = JobFolder(app, name);
    std::error_code error;
    fs::create_directories(folder, error);
    if (!FolderExists(folder))
        throw RuntimeFailure(FailureNumber::PathFileAccess, folder + ": " + error.message());
    for (const std::string& file : FilesIn(folder)) {
        if (IsHalfMade(file)) DeleteFile(folder + "/" + file);
    }
    return folder;
}

// Not in the job's folder, which may not be made for a name that is refused.
bool JobClaim::IsTaken(const AppState& app, const std::string& name) {
    const int file = open(Resolve(app.AppPath(places::kJobLocks)).c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    struct flock lock = LockOf(name);
    const bool isTaken = fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    close(file);
    return isTaken;
}

std::optional<JobClaim> JobClaim::Take(const AppState& app, const std::string& name) {
    const std::string path = Resolve(app.AppPath(places::kJobLocks));
    const auto fail = [&path](int error) {
        throw RuntimeFailure(FailureNumber::PathFileAccess,
                             path + ": " + std::generic_category().message(error));
    };
    JobClaim claim(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
    if (claim.file_ < 0) fail(errno);
    struct flock lock = LockOf(name);
    // Of the open file and not of the process, so that two claims of one process meet as well.
    if (fcntl(claim.file_, F_OFD_SETLK, &lock) == 0) return claim;
    if (errno != EAGAIN && errno != EACCES) fail(errno);
    return std::nullopt;
}

JobClaim::JobClaim(JobClaim&& other) noexcept : file_(std::exchange(other.file_, -1)) {}

JobClaim& JobClaim::operator=(JobClaim&& other) noexcept {
    std::swap(file_, other.file_);
    return *this;
}

JobClaim::~JobClaim() {
    if (file_ >= 0) close(file_);
}

}  // namespace norvelis
