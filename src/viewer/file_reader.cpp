#include "viewer/file_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/failure.h"
#include "base/paths.h"

namespace norvelis::viewer {

namespace {

std::int64_t ChangeTime(const struct stat& found) {
    constexpr std::int64_t kNanoseconds = 1'000'000'000;
    return found.st_mtim.tv_sec * kNanoseconds + found.st_mtim.tv_nsec;
}

}  // namespace

std::string_view WordsFor(FileChange change) {
    switch (change) {
        case FileChange::Grown:
            return "The report has grown since it was opened.";
        case FileChange::Changed:
            return "The report was changed since it was opened. Open it again to see it as it is.";
        case FileChange::Vanished:
            return "The report was removed since it was opened.";
        case FileChange::None:
            break;
    }
    return {};
}

FileReader::FileReader(const std::string& path) : path_(Resolve(path)), descriptor_(-1) {
    if (!FileExists(path_)) throw RuntimeFailure(FailureNumber::FileNotFound, path_);
    descriptor_ = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) throw RuntimeFailure(FailureNumber::PathFileAccess, path_);
    struct stat found {};
    fstat(descriptor_, &found);
    identity_ = {found.st_dev, found.st_ino};
    TakeSize();
}

FileReader::~FileReader() {
    close(descriptor_);
}

std::string FileReader::Read(std::uint64_t offset, std::size_t count) const {
    std::string bytes(count, '\0');
    std::size_t have = 0;
    while (have < count) {
        const auto got =
            pread(descriptor_, bytes.data() + have, count - have, static_cast<off_t>(offset + have));
        if (got <= 0) break;
        have += static_cast<std::size_t>(got);
    }
    bytes.resize(have);
    return bytes;
}

FileChange FileReader::Compare() const {
    struct stat found {};
    if (stat(path_.c_str(), &found) != 0) return FileChange::Vanished;
    const auto size = static_cast<std::uint64_t>(found.st_size);
    if (found.st_dev != identity_.device || found.st_ino != identity_.file || size < size_)
        return FileChange::Changed;
    if (size > size_) return FileChange::Grown;
    return ChangeTime(found) == changeTime_ ? FileChange::None : FileChange::Changed;
}

void FileReader::TakeSize() {
    struct stat found {};
    if (fstat(descriptor_, &found) != 0) return;
    size_ = static_cast<std::uint64_t>(found.st_size);
    changeTime_ = ChangeTime(found);
}

}  // namespace norvelis::viewer
