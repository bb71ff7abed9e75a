#include "commands/export_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "testing/test_store.h"

namespace norvelis::commands {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;

TEST(ExportCommands, TheDrawingItselfIsNeverReplacedAndFailuresAreSaid) {
    TestApp test;
    const std::string file = test.folder.Path("a.vsd"), out = test.folder.Path("out.svg");
    const ShownDrawing drawing{file, 2, "PAGE"};
    const ExportForm& svg = ExportForms().front();
    EXPECT_FALSE(ChooseExport(test.host, drawing, svg)) << "there is none";
    WriteFile(file, "a drawing");
    EXPECT_FALSE(ChooseExport(test.host, drawing, svg)) << "the person chose nothing";
    test.host.inputs = {file, out};
    EXPECT_FALSE(ChooseExport(test.host, drawing, svg));
    EXPECT_EQ(ChooseExport(test.host, drawing, svg), out);
    EXPECT_THAT(test.host.Texts(), ElementsAre("There are no visio drawing to view",
                                               EndsWith("a.vsd: the export would replace the drawing")));
    test.host.messages.clear();
    ExportDrawing(test.host, drawing, out, [](const std::string& from, const std::string& to, int page) {
        WriteFile(to, "page " + std::to_string(page) + " of " + ReadFile(from));
    });
    EXPECT_EQ(ReadFile(out), "page 2 of a drawing");
    EXPECT_THAT(test.host.statuses, ElementsAre("Exported to " + out));
    ExportDrawing(test.host, drawing, out, [](const std::string&, const std::string&, int) {
        throw RuntimeFailure(FailureNumber::DeviceIoError, "the disk is full");
    });
    EXPECT_THAT(test.host.Texts(), ElementsAre(EndsWith("the disk is full")));
}

}  // namespace
}  // namespace norvelis::commands
