#pragma once

#include <string>

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
    std::string bytes;  ///< Of a valid report.
};

/// The one test that a file is a schema report; the file is read once. RuntimeFailure when it is there and
/// cannot be read.
ReportFile ValidateReportFile(const std::string& path);

}  // namespace norvelis
