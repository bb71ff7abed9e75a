#include "diagram/record_shapes.h"

#include "diagram/color.h"
#include "drawing_fixture.h"

namespace norvelis {
namespace {

class RecordShapesTest : public DrawingTest {
  protected:
    std::vector<std::string> BoxNames() const { return LinesWith(".Name = "); }
};

TEST_F(RecordShapesTest, ABoxIsDroppedFilledAndSizedToItsText) {
    SchemaRows(*store).Record("EMPLOYEE");
    drawing.gOwnerColor = "RGB(200,210,220)";
    drawing.colored = true;
    const PageRef page = NewPage();
    EXPECT_TRUE(CreateRecordShape(drawing, page, "EMPSCHM", "employee "));
    EXPECT_EQ(engine.recorder->shapes[0]->text,
              "EMPLOYEE\n"
              "----------------------------------------------------\n"
              "415 | F | 116 | CALC\n"
              "----------------------------------------------------\n"
              "EMP-ID-0415 | DN\n"
              "----------------------------------------------------\n"
              "EMP-REGION");
    ASSERT_GT(lines.size(), 10u);
    EXPECT_THAT(lines[2], MatchesRegex("Page-1.Drop \"Process\" at [0-9.]+, [0-9.]+ -> Sheet.1"));
    EXPECT_THAT(
        std::vector(lines.begin() + 3, lines.begin() + 13),
        ElementsAre(
            "Sheet.1.Characters[0,0].Begin = 0", "Sheet.1.Characters[0,0].Text = \"EMPLOYEE\"",
            "Sheet.1.Characters[0,8].CharProps Color = 2", "Sheet.1.Characters[0,8].CharProps Style = 1",
            "Sheet.1.Characters[0,8].CharProps Size = 10", "Sheet.1.Characters[0,8].Begin = 8",
            "Sheet.1.Characters[8,8].Text = \"\n" + std::string(52, '-') + "\"",
            "Sheet.1.Characters[8,61].CharProps Color = 0", "Sheet.1.Characters[8,61].CharProps Style = 1",
            "Sheet.1.Characters[8,61].CharProps Size = 8"));
    EXPECT_THAT(LinesWith("Font"), ElementsAre("Fonts.Item \"Times New Roman\"",
                                               "Sheet.1.Characters[205,216].CharProps Font = 1"));
    EXPECT_THAT(
        std::vector(lines.end() - 6, lines.end()),
        ElementsAre("Sheet.1.Name = EMPLOYEE", "Sheet.1!1,3,0.FormulaU = RGB(200,210,220)",
                    "Sheet.1!Char.Size.Formula = =6 pt.",
                    "Sheet.1!Height.Formula = Guard(TextHeight(TheText, Width))",
                    "Sheet.1!width.Formula = Guard(TextWidth(TheText))", "Sheet.1!1,17,16.FormulaU = \"\""));
    EXPECT_EQ(drawing.gShapeIds.Find("employee"), 1);

    EXPECT_FALSE(CreateRecordShape(drawing, page, "EMPSCHM", "EMPLOYEE"));
    EXPECT_FALSE(CreateRecordShape(drawing, page, "EMPSCHM", "employee"));
    EXPECT_THAT(LinesWith("Drop"), SizeIs(1));
}

TEST_F(RecordShapesTest, NullColumnsAreABlankAndColourIsAChoice) {
    SchemaRows(*store).Record("EMPLOYEE");
    store->Execute("Update Record_Details set areaname = null, dn = null");
    CreateRecordShape(drawing, NewPage(), "EMPSCHM", "EMPLOYEE");
    EXPECT_THAT(engine.recorder->shapes[0]->text, HasSubstr("EMP-ID-0415 |  \n"));
    EXPECT_TRUE(engine.recorder->shapes[0]->text.ends_with("\n "));
    EXPECT_THAT(LinesWith("1,3,0"), IsEmpty());
}

TEST_F(RecordShapesTest, OptionalColumnsOfTheStore) {
    for (const char* column : {"Hyperlink", "Hyperlinkname", "comments", "duration"}) {
        store->Execute(std::string("Alter table Record_Details add column ") + column);
    }
    SchemaRows(*store).Record("EMPLOYEE");
    store->Execute(
        "Update Record_Details set Hyperlink = 'http://a', Hyperlinkname = 'A', comments = 'so \"it\" is', "
        "duration = '2.5'");
    const auto reopened = Connection::Open(ConnectionString(test.StorePath()));
    DrawingState other{app, *reopened, engine, screen};
    engine.recorder->existingCells = {"Prop.Duration", "Prop.Resources"};
    other.gOwnerColor = "RGB(1,2,3)";
    CreateRecordShape(other, NewPage(), "EMPSCHM", "EMPLOYEE");
    EXPECT_THAT(
        std::vector(lines.end() - 6, lines.end()),
        ElementsAre("Sheet.1.AddHyperlink", "Sheet.1.Hyperlink.Address = http://a",
                    "Sheet.1.Hyperlink.Description = A", "Sheet.1!1,17,16.FormulaU = \"so \"\"it\"\" is\"",
                    "Sheet.1!Prop.Duration.Result(32) = 2.5",
                    "Sheet.1!Prop.Resources.FormulaU = \"RGB(1,2,3)\""));

    reopened->Execute("Update Record_Details set duration = 'soon'");
    other.gDrawnShapes = {};
    CreateRecordShape(other, NewPage(), "EMPSCHM", "EMPLOYEE");
    EXPECT_THAT(LinesWith("Prop.Duration"), IsEmpty());
}

TEST_F(RecordShapesTest, IndexRowsOfTheStoreBecomeNotes) {
    SchemaRows(*store).Record("EMPLOYEE");
    store->Execute(
        "Insert into Record_Details (schemaname, Recordname, recordtype, next_step, Information) values "
        "('EMPSCHM', 'EMP-NDX', 'index', 'EMPLOYEE', 'by name'), "
        "('COPY', 'COPY-NDX', 'index', 'EMPLOYEE', 'by name')");
    CreateRecordShape(drawing, NewPage(), "EMPSCHM", "EMPLOYEE");
    EXPECT_THAT(LinesWith("Drop"), SizeIs(2));
    EXPECT_THAT(
        LinesWith("Sheet.2"),
        ElementsAre(HasSubstr("Drop \"Annotation\""), "Sheet.2.Text = \"by name\"", "Sheet.2.Name = EMP-NDX",
                    "Sheet.2!Char.Size.Formula = =6 pt.", "Sheet.2!1,17,16.FormulaU = \"\""));
}

TEST_F(RecordShapesTest, TheWalkIsDepthFirstAndDrawsEachRecordOnce) {
    {
        SchemaRows rows(*store);
        rows.Entry("DEPARTMENT", "EMPLOYEE, MISSING , OFFICE");
        rows.Record("EMPLOYEE", "COVERAGE,OFFICE");
        rows.Record("COVERAGE", "DEPARTMENT");
        rows.Record("OFFICE");
    }
    DrawRecordTree(drawing, NewPage(), "DEPARTMENT");
    EXPECT_THAT(BoxNames(), ElementsAre("Sheet.1.Name = DEPARTMENT", "Sheet.2.Name = EMPLOYEE",
                                        "Sheet.3.Name = COVERAGE", "Sheet.4.Name = OFFICE"));
}

TEST_F(RecordShapesTest, ManyPathsAndManyRecordsCostTheirRecordsOnly) {
    constexpr int kRecords = 2500;  // each reached over both of its owners: more paths than can be counted
    {
        SchemaRows rows(*store);
        for (int i = 0; i < kRecords; ++i) {
            rows.Record("R" + std::to_string(i), "R" + std::to_string(i + 1) + ",R" + std::to_string(i + 2));
        }
    }
    DrawRecordTree(drawing, NewPage(), "R0");
    EXPECT_THAT(BoxNames(), SizeIs(kRecords));
    EXPECT_EQ(drawing.gDrawnShapes.Count(), static_cast<std::size_t>(kRecords));
}

TEST_F(RecordShapesTest, ABoxThatTheEngineRefusedIsTriedAgainAtTheNextOwner) {
    {
        SchemaRows rows(*store);
        rows.Entry("A", "B,C");
        rows.Record("B", "C");
        rows.Record("C");
    }
    const PageRef page = NewPage();
    engine.recorder->refuse = [drops = 0](const std::string& line) mutable {
        return line.find(".Drop") != std::string::npos && ++drops == 3;
    };
    DrawRecordTree(drawing, page, "A");
    EXPECT_THAT(BoxNames(), SizeIs(3));
}

TEST_F(RecordShapesTest, ColoursAreOneForATreeOrOneForEachBox) {
    {
        SchemaRows rows(*store);
        rows.Entry("A", "B");
        rows.Record("B");
    }
    drawing.colored = true;
    drawing.gOwnerColor = "RGB(255,255,255)";
    DrawRecordTree(drawing, NewPage(), "A");
    EXPECT_THAT(LinesWith("RGB(255,255,255)"), SizeIs(2));

    drawing.gDrawnShapes = {};
    drawing.walked.clear();
    drawing.colorsEachBox = true;
    DrawRecordTree(drawing, NewPage(), "A");
    const auto fills = LinesWith("1,3,0");
    ASSERT_THAT(fills, SizeIs(2));
    EXPECT_NE(fills[0].substr(8), fills[1].substr(8));
}

TEST(Color, LightAboveAndDarkBelowTheBound) {
    Random random(7);
    for (int i = 0; i < 50; ++i) {
        int r = 0, g = 0, b = 0;
        ASSERT_EQ(std::sscanf(PickLightColor(random).c_str(), "RGB(%d,%d,%d)", &r, &g, &b), 3);
        EXPECT_TRUE(r > 178 && g > 178 && b > 178 && r < 255 && g < 255 && b < 255);
        ASSERT_EQ(std::sscanf(PickDarkColor(random).c_str(), "RGB(%d,%d,%d)", &r, &g, &b), 3);
        EXPECT_TRUE(r < 178 && g < 178 && b < 178);
    }
}

TEST(StepMaster, UnknownWordsAreProcesses) {
    EXPECT_EQ(GetStepMaster("end"), "Terminator");
    EXPECT_EQ(GetStepMaster("Annotation"), "ANNOTATION");
    EXPECT_EQ(GetStepMaster("other"), "Process");
}

}  // namespace
}  // namespace norvelis
