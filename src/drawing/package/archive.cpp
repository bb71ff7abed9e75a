#include "drawing/package/archive.h"

#include <zip.h>

#include "base/failure.h"
#include "drawing/package/limits.h"

namespace norvelis::drawing {

namespace {

constexpr zip_uint16_t kNoTime = 0, kFirstDosDay = (1 << 5) | 1;  // Midnight of 1980-01-01.
constexpr zip_uint32_t kCompression = 3;  // Twice as fast as the usual 6 for a few per cent more bytes.

[[noreturn]] void FailToWrite(const std::string& reason) {
    throw RuntimeFailure(FailureNumber::DeviceIoError, "drawing package: " + reason);
}

/// The deleter of what libzip gives out.
template <auto Free>
struct FreedBy {
    void operator()(auto* resource) const { Free(resource); }
};
using Source = std::unique_ptr<zip_source_t, FreedBy<zip_source_free>>;
using OpenZip = std::unique_ptr<zip_t, FreedBy<zip_discard>>;

/// Why libzip failed. Its text is freed with it.
class ZipError {
  public:
    ZipError() { zip_error_init(&error_); }
    ~ZipError() { zip_error_fini(&error_); }
    ZipError(const ZipError&) = delete;
    ZipError& operator=(const ZipError&) = delete;

    zip_error_t* Get() { return &error_; }
    std::string Text() { return zip_error_strerror(&error_); }

  private:
    zip_error_t error_;
};

}  // namespace

void Refuse(const std::string& reason) {
    throw RuntimeFailure(FailureNumber::DeviceIoError, "not a drawing: " + reason);
}

std::string Zip(const std::vector<Part>& parts) {
    ZipError error;
    const Source buffer(zip_source_buffer_create(nullptr, 0, 0, error.Get()));
    if (!buffer) FailToWrite(error.Text());
    zip_source_keep(buffer.get());  // the archive frees its own share
    OpenZip archive(zip_open_from_source(buffer.get(), ZIP_CREATE | ZIP_TRUNCATE, error.Get()));
    if (!archive) {
        zip_source_free(buffer.get());
        FailToWrite(error.Text());
    }
    for (const auto& part : parts) {
        Source source(zip_source_buffer(archive.get(), part.bytes.data(), part.bytes.size(), 0));
        if (!source) FailToWrite(zip_strerror(archive.get()));
        const zip_int64_t added =
            zip_file_add(archive.get(), part.name.c_str(), source.get(), ZIP_FL_ENC_UTF_8);
        if (added < 0) FailToWrite(zip_strerror(archive.get()));
        source.release();  // the archive's from here on
        const auto index = static_cast<zip_uint64_t>(added);
        zip_set_file_compression(archive.get(), index, ZIP_CM_DEFLATE, kCompression);
        zip_file_set_dostime(archive.get(), index, kNoTime, kFirstDosDay, 0);
    }
    if (zip_close(archive.get()) != 0) FailToWrite(zip_strerror(archive.get()));
    archive.release();  // closing has freed it

    std::string bytes;
    zip_stat_t stat;
    bool whole = zip_source_stat(buffer.get(), &stat) == 0 && zip_source_open(buffer.get()) == 0;
    if (whole) {
        bytes.resize(stat.size);
        whole = zip_source_read(buffer.get(), bytes.data(), bytes.size()) ==
                static_cast<zip_int64_t>(bytes.size());
        zip_source_close(buffer.get());
    }
    if (!whole) FailToWrite("the archive could not be read back");
    return bytes;
}

struct Archive::Handle {
    OpenZip zip;
};

Archive::Archive(std::string_view bytes) : handle_(std::make_unique<Handle>()) {
    ZipError error;
    Source source(zip_source_buffer_create(bytes.data(), bytes.size(), 0, error.Get()));
    if (!source) Refuse(error.Text());
    handle_->zip.reset(zip_open_from_source(source.get(), ZIP_RDONLY, error.Get()));
    if (!handle_->zip) Refuse(error.Text());
    source.release();  // the archive's from here on
    const zip_int64_t entries = zip_get_num_entries(handle_->zip.get(), 0);
    if (entries > limits::kParts) Refuse("more parts than any drawing has");
    read_.resize(static_cast<std::size_t>(entries));
}

Archive::~Archive() = default;

bool Archive::Has(const std::string& name) const {
    return zip_name_locate(handle_->zip.get(), name.c_str(), ZIP_FL_NOCASE) >= 0;
}

std::string Archive::Read(const std::string& name) {
    const zip_int64_t index = zip_name_locate(handle_->zip.get(), name.c_str(), ZIP_FL_NOCASE);
    if (index < 0) Refuse("the part " + name + " is missing");
    read_[static_cast<std::size_t>(index)] = true;
    zip_stat_t stat;
    if (zip_stat_index(handle_->zip.get(), static_cast<zip_uint64_t>(index), 0, &stat) != 0 ||
        !(stat.valid & ZIP_STAT_SIZE)) {
        Refuse("the part " + name + " can not be read");
    }
    if (stat.size > limits::kBytes - unpacked_) Refuse("it unpacks to more than any drawing");
    unpacked_ += stat.size;
    const std::unique_ptr<zip_file_t, FreedBy<zip_fclose>> file(
        zip_fopen_index(handle_->zip.get(), static_cast<zip_uint64_t>(index), 0));
    if (!file) Refuse("the part " + name + " can not be read");
    // Unpacked chunk by chunk, so that memory grows with what is there and not with what the archive claims.
    std::string bytes;
    char chunk[1 << 16];
    for (;;) {
        const zip_int64_t got = zip_fread(file.get(), chunk, sizeof chunk);
        if (got < 0 || bytes.size() + static_cast<std::size_t>(got) > stat.size) {
            Refuse("the part " + name + " is damaged");
        }
        if (got == 0) break;
        bytes.append(chunk, static_cast<std::size_t>(got));
    }
    if (bytes.size() != stat.size) Refuse("the part " + name + " is damaged");
    return bytes;
}

std::vector<std::string> Archive::Unread() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < read_.size(); ++i) {
        const char* name = zip_get_name(handle_->zip.get(), i, 0);
        if (!read_[i] && name && !std::string_view(name).ends_with('/')) names.emplace_back(name);
    }
    return names;
}

}  // namespace norvelis::drawing
