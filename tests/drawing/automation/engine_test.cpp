#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <future>

#include "base/paths.h"
#include "diagram/common.h"
#include "drawing/automation/create_engine.h"
#include "drawing/package/package.h"
#include "testing/temporary_folder.h"

namespace norvelis::drawing {
namespace {

using namespace std::string_literals;
using engine::Ref;

const std::string kStencils = NORVELIS_APP "/Stencils";
const std::string kFlowchart = "Basic Flowchart Shapes (US units).vss";
const std::string kBackgrounds = "Backgrounds (US units).vss";
const std::string kTemplate = "Basic Flowchart (US Units).vst";

class EngineTest : public testing::Test {
  protected:
    Ref<engine::Shape> Drop(const std::string& master, double x, double y) {
        return DropShape([](const std::string& text) { ADD_FAILURE() << text; }, page, kFlowchart, master, x,
                         y);
    }
    static double Value(const Ref<engine::Shape>& shape, const std::string& cell) {
        return shape->Cells(cell)->ResultIU().value_or(-99);
    }
    /// A box at x, y of the given size.
    Ref<engine::Shape> Box(double x, double y, double width = 2, double height = 1) {
        const auto box = Drop("Process", x, y);
        box->Cells("Width")->SetResultIU(width);
        box->Cells("Height")->SetResultIU(height);
        return box;
    }
    Ref<engine::Shape> Line(const Ref<engine::Shape>& from, const Ref<engine::Shape>& to) {
        const auto line = Drop("Dynamic Connector", 0.5, 0.5);
        EXPECT_TRUE(line->CellsSRC(engine::kBeginX)->GlueTo(from->CellsSRC(engine::kPinX)));
        EXPECT_TRUE(line->CellsSRC(engine::kEndX)->GlueTo(to->CellsSRC(engine::kPinX)));
        return line;
    }
    std::unique_ptr<Document> Saved(const std::string& name = "drawing.vsd") {
        EXPECT_TRUE(drawing->SaveAs(folder.Path(name)));
        return ReadPackageFile(folder.Path(name));
    }

