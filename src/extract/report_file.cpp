#include "extract/report_file.h"

#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "extract/report.h"

namespace norvelis {

ReportFile ValidateReportFile(const std::string& path) {
    if (Trim(path).empty()) return {path, ReportCheck::NotNamed, {}};
    if (!FileExists(path)) return {path, ReportCheck::Missing, {}};
    std::string bytes = ReadFile(path);
    if (!IsSchemaReport(bytes)) return {path, ReportCheck::NoReport, {}};
    return {path, ReportCheck::Valid, std::move(bytes)};
}

}  // namespace norvelis
