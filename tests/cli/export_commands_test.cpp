#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/program.h"
#include "drawing/opened_package.h"
#include "drawing/package/package.h"
#include "drawing/package/rich_drawing.h"
#include "testing/foreign_drawing.h"

namespace norvelis {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

// The sanitizer reserves more addresses than any limit leaves.
#ifdef __SANITIZE_ADDRESS__
constexpr char kLimits[] = "timeout 120 ";
#else
constexpr char kLimits[] = "ulimit -v 4000000; timeout 120 ";
#endif

class ExportCommands : public testing::Test {
  protected:
    std::string Save(const std::string& name, const std::string& bytes) const {
        WriteFile(program.Path(name), bytes);
        return program.Path(name);
    }
    /// Refused in one line with the reason, in the memory of an ordinary machine, and nothing is written.
    void ExpectRefusal(const std::string& drawing, const std::string& reason) const {
        for (const char* ending : {"png", "svg", "pdf", "vsdx"}) {
            const std::string out = program.Path(std::string("out.") + ending);
            const auto result = program.Run("export " + drawing + " " + out, kLimits);
            EXPECT_EQ(result.status, 1) << reason;
            EXPECT_EQ(result.out, "");
            EXPECT_THAT(result.error, HasSubstr(reason));
            EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
            EXPECT_FALSE(FileExists(out));
        }
    }

    const Program program;
    const std::string rich = drawing::WritePackage(*drawing::RichDrawing());
};

TEST_F(ExportCommands, ADrawingOfAnotherProgramIsShownAndNotRewritten) {
    const std::string drawing = Save("theirs.vdx", kForeignDrawing), out = program.Path("theirs.");
    const auto shown = program.Run("export " + drawing + " " + out + "png");
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.error, "") << "no library speaks";
    const auto refused = program.Run("export " + drawing + " " + out + "vsdx");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.error, HasSubstr("it can be shown, not rewritten"));
}

TEST_F(ExportCommands, ADrawingIsWrittenInEveryForm) {
    const std::string drawing = Save("rich.vsd", rich);
    for (const auto& [ending, begins] :
         {std::pair{"svg", "<?xml"}, {"png", "\x89PNG"}, {"pdf", "%PDF"}, {"vsdx", "PK"}}) {
        const std::string out = program.Path(std::string("out.") + ending);
        const auto result = program.Run("export " + drawing + " " + out);
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_EQ(result.out, out + "\n");
        EXPECT_TRUE(ReadFile(out).starts_with(begins)) << ending;
    }
    EXPECT_EQ(ReadFile(program.Path("out.vsdx")), rich);
    std::vector<drawing::Part> more = drawing::PartsOf(rich);
    more.push_back({"visio/comments.xml", "<Comments/>"});
    program.Run("export " + Save("more.vsd", drawing::Zip(more)) + " " + program.Path("more.vsdx"));
    EXPECT_EQ(ReadFile(program.Path("more.vsdx")), drawing::Zip(more)) << "with what is none of ours";
    EXPECT_THAT(ReadFile(program.Path("out.svg")), HasSubstr("EMPLOYEE"));
}

TEST_F(ExportCommands, AStencilIsDrawnByItsNameOrItsPath) {
    const std::string out = program.Path("sheet.png");
    for (const std::string& name :
         {std::string("'Borders and Titles (US units)'"), std::string("'Borders and Titles (US units).vss'"),
          Save("own.vss", rich)}) {
        const auto result = program.Run("stencil " + name + " " + out);
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_TRUE(ReadFile(out).starts_with("\x89PNG"));
        DeleteFile(out);
    }
    EXPECT_THAT(program.Run("stencil Nothing " + out).error, EndsWith("File not found: Nothing\n"));
    EXPECT_EQ(program.Run("stencil 'Borders and Titles (US units)' " + program.Path("sheet.gif")).status, 1);
}

TEST_F(ExportCommands, HostileFilesAreRefusedWithTheReason) {
    ExpectRefusal(Save("cut.vsd", rich.substr(0, rich.size() / 2)), "not a drawing");
    ExpectRefusal(Save("empty.vsd", ""), "not a drawing");
    ExpectRefusal(program.Path("missing.vsd"), "File not found");
    const auto withPage = [this](const std::string& page) {
        std::vector<drawing::Part> parts = drawing::PartsOf(rich);
        for (auto& part : parts) {
            if (part.name == "visio/pages/page1.xml") part.bytes = page;
        }
        return drawing::Zip(parts);
    };
    ExpectRefusal(Save("bomb.vsd", withPage(std::string(260u << 20, ' '))), "more than any drawing");
    ExpectRefusal(Save("entities.vsd", withPage("<!DOCTYPE a [<!ENTITY b 'c'>]><PageContents/>")),
                  "entities");
    ExpectRefusal(
        Save("far.vsd", withPage("<PageContents><Shapes><Shape ID='1'><Cell N='PinX' V='1e9'/></Shape>"
                                 "</Shapes></PageContents>")),
        "beyond every page");
}

}  // namespace
}  // namespace norvelis
