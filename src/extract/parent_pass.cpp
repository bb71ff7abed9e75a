#include "extract/parent_pass.h"

#include "base/failure.h"
#include "base/text.h"
#include "dictionary/clearing.h"
#include "extract/keywords.h"

namespace norvelis {

namespace {

using namespace keywords;

std::string_view Behind(std::string_view line, std::size_t column, std::size_t distance, long count) {
    return Text(line, static_cast<long>(column + distance), count);
}

// The window is cut before it is looked into, so that a version behind it is cut as well.
void TakeSchemaWord(ExtractionState& state, std::string_view window) {
    if (const auto version = Column(window, kVersion); version != 0) {
        state.gSchemaVersion = Behind(window, version, kVersion.size(), 5);
        window = window.substr(0, version);
    }
    if (const auto comma = Column(window, ","); comma != 0) window = window.substr(0, comma - 1);
    if (const auto blank = Column(window, " "); blank != 0) window = window.substr(0, blank - 1);
    state.gSchemaName = window;
}

// Gives the position behind the header.
std::size_t ReadHeader(ExtractionState& state) {
    std::size_t position = 0;
    bool release = false, date = false, schema = false;
    for (int count = 0; count < kHeaderLines; ++count) {
        const auto line = state.report.NextLine(position);
        if (!line) break;
        state.app.host.Yield();
        if (const auto p = Column(*line, kRelease); p != 0 && !release) {
            release = true;
            state.gSchemaRelease = Behind(*line, p, 9, 17);
        }
        if (const auto p = Column(*line, kDateMark); p != 0 && !date) {
            date = true;
            state.gSchemaDate = Text(*line, static_cast<long>(p) - 3, 9);
        }
        if (const auto p = Column(*line, kSchema); p != 0 && !schema) {
            schema = true;
            TakeSchemaWord(state, Behind(*line, p, kSchema.size(), 17));
        }
    }
    state.gSchemaName = Trim(state.gSchemaName);
    return position;
}

void ReplaceSchema(ExtractionState& state) {
    dictionary::ClearSchema(state.connection, ToUtf8(state.gSchemaName));
    state.writer = std::make_unique<dictionary::Writer>(state.connection, state.gSchemaName);
    state.writer->AddSchema(state.gSchemaRelease, state.gSchemaVersion, state.gSchemaDate);
}

// True when the line held a location mode and the rows were written.
bool CheckLocationMode(ExtractionState& state, std::string_view record, std::string_view line) {
    if (Column(line, kLocationMode) == 0) return false;
    for (const auto& location : kLocationModes) {
        if (Column(line, location.keyword) == 0) continue;
        const bool noDuplicates = Column(line, location.noDuplicates) != 0;
        if (location.entry) state.writer->AddParent(record);
        state.writer->AddRecord(record, location.mode, noDuplicates ? "DN" : "");
        return true;
    }
    return false;
}

}  // namespace

void CollectParentandChildren(ExtractionState& state) {
    std::size_t position = ReadHeader(state);
    state.app.gSchemaName = ToUtf8(state.gSchemaName);
    ReplaceSchema(state);

    for (const auto& nameLine : state.report.Lines()) {
        // Lines read in search of a location mode are not looked at again.
        if (nameLine.Begin() < position || !nameLine.Has(KeywordKind::RecordName)) continue;
        state.app.host.Yield();
        const std::string_view text = state.report.TextOf(nameLine);
        const std::string_view record =
            Behind(text, Column(text, kRecordName), kRecordName.size(), kNameWidth);

        position = nameLine.Begin();
        state.report.NextLine(position);
        bool found = CheckLocationMode(state, record, text);
        for (int count = 0; !found && count < kLinesToLocationMode; ++count) {
            const auto line = state.report.NextLine(position);
            if (!line) throw RuntimeFailure(FailureNumber::InputPastEnd);
            found = CheckLocationMode(state, record, *line);
        }
    }
}

}  // namespace norvelis
