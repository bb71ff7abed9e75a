#include "diagram/draw_commands.h"

#include "base/failure.h"
#include "base/paths.h"
#include "browse/tree_load.h"
#include "diagram/draw_chosen.h"
#include "drawing_fixture.h"

namespace norvelis {
namespace {

const std::string kView = "Want to View While Norvelis is drawing";

class DrawCommandsTest : public DrawnSchemaTest {
  protected:
    /// The lines that tell one step of the sequence from another, without their numbers.
    std::vector<std::string> Milestones() const {
        std::vector<std::string> steps;
        for (const auto& line : lines) {
            for (const char* word :
                 {"create", "AlertResponse", "Documents.Add", "Page.Name", "\"Process\" at",
                  "\"Dynamic connector\" at", "\"Background none\" at 0, 0 ->", "Page.Layout",
                  "\"Annotation\" at", "CharProps Color = 4", "PlaceNotes", "SaveAs", "Quit"}) {
                if (line.find(word) == std::string::npos) continue;
                if (steps.empty() || steps.back() != word) steps.emplace_back(word);
            }
        }
        return steps;
    }
};

TEST_F(DrawCommandsTest, TheWholeSchemaOnOnePage) {
    test.host.answers = {Answer::No};
    EXPECT_EQ(DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr), DrawResult::Saved);
    EXPECT_THAT(Boxes(), ElementsAre("OFFICE", "EMPLOYEE", "COVERAGE", "DEPARTMENT"));
    EXPECT_EQ(lines.front(), "create hidden");
    EXPECT_THAT(LinesWith("Text = \"EMPSCHM\""), SizeIs(1));
    const std::vector<std::string> end(lines.end() - 3, lines.end());
    EXPECT_THAT(end,
                ElementsAre("Page.PlaceNotes", "Document.SaveAs " + Target("EMPSCHM"), "Application.Quit"));
    EXPECT_THAT(test.host.Texts(), ElementsAre(kView, "Done Drawing. File saved as:" + Target("EMPSCHM")));
    EXPECT_EQ(test.host.messages[0].title, "Hide or Show Visio");
    EXPECT_EQ(test.host.messages[0].icon, Icon::Question);
    EXPECT_THAT(screen.texts,
                ElementsAre("Creating Shapes....", "Creating Shapes....", "Connecting Shapes..",
                            "Creating Shapes....", "Connecting Shapes..", "Connecting shapes..",
                            "Formating Page EMPSCHM", "Annotating shapes..", "Annotating shape EMPLOYEE"));
    EXPECT_THAT(screen.files, ElementsAre(Target("EMPSCHM")));
    EXPECT_EQ(app.progress[Bar::BackgroundValue].Text, "100% ");
    EXPECT_FALSE(app.progress[Bar::TreeviewText].Visible);
    EXPECT_TRUE(FolderExists(location + "/EMPSCHM"));
}

TEST_F(DrawCommandsTest, TheStepsStandInOneOrder) {
    drawing.screen.ShowText("");
    DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
    EXPECT_THAT(Milestones(),
                ElementsAre("create", "AlertResponse", "Documents.Add", "Page.Name", "\"Process\" at",
                            "CharProps Color = 4", "\"Process\" at", "CharProps Color = 4", "\"Process\" at",
                            "CharProps Color = 4", "Page.Name", "\"Process\" at", "CharProps Color = 4",
                            "\"Dynamic connector\" at", "\"Background none\" at 0, 0 ->", "Page.Layout",
                            "\"Annotation\" at", "CharProps Color = 4", "PlaceNotes", "SaveAs", "Quit"));
    EXPECT_EQ(lines.front(), "create visible");
}

TEST_F(DrawCommandsTest, EachParentInAFileOfItsOwn) {
    const RecordTree tree = loadnodesfromaccess(app, *store, kTreeview);
    DrawVisioDiagramSeparate(drawing, &tree);
    EXPECT_THAT(LinesWith("SaveAs"), ElementsAre("Document.SaveAs " + Target("OFFICE"),
                                                 "Document.SaveAs " + Target("DEPARTMENT")));
    EXPECT_THAT(LinesWith("create"), SizeIs(2));
    EXPECT_THAT(Boxes(), ElementsAre("OFFICE", "EMPLOYEE", "COVERAGE", "DEPARTMENT", "EMPLOYEE", "COVERAGE"));
    EXPECT_THAT(LinesWith("DEPT-EMPLOYEE\r\n"), SizeIs(1));  // the department is not on the office's page
    EXPECT_THAT(LinesWith("Text = \"OFFICE\""), Contains(HasSubstr("Sheet.6.Text")));
    EXPECT_THAT(screen.marked, ElementsAre(4, 1));
    EXPECT_THAT(test.host.Texts(),
                ElementsAre(kView, "Done Drawing. Visio Files saved at folder:\r\n" + location));
    EXPECT_THAT(std::vector(screen.texts.begin(), screen.texts.begin() + 9),
                ElementsAre("Creating Shapes from shape: OFFICE", "Now Connecting the Shapes..",
                            "Connecting shapes..", "Layingout the Shapes..", "Formating Page OFFICE",
                            "Arranging the Shapes..", "Annotating shapes..", "Annotating shape EMPLOYEE",
                            "Finished Drawing shapes from: OFFICE"));
    EXPECT_EQ(drawing.gDrawFileName, "DEPARTMENT");
}

TEST_F(DrawCommandsTest, TheIsolatedRecordAndAllBelowIt) {
    const RecordTree tree = loadnodesfromaccess(app, *store, kTreeview);
    ProcessSingle(drawing, "EMPSCHM", tree.Subtree(tree.FirstOf("EMPLOYEE")));
    EXPECT_THAT(Boxes(), ElementsAre("EMPLOYEE", "COVERAGE"));
    EXPECT_THAT(LinesWith("Page.Name"), IsEmpty());
    EXPECT_THAT(LinesWith("SaveAs"), ElementsAre("Document.SaveAs " + Target("EMPLOYEE")));
    EXPECT_THAT(screen.saved, ElementsAre(Target("EMPLOYEE")));
    EXPECT_THAT(screen.texts, ElementsAre("Preparing to Draw, Please Wait..", "Creating Shapes......",
                                          "Now Connecting Shapes..", "Connecting shapes..",
                                          "Arranging Shapes..", "Formating Page EMPLOYEE",
                                          "Annotating shapes..", "Annotating shape EMPLOYEE", "Done.."));
    EXPECT_THAT(test.host.Texts(), ElementsAre(kView));

    lines.clear();
    screen.texts.clear();
    ProcessSingle(drawing, "EMPSCHM", tree);
    EXPECT_THAT(Boxes(), ElementsAre("OFFICE", "EMPLOYEE", "COVERAGE", "DEPARTMENT"));
    EXPECT_THAT(screen.selected, ElementsAre(4, 1));
    EXPECT_THAT(screen.texts, Contains("Creating Shapes......").Times(1));
    EXPECT_THAT(LinesWith("Text = \"EMPSCHM\""), SizeIs(1));
    EXPECT_TRUE(drawing.gSingleDrawing) << "what the draw commands draw next is not the isolate's to say";
}

TEST_F(DrawCommandsTest, TheIsolateMakesItsFolderBeforeItAsks) {
    const RecordTree tree = loadnodesfromaccess(app, *store, kTreeview);
    engine.recorder->creation = std::nullopt;
    ProcessSingle(drawing, "EMPSCHM", tree);
    EXPECT_TRUE(FolderExists(location + "/EMPSCHM"));

    setvisiolocation(app, location + "/gone");
    test.host.messages.clear();
    ProcessSingle(drawing, "EMPSCHM", tree);
    EXPECT_THAT(test.host.Texts(), ElementsAre("You must select a location to store visio files."));
    test.host.messages.clear();
    CreateFolder(location + "/picked");
    test.host.inputs = {location + "/picked/any.txt"};
    engine.recorder->creation = true;
    ProcessSingle(drawing, "EMPSCHM", tree);
    EXPECT_THAT(screen.saved, ElementsAre(location + "/picked/EMPSCHM/EMPSCHM.vsd"));

    store->Close();
    ProcessSingle(drawing, "EMPSCHM", tree);
    EXPECT_EQ(test.host.Texts().back(), "Error has been encountered. Close visio and try again.");
}

TEST_F(DrawCommandsTest, AScheduleAsksNobody) {
    std::vector<std::string> reported;
    drawing.report = [&](const std::string& text) { reported.push_back(text); };
    EXPECT_EQ(DrawScheduledDiagram(drawing, "EMPSCHM", "nightly"), DrawResult::Saved);
    EXPECT_EQ(lines.front(), "create hidden");
    EXPECT_THAT(LinesWith("SaveAs"),
                ElementsAre("Document.SaveAs " + app.AppPath("\\batchjobs\\nightly\\EMPSCHM.vsd")));
    engine.recorder->creation = std::nullopt;
    EXPECT_EQ(DrawScheduledDiagram(drawing, "EMPSCHM", "nightly"), DrawResult::NoEngine);
    EXPECT_THAT(reported, ElementsAre("Visio is not installed. Please install Visio 2002 or better."));
    EXPECT_TRUE(test.host.messages.empty());
}

TEST_F(DrawCommandsTest, DrawVisioDiagramAsksForEachDictionary) {
    SchemaRows(*store, "OTHER").Entry("JOB");
    test.host.answers = {Answer::Yes, Answer::No, Answer::Yes, Answer::No};
    DrawVisioDiagram(drawing, nullptr);
    EXPECT_THAT(test.host.Texts(),
                ElementsAre("This Process may take some time.\r\nDo you want to continue?",
                            "Draw diagram for dictionary EMPSCHM?", "Draw diagram for dictionary OTHER?",
                            kView, "Done Drawing. File saved as:" + Target("OTHER", "OTHER")));
    EXPECT_EQ(test.host.messages[0].title, "Please Confirm");
    EXPECT_EQ(test.host.messages[0].defaultAnswer, Answer::No);
    EXPECT_EQ(test.host.messages[1].title, "EMPSCHM");

    lines.clear();
    test.host.answers = {Answer::No};
    DrawVisioDiagram(drawing, nullptr);
    EXPECT_THAT(lines, IsEmpty());

    drawing.gSingleDrawing = false;
    DrawVisioDiagram(drawing, nullptr);
    EXPECT_THAT(LinesWith("SaveAs"), SizeIs(3));
}

TEST_F(DrawCommandsTest, OnlyWhatHasANodeInTheSchemasTreeIsDrawn) {
    const RecordTree tree = loadnodesfromaccess(app, *store, kTreeview);
    SchemaRows(*store).Entry("LATER");
    DrawVisioDiagramSingle(drawing, "EMPSCHM", &tree);
    EXPECT_THAT(Boxes(), ElementsAre("OFFICE", "EMPLOYEE", "COVERAGE", "DEPARTMENT"));
    EXPECT_THAT(screen.visible, ElementsAre(4, 1));
}

TEST_F(DrawCommandsTest, WithoutAnEngineTheAnswersOfEachWay) {
    const RecordTree tree = loadnodesfromaccess(app, *store, kTreeview);
    const auto answers = [&] {
        test.host.messages.clear();
        DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
        DrawVisioDiagramSeparate(drawing, nullptr);
        ProcessSingle(drawing, "EMPSCHM", tree);
        return test.host.Texts();
    };
    const std::string notInstalled = "Visio is not installed. Please install Visio 2002 or better.";
    const std::string mustHave = "You must have Visio installed to perform this functions";
    engine.recorder->creation = std::nullopt;
    EXPECT_THAT(answers(), ElementsAre(kView, notInstalled, kView, notInstalled, kView, mustHave));
    engine.recorder->creation = false;
    EXPECT_THAT(answers(), ElementsAre(kView, mustHave, kView, mustHave, kView, mustHave));

    test.host.messages.clear();
    DrawVisioDiagramSingle(drawing, "", nullptr);
    EXPECT_THAT(test.host.Texts(), ElementsAre("Request denied. Visio File to be generated must be named."));
}

TEST_F(DrawCommandsTest, TheFolderIsAskedForOrTheDefault) {
    setvisiolocation(app, location + "/gone");
    DrawVisioDiagramSeparate(drawing, nullptr);
    EXPECT_THAT(test.host.Texts(), ElementsAre(kView, "You must select a location to store visio files."));
    EXPECT_THAT(lines, IsEmpty());

    CreateFolder(location + "/picked");
    test.host.inputs = {location + "/picked/any.txt"};
    DrawVisioDiagramSeparate(drawing, nullptr);
    EXPECT_THAT(LinesWith("SaveAs"), SizeIs(2));
    EXPECT_EQ(getvisiolocation(app), location + "/picked");

    setvisiolocation(app, location + "/gone");
    DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
    EXPECT_EQ(screen.files.back(), app.AppPath("\\visio files\\EMPSCHM\\EMPSCHM.vsd"));
    EXPECT_EQ(ReadSetting(app, "visiolocation")->value, location + "/gone") << "the default is not stored";
    DrawParentDrawing(drawing, "OFFICE", false);
    EXPECT_EQ(screen.files.back(), app.AppPath("\\visio files\\EMPSCHM\\OFFICE.vsd"));
    EXPECT_EQ(getvisiolocation(app), app.AppPath("\\visio files\\"));
}

TEST_F(DrawCommandsTest, ChosenRecordsAskNothingAndHaveTheirOwnFile) {
    RecordChoice choice;
    choice.kind = RecordChoice::Kind::Around;
    choice.name = "employee";
    EXPECT_EQ(DrawChosenRecords(drawing, "EMPSCHM", choice).file, Target("EMPSCHM around EMPLOYEE"));
    EXPECT_THAT(LinesWith("Name = "), ElementsAre(HasSubstr("Page.Name"), HasSubstr("DEPARTMENT"),
                                                  HasSubstr("EMPLOYEE"), HasSubstr("COVERAGE")));
    EXPECT_THAT(LinesWith("GlueTo"), SizeIs(5)) << "two sets and a note";
    EXPECT_THAT(screen.saved, ElementsAre(Target("EMPSCHM around EMPLOYEE")));
    EXPECT_TRUE(test.host.messages.empty());

    choice.name = "NOBODY";
    EXPECT_EQ(DrawChosenRecords(drawing, "EMPSCHM", choice).file, "");
    EXPECT_THAT(test.host.Texts(),
                ElementsAre("Nothing was drawn: there is no record NOBODY in schema EMPSCHM."));
}

TEST_F(DrawCommandsTest, ADrawingThatNoSheetHoldsLegiblyIsHintedAt) {
    engine.recorder->values = {{"ThePage!PageWidth", 80}, {"ThePage!PageHeight", 120}};
    DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
    EXPECT_EQ(SizeHint(drawing), "");
    engine.recorder->values["ThePage!PageHeight"] = 400;
    DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
    EXPECT_THAT(SizeHint(drawing), HasSubstr("0.7 points high"));
}

TEST_F(DrawCommandsTest, ASchemaWithoutParentsHasBackgroundAndTitle) {
    EXPECT_EQ(DrawVisioDiagramSingle(drawing, "EMPTY", nullptr), DrawResult::Saved);
    EXPECT_THAT(LinesWith(" -> Sheet"),
                ElementsAre(HasSubstr("Background none"), HasSubstr("Title block deco")));
}

TEST_F(DrawCommandsTest, ColourAndLookComeFromTheSettingsUnlessChosen) {
    setdiagramcolor(app, "True");
    setvisiobackground(app, 8);
    DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
    EXPECT_THAT(LinesWith("1,3,0.FormulaU = RGB"), SizeIs(4));
    EXPECT_THAT(LinesWith("Drop \"Background world\" at 0, 0 ->"), SizeIs(1));

    lines.clear();
    drawing.options = {
        .layout = 5, .color = false, .background = "Background none", .location = location + "/out"};
    DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
    EXPECT_THAT(LinesWith("1,3,0"), IsEmpty());
    EXPECT_THAT(LinesWith("Drop \"Background none\" at 0, 0 ->"), SizeIs(1));
    EXPECT_THAT(LinesWith("1,24,8"), ElementsAre("ThePage!1,24,8.ResultIU = 2"));
    EXPECT_THAT(LinesWith("SaveAs"), ElementsAre(HasSubstr("/out/EMPSCHM/EMPSCHM.vsd")));
}

TEST_F(DrawCommandsTest, EqualSeedsGiveEqualDrawings) {
    const auto drawn = [&](std::uint64_t seed) {
        app.random = Random(seed);
        lines.clear();
        DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);
        return lines;
    };
    const auto first = drawn(5);
    EXPECT_EQ(drawn(5), first);
    EXPECT_NE(drawn(6), first);
}

