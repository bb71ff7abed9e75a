#include "viewer/report_places.h"

#include <gtest/gtest.h>

#include "base/paths.h"
#include "testing/small_report.h"
#include "testing/temporary_folder.h"

namespace norvelis::viewer {
namespace {

TEST(ReportPlaces, FieldsSetsAndTheSchemaAreFoundOnTheirLines) {
    const std::string calc = "CALC USING  CODE";
    const std::string report = HeaderOf("EMPSCHM") +                                         // 0 to 9
                               RecordHead("OFFICE", calc) + LineOf({{1, "0DATA ITEM"}}) +    // 10
                               FieldLine("02", "CODE-OLD") + FieldLine("02", "CODE") +       // 16, 17
                               RecordHead("EMPLOYEE", calc) + LineOf({{1, "0DATA ITEM"}}) +  // 18
                               FieldLine("02", "NAME") + FieldLine("03", "GR\xD6SSE") +      // 24, 25
                               LineOf({{2, "OWNER.... SET...... JOB-SET"}}) +                // 26
                               LineOf({{2, "SET...... JOB-SET-2"}}) +                        // 27
                               LineOf({{2, "SET...... JOB-SET"}});                           // 28
    const TemporaryFolder folder;
    WriteFile(folder.Path("report"), report);
    ReportLines lines(folder.Path("report"));
    EXPECT_EQ(SchemaOf(lines), "EMPSCHM");
    struct Case {
        std::uint64_t section;
        const char* field;
        std::optional<std::uint64_t> line;
    };
    for (const Case& one :
         {Case{10, "CODE", 17}, Case{10, "code-old", 16}, Case{10, "NAME", std::nullopt},
          Case{18, "NAME", 24}, Case{18, "GR\u00d6SSE", 25}, Case{18, "CODE", std::nullopt}})
        EXPECT_EQ(LineOfField(lines, one.section, one.field), one.line) << one.field;
    EXPECT_EQ(LineOfSet(lines, "job-set"), 28u);
    EXPECT_EQ(LineOfSet(lines, "JOB"), std::nullopt);
    EXPECT_EQ(LineOfSet(lines, "\u4e2d"), std::nullopt) << "no letter of a report";
}

}  // namespace
}  // namespace norvelis::viewer
