#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>

#include "base/paths.h"
#include "core/settings.h"
#include "diagram/draw_chosen.h"
#include "diagram/draw_commands.h"
#include "diagram/page_layout.h"
#include "drawing/arrange/page_arrangement.h"
#include "drawing/automation/create_engine.h"
#include "drawing/opened_package.h"
#include "drawing/package/package.h"
#include "drawing/package_rules.h"
#include "drawing/session/connectors.h"
#include "extract/driver.h"
#include "testing/schema_rows.h"
#include "testing/test_store.h"

// From end to end: the sample report is extracted and drawn with the real engine, and the saved file is read
// back.
namespace norvelis {
namespace {

using drawing::Name;
using drawing::Role;

class WholeDrawingTest : public testing::TestWithParam<int> {
  protected:
    WholeDrawingTest() {
        setreportlocation(app, NORVELIS_APP "/reportfiles/empschm.text");
        process_Classic_Extract_Report(app, InteractiveDriver(app, {}),
                                       ValidateReportFile(getreportlocation(app)));
        draw.options.location = test.folder.Path("drawings");
        draw.options.background = "Background tranquil";
        draw.gDrawSchema = "EMPSCHM";
        test.host.answers.assign(10, Answer::No);
    }
    std::size_t Rows(const std::string& table) {
        return static_cast<std::size_t>(app.gConnection->Count("Select count(*) FROM " + table));
    }
    std::string File(const std::string& name) const { return test.folder.Path("drawings/EMPSCHM/" + name); }

    /// A schema in which a record has several owners and up to seven indexes, some sets lead back up, and
    /// names, texts and notes are as long as they get.
    void MakeBusySchema(int records) {
        for (const char* table : {"Parents", "Record_Details", "Connection_Details", "Index_Details"})
            app.gConnection->Execute(std::string("Delete * FROM ") + table);
        Random random(records);
        const auto any = [&](int below) { return static_cast<int>(random.Rnd() * below); };
        const auto name = [](int i) { return "RECORD-WITH-A-LONG-NAME-" + std::to_string(i); };
        SchemaRows rows(*app.gConnection);
        for (int i = 0; i < records; ++i) {
            std::string members;
            for (int k = any(4); k > 0 && i + 1 < records; --k) {
                const int member = any(10) == 0 ? any(records) : i + 1 + any(std::min(12, records - i - 1));
                members += (members.empty() ? "" : ",") + name(member);
                rows.Set("SET-" + std::to_string(i) + "-" + std::to_string(k), name(i), name(member),
                         k == 1 ? "NPO OA\r\nMA ASC A-LONG-SORT-FIELD-" + std::to_string(i) + " DN" : "NPO");
            }
            rows.Entry(name(i), members);
            for (int k = any(8) - 3; k > 0; --k)
                rows.Index("INDEX-" + std::to_string(i) + "-" + std::to_string(k), name(i),
                           "A-LONG-SORT-FIELD-" + std::to_string(i), "ASC", "MA SORTED DN");
        }
    }

    static void ExpectSameValues(const drawing::Shape& evaluated, const drawing::Shape& read) {
        const auto same = [&](const drawing::Cell& cell, const drawing::CellRef& ref) {
            const drawing::Cell* value = Find(read, ref);
            ASSERT_TRUE(value);
            EXPECT_NEAR(cell.value, value->value, 1e-9) << read.name << " " << static_cast<int>(cell.name);
            EXPECT_EQ(cell.text, value->text);
        };
        for (const auto& cell : evaluated.cells) same(cell, cell.name);
        for (const auto& section : evaluated.sections) {
            for (const auto& row : section.rows) {
                for (const auto& cell : row.cells)
                    same(cell, {section.name, section.index, row.key, cell.name});
            }
        }
        for (std::size_t i = 0; i < read.shapes.size(); ++i)
            ExpectSameValues(*evaluated.shapes[i], *read.shapes[i]);
    }

    /// Whoever reads values and whoever evaluates formulas sees the same drawing; only lines are where the
    /// router put them.
    static void ExpectValuesOfFormulas(const std::string& saved) {
        const auto read = drawing::ReadPackage(saved), evaluated = drawing::ReadPackage(saved);
        drawing::FontLibrary fonts;
        drawing::Recalculation recalculation(*evaluated, fonts);
        drawing::Page& page = *evaluated->pages.front();
        for (const auto& shape : page.shapes) {
            if (RoleOf(page, *shape) != Role::Line) recalculation.Renewed(page, *shape);
        }
        recalculation.Settle();
        for (std::size_t i = 0; i < page.shapes.size(); ++i)
            ExpectSameValues(*page.shapes[i], *read->pages.front()->shapes[i]);
    }

