#include "testing/extraction_pair.h"

#include <fmt/format.h>

#include "base/failure.h"
#include "extract/parent_pass.h"
#include "extract/record_pass.h"

namespace norvelis {

namespace {

std::string Shown(const std::optional<std::string>& value) {
    if (!value) return "null";
    std::string shown = "\"";
    for (const char c : *value) {
        if (static_cast<unsigned char>(c) < 0x20) {
            shown += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
        } else {
            shown += c;
        }
    }
    return shown + '"';
}

}  // namespace

ExtractionPair::ExtractionPair() : app_(folder_.Path(), host_, clock_, Random(1)) {
    Connection::CreateStore(folder_.Path("records.mdb"));
    connection_ = Connection::Open(ConnectionString(folder_.Path("records.mdb")));
    transaction_.emplace(*connection_);
}

void ExtractionPair::Clear() {
    dictionary_ = {};
    for (const TableDefinition& table : DictionaryTables()) {
        connection_->Execute(fmt::format("Delete * FROM {}", table.name));
    }
}

std::string ExtractionPair::Extract(const std::string& report) {
    const auto lines = literal::SplitLines(report);
    if (IsSchemaReport(report) != literal::ValidateReport(lines)) {
        return literal::ValidateReport(lines) ? "refused, should be a schema report"
                                              : "taken for a schema report, should be refused";
    }
    const int expected = literal::ExtractReport(lines, dictionary_);
    const int actual = ExtractIntoStore(report);
    if (actual != expected) return fmt::format("run-time failure {}, should be {}", actual, expected);
    for (const TableDefinition& table : DictionaryTables()) {
        std::string difference = FirstDifference(table);
        if (!difference.empty()) return difference;
    }
    return {};
}

int ExtractionPair::ExtractIntoStore(const std::string& report) {
    ExtractionState state(app_, *connection_, Report(report), false);
    int failureNumber = 0;
    try {
        CollectParentandChildren(state);
        IdmsUpdateRecords(state);
    } catch (const RuntimeFailure& failure) {
        failureNumber = static_cast<int>(failure.Number());
    }
    state.Finish();
    return failureNumber;
}

std::string ExtractionPair::FirstDifference(const TableDefinition& table) {
    const literal::Table& expected = dictionary_.ByName(table.name);
    Recordset actual = connection_->Select(fmt::format("Select * FROM {}", table.name));
    std::size_t number = 0;
    for (const literal::Row& row : expected) {
        if (actual.Eof()) break;
        for (const ColumnDefinition& column : table.columns) {
            const auto should = row.Value(std::string(column.name));
            const auto is = actual.Value(column.name);
            if (is == should) continue;
            return fmt::format("{}, row {} ({}), column {}: {}, should be {}", table.name, number,
                               row.Bytes("Recordname"), column.name, Shown(is), Shown(should));
        }
        actual.MoveNext();
        ++number;
    }
    if (actual.RecordCount() != expected.size()) {
        return fmt::format("{}: {} rows, should be {}", table.name, actual.RecordCount(), expected.size());
    }
    return {};
}

}  // namespace norvelis
