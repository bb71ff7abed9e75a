#pragma once

#include <optional>
#include <string>
#include <vector>

#include "extract/repair/repair.h"

namespace norvelis {

enum class ReportCheck {
    NotNamed,  ///< The path is blank.
    Missing,   ///< There is no such file.
    NoReport,  ///< The file is no schema report.
    Valid
};

/// What a path that should name a schema report has been found to be.
struct ReportFile {
    std::string path;
    ReportCheck check;
    std::string bytes;                    ///< Of the file, as it was or repaired.
    repair::LineMap lines;                ///< From the lines of `bytes` to those of the file.
    std::vector<repair::Change> changes;  ///< By which it was repaired.
};

/// The one test that a file is a schema report; the file is read once. RuntimeFailure when it is there and
/// cannot be read.
ReportFile ValidateReportFile(const std::string& path);

/// Its answer for callers that do not need the bytes, without reading the whole file.
ReportCheck CheckReportFile(const std::string& path);

/// The same for the file as repair makes it; see repair::RepairReport.
ReportFile RepairReportFile(const std::string& path, std::optional<repair::Encoding> encoding);

/// Why a path is no file that could be read: it is a folder, it may not be reached, ...; empty when there is
/// nothing of that name.
std::string WhyNoFile(const std::string& path);

}  // namespace norvelis
