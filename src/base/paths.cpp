#include "base/paths.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "base/failure.h"
#include "base/text.h"

namespace norvelis {

namespace fs = std::filesystem;

namespace {

RuntimeFailure FileFailure(int error, const std::string& path) {
    switch (error) {
        case ENOENT:
            return {FailureNumber::FileNotFound, path};
        case ENOTDIR:
            return {FailureNumber::PathNotFound, path};
        case EACCES:
        case EPERM:
        case EROFS:
            return {FailureNumber::PermissionDenied, path};
        case EISDIR:
            return {FailureNumber::PathFileAccess, path + " is a folder"};
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return {FailureNumber::DiskFull, path};
        default:
            return {FailureNumber::DeviceIoError, path};
    }
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePointer = std::unique_ptr<std::FILE, FileCloser>;

bool WriteOut(std::FILE* file, std::string_view content) {
    return std::fwrite(content.data(), 1, content.size(), file) == content.size() && std::fflush(file) == 0 &&
           fsync(fileno(file)) == 0;
}

/// By way of a file that has its name only once it is whole, so that nothing stays of a program that is
/// killed before. False where the file system knows no such files.
bool WriteUnnamed(const std::string& name, std::string_view content) {
    const std::string folder = fs::path(name).parent_path().string();
    const int number = open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    const FilePointer file(number < 0 ? nullptr : fdopen(number, "wb"));
    if (!file || !WriteOut(file.get(), content)) return false;
    const std::string open = "/proc/self/fd/" + std::to_string(number);
    return linkat(AT_FDCWD, open.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// The first touch of each page takes longer than reading a large file into it.
void AskForLargePages(char* memory, std::size_t size) {
    constexpr std::uintptr_t kLargePage = 1 << 21;
    const auto begin = (reinterpret_cast<std::uintptr_t>(memory) + kLargePage - 1) & ~(kLargePage - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(memory) + size) & ~(kLargePage - 1);
    if (begin < end) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

}  // namespace

std::string NativePath(std::string_view path) {
    std::string result;
    result.reserve(path.size());
    for (const char c : path) {
        const char native = c == '\\' ? '/' : c;
        if (native == '/' && result.ends_with('/')) continue;
        result += native;
    }
    return result;
}

std::string Resolve(std::string_view path) {
    const std::string native = NativePath(path);
    std::error_code error;
    if (native.empty() || fs::exists(native, error)) return native;

    std::string found = native.starts_with('/') ? "/" : "";
    std::size_t begin = found.size();
    while (begin < native.size()) {
        const std::size_t slash = std::min(native.find('/', begin), native.size());
        const std::string part = native.substr(begin, slash - begin);
        std::string match = part;
        if (!fs::exists(found + part, error)) {
            for (fs::directory_iterator it(found.empty() ? "." : found, error), end; !error && it != end;
                 it.increment(error)) {
                const std::string name = it->path().filename().string();
                if (EqualIgnoringCase(name, part)) {
                    match = name;
                    break;
                }
            }
        }
        found += match;
        if (slash < native.size()) found += '/';
        begin = slash + 1;
    }
    return found;
}

bool FileExists(std::string_view path) {
    if (path.empty()) return false;
    std::error_code error;
    return fs::is_regular_file(Resolve(path), error);
}

bool FolderExists(std::string_view path) {
    std::error_code error;
    return !path.empty() && fs::is_directory(Resolve(path), error);
}

bool CreateFolder(std::string_view path) {
    std::error_code error;
    fs::create_directories(Resolve(path), error);
    return FolderExists(path);
}

bool DeleteFile(std::string_view path) {
    if (!FileExists(path)) return true;
    std::error_code error;
    return fs::remove(Resolve(path), error);
}

bool DeleteFolder(std::string_view path) {
    if (!FolderExists(path)) return true;
    std::error_code error;
    fs::remove_all(Resolve(path), error);
    return !FolderExists(path);
}

std::vector<std::string> FilesIn(std::string_view folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(Resolve(folder), error), end; !error && it != end; it.increment(error)) {
        std::error_code typeError;
        if (!it->is_directory(typeError)) names.push_back(it->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ReadFile(std::string_view path) {
    const std::string resolved = Resolve(path);
    FilePointer file(std::fopen(resolved.c_str(), "rb"));
    if (!file) throw FileFailure(errno, resolved);

    struct stat status {};
    std::string content;
    if (fstat(fileno(file.get()), &status) == 0 && S_ISREG(status.st_mode)) {
        content.reserve(static_cast<std::size_t>(status.st_size) + 1);
        AskForLargePages(content.data(), content.capacity());
    }
    char buffer[1 << 16];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
        content.append(buffer, count);
    if (std::ferror(file.get())) throw FileFailure(errno, resolved);
    return content;
}

namespace {

/// What is replaced when a file is written: a symbolic link stays one, and the file that it leads to is.
std::string BehindLinks(const std::string& path) {
    constexpr int kMostLinks = 40;  // As the system follows.
    fs::path target = path;
    std::error_code error;
    for (int i = 0; fs::is_symlink(fs::symlink_status(target, error)); ++i) {
        if (i == kMostLinks) throw FileFailure(ELOOP, path);
        target = target.parent_path() / fs::read_symlink(target, error);  // An absolute one stands alone.
    }
    return Resolve(target.string());
}

}  // namespace

void WriteFileThrough(std::string_view path, const std::function<void(const std::string&)>& write) {
    const std::string target = BehindLinks(Resolve(path));
    // Renaming over a device or a pipe would take it away from everybody.
    std::error_code ignored;
    if (fs::is_other(fs::status(target, ignored)))
        throw RuntimeFailure(FailureNumber::PathFileAccess, target + " is a device, not a file");
    const std::string temporary = target + ".new" + std::to_string(getpid());
    try {
        write(temporary);
        // A write-protected target is not replaced behind its owner's back.
        if (access(target.c_str(), F_OK) == 0 && access(target.c_str(), W_OK) != 0)
            throw FileFailure(EACCES, target);
        if (std::rename(temporary.c_str(), target.c_str()) != 0) throw FileFailure(errno, target);
    } catch (...) {
        std::remove(temporary.c_str());
        throw;
    }
}

void WriteFile(std::string_view path, std::string_view content) {
    const std::string target = Resolve(path);
    WriteFileThrough(path, [&](const std::string& temporary) {
        if (WriteUnnamed(temporary, content)) return;
        const FilePointer file(std::fopen(temporary.c_str(), "wb"));
        if (!file && errno == ENOENT) throw RuntimeFailure(FailureNumber::PathNotFound, target);
        if (!file || !WriteOut(file.get(), content)) throw FileFailure(errno, target);
    });
}

}  // namespace norvelis
