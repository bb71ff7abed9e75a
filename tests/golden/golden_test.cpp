#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/program.h"
#include "golden/picture_difference.h"

// Finished drawings of the sample schema beside reference pictures, so that nobody changes by accident what
// people have on their walls. A picture that is meant to change: look at the report that a failure names,
// then put the new picture in the place of the reference.
namespace norvelis {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Golden, DrawingsLookLikeTheirReferences) {
    const Program program;
    ASSERT_EQ(program.Run("extract " + std::string(NORVELIS_SOURCE) + "/app/reportfiles/empschm.text").status,
              0);
    const std::string differences = NORVELIS_DIFFERENCES;
    std::filesystem::create_directories(differences);
    const struct {
        const char *reference, *options, *file;
    } cases[] = {
        {"whole-schema", "--layout Default", "EMPSCHM"},
        {"circles", "--around CLIENT --layout CircularDeep", "EMPSCHM around CLIENT"},
        {"rings", "--around MAKER --steps 2 --layout RadialRightAngle", "EMPSCHM around MAKER"},
        {"area-colors", "--only C*,M* --layout LeftToRight --color area --lines owner", "EMPSCHM selected"},
    };
    for (const auto& [name, options, file] : cases) {
        const std::string folder = program.Path(name), picture = fmt::format("{}/{}.svg", differences, name);
        ASSERT_EQ(program.Run(fmt::format("draw EMPSCHM --seed 1 {} --out '{}'", options, folder)).status, 0);
        ASSERT_EQ(program.Run(fmt::format("export '{}/EMPSCHM/{}.vsd' '{}'", folder, file, picture)).status,
                  0);
        const std::string reference = fmt::format("{}/tests/golden/references/{}.svg", NORVELIS_SOURCE, name);
        if (!FileExists(reference)) {
            ADD_FAILURE() << "there is no reference " << reference << "; the picture of today is " << picture;
            continue;
        }
        const PictureDifference difference = ComparePictures(ReadFile(reference), ReadFile(picture));
        if (difference.lines.empty()) continue;
        const std::string report = fmt::format("{}/{}.html", differences, name);
        WriteFile(report, difference.report);
        ADD_FAILURE() << name << ": both pictures are in " << report << "\n"
                      << fmt::format("{}", fmt::join(difference.lines, "\n"));
    }
}

TEST(Golden, TheReportTellsWhatDiffers) {
    const std::string page = R"(<svg viewBox="0 0 90 90"><g id="shape1"><path d="M1 2.5L3 -4"/></g>)"
                             R"(<g id="shape2"><text><tspan>OFFICE</tspan></text></g></svg>)";
    const auto with = [&](const std::string& from, const std::string& to) {
        std::string changed = page;
        changed.replace(changed.find(from), from.size(), to);
        return ComparePictures(page, changed);
    };
    EXPECT_THAT(with("2.5", "2.51").lines, IsEmpty());
    EXPECT_THAT(with("-4", "-4.5").lines, ElementsAre("shape1 (): differs by up to 0.50 points"));
    EXPECT_THAT(with("OFFICE", "DEPOT").lines,
                ElementsAre("shape2 (OFFICE): says \"DEPOT\" in place of \"OFFICE\""));
    EXPECT_THAT(with("90 90", "90 95").lines, ElementsAre("the page differs by up to 5.00 points"));
    EXPECT_THAT(with("<path", "<rect").lines, ElementsAre("shape1 (): is drawn otherwise"));
    const PictureDifference renamed = with("shape2", "shape3");
    EXPECT_THAT(renamed.lines, ElementsAre("shape2 (OFFICE): is missing", "shape3 (OFFICE): is new"));
    EXPECT_THAT(renamed.report, HasSubstr("<g id=\"shape3\" class=\"differs\">"));
}

}  // namespace
}  // namespace norvelis
