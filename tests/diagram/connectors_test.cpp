#include "diagram/connectors.h"

#include "diagram/annotation.h"
#include "diagram/record_shapes.h"
#include "diagram/shape_text.h"
#include "drawing_fixture.h"

namespace norvelis {
namespace {

class ConnectorsTest : public DrawingTest {
  protected:
    ConnectorsTest() {
        SchemaRows rows(*store);
        rows.Entry("DEPARTMENT", "EMPLOYEE");
        rows.Record("EMPLOYEE");
    }
    PageRef PageWithBoxes() {
        const PageRef page = NewPage();
        DrawRecordTree(drawing, page, "DEPARTMENT");
        lines.clear();
        return page;
    }
};

TEST_F(ConnectorsTest, ALineIsGluedLabelledAndSentBehindTheBoxes) {
    SchemaRows(*store).Set("DEPT-EMPLOYEE ", "department", "EMPLOYEE", " OA NEXT\r\nMANDATORY ");
    ConnectAllShapes(drawing, *PageWithBoxes());
    EXPECT_THAT(lines, ElementsAre(HasSubstr("Masters.Item"),
                                   "Page-1.Drop \"Dynamic connector\" at 0.5, 0.5 -> Sheet.3",
                                   "Sheet.3!1,4,0.GlueTo Sheet.1!1,1,0", "Sheet.3!1,4,2.GlueTo Sheet.2!1,1,0",
                                   "Sheet.3.Text = \"DEPT-EMPLOYEE\r\nOA NEXT\r\nMANDATORY\"",
                                   "Sheet.3!Char.Size.Formula = =6 pt.",
                                   MatchesRegex("Sheet.3!LineColor.FormulaU = RGB.[0-9]+,[0-9]+,[0-9]+."),
                                   "Sheet.3.SendToBack"));
    EXPECT_EQ(screen.texts.back(), "Connecting shapes..");
}

TEST_F(ConnectorsTest, EverySetHasItsLineAndOnlyBoxesOnThePageAreJoined) {
    {
        SchemaRows rows(*store);
        rows.Set("B-SET", "EMPLOYEE", "DEPARTMENT");
        for (int i = 0; i < 40; ++i) rows.Set("SET-" + std::to_string(i), "DEPARTMENT", "EMPLOYEE");
        rows.Set("AWAY", "DEPARTMENT", "ELSEWHERE");
        rows.Set("STRANGE", "ELSEWHERE", "EMPLOYEE");
        rows.Set("", "EMPLOYEE", "EMPLOYEE", "");
    }
    SchemaRows(*store, "COPY").Set("COPY-SET", "DEPARTMENT", "EMPLOYEE");
    ConnectAllShapes(drawing, *PageWithBoxes());
    const auto labels = LinesWith(".Text = ");
    ASSERT_THAT(labels, SizeIs(42));
    EXPECT_THAT(labels[0], HasSubstr("SET-0"));  // owners, then members, in order of their names
    EXPECT_THAT(labels[40], HasSubstr("B-SET"));
    EXPECT_THAT(labels[41], HasSubstr("Text = \"\r\n\""));
}

TEST_F(ConnectorsTest, AnEmptyLabelNamesBothEnds) {
    const PageRef page = PageWithBoxes();
    ConnectTwoShapes(drawing, page->Shapes()->Item(1), page->Shapes()->Item(2), "  ");
    EXPECT_THAT(LinesWith(".Text = "), ElementsAre("Sheet.3.Text = \"DEPARTMENT-EMPLOYEE\""));
}

TEST_F(ConnectorsTest, LabelsAreRedForTheSetAndBlueBelow) {
    SchemaRows(*store).Set("DEPT-EMP", "DEPARTMENT", "EMPLOYEE", "OA");
    const PageRef page = PageWithBoxes();
    ConnectAllShapes(drawing, *page);
    lines.clear();
    FormatConnectorLabels(*page);
    EXPECT_THAT(
        lines, ElementsAre("Sheet.3.Characters[0,12].Begin = 0", "Sheet.3.Characters[0,12].End = 9",
                           "Sheet.3.Characters[0,9].CharProps Color = 2",
                           "Sheet.3.Characters[0,9].CharProps Style = 1",
                           "Sheet.3.Characters[0,9].CharProps Size = 6", "Sheet.3.Characters[0,9].Begin = 9",
                           "Sheet.3.Characters[9,9].End = 12", "Sheet.3.Characters[9,12].CharProps Color = 4",
                           "Sheet.3.Characters[9,12].CharProps Size = 6", "Fonts.Item \"Times New Roman\"",
                           "Sheet.3.Characters[9,12].CharProps Font = 1"));
}

class AnnotationTest : public ConnectorsTest {};

TEST_F(AnnotationTest, ANoteStandsBesideItsRecord) {
    SchemaRows(*store).Index("EMP-NAME-NDX", "employee ", "EMP-LAST-NAME", "ASC", "DUPLICATES LAST");
    store->Execute("Update Index_Details set sortkey3 = 'K3', sortkey16 = 'K16', sortorder16 = 'DSC'");
    const PageRef page = PageWithBoxes();
    engine.recorder->values = {{"Sheet.2!1,1,0", 3}, {"Sheet.2!1,1,1", 4}};
    AnnotateShapes(drawing, page);
    const std::string text = "EMP-NAME-NDX\r\nEMP-LAST-NAME ASC\r\nK3 \r\nK16 DSC\r\nDUPLICATES LAST";
    EXPECT_EQ(engine.recorder->shapes[2]->text, text);
    ASSERT_GT(lines.size(), 6u);
    EXPECT_EQ(lines[1], "Page-1.Drop \"Annotation\" at 3.7, 4.7 -> Sheet.3");
    EXPECT_EQ(lines[2], "Sheet.3!1,1,2.ResultIU = 2");
    EXPECT_EQ(lines[3], "Sheet.3!1,1,3.ResultIU = 2");
    EXPECT_THAT(std::vector(lines.end() - 4, lines.end()),
                ElementsAre("Sheet.3.AddRow 5, 0, 150", "Sheet.3!5,0,0.ResultIU = 1",
                            "Sheet.3!5,0,1.ResultIU = 0.8", "Sheet.3!1,4,0.GlueTo Sheet.2!1,1,0"));
    EXPECT_THAT(LinesWith("ParaProps"), ElementsAre(HasSubstr("ParaProps 6 = 0")));
    EXPECT_THAT(LinesWith("Color"), ElementsAre(HasSubstr("[0,13].CharProps Color = 2"),
                                                HasSubstr("[13,62].CharProps Color = 13")));
    EXPECT_THAT(screen.texts, ElementsAre("Annotating shapes..", "Annotating shape employee"));
}

TEST_F(AnnotationTest, AGroupMayLeaveItsTextToItsLastMember) {
    const PageRef page = PageWithBoxes();
    page->Drop(page->Shapes()->Item(1)->Master(), 0, 0);  // stands for a member of the note
    engine.recorder->shapes[2]->text = "";
    engine.recorder->refuse = [this](const std::string& line) {
        if (line == "Sheet.4!1,1,3.ResultIU = 2") engine.recorder->shapes[3]->subShapes = {3};
        return false;
    };
    SetShapetext(drawing, page, *page->Shapes()->Item(1), 1, 1, "NDX\r\nKEY ASC");
    EXPECT_THAT(LinesWith("Color"), ElementsAre("Sheet.3.Characters[0,4].CharProps Color = 2",
                                                "Sheet.3.Characters[4,12].CharProps Color = 13"));
}

TEST_F(AnnotationTest, OneNoteForOneTextAndNoneThatRepeatsARecord) {
    {
        SchemaRows rows(*store);
        rows.Index("NDX", "EMPLOYEE", "KEY", "ASC");
        rows.Index("NDX", "DEPARTMENT", "KEY", "ASC");
        rows.Index("EMPLOYEE", "DEPARTMENT");
        rows.Index("ALONE", "EMPLOYEE");
        rows.Index("AWAY", "ELSEWHERE");
    }
    SchemaRows(*store, "COPY").Index("COPY-NDX", "EMPLOYEE");
    AnnotateShapes(drawing, PageWithBoxes());
    EXPECT_THAT(LinesWith("Drop"), SizeIs(2));
    EXPECT_EQ(engine.recorder->shapes.back()->text, "ALONE");
}

TEST_F(AnnotationTest, SixPointsForEveryShape) {
    const PageRef page = PageWithBoxes();
    FontChange(*page);
    EXPECT_THAT(lines,
                ElementsAre("Sheet.1!Char.Size.Formula = =6 pt.", "Sheet.2!Char.Size.Formula = =6 pt."));
    lines.clear();
    fMakeChart(*page->Document());
    EXPECT_THAT(lines, ElementsAre("Sheet.1!Char.Size[1].Formula = = 6 pt.",
                                   "Sheet.2!Char.Size[1].Formula = = 6 pt."));
}

}  // namespace
}  // namespace norvelis