TEST_F(DrawCommandsTest, SnapshotsComeByTimeAndGoAtTheEnd) {
    engine.recorder->refuse = [this](const std::string& line) {
        if (line.find("\"Process\" at") != std::string::npos) now += std::chrono::milliseconds(200);
        return false;
    };
    bool folderStood = false;
    drawing.steadyNow = [&] {
        folderStood = folderStood || FolderExists(app.AppPath("\\Temp"));
        return now;
    };
    DrawVisioDiagramSingle(drawing, "EMPSCHM", nullptr);  // 600 ms for the first tree, 800 in all
    const auto saves = LinesWith("SaveAs");
    ASSERT_THAT(saves, SizeIs(2));
    EXPECT_THAT(saves[0], MatchesRegex(".*/Temp/[0-9.e-]+[.]vsd"));
    EXPECT_TRUE(folderStood);
    EXPECT_FALSE(FolderExists(app.AppPath("\\Temp")));
    EXPECT_THAT(screen.files, SizeIs(2));
}

TEST_F(DrawCommandsTest, SnapshotsThatTakeLongComeSeldom) {
    constexpr int kRecords = 100;
    {
        SchemaRows rows(*store, "WIDE");
        for (int i = 0; i < kRecords; ++i) rows.Entry("W" + std::to_string(i));
    }
    engine.recorder->refuse = [this](const std::string& line) {
        if (line.find("\"Process\" at") != std::string::npos) now += std::chrono::milliseconds(200);
        if (line.find("/Temp/") != std::string::npos) now += std::chrono::milliseconds(700);
        return false;
    };
    DrawVisioDiagramSingle(drawing, "WIDE", nullptr);
    EXPECT_THAT(LinesWith("/Temp/"), SizeIs(3)) << "20 seconds of drawing and 2 of snapshots";
}

