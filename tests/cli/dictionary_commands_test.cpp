#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "cli/program.h"

namespace norvelis {
namespace {

const std::string kSample = std::string(NORVELIS_SOURCE) + "/app/reportfiles/empschm.text";

TEST(Cli, TheSampleGoesFromReportToDump) {
    const Program program;
    EXPECT_EQ(program.Run("validate " + kSample).status, 0);
    const auto extracted = program.Run("extract " + kSample);
    EXPECT_EQ(extracted.status, 0);
    EXPECT_NE(extracted.out.find("Done Extracting Records from report file: \n" + kSample), std::string::npos)
        << extracted.out;
    EXPECT_NE(extracted.error.find("Delete all dictionaries and extract report? Yes"), std::string::npos)
        << extracted.error;

    const auto dump = nlohmann::json::parse(program.Run("dump --schema empschm").out)["tables"];
    EXPECT_EQ(dump["schema_details"][0]["schemaname"], "EMPSCHM");
    EXPECT_GE(dump["Record_Details"].size(), 12u);
    EXPECT_GE(dump["Index_Details"].size(), 2u);
    EXPECT_TRUE(dump["Index_Details"][0]["sortkey16"].is_null());
    EXPECT_TRUE(nlohmann::json::parse(program.Run("dump --schema OTHER").out)["tables"]["Parents"].empty());
    EXPECT_EQ(program.Run("setting reportlocation").out, kSample + "\n");
}

TEST(Cli, RefusalsHaveOneLineAndStatusOne) {
    const Program program;
    WriteFile(program.Path("text"), "no report");
    const struct {
        std::string arguments, words;
        int status;
    } cases[] = {
        {"validate " + program.Path("text"),
         "Invalid IDMS Report File :" + program.Path("text") + " Action terminated\n", 1},
        {"extract " + program.Path("none"),
         "Report File :" + program.Path("none") + " does not exist. Please set it.\n", 1},
        {"setting nothing", "there is no setting nothing\n", 1},
        {"--app " + program.Path("none") + " dump",
         "the application folder " + program.Path("none") + " does not exist\n", 1},
        {"extract", "REPORT is required", 2},
        {"nonsense", "", 2},
    };
    for (const auto& c : cases) {
        const auto result = program.Run(c.arguments);
        EXPECT_EQ(result.status, c.status) << c.arguments;
        EXPECT_NE(result.error.find(c.words), std::string::npos) << result.error;
        EXPECT_EQ(result.out, "") << c.arguments;
    }
    DeleteFile(program.App() + "/Database/records.mdb");
    EXPECT_NE(program.Run("dump").error.find("records.mdb: the file does not exist"), std::string::npos);
    EXPECT_FALSE(FileExists(program.App() + "/Database/records.mdb"));
}

TEST(Cli, SettingsAreWrittenAndShown) {
    const Program program;
    EXPECT_EQ(program.Run("setting visiobackground 4 'Background rain'").status, 0);
    EXPECT_EQ(program.Run("setting VisioBackground").out, "4\nBackground rain\n");
    EXPECT_EQ(nlohmann::json::parse(program.Run("setting visiobackground --json").out)["settingvalue2"],
              "Background rain");
    for (const std::string value : {"", "[a,b]", "{}", "O'Neil \"x\"", "a  b"}) {
        const std::string quoted = "\"" + std::regex_replace(value, std::regex("\""), "\\\"") + "\"";
        EXPECT_EQ(program.Run("setting ReportLocation " + quoted).status, 0) << value;
        EXPECT_EQ(program.Run("setting ReportLocation").out, value + "\n");
    }
}

}  // namespace
}  // namespace norvelis
