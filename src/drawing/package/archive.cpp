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

}  // namespace

void Refuse(const std::string& reason) {
    throw RuntimeFailure(FailureNumber::DeviceIoError, "not a drawing: " + reason);
}

std::string Zip(const std::vector<Part>& parts) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_t* archive = buffer ? zip_open_from_source(buffer, ZIP_CREATE | ZIP_TRUNCATE, &error) : nullptr;
    if (!archive) {
        if (buffer) zip_source_free(buffer);
        FailToWrite(zip_error_strerror(&error));
    }
    zip_source_keep(buffer);
    const auto fail = [&](const std::string& reason) {
        zip_discard(archive);
        zip_source_free(buffer);
        FailToWrite(reason);
    };
    for (const auto& part : parts) {
        zip_source_t* source = zip_source_buffer(archive, part.bytes.data(), part.bytes.size(), 0);
        if (!source) fail(zip_strerror(archive));
        const zip_int64_t added = zip_file_add(archive, part.name.c_str(), source, ZIP_FL_ENC_UTF_8);
        if (added < 0) {
            zip_source_free(source);
            fail(zip_strerror(archive));
        }
        const auto index = static_cast<zip_uint64_t>(added);
        zip_set_file_compression(archive, index, ZIP_CM_DEFLATE, kCompression);
        zip_file_set_dostime(archive, index, kNoTime, kFirstDosDay, 0);
    }
    if (zip_close(archive) != 0) fail(zip_strerror(archive));

    std::string bytes;
    zip_stat_t stat;
    bool whole = zip_source_stat(buffer, &stat) == 0 && zip_source_open(buffer) == 0;
    if (whole) {
        bytes.resize(stat.size);
        whole = zip_source_read(buffer, bytes.data(), bytes.size()) == static_cast<zip_int64_t>(bytes.size());
        zip_source_close(buffer);
    }
    zip_source_free(buffer);
    if (!whole) FailToWrite("the archive could not be read back");
    return bytes;
}

struct Archive::Handle {
    zip_t* zip = nullptr;
    ~Handle() {
        if (zip) zip_discard(zip);
    }
};

Archive::Archive(std::string_view bytes) : handle_(std::make_unique<Handle>()) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    if (!source) Refuse(zip_error_strerror(&error));
    handle_->zip = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (!handle_->zip) {
        zip_source_free(source);
        Refuse(zip_error_strerror(&error));
    }
    const zip_int64_t entries = zip_get_num_entries(handle_->zip, 0);
    if (entries > limits::kParts) Refuse("more parts than any drawing has");
    read_.resize(static_cast<std::size_t>(entries));
}

Archive::~Archive() = default;

bool Archive::Has(const std::string& name) const {
    return zip_name_locate(handle_->zip, name.c_str(), ZIP_FL_NOCASE) >= 0;
}

std::string Archive::Read(const std::string& name) {
    const zip_int64_t index = zip_name_locate(handle_->zip, name.c_str(), ZIP_FL_NOCASE);
    if (index < 0) Refuse("the part " + name + " is missing");
    read_[static_cast<std::size_t>(index)] = true;
    zip_stat_t stat;
    if (zip_stat_index(handle_->zip, static_cast<zip_uint64_t>(index), 0, &stat) != 0 ||
        !(stat.valid & ZIP_STAT_SIZE)) {
        Refuse("the part " + name + " can not be read");
    }
    if (stat.size > limits::kBytes - unpacked_) Refuse("it unpacks to more than any drawing");
    unpacked_ += stat.size;
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(
        zip_fopen_index(handle_->zip, static_cast<zip_uint64_t>(index), 0), zip_fclose);
    if (!file) Refuse("the part " + name + " can not be read");
    // Unpacked piece by piece, so that memory grows with what is there and not with what the archive claims.
    std::string bytes;
    char piece[1 << 16];
    for (;;) {
        const zip_int64_t got = zip_fread(file.get(), piece, sizeof piece);
        if (got < 0 || bytes.size() + static_cast<std::size_t>(got) > stat.size) {
            Refuse("the part " + name + " is damaged");
        }
        if (got == 0) break;
        bytes.append(piece, static_cast<std::size_t>(got));
    }
    if (bytes.size() != stat.size) Refuse("the part " + name + " is damaged");
    return bytes;
}

std::vector<std::string> Archive::Unread() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < read_.size(); ++i) {
        const char* name = zip_get_name(handle_->zip, i, 0);
        if (!read_[i] && name && !std::string_view(name).ends_with('/')) names.emplace_back(name);
    }
    return names;
}

}  // namespace norvelis::drawing