    TemporaryFolder folder;
    std::unique_ptr<engine::DrawingEngine> drawingEngine =
        MakeDrawingEngine({kStencils, folder.Path("Temp"), nullptr});
    Ref<engine::Application> application = *drawingEngine->CreateHidden();
    Ref<engine::Document> drawing = application->Documents()->Add(kTemplate);
    Ref<engine::Page> page = drawing->Pages()->Item(1);
};

TEST_F(EngineTest, WithoutStencilsThereIsNoEngine) {
    EXPECT_FALSE(MakeDrawingEngine({folder.Path("nowhere"), "", nullptr})->CreateVisible().has_value());
}

TEST_F(EngineTest, LongWorkMayRunInAnotherThreadAndGivesTheSameDrawing) {
    const auto draw = [this](engine::DrawingEngine& maker, const std::string& name) {
        const auto running = *maker.CreateHidden();
        const auto document = running->Documents()->Add(kTemplate);
        const auto sheet = document->Pages()->Item(1);
        const auto masters = running->Documents()->OpenEx(kFlowchart, 6)->Masters();
        const auto one = sheet->Drop(masters->Item("Process"), 1, 1);
        const auto other = sheet->Drop(masters->Item("Process"), 1, 1);
        const auto line = sheet->Drop(masters->Item("Dynamic Connector"), 0.5, 0.5);
        line->CellsSRC(engine::kBeginX)->GlueTo(one->CellsSRC(engine::kPinX));
        line->CellsSRC(engine::kEndX)->GlueTo(other->CellsSRC(engine::kPinX));
        EXPECT_TRUE(sheet->Layout());
        EXPECT_TRUE(document->SaveAs(folder.Path(name)));
        EXPECT_FALSE(document->SaveAs(folder.Path("no such folder/" + name)));
        return ReadFile(folder.Path(name));
    };
    int runs = 0;
    EngineOptions options{kStencils, folder.Path("Temp"), nullptr};
    options.runInBackground = [&runs](const std::function<void()>& work) {
        ++runs;
        std::async(std::launch::async, work).get();
    };
    const std::string expected = draw(*drawingEngine, "a.vsd");
    EXPECT_EQ(draw(*MakeDrawingEngine(options), "a.vsd"), expected);
    EXPECT_EQ(runs, 3) << "the layout and each try to write";
}

TEST_F(EngineTest, DocumentsAreFoundByNumberAndNameInAnyCase) {
    const auto documents = application->Documents();
    EXPECT_EQ(documents->Item(kFlowchart), nullptr);
    ASSERT_TRUE(documents->OpenEx("basic flowchart shapes (US UNITS).VSS", engine::kOpenReadOnlyDocked));
    EXPECT_TRUE(documents->Item(kFlowchart));
    EXPECT_TRUE(documents->Item(2));
    EXPECT_EQ(documents->OpenEx("no such stencil.vss", engine::kOpenReadOnlyDocked), nullptr);
    EXPECT_EQ(documents->Item(3), nullptr);
    const auto masters = documents->Item(kFlowchart)->Masters();
    EXPECT_EQ(masters->Item("ANNOTATION")->Name(), "Annotation");
    EXPECT_EQ(masters->Item("Dynamic Connector")->Name(), "Dynamic connector");
    EXPECT_EQ(masters->Item("Unknown"), nullptr);
    EXPECT_FALSE(masters->Item("Process")->Shapes()->Item(1)->Cells("Width")->SetResultIU(9))
        << "stencils are shared by all drawings";
}

TEST_F(EngineTest, AShapeIsAsWideAndHighAsItsTextWhenItsFormulasSaySo) {
    const auto box = Drop("Process", 3, 4);
    box->Characters()->SetText("DEPARTMENT\nand more than one line");
    EXPECT_TRUE(box->Cells("Height")->SetFormula("Guard(TextHeight(TheText, Width))"));
    EXPECT_TRUE(box->Cells("width")->SetFormula("Guard(TextWidth(TheText))"));
    const double width = Value(box, "Width"), height = Value(box, "Height");
    EXPECT_FALSE(box->Cells("Width")->SetResultIU(7)) << "guarded";
    box->SetText("DEPARTMENT\nand more than one line, longer than before\nthree");
    EXPECT_GT(Value(box, "Width"), width * 1.2);
    EXPECT_GT(Value(box, "Height"), height * 1.2);
    EXPECT_EQ(Value(box, "PinX"), 3);
}

TEST_F(EngineTest, ARefusedFormulaLeavesTheCellAsItWas) {
    const auto box = Box(3, 4);
    for (const auto& refused : {"Height*"s, "NoSuchCell+1"s, "Width*2"s, "Sheet.999!Width"s, "1 in +"s}) {
        EXPECT_FALSE(box->Cells("Width")->SetFormula(refused)) << refused;
        EXPECT_EQ(Value(box, "Width"), 2) << refused;
    }
    EXPECT_EQ(box->Cells("NoSuchCell"), nullptr);
    EXPECT_EQ(box->CellsSRC({99, 1, 0}), nullptr);
    EXPECT_TRUE(box->CellExistsU("Prop.Duration", 0));
    EXPECT_FALSE(box->CellExistsU("Prop.Duration", 1)) << "the master's, not the shape's own";
}

TEST_F(EngineTest, ALineRunsBetweenTheBordersOfItsBoxesAndFollowsThem) {
    const auto owner = Box(2, 6), member = Box(2, 2);
    const auto line = Line(owner, member);
    EXPECT_DOUBLE_EQ(Value(line, "BeginY"), 5.5);
    EXPECT_DOUBLE_EQ(Value(line, "EndY"), 2.5);
    owner->CellsSRC(engine::kPinY)->SetResultIU(8);
    EXPECT_DOUBLE_EQ(Value(line, "BeginY"), 7.5);
    EXPECT_DOUBLE_EQ(Value(line, "Height"), -5);
    const auto begin = line->CellsSRC(engine::kBeginX);
    EXPECT_FALSE(begin->GlueTo(line->CellsSRC(engine::kPinX))) << "not to itself";
    EXPECT_FALSE(owner->CellsSRC(engine::kPinX)->GlueTo(member->CellsSRC(engine::kPinX)))
        << "a pin is no end";
}

TEST_F(EngineTest, GlueIsSavedAsOtherProgramsReadIt) {
    const auto owner = Box(2, 6), member = Box(2, 2);
    const auto line = Line(owner, member);
    line->CellsSRC(engine::kEndX)->GlueTo(owner->CellsSRC(engine::kPinX));
    line->CellsSRC(engine::kEndX)->GlueTo(member->CellsSRC(engine::kPinX));
    const auto saved = Saved();
    const auto& connects = saved->pages.front()->connects;
    EXPECT_THAT(connects, testing::ElementsAre(Connect{line->ID(), "BeginX", 9, owner->ID(), "PinX", 3},
                                               Connect{line->ID(), "EndX", 12, member->ID(), "PinX", 3}));
    const Shape& shape = *saved->pages.front()->ById(line->ID());
    EXPECT_EQ(FormulaOf(shape, Name::BegTrigger),
              "_XFTRIGGER(Sheet." + std::to_string(owner->ID()) + "!EventXFMod)");
    EXPECT_EQ(FormulaOf(shape, Name::EndY), "_WALKGLUE(EndTrigger,BegTrigger,WalkPreference)");
    EXPECT_EQ(Number(shape, Name::EndTrigger), 2);
}

TEST_F(EngineTest, ARoutedLineKeepsItsEndsUntilItsBoxMoves) {
    const auto top = Box(5, 9), left = Box(2, 2), right = Box(8, 2);
    const auto first = Line(top, left), second = Line(top, right);
    ASSERT_TRUE(page->Layout());
    const double begin = Value(first, "BeginX"), other = Value(second, "BeginX");
    EXPECT_GT(std::abs(begin - other), 0.1) << "two lines leave a box at two points";
    // What changes neither place nor size moves no line.
    top->Cells("Char.Size")->SetFormula("=6 pt.");
    EXPECT_EQ(Value(first, "BeginX"), begin);
    left->CellsSRC(engine::kPinX)->SetResultIU(20);
    EXPECT_NE(Value(first, "EndX"), begin);
    EXPECT_NEAR(Value(first, "EndX"), 20, 1.1);
    EXPECT_EQ(Value(second, "BeginX"), other);
}

TEST_F(EngineTest, LayoutResizeAndCenterLeaveEverythingOnThePage) {
    std::vector<Ref<engine::Shape>> boxes{Box(1, 1)};
    for (int i = 1; i < 12; ++i) {
        boxes.push_back(Box(i * 0.3, 1));
        Line(boxes[static_cast<std::size_t>(i / 3)], boxes.back())
            ->SetText("SET-" + std::to_string(i) + "\r\nNPO");
    }
    page->PageSheet()->CellsSRC({1, 24, 8})->SetResult(engine::Unit::NoCast, 1);
    ASSERT_TRUE(page->Layout() && page->ResizeToFitContents() && page->CenterDrawing());
    const double width = Value(page->PageSheet(), "PageWidth"),
                 height = Value(page->PageSheet(), "PageHeight");
    double left = width, right = 0, low = height, high = 0;
    for (const auto& box : boxes) {
        left = std::min(left, Value(box, "PinX") - 1);
        right = std::max(right, Value(box, "PinX") + 1);
        low = std::min(low, Value(box, "PinY") - 0.5);
        high = std::max(high, Value(box, "PinY") + 0.5);
    }
    EXPECT_GT(left, 0.3);
    EXPECT_GT(low, 0.3);
    EXPECT_NEAR(left, width - right, 0.6);
    EXPECT_NEAR(low, height - high, 0.6);
    EXPECT_GT(Value(boxes[0], "PinY"), Value(boxes[5], "PinY")) << "owners are above";
}

TEST_F(EngineTest, NotesGoBesideTheirBoxesWhenThePageIsLaidOut) {
    const auto owner = Box(2, 2), member = Box(9, 9);
    Line(owner, member)->SetText("SET\r\nNPO");
    const auto note = Drop("ANNOTATION", 10.25, 9.75);
    note->SetText("INDEX\r\nFIELD ASC");
    note->CellsSRC(engine::kBeginX)->GlueTo(member->CellsSRC(engine::kPinX));
    ASSERT_TRUE(page->Layout());
    EXPECT_GT(std::hypot(Value(member, "PinX") - 9, Value(member, "PinY") - 9), 1) << "the box has moved";
    const double border = Value(member, "PinX") + Value(member, "Width") / 2;
    EXPECT_NEAR(Value(note, "PinX") - border, 0.15, 1e-9);
    EXPECT_NEAR(Value(note, "BeginX"), border, 1e-9) << "the leader starts at the box";
    EXPECT_NEAR(Value(note, "Geometry2.X2"), 0, 1e-9) << "and ends at the note";
    ASSERT_TRUE(page->PlaceNotes());
    EXPECT_NEAR(Value(note, "PinX") - Value(member, "PinX") - Value(member, "Width") / 2, 0.15, 1e-9);
}

TEST_F(EngineTest, NotesGoIntoTheRoomThatWasReservedForThem) {
    const auto owner = Box(2, 2), member = Box(9, 9);
    Line(owner, member)->SetText("SET\r\nNPO");
    const std::string texts[] = {"INDEX\r\nFIELD ASC", "OTHER\r\nFIELD DSC\r\nMA SORTED"};
    for (const std::string& text : texts) EXPECT_TRUE(page->ReserveNote(member, text, 2));
    ASSERT_TRUE(page->Layout());
    std::vector<Ref<engine::Shape>> notes;
    for (const std::string& text : texts) {
        notes.push_back(Drop("ANNOTATION", Value(member, "PinX") + 0.7, Value(member, "PinY") + 0.7));
        notes.back()->SetText(text);
        notes.back()->CellsSRC(engine::kBeginX)->GlueTo(member->CellsSRC(engine::kPinX));
    }
    ASSERT_TRUE(page->PlaceNotes());
    const double border = Value(member, "PinX") + Value(member, "Width") / 2;
    for (const auto& note : notes) {
        EXPECT_NEAR(Value(note, "PinX"), border + 0.15, 1e-9);
        EXPECT_NEAR(Value(note, "BeginX"), border, 1e-9);
        EXPECT_GT(Value(note, "BeginY"), Value(member, "PinY") - Value(member, "Height") / 2);
    }
    EXPECT_NEAR(Value(notes[0], "PinY") - Value(notes[1], "PinY") - Value(notes[1], "Geometry1.Y3"), 0.08,
                1e-9)
        << "one below the other";
}

TEST_F(EngineTest, NotesMoveOffWhatTheyCover) {
    const auto box = Box(5, 5, 4, 3);
    std::vector<Ref<engine::Shape>> notes;
    for (int i = 0; i < 3; ++i) {
        const auto note = Drop("ANNOTATION", 5.7, 5.7);
        note->SetText("EMP-NAME-IX\r\nEMP-NAME ASC");
        note->CellsSRC(engine::kBeginX)->GlueTo(box->CellsSRC(engine::kPinX));
        notes.push_back(note);
    }
    ASSERT_TRUE(page->PlaceNotes());
    for (std::size_t i = 0; i < notes.size(); ++i) {
        const double x = Value(notes[i], "PinX"), y = Value(notes[i], "PinY");
        EXPECT_FALSE(x > 2.5 && x < 7 && y > 3 && y < 6.5)
            << "note " << i << " covers the box: " << x << ", " << y;
        EXPECT_DOUBLE_EQ(Value(notes[i], "EndX"), x) << "the leader starts at the note";
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_GT(std::hypot(x - Value(notes[k], "PinX"), y - Value(notes[k], "PinY")), 0.2);
    }
}

TEST_F(EngineTest, AnEditedMasterGivesItsChangesBackWhenItIsClosed) {
    const auto stencil = application->Documents()->OpenEx(kBackgrounds, engine::kOpenReadOnlyDocked);
    const auto copy = drawing->Drop(stencil->Masters()->Item("Background world"), 0, 0);
    const auto before = page->Drop(copy, 0, 0);
    const auto open = copy->Open();
    ASSERT_TRUE(open->Shapes()->Item(1)->Cells("LineWeight")->SetFormulaU("3 pt"));
    EXPECT_NE(Value(copy->Shapes()->Item(1), "LineWeight"), 3.0 / 72);
    ASSERT_TRUE(open->Close());
    EXPECT_DOUBLE_EQ(Value(copy->Shapes()->Item(1), "LineWeight"), 3.0 / 72);
    EXPECT_DOUBLE_EQ(Value(before, "LineWeight"), 3.0 / 72);
    EXPECT_FALSE(open->Close()) << "once";
}

TEST_F(EngineTest, LayersLinksTabsPropertiesAndTipsReachTheFile) {
    const auto box = Box(3, 3);
    const auto layer = page->Layers()->Add("Background Design");
    EXPECT_TRUE(page->Layers()->Add("background design")->Add(box, 0));
    EXPECT_TRUE(layer->Add(box, 0)) << "one of a name";
    EXPECT_TRUE(layer->CellsC(engine::kLayerLockCell)->SetFormulaU("TRUE"));
    const auto link = box->AddHyperlink();
    EXPECT_TRUE(link->SetAddress("https://example.org/a?b=1&c=\"2\""));
    EXPECT_TRUE(box->CellsSRC(engine::kComment)->SetFormulaU(QuoteFormula("says \"so\"")));
    EXPECT_TRUE(box->CellsU("Prop.Duration")->SetResult(engine::Unit::Number, 12));
    EXPECT_TRUE(box->CellsU("Prop.Resources")->SetFormulaU(QuoteFormula("12")));
    EXPECT_EQ(box->AddRow(engine::kTabSection, 0, engine::kTabRowOfTwoStops), 0);
    EXPECT_EQ(box->CellsSRC(engine::kTabStopCount)->ResultIU(), 2);
    EXPECT_TRUE(box->CellsSRC(engine::kTabStopCount)->SetResultIU(1));
    EXPECT_TRUE(box->CellsSRC(engine::kTabStopPosition)->SetResultIU(0.8));

    const auto saved = Saved();
    const Page& read = *saved->pages.front();
    const Shape& shape = *read.ById(box->ID());
    EXPECT_EQ(TextValue(shape, Name::LayerMember), "0");
    EXPECT_EQ(Number(read.sheet, CellRef(Name::Layer, 0, RowKey::Number(0), Name::Lock)), 1);
    EXPECT_EQ(TextValue(shape, Name::Comment), "says \"so\"");
    const auto property = [&](const char* name) { return Find(shape, ParseCellName(saved->names, name)); };
    EXPECT_EQ(property("Prop.Duration")->value, 12) << "a number, although the master holds a text";
    EXPECT_FALSE(property("Prop.Duration")->isText);
    EXPECT_EQ(property("Prop.Resources")->text, "12") << "a text, although it looks like a number";
    const Section links = SectionOf(shape, Name::Hyperlink);
    ASSERT_EQ(links.rows.size(), 1u);
    EXPECT_EQ(links.rows[0].cells.Find(Name::Address)->text, "https://example.org/a?b=1&c=\"2\"");
    const Section tabs = SectionOf(shape, Name::Tabs);
    EXPECT_EQ(tabs.rows.at(0).cells.Find(Name::Position0)->value, 0.8);
    EXPECT_EQ(tabs.rows.at(0).cells.Find(Name::Position1), nullptr);
}

TEST_F(EngineTest, RunsOfATextKeepTheirFormatsInFilesWhereTheirRowsAreCountedInOrder) {
    const auto box = Drop("Process", 3, 3);
    const auto characters = box->Characters();
    for (const auto& [text, color] : {std::pair{"EMPLOYEE", 2}, {"\n----", 0}, {"\n0415", 4}, {" | ", 0}}) {
        characters->SetBegin(*characters->End());
        characters->SetText(text);
        characters->SetCharProps(engine::CharProperty::Color, color);
        characters->SetCharProps(engine::CharProperty::Size, 8);
    }
    box->Cells("Char.Size")->SetFormula("=6 pt.");
    const auto colorsOf = [](const Shape& shape) {
        std::vector<int> colors;
        for (const auto& run : TextOf(shape))
            colors.push_back(static_cast<int>(
                Number(shape, CellRef(Name::Character, 0, RowKey::Number(run.character), Name::Color))));
        return colors;
    };
    const auto saved = Saved();
    const Shape& read = *saved->pages.front()->ById(box->ID());
    EXPECT_THAT(colorsOf(read), testing::ElementsAre(2, 0, 4, 0));
    EXPECT_DOUBLE_EQ(Number(read, CellRef(Name::Character, 0, RowKey::Number(0), Name::Size)), 6.0 / 72);
    EXPECT_EQ(WritePackage(*saved), ReadFile(folder.Path("drawing.vsd")))
        << "read and written again it is the same";
}

TEST_F(EngineTest, ADrawingHasAVsdxCopyAndASnapshotHasNone) {
    Box(2, 2);
    ASSERT_TRUE(drawing->SaveAs(folder.Path("a.vsd")));
    EXPECT_EQ(ReadFile(folder.Path("a.vsd")), ReadFile(folder.Path("a.vsdx")));
    EXPECT_TRUE(application->Documents()->Item("a.vsd")) << "the document takes the file's name";
    std::filesystem::create_directories(folder.Path("Temp"));
    ASSERT_TRUE(drawing->SaveAs(folder.Path("Temp/7.05.vsd")));
    EXPECT_FALSE(FileExists(folder.Path("Temp/7.05.vsdx")));
    EXPECT_EQ(drawing->SaveAs(folder.Path("no such folder/a.vsd")).failure,
              "Path not found: " + folder.Path("no such folder/a.vsd"));
}

TEST_F(EngineTest, AVsdxCopyThatCannotBeRewrittenIsRemoved) {
    Box(2, 2);
    ASSERT_TRUE(drawing->SaveAs(folder.Path("a.vsd")));
    const std::string stale = ReadFile(folder.Path("a.vsdx"));
    Box(5, 5);
    // A folder in the place of the temporary file that the copy is first written to.
    std::filesystem::create_directories(folder.Path("a.vsdx.new" + std::to_string(getpid()) + "/x"));
    const engine::SaveResult result = drawing->SaveAs(folder.Path("a.vsd"));
    ASSERT_TRUE(result) << "the drawing itself is saved";
    EXPECT_NE(result.failure.find(folder.Path("a.vsdx")), std::string::npos) << "and what is not, is named";
    EXPECT_NE(ReadFile(folder.Path("a.vsd")), stale);
    EXPECT_FALSE(FileExists(folder.Path("a.vsdx"))) << "it would show the drawing of before";
}

TEST_F(EngineTest, ASavedDrawingCanBeOpenedAndLaidOutAgain) {
    const auto owner = Box(3, 3), member = Box(3.2, 3.1);
    Line(owner, member)->SetText("SET\r\nNPO");
    ASSERT_TRUE(drawing->SaveAs(folder.Path("a.vsd")));
    const auto opened = application->Documents()->Open(folder.Path("a.vsd"));
    const auto again = opened->Pages()->Item(1);
    again->PageSheet()->CellsSRC({1, 24, 8})->SetResultIU(2);
    ASSERT_TRUE(again->Layout());
    const auto box = again->Shapes()->ItemFromID(owner->ID()),
               other = again->Shapes()->ItemFromID(member->ID());
    EXPECT_GT(Value(other, "PinX") - Value(box, "PinX"), 2) << "the member is to the right";
    EXPECT_TRUE(opened->SaveAs(folder.Path("a.vsd")));
    EXPECT_EQ(application->Documents()->Open(folder.Path("missing.vsd")), nullptr);
}

TEST_F(EngineTest, AfterQuitEveryCallFailsAndNoneCrashes) {
    const auto box = Box(2, 2);
    const auto cell = box->Cells("Width");
    const auto characters = box->Characters();
    const auto layer = page->Layers()->Add("Layer");
    const auto master = box->Master();
    ASSERT_TRUE(application->Quit());
    EXPECT_FALSE(application->Quit());
    EXPECT_EQ(application->Documents(), nullptr);
    EXPECT_EQ(drawing->Pages(), nullptr);
    EXPECT_FALSE(drawing->SaveAs(folder.Path("late.vsd")));
    EXPECT_FALSE(page->Layout());
    EXPECT_EQ(page->Shapes(), nullptr);
    EXPECT_EQ(page->Drop(master, 1, 1), nullptr);
    EXPECT_EQ(box->ID(), 0);
    EXPECT_FALSE(box->SetText("late"));
    EXPECT_FALSE(cell->SetResultIU(3));
    EXPECT_EQ(cell->ResultIU(), std::nullopt);
    EXPECT_FALSE(characters->SetText("late"));
    EXPECT_FALSE(layer->Add(box, 0));
    EXPECT_EQ(master->Name(), "");
    EXPECT_FALSE(FileExists(folder.Path("late.vsd")));
}

}  // namespace
}  // namespace norvelis::drawing