TEST_F(DrawCommandsTest, TheLabelsShowTheFileOnceTheEngineHasEnded) {
    bool shownBefore = true;
    engine.recorder->refuse = [&](const std::string& line) {
        if (line == "Application.Quit") shownBefore = !screen.files.empty() || !test.host.Texts().empty();
        return false;
    };
    DrawScheduledDiagram(drawing, "EMPSCHM", "nightly");
    EXPECT_FALSE(shownBefore);
    EXPECT_THAT(screen.files, SizeIs(1));
    EXPECT_EQ(screen.saved, screen.files);
}

TEST_F(DrawCommandsTest, ASavedDrawingIsLaidOutAgain) {
    drawing.options.layout = 6;
    EXPECT_FALSE(ApplyLayoutToFile(drawing, ""));
    EXPECT_FALSE(ApplyLayoutToFile(drawing, location + "/none.vsd"));
    EXPECT_THAT(lines, IsEmpty());
    WriteFile(location + "/a.vsd", "");
    EXPECT_TRUE(ApplyLayoutToFile(drawing, location + "\\\\a.vsd"));
    EXPECT_THAT(lines,
                ElementsAre("create hidden", "Documents.Open \"" + location + "/a.vsd\"",
                            "ThePage!1,24,8.ResultIU = 6", "ThePage!1,24,10.ResultIU = 2",
                            "ThePage!1,24,9.ResultIU = 21", "ThePage!1,24,29.ResultIU = 2", "Page.Layout",
                            "Page.ResizeToFitContents", "Page.CenterDrawing", "Page.PlaceNotes",
                            "Document.SaveAs " + location + "/a.vsd", "Application.Quit"));
    EXPECT_EQ(test.host.waitCursor, 0);
}

}  // namespace
}  // namespace norvelis
