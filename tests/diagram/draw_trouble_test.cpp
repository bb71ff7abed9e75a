#include "base/failure.h"
#include "drawing_fixture.h"

namespace norvelis {
namespace {

using ::testing::_;
using ::testing::EndsWith;
using ::testing::StartsWith;

class DrawTroubleTest : public DrawnSchemaTest {
  protected:
    /// The same drawing each time.
    DrawResult Draw() {
        app.random = Random(1);
        test.host.messages.clear();
        lines.clear();
        return DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
    }
    std::size_t Count(std::string_view part) const { return LinesWith(part).size(); }
};

TEST_F(DrawTroubleTest, ANameThatIsNoFileNameIsDrawnAndNotSaved) {
    for (const std::string name : {"..", "A/B", "A\\B", "."}) {
        SchemaRows(*store, name).Entry("R" + name);
        lines.clear();
        test.host.messages.clear();
        EXPECT_EQ(DrawVisioDiagramSingle(drawing, name, nullptr), DrawResult::NotSaved);
        EXPECT_THAT(LinesWith("SaveAs"), IsEmpty());
        EXPECT_EQ(lines.back(), "Application.Quit");
        EXPECT_THAT(test.host.Texts(), ElementsAre(_,
                                                   "The drawing was not written: Path/File access error: \"" +
                                                       name + "\" is no file name",
                                                   HasSubstr("Done Drawing. File saved as:")));
    }
    drawing.gDrawSchema = "..";
    EXPECT_THAT(DrawVisioDiagramSeparateParent(drawing, nullptr, false).notSaved, ElementsAre("R.."));
}

TEST_F(DrawTroubleTest, AMissingStencilIsToldOnceInACommand) {
    engine.recorder->stencils.clear();
    drawing.gDrawSchema = "EMPSCHM";
    DrawVisioDiagramSeparateParent(drawing, nullptr, false);
    const std::string notFound = "Stencil not found: \r\n";
    EXPECT_THAT(test.host.Texts(), ElementsAre(notFound + "Basic Flowchart Shapes (US units).vss",
                                               notFound + "Backgrounds (US units).vss"));
    EXPECT_THAT(LinesWith("SaveAs"), SizeIs(2));
}

TEST_F(DrawTroubleTest, WhatIsNotOnDiskIsSaidOnceAndWithItsReason) {
    engine.recorder->copyFailure = "Permission denied: a.vsdx";
    EXPECT_EQ(Draw(), DrawResult::Saved);
    const std::string copy = "The .vsdx copy of the drawing was not written: Permission denied: a.vsdx";
    EXPECT_THAT(test.host.Texts(), ElementsAre(_, copy, HasSubstr("Done Drawing. File saved as:")));
    EXPECT_THAT(drawing.notWritten, ElementsAre(copy));
    engine.recorder->copyFailure.clear();
    EXPECT_EQ(Draw(), DrawResult::Saved);
    EXPECT_THAT(drawing.notWritten, IsEmpty()) << "the next command begins with none";

    for (int i = 0; i < 10; ++i) SchemaRows(*store).Entry("RECORD-" + std::to_string(i));
    engine.recorder->FailWhere("SaveAs");
    test.host.messages.clear();
    DrawVisioDiagramSeparate(drawing, nullptr);
    const auto refused = [this](const std::string& name) {
        return "The drawing was not written: Disk full: " + Target(name);
    };
    ASSERT_EQ(test.host.messages.size(), 3u);
    EXPECT_THAT(test.host.Texts()[1], StartsWith(refused("OFFICE") + "\r\n" + refused("DEPARTMENT")));
    EXPECT_THAT(test.host.Texts()[1], EndsWith(refused("RECORD-7") + "\r\nand 2 more"));
    EXPECT_THAT(test.host.Texts()[2], HasSubstr("Done Drawing. Visio Files saved at folder:"));
}

TEST_F(DrawTroubleTest, WhicheverOperationFailsTheRestOfTheDrawingComes) {
    Draw();
    const std::vector<std::string> whole = lines;
    for (int n = 2; n <= static_cast<int>(whole.size()); ++n) {  // the first creates the engine
        const std::string failed = whole[static_cast<std::size_t>(n - 1)];
        SCOPED_TRACE(failed);
        engine.recorder->FailCall(n);
        const DrawResult result = Draw();
        engine.recorder->refuse = nullptr;

        EXPECT_EQ(Count("Application.Quit"), 1u);
        EXPECT_THAT(test.host.Texts(), Contains(HasSubstr("Done Drawing. File saved as:")));
        const bool noPage = failed.starts_with("Documents.Add");
        const bool notSaved = failed.find("SaveAs") != std::string::npos;
        EXPECT_EQ(result, noPage || notSaved ? DrawResult::NotSaved : DrawResult::Saved);
        if (noPage) continue;

        // What the failed operation was about may be lacking; of everything else nothing is.
        const auto about = [&failed](const char* part) { return failed.find(part) != std::string::npos; };
        const bool aboutABox = about("Flowchart Shapes") || about("\"Process\"") || about(".Name = ");
        EXPECT_GE(Boxes().size(), aboutABox ? 3u : 4u);
        const bool aboutALine = aboutABox || about("Dynamic Connector") || about("Dynamic connector");
        EXPECT_GE(Count("\"Dynamic connector\" at"), aboutALine ? 1u : 2u);
        const bool noStencil = about("OpenEx \"Backgrounds") || about("OpenEx \"Borders");
        EXPECT_EQ(Count("Page.Layout"), noStencil ? 0u : 1u);
        EXPECT_EQ(Count("Page.PlaceNotes"), 1u);
    }
}

TEST_F(DrawTroubleTest, WhicheverReferenceOrReadIsMissingTheRestOfTheDrawingComes) {
    int steps = 0;
    engine.recorder->refuseStep = [&](const std::string&) { return ++steps < 0; };
    Draw();
    const int all = steps;
    ASSERT_GT(all, 200);
    int withoutLayout = 0;
    for (int n = 1; n <= all; ++n) {
        steps = 0;
        std::string failed;
        engine.recorder->refuseStep = [&](const std::string& step) {
            if (++steps == n) failed = step;
            return steps == n;
        };
        const DrawResult result = Draw();
        SCOPED_TRACE(failed + ", step " + std::to_string(n));
        EXPECT_EQ(Count("Application.Quit"), 1u);
        EXPECT_THAT(test.host.Texts(), Contains(HasSubstr("Done Drawing. File saved as:")));
        const bool noPage = n <= 4;  // Documents, the drawing, its pages, the page.
        EXPECT_EQ(result, noPage ? DrawResult::NotSaved : DrawResult::Saved);
        if (noPage) continue;

        EXPECT_GE(Boxes().size(), 3u);
        EXPECT_EQ(Count("Page.PlaceNotes"), 1u);
        const std::size_t shapes = Boxes().size() + Count("\"Dynamic connector\" at") +
                                   Count("\"Annotation\" at") + Count("\"Title block deco\" at");
        EXPECT_GE(shapes, 4u + 2u + 1u + 1u - 4u) << "a box and what hangs from it at most";
        withoutLayout += Count("Page.Layout") == 0;
    }
    EXPECT_LE(withoutLayout, 6) << "only where one of the two stencils of the page's look is not found";
}

TEST_F(DrawTroubleTest, AStoreThatBreaksEndsTheDrawWithoutASavedHalf) {
    int rows = 0;
    engine.recorder->refuse = [&](const std::string& line) {
        if (line.find("\"Process\" at") != std::string::npos && ++rows == 2) store->Close();
        return false;
    };
    EXPECT_THROW(DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr), RuntimeFailure);
    EXPECT_THAT(LinesWith("SaveAs"), IsEmpty());
    EXPECT_EQ(lines.back(), "Application.Quit");
    EXPECT_FALSE(app.progress[Bar::TreeviewText].Visible);
}

}  // namespace
}  // namespace norvelis
