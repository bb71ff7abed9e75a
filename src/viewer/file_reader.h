#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace norvelis::viewer {

/// How a file on the disk is compared with the one that was opened.
enum class FileChange {
    None,
    Grown,    ///< The same file, longer: what was read is as it was.
    Changed,  ///< Shorter, or written over: what was read may be gone.
    Vanished  ///< No file of that name; what was opened can still be read.
};

/// What to say about it; empty for no change.
std::string_view WordsFor(FileChange change);

/// An open file, read at any place. It is not mapped into memory, so that a file which shrinks only gives
/// fewer bytes.
class FileReader {
  public:
    /// RuntimeFailure 53 or 75 with the path when it can not be opened.
    explicit FileReader(const std::string& path);
    ~FileReader();
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    /// Of the file when it was opened or last taken as it is.
    std::uint64_t Size() const { return size_; }

    /// The bytes from `offset` on, at most `count`; fewer at the end of the file or where it can not be read.
    std::string Read(std::uint64_t offset, std::size_t count) const;

    FileChange Compare() const;
    void TakeSize();  ///< Of a file that has grown.

  private:
    struct Identity {
        std::uint64_t device = 0, file = 0;
    };
    std::string path_;
    int descriptor_;
    Identity identity_;
    std::uint64_t size_ = 0;
    std::int64_t changeTime_ = 0;  ///< Nanoseconds; tells a file that was written over at the same size.
};

}  // namespace norvelis::viewer