    /// Draws, reads the file back, and looks at every rectangle in it.
    void ExpectNothingCoversAnything() {
        ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
        const std::string saved = ReadFile(File("EMPSCHM.vsd"));
        EXPECT_THAT(drawing::PackageFaults(saved), testing::IsEmpty());
        EXPECT_TRUE(drawing::WritePackage(*drawing::ReadPackage(saved)) == saved);
        ExpectValuesOfFormulas(saved);
        auto workshop = drawing::Workshop({});
        drawing::OpenDocument document(workshop, drawing::ReadPackageFile(File("EMPSCHM.vsd")), "", false);
        drawing::Page& page = *document.model->pages.front();
        const Rect whole{0, 0, Number(page.sheet, Name::PageWidth), Number(page.sheet, Name::PageHeight)};
        const auto blocks = Blocks(document, page);
        EXPECT_EQ(blocks.size(), Rows("Record_Details") + Rows("Connection_Details") + Rows("Index_Details"));
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            const auto& [name, rect] = blocks[i];
            EXPECT_TRUE(rect.x0 >= 0 && rect.y0 >= 0 && rect.x1 <= whole.x1 && rect.y1 <= whole.y1) << name;
            for (std::size_t k = 0; k < i; ++k)
                EXPECT_FALSE(Overlap(rect, blocks[k].second)) << name << " and " << blocks[k].first;
        }
    }

    /// Rectangles on the page of all shapes that may not cover one another, with a name each.
    static std::vector<std::pair<std::string, Rect>> Blocks(drawing::OpenDocument& document,
                                                            drawing::Page& page) {
        std::vector<std::pair<std::string, Rect>> blocks;
        for (const auto& shape : page.shapes) {
            switch (RoleOf(page, *shape)) {
                case Role::Box:
                    blocks.emplace_back(shape->name, BlockOf(document, page, *shape));
                    break;
                case Role::Line:
                    blocks.emplace_back(shape->name, LabelOf(document, page, *shape));
                    break;
                case Role::Note:
                    blocks.emplace_back(shape->name, NoteOf(document, page, *shape));
                    break;
                default:
                    break;
            }
        }
        return blocks;
    }

    /// Where boxes are and how lines run, by their shapes' names.
    std::map<std::string, std::vector<Point>> Places() const {
        auto workshop = drawing::Workshop({});
        drawing::OpenDocument document(workshop, drawing::ReadPackageFile(File("EMPSCHM.vsd")), "", true);
        drawing::Page& page = *document.model->pages.front();
        std::map<std::string, std::vector<Point>> places;
        for (const auto& shape : page.shapes) {
            const Role role = RoleOf(page, *shape);
            if (role == Role::Box) places[shape->name] = {BlockOf(document, page, *shape).Center()};
            if (role == Role::Line) places[shape->name] = RouteOf(document, page, *shape);
        }
        return places;
    }
    static void ExpectSame(const std::map<std::string, std::vector<Point>>& places,
                           const std::map<std::string, std::vector<Point>>& expected) {
        ASSERT_EQ(places.size(), expected.size());
        for (const auto& [name, points] : expected) {
            const auto same = places.find(name);
            ASSERT_TRUE(same != places.end() && same->second.size() == points.size()) << name;
            for (std::size_t i = 0; i < points.size(); ++i)
                EXPECT_LT(Length(same->second[i] - points[i]), 1e-9) << name;
        }
    }
    std::map<std::string, std::vector<Point>> Drawn() {
        EXPECT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
        return Places();
    }

