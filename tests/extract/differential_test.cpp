#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "core/failure.h"
#include "core/scripted_host.h"
#include "extract/literal_extraction.h"
#include "extract/passes.h"
#include "report_generator.h"
#include "store/connection.h"
#include "store/tables.h"
#include "temporary_folder.h"

// The extraction against its yardstick: both read the same reports, and the dictionary must be the same row
// by row.
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

/// A store and the dictionary that it should hold. Reports may follow one another, as in a person's store.
class Pair {
  public:
    Pair() : app_(folder_.Path(), host_, clock_, Random(1)) {
        Connection::CreateStore(folder_.Path("records.mdb"));
        connection_ = Connection::Open(ConnectionString(folder_.Path("records.mdb")));
        transaction_.emplace(*connection_);
    }

    void Clear() {
        dictionary_ = {};
        for (const TableDefinition& table : DictionaryTables()) {
            connection_->Execute(fmt::format("Delete * FROM {}", table.name));
        }
    }

    /// Extracts on both sides and tells the first difference; empty when there is none.
    std::string Extract(const std::string& report) {
        const auto lines = literal::SplitLines(report);
        if (IsSchemaReport(Report(report)) != literal::ValidateReport(lines)) {
            return fmt::format("a schema report or not: {} is right", literal::ValidateReport(lines));
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

  private:
    int ExtractIntoStore(const std::string& report) {
        ExtractionState state(app_, *connection_, Report(report), false);
        int failureNumber = 0;
        try {
            CollectParentandChildren(state);
            IdmsUpdateRecords(state);
        } catch (const RuntimeFailure& failure) {
            failureNumber = static_cast<int>(failure.Number());
        }
        FinishExtraction(state);
        return failureNumber;
    }

    std::string FirstDifference(const TableDefinition& table) {
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
            return fmt::format("{}: {} rows, should be {}", table.name, actual.RecordCount(),
                               expected.size());
        }
        return {};
    }

    TemporaryFolder folder_;
    ScriptedHost host_;
    SystemClock clock_;
    AppState app_;
    std::shared_ptr<Connection> connection_;
    std::optional<Transaction> transaction_;
    literal::Dictionary dictionary_;
};

/// How many odd reports, and from which seed on: more for a night's run.
std::uint64_t FromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::strtoull(value, nullptr, 10);
}

TEST(Differential, OddReportsGiveTheRowsOfTheLiteralProcedure) {
    const std::uint64_t first = FromEnvironment("NORVELIS_FIRST_SEED", 1);
    const std::uint64_t end = first + FromEnvironment("NORVELIS_ODD_REPORTS", 3000);
    Pair pair;
    for (std::uint64_t seed = first; seed < end; ++seed) {
        // A few reports share the store, so that schemas meet there.
        if (seed % 8 == 0) pair.Clear();
        const std::string difference = pair.Extract(GenerateOddReport(seed));
        ASSERT_EQ(difference, "") << "odd report of seed " << seed;
    }
}

TEST(Differential, OrdinaryReportsGiveTheRowsOfTheLiteralProcedure) {
    Pair pair;
    EXPECT_EQ(pair.Extract(GenerateSchemaReport(60, 140, 12, 1)), "");
    EXPECT_EQ(pair.Extract(GenerateSchemaReport(25, 80, 3, 2)), "");
    std::ifstream sample(NORVELIS_SOURCE "/app/reportfiles/empschm.text", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(sample), {}};
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(pair.Extract(text), "");
}

TEST(Differential, AReportCutAnywhereGivesTheRowsOfTheLiteralProcedure) {
    const std::string report = GenerateSchemaReport(4, 6, 2, 3);
    Pair pair;
    for (std::size_t size = 0; size < report.size(); ++size) {
        ASSERT_EQ(pair.Extract(report.substr(0, size)), "") << "cut behind byte " << size;
    }
}

}  // namespace
}  // namespace norvelis
