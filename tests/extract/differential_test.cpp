#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "base/paths.h"
#include "testing/extraction_pair.h"
#include "testing/report_generator.h"

// The extraction against its yardstick: both read the same reports, and the dictionary must be the same row
// by row.
namespace norvelis {
namespace {

/// How many odd reports, and from which seed on: more for a night's run.
std::uint64_t FromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::strtoull(value, nullptr, 10);
}

TEST(Differential, OddReportsGiveTheRowsOfTheLiteralProcedure) {
    const std::uint64_t first = FromEnvironment("NORVELIS_FIRST_SEED", 1);
    const std::uint64_t end = first + FromEnvironment("NORVELIS_ODD_REPORTS", 3000);
    ExtractionPair pair;
    for (std::uint64_t seed = first; seed < end; ++seed) {
        // A few reports share the store, so that schemas meet there.
        if (seed % 8 == 0) pair.Clear();
        const std::string difference = pair.Extract(GenerateOddReport(seed));
        ASSERT_EQ(difference, "") << "odd report of seed " << seed;
    }
}

TEST(Differential, OrdinaryReportsGiveTheRowsOfTheLiteralProcedure) {
    ExtractionPair pair;
    EXPECT_EQ(pair.Extract(GenerateSchemaReport(60, 140, 12, 1)), "");
    EXPECT_EQ(pair.Extract(GenerateSchemaReport(25, 80, 3, 2)), "");
    EXPECT_EQ(pair.Extract(ReadFile(NORVELIS_SOURCE "/app/reportfiles/empschm.text")), "");
}

TEST(Differential, AReportCutAnywhereGivesTheRowsOfTheLiteralProcedure) {
    const std::string report = GenerateSchemaReport(4, 6, 2, 3);
    ExtractionPair pair;
    for (std::size_t size = 0; size < report.size(); ++size) {
        ASSERT_EQ(pair.Extract(report.substr(0, size)), "") << "cut behind byte " << size;
    }
}

}  // namespace
}  // namespace norvelis
