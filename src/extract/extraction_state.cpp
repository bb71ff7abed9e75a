#include "extract/extraction_state.h"

#include <utility>

namespace norvelis {

ExtractionState::ExtractionState(AppState& appState, Connection& store, Report schemaReport,
                                 bool showsRecords)
    : app(appState), connection(store), report(std::move(schemaReport)), reportsRecords(showsRecords) {}

void ExtractionState::Finish() {
    if (writer) writer->Finish();
}

}  // namespace norvelis
