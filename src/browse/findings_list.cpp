#include "browse/findings_list.h"

#include <algorithm>

#include "base/failure.h"
#include "dictionary/findings.h"

namespace norvelis {

FindingsList LoadFindings(Connection& store) {
    FindingsList list;
    for (const auto& finding : dictionary::Findings(store)) {
        list.rows.push_back({finding.severity, finding.schema,
                             finding.line == 0 ? std::string() : std::to_string(finding.line),
                             finding.subject, finding.reason, finding.remedy, finding.kind});
    }
    const auto notes = std::stable_partition(list.rows.begin(), list.rows.end(), [](const auto& row) {
        return row.front() == dictionary::kWarning;
    });
    list.warnings = static_cast<std::size_t>(notes - list.rows.begin());
    return list;
}

std::size_t CountFoundWarnings(Connection& store) {
    try {
        return dictionary::CountWarnings(store);
    } catch (const RuntimeFailure&) {
        return 0;
    }
}

}  // namespace norvelis
