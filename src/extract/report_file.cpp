#include "extract/report_file.h"

#include <filesystem>
#include <fstream>
#include <utility>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "extract/report.h"

namespace norvelis {

namespace {

ReportFile Check(ReportFile file) {
    file.check = IsSchemaReport(file.bytes) ? ReportCheck::Valid : ReportCheck::NoReport;
    return file;
}

// What keeps the path from being read.
std::optional<ReportCheck> NoFile(const std::string& path) {
    if (Trim(path).empty()) return ReportCheck::NotNamed;
    if (!FileExists(path)) return ReportCheck::Missing;
    return std::nullopt;
}

// Nothing when it was read.
std::optional<ReportCheck> Read(const std::string& path, std::string& bytes) {
    if (const auto failed = NoFile(path)) return failed;
    bytes = ReadFile(path);
    return std::nullopt;
}

}  // namespace

ReportFile ValidateReportFile(const std::string& path) {
    ReportFile file{path, ReportCheck::Valid, {}, {}, {}};
    if (const auto failed = Read(path, file.bytes)) {
        file.check = *failed;
        return file;
    }
    return Check(std::move(file));
}

ReportCheck CheckReportFile(const std::string& path) {
    if (const auto failed = NoFile(path)) return *failed;
    const std::string resolved = Resolve(path);
    std::ifstream file(resolved, std::ios::binary);
    if (!file) throw RuntimeFailure(FailureNumber::PathFileAccess, resolved);
    const bool isReport = IsSchemaReport(file);
    if (file.bad()) throw RuntimeFailure(FailureNumber::DeviceIoError, resolved);
    return isReport ? ReportCheck::Valid : ReportCheck::NoReport;
}

ReportFile RepairReportFile(const std::string& path, std::optional<repair::Encoding> encoding) {
    ReportFile file{path, ReportCheck::Valid, {}, {}, {}};
    std::string bytes;
    if (const auto failed = Read(path, bytes)) {
        file.check = *failed;
        return file;
    }
    repair::RepairedReport repaired = repair::RepairReport(std::move(bytes), encoding);
    file.bytes = std::move(repaired.bytes);
    file.lines = std::move(repaired.lines);
    file.changes = std::move(repaired.changes);
    return Check(std::move(file));
}

std::string WhyNoFile(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(Resolve(path), error);
    switch (status.type()) {
        case std::filesystem::file_type::not_found:
            return {};
        case std::filesystem::file_type::none:
            return "may not be reached: " + error.message();
        case std::filesystem::file_type::directory:
            return "is a folder";
        case std::filesystem::file_type::fifo:
            return "is a pipe";
        case std::filesystem::file_type::regular:
            return {};
        default:
            return "is a device";
    }
}

}  // namespace norvelis
