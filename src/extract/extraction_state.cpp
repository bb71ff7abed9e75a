#include "extract/extraction_state.h"

#include <utility>

#include "base/text.h"

namespace norvelis {

ExtractionState::ExtractionState(AppState& appState, Connection& store, Report schemaReport,
                                 bool showsRecords)
    : app(appState), connection(store), report(std::move(schemaReport)), reportsRecords(showsRecords) {}

void ExtractionState::Find(FindingKind kind, std::size_t begin, std::string_view subject,
                           std::string_view reason) {
    findings.push_back({kind, report.NumberOfLine(begin), ToUtf8(Trim(subject)), ToUtf8(reason)});
}

void ExtractionState::FindInReport(FindingKind kind, std::string_view subject, std::string_view reason) {
    findings.push_back({kind, 0, ToUtf8(Trim(subject)), ToUtf8(reason)});
}

void ExtractionState::Finish() {
    if (writer) writer->Finish();
}

}  // namespace norvelis