    TestApp test;
    AppState& app = test.app;
    std::unique_ptr<engine::DrawingEngine> engine =
        drawing::MakeDrawingEngine({NORVELIS_APP "/Stencils", app.AppPath("\\Temp"), nullptr});
    DrawScreen screen;
    DrawingState draw{app, *app.gConnection, *engine, screen};
};

TEST_P(WholeDrawingTest, NothingCoversAnythingAndAllIsOnThePage) {
    draw.options.layout = GetParam();
    ExpectNothingCoversAnything();
}

TEST_P(WholeDrawingTest, NothingCoversAnythingInABusySchema) {
    draw.options.layout = GetParam();
    MakeBusySchema(60);
    ExpectNothingCoversAnything();
}

TEST_P(WholeDrawingTest, ASchemaDrawnAgainIsWhereItWas) {
    draw.options.layout = GetParam();
    MakeBusySchema(25);
    const auto first = Drawn();
    ExpectSame(Drawn(), first);
}

TEST_P(WholeDrawingTest, RecordsKeepTheirPlacesBesideAChangedOne) {
    draw.options.layout = GetParam();
    const auto before = Drawn();
    SchemaRows(*app.gConnection).Entry("APPRENTICE", "CLIENT");
    SchemaRows(*app.gConnection).Set("APPRENTICE-CLIENT", "APPRENTICE", "CLIENT");
    app.gConnection->Execute(
        "Update Record_Details set Recordname = 'DAY-LOG' where Recordname = 'DAY-LEDGER'");
    for (const char* table : {"Parents", "Connection_Details"})
        app.gConnection->Execute(std::string("Update ") + table +
                                 " set Recordname = 'DAY-LOG' where Recordname = 'DAY-LEDGER'");
    ExpectNothingCoversAnything();
    const auto after = Places();
    EXPECT_TRUE(after.contains("APPRENTICE"));
    const auto moved = [&](const char* from, const char* to) {
        return after.at(to).front() - before.at(from).front();
    };
    const Point page = moved("MAKER", "MAKER");
    EXPECT_LT(Length(moved("DAY-LEDGER", "DAY-LOG") - page), 3) << "known by its sets";
    for (const char* record : {"INSTRUMENT", "WORKSHOP", "COMMISSION", "PAYMENT"})
        EXPECT_LT(Length(moved(record, record) - page), 3) << record;
}

INSTANTIATE_TEST_SUITE_P(Layouts, WholeDrawingTest, testing::Range(0, 8), [](const auto& each) {
    std::string name;
    for (const char c : kLayoutTypes[static_cast<std::size_t>(each.param)].name) {
        if (std::isalnum(static_cast<unsigned char>(c))) name += c;
    }
    return name;
});

class SampleDrawingTest : public WholeDrawingTest {
  protected:
    /// As a person does in an editor of drawings.
    bool MoveInFile(const std::string& record, double right) {
        const auto application = engine->CreateHidden().value();
        const auto document = application->Documents()->Open(File("EMPSCHM.vsd"));
        const auto shapes = document->Pages()->Item(1)->Shapes();
        for (int i = 1; i <= shapes->Count(); ++i) {
            if (shapes->Item(i)->Name() != record) continue;
            const auto pin = shapes->Item(i)->Cells("PinX");
            return pin->SetResultIU(*pin->ResultIU() + right) && document->SaveAs(File("EMPSCHM.vsd")).saved;
        }
        return false;
    }
};

TEST_F(SampleDrawingTest, EqualSeedsGiveEqualFiles) {
    ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
    const std::string first = ReadFile(File("EMPSCHM.vsd"));
    app.random = Random(1);
    ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
    const std::string other = ReadFile(File("EMPSCHM.vsd"));
    app.random = Random(1);
    ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
    EXPECT_EQ(ReadFile(File("EMPSCHM.vsd")), other);
    EXPECT_NE(first, "");
}

TEST_F(SampleDrawingTest, AnIndependentReaderFindsEveryTextInItsColour) {
    ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
    std::FILE* pipe = popen(("vsd2raw '" + File("EMPSCHM.vsd") + "' 2>&1").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string out;
    std::array<char, 4096> buffer{};
    while (const auto read = std::fread(buffer.data(), 1, buffer.size(), pipe))
        out.append(buffer.data(), read);
    EXPECT_EQ(pclose(pipe), 0);
    auto record = app.gConnection->Select("Select * FROM Record_Details");
    for (; !record.Eof(); record.MoveNext()) {
        const auto at = out.find("insertText (" + record.Text("recordname") + ")");
        ASSERT_NE(at, std::string::npos) << record.Text("recordname");
        const std::string span = out.substr(out.rfind("openSpan", at), at - out.rfind("openSpan", at));
        EXPECT_NE(span.find("fo:color: #ff0000"), std::string::npos) << span;
        EXPECT_NE(span.find("fo:font-size: 10.0000pt"), std::string::npos) << span;
    }
    auto set = app.gConnection->Select("Select * FROM Connection_Details");
    for (; !set.Eof(); set.MoveNext())
        EXPECT_NE(out.find("insertText (" + set.Text("set") + ")"), std::string::npos) << set.Text("set");
    auto index = app.gConnection->Select("Select * FROM Index_Details");
    for (; !index.Eof(); index.MoveNext())
        EXPECT_NE(out.find("insertText (" + index.Text("recordname") + ")"), std::string::npos);
}

TEST_F(SampleDrawingTest, ARecordAloneIsDrawnWithAllBelowIt) {
    ASSERT_EQ(DrawIsolatedRecord(draw, "EMPSCHM", "INSTRUMENT", false), DrawResult::Saved);
    const auto saved = drawing::ReadPackageFile(File("INSTRUMENT.vsd"));
    std::vector<std::string> names;
    for (const auto& shape : saved->pages.front()->shapes) {
        if (RoleOf(*saved->pages.front(), *shape) == Role::Box) names.push_back(shape->name);
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("INSTRUMENT", "BUILD-STEP", "REPAIR"));
}

TEST_F(SampleDrawingTest, EachAreaHasAPageWhoseReferencesLeadToTheOthers) {
    RecordChoice choice;
    choice.kind = RecordChoice::Kind::ByArea;
    ASSERT_EQ(DrawChosenRecords(draw, "EMPSCHM", choice).result, DrawResult::Saved);
    const std::string saved = ReadFile(File("EMPSCHM by area.vsd"));
    EXPECT_THAT(drawing::PackageFaults(saved), testing::IsEmpty());
    const auto document = drawing::ReadPackage(saved);
    std::map<std::string, std::set<std::string>> boxes, references;
    std::map<std::string, std::string> pageOf;
    std::size_t lines = 0;
    for (const auto& page : document->pages) {
        for (const auto& shape : page->shapes) {
            lines += RoleOf(*page, *shape) == Role::Line ? 1 : 0;
            if (RoleOf(*page, *shape) != Role::Box) continue;
            const drawing::Section* links = shape->Find(Name::Hyperlink);
            if (links) {
                references[page->name].insert(links->rows.front().cells.Find(Name::SubAddress)->text);
            } else {
                boxes[page->name].insert(shape->name);
                pageOf[shape->name] = page->name;
            }
        }
    }
    EXPECT_EQ(document->pages.size(), 3u);
    EXPECT_EQ(pageOf.size(), Rows("Record_Details"));
    std::map<std::string, std::set<std::string>> expected;
    std::size_t expectedLines = 0;
    auto set = app.gConnection->Select("Select * FROM Connection_Details");
    for (; !set.Eof(); set.MoveNext()) {
        const std::string owner = set.Text("Recordname"), member = set.Text("next_step");
        const std::string ownerPage = pageOf[owner], memberPage = pageOf[member];
        expectedLines += ownerPage == memberPage ? 1 : 2;
        if (ownerPage == memberPage) continue;
        expected[ownerPage].insert(memberPage + "/" + member);
        expected[memberPage].insert(ownerPage + "/" + owner);
    }
    EXPECT_EQ(references, expected);
    EXPECT_EQ(lines, expectedLines);
    draw.options.layout = *LayoutIndex("LeftToRight");
    EXPECT_TRUE(ApplyLayoutToFile(draw, File("EMPSCHM by area.vsd")));
    EXPECT_NE(ReadFile(File("EMPSCHM by area.vsd")), saved);
}

TEST_F(SampleDrawingTest, ColorsTellAreasAndOwnersAndALegendSaysWhich) {
    draw.options.meaning = BoxMeaning::Area;
    draw.options.linesByOwner = true;
    ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
    const auto saved = drawing::ReadPackageFile(File("EMPSCHM.vsd"));
    const drawing::Page& page = *saved->pages.front();
    const auto fill = [](const drawing::Shape& shape) { return Find(shape, Name::FillForegnd)->text; };
    std::map<std::string, std::set<std::string>> fills, legend, lineColors;
    for (const auto& shape : page.shapes) {
        if (RoleOf(page, *shape) == Role::Box) {
            const auto record = app.gConnection->Select(
                "Select areaname FROM Record_Details where Recordname = ?", {shape->name});
            fills[record.Text("areaname")].insert(fill(*shape));
        } else if (RoleOf(page, *shape) == Role::Line) {
            const drawing::Shape* owner = drawing::GluedTo(page, *shape, true);
            lineColors[owner->name].insert(Find(*shape, Name::LineColor)->text);
        } else if (shape->master && shape->master->nameU == "Legend entry") {
            legend[TextOf(*shape->shapes[1]).front().text].insert(fill(*shape->shapes[0]));
        }
    }
    EXPECT_EQ(fills.size(), 3u);
    EXPECT_EQ(legend, fills);
    std::set<std::string> different;
    for (const auto& [area, colors] : fills) different.insert(colors.begin(), colors.end());
    EXPECT_EQ(different.size(), 3u) << "one for each area";
    std::set<int> greys;
    for (const std::string& color : different) {
        const unsigned rgb = static_cast<unsigned>(std::stoul(color.substr(1), nullptr, 16));
        const double grey = 0.299 * (rgb >> 16) + 0.587 * (rgb >> 8 & 255) + 0.114 * (rgb & 255);
        greys.insert(static_cast<int>(grey / 10));
    }
    EXPECT_EQ(greys.size(), 3u) << "also without colors";
    EXPECT_GT(lineColors.size(), 5u);
    for (const auto& [owner, colors] : lineColors) EXPECT_EQ(colors.size(), 1u) << owner;
}

TEST_F(SampleDrawingTest, ALayoutIsAppliedToASavedFile) {
    ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
    draw.options.layout = *LayoutIndex("LeftToRight");
    ASSERT_TRUE(ApplyLayoutToFile(draw, File("EMPSCHM.vsd")));
    const auto saved = drawing::ReadPackageFile(File("EMPSCHM.vsd"));
    const auto pin = [&](const std::string& name) {
        for (const auto& shape : saved->pages.front()->shapes) {
            if (shape->name == name) return Number(*shape, Name::PinX);
        }
        return -1.0;
    };
    EXPECT_LT(pin("CLIENT"), pin("COMMISSION"));
    EXPECT_LT(pin("COMMISSION"), pin("PAYMENT"));
    EXPECT_EQ(ReadFile(File("EMPSCHM.vsd")), ReadFile(File("EMPSCHM.vsdx")));
}

TEST_F(SampleDrawingTest, OnlyADrawingOfTheSameChoiceIsGoneBy) {
    const auto fresh = Drawn();
    ASSERT_TRUE(MoveInFile("PAYMENT", -20));
    EXPECT_LT(Drawn().at("PAYMENT").front().x, fresh.at("PAYMENT").front().x - 1) << "where a person put it";
    draw.options.fresh = true;
    ExpectSame(Drawn(), fresh);
    draw.options.fresh = false;
    draw.options.layout = *LayoutIndex("RadialDefault");
    EXPECT_NE(Drawn(), fresh);
    draw.options.layout = 0;
    ExpectSame(Drawn(), fresh);
    for (const std::string& file :
         {std::string("PK no drawing"), ReadFile(File("EMPSCHM.vsd")).substr(0, 9000)}) {
        WriteFile(File("EMPSCHM.vsd"), file);
        ExpectSame(Drawn(), fresh);
    }
}

TEST_F(SampleDrawingTest, AFileWithPartsThatSavingWouldLoseIsLeftAsItWas) {
    ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
    std::vector<drawing::Part> parts = drawing::PartsOf(ReadFile(File("EMPSCHM.vsd")));
    parts.push_back({"visio/comments.xml", "<Comments/>"});
    const std::string commented = drawing::Zip(parts);
    WriteFile(File("EMPSCHM.vsd"), commented);
    EXPECT_FALSE(ApplyLayoutToFile(draw, File("EMPSCHM.vsd")));
    EXPECT_EQ(ReadFile(File("EMPSCHM.vsd")), commented);
}

TEST_F(SampleDrawingTest, AFileThatCanNotBeWrittenIsLeftAsItWas) {
    ASSERT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::Saved);
    const std::string good = ReadFile(File("EMPSCHM.vsd"));
    std::filesystem::remove(File("EMPSCHM.vsd"));
    std::filesystem::create_directory(File("EMPSCHM.vsd"));
    EXPECT_EQ(DrawVisioDiagramSingle(draw, "EMPSCHM", nullptr), DrawResult::NotSaved);
    EXPECT_TRUE(FolderExists(File("EMPSCHM.vsd")));
    EXPECT_FALSE(good.empty());
    for (const auto& name : FilesIn(test.folder.Path("drawings/EMPSCHM"))) EXPECT_EQ(name, "EMPSCHM.vsdx");
}

}  // namespace
}  // namespace norvelis
