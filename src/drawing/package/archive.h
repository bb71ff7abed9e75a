#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A package's parts in and out of zip archives.
namespace norvelis::drawing {

struct Part {
    std::string name;  ///< Without a slash in front: "visio/document.xml".
    std::string bytes;
};

/// An archive of the parts in their order, every entry with the same fixed time. RuntimeFailure 57 when the
/// library refuses.
std::string Zip(const std::vector<Part>& parts);

/// The parts of an archive, unpacked one by one as they are asked for. All parts together may unpack to no
/// more than limits::kBytes, whatever the archive says of itself.
class Archive {
  public:
    /// `bytes` must outlive the archive. RuntimeFailure 57 when they are no archive.
    explicit Archive(std::string_view bytes);
    ~Archive();
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    bool Has(const std::string& name) const;
    /// RuntimeFailure 57 when the part is missing, damaged or too large.
    std::string Read(const std::string& name);
    /// Parts that nobody asked for, as the archive writes their names; folders do not count.
    std::vector<std::string> Unread() const;

  private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
    std::uint64_t unpacked_ = 0;
    std::vector<bool> read_;  ///< By the number of the entry.
};

/// The failure that every refusal of a file is: number 57, "not a drawing: " and the reason.
[[noreturn]] void Refuse(const std::string& reason);

}  // namespace norvelis::drawing
