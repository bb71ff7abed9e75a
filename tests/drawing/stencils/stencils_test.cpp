#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <array>
#include <cstdio>

#include "base/paths.h"
#include "drawing/export/contact_sheet.h"
#include "drawing/formula/recalculation.h"
#include "drawing/package/package.h"
#include "drawing/package_rules.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/open.h"
#include "drawing/render/paint.h"
#include "drawing/stencils/definition.h"

namespace norvelis::drawing::stencils {
namespace {

using render::kUnitsPerInch;

const std::string kFolder = std::string(NORVELIS_APP) + "/Stencils/";
const std::string kFlowchart = "Basic Flowchart Shapes (US units).vss";
const std::string kBackgrounds = "Backgrounds (US units).vss";
const std::string kTitles = "Borders and Titles (US units).vss";
const std::string kTemplate = "Basic Flowchart (US Units).vst";

// In the order in which they are offered for choice.
const std::vector<std::string> kBackgroundNames = {
    "Background steel",      "Background high-tech", "Background stripes",   "Background web",
    "Background rain",       "Background leaf",      "Background orbit",     "Background horizon",
    "Background world",      "Background compass",   "Background clouds",    "Background city",
    "Background mountains",  "Background none",      "Background geometric", "Background cosmic",
    "Background expedition", "Background tranquil"};

std::vector<std::string> NamesIn(const Document& stencil) {
    std::vector<std::string> names;
    for (const auto& master : stencil.masters) names.push_back(master->name);
    return names;
}

/// A drawing of one page into which masters of the delivered stencils are dropped.
class DroppedTest : public testing::Test {
  protected:
    DroppedTest() : drawing_(ReadPackageFile(kFolder + kTemplate)) { render::NeedFonts(); }

    Page& First() { return *drawing_->pages.front(); }

    Shape& Drop(const std::string& stencil, const std::string& name, double x, double y) {
        const auto source = ReadPackageFile(kFolder + stencil);
        Master& master = CopyMaster(*source, *source->FindMaster(name), *drawing_);
        return DropInstance(First(), master, x, y);
    }

    void Recalculate() {
        Recalculation recalculation(*drawing_, fonts_);
        for (const auto& shape : First().shapes) recalculation.Renewed(First(), *shape);
        recalculation.Settle();
    }

    QRectF Bounds() {
        QRectF bounds;
        for (const auto& figure : render::BuildScene(fonts_, *drawing_, First()).figures)
            bounds |= figure.bounds;
        return bounds;
    }

    std::unique_ptr<Document> drawing_;
    FontLibrary fonts_;
};

TEST(Stencils, HoldTheMastersThatDrawingsAskFor) {
    EXPECT_THAT(NamesIn(*ReadPackageFile(kFolder + kFlowchart)),
                testing::UnorderedElementsAre("Process", "Decision", "Terminator", "Off-page reference",
                                              "Annotation", "Dynamic connector"));
    EXPECT_THAT(NamesIn(*ReadPackageFile(kFolder + kBackgrounds)),
                testing::ElementsAreArray(kBackgroundNames));
    EXPECT_THAT(NamesIn(*ReadPackageFile(kFolder + kTitles)),
                testing::ElementsAre("Title block deco", "Legend heading", "Legend entry"));
}

TEST(Stencils, KeepEveryRuleOfPackages) {
    for (const auto& file : {kFlowchart, kBackgrounds, kTitles, kTemplate})
        EXPECT_THAT(PackageFaults(ReadFile(kFolder + file)), testing::IsEmpty()) << file;
}

TEST(Stencils, TheTemplateIsOneEmptyPage) {
    const auto document = ReadPackageFile(kFolder + kTemplate);
    ASSERT_EQ(document->pages.size(), 1u);
    EXPECT_TRUE(document->pages.front()->shapes.empty());
    EXPECT_GT(Number(document->pages.front()->sheet, Name::PageWidth), 1);
}

TEST(Stencils, NoMasterIsBlankOnTheContactSheet) {
    for (const auto& stencil : {kFlowchart, kBackgrounds, kTitles}) {
        const auto scenes = render::OpenMasters(kFolder + stencil);
        for (const auto& scene : scenes) {
            const QImage sheet = render::ContactSheet({scene});
            QImage card = sheet.copy(30, 30, sheet.width() - 60, sheet.height() - 100);
            std::set<QRgb> colors;
            for (int y = 0; y < card.height(); ++y) {
                for (int x = 0; x < card.width(); ++x) colors.insert(card.pixel(x, y));
            }
            if (scene.name == "Background none")
                EXPECT_EQ(colors.size(), 1u);
            else
                EXPECT_GT(colors.size(), 5u) << scene.name.toStdString();
        }
    }
}

TEST(Stencils, BackgroundsArePale) {
    for (const auto& scene : render::OpenMasters(kFolder + kBackgrounds)) {
        const QImage picture = render::Picture(scene, 20);
        double sum = 0;
        int darkest = 255;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                sum += qGray(picture.pixel(x, y));
                darkest = std::min(darkest, qGray(picture.pixel(x, y)));
            }
        }
        EXPECT_GT(sum / (picture.width() * picture.height()), 232) << scene.name.toStdString();
        EXPECT_GT(darkest, 150) << scene.name.toStdString();
    }
}

TEST(Stencils, AnIndependentReaderFindsEveryMaster) {
    for (const auto& [stencil, count] : {std::pair{kFlowchart, 6}, {kBackgrounds, 18}, {kTitles, 3}}) {
        const std::string command = "vss2xhtml '" + kFolder + stencil + "' 2>&1";
        std::FILE* pipe = popen(command.c_str(), "r");
        ASSERT_NE(pipe, nullptr);
        std::string page;
        std::array<char, 4096> buffer{};
        while (const auto read = std::fread(buffer.data(), 1, buffer.size(), pipe))
            page.append(buffer.data(), read);
        EXPECT_EQ(pclose(pipe), 0) << stencil;
        int found = 0;
        for (std::size_t at = page.find("<svg:svg"); at != std::string::npos;
             at = page.find("<svg:svg", at + 1))
            ++found;
        EXPECT_EQ(found, count) << stencil;
    }
}

TEST(Stencils, TheChoiceOfBackgroundsHasSixColumnsAndThreeRows) {
    const QImage choice(QString(NORVELIS_APP) + "/Bitmaps/VisioBackround.Jpg");
    EXPECT_EQ(choice.width(), 6 * (render::kChoiceWidth + render::kChoiceGap) + render::kChoiceGap);
    EXPECT_EQ(choice.height(), 3 * (render::kChoiceHeight + render::kChoiceGap) + render::kChoiceGap);
}

class BackgroundTest : public DroppedTest, public testing::WithParamInterface<std::string> {};

TEST_P(BackgroundTest, CoversThePageAndNoMoreWhateverItsSize) {
    Drop(kBackgrounds, GetParam(), 0, 0);
    for (const auto& [width, height] : {std::pair{11.0, 8.5}, {60.0, 12.0}, {9.0, 40.0}}) {
        First().sheet.cells.Set(Name::PageWidth, width).Set(Name::PageHeight, height);
        Recalculate();
        const QRectF bounds = Bounds(), page(0, 0, width * kUnitsPerInch, height * kUnitsPerInch);
        if (GetParam() == "Background none") {
            EXPECT_TRUE(bounds.isEmpty());
        } else {
            const double line = 0.02 * kUnitsPerInch * std::max(width, height);
            EXPECT_TRUE(page.adjusted(-line, -line, line, line).contains(bounds))
                << width << " by " << height;
            EXPECT_NEAR(bounds.width(), page.width(), line);
            EXPECT_NEAR(bounds.height(), page.height(), line);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, BackgroundTest, testing::ValuesIn(kBackgroundNames), [](const auto& each) {
    std::string name = each.param.substr(each.param.find(' ') + 1);
    std::erase(name, '-');
    return name;
});

TEST_F(DroppedTest, TheTitleRidesAQuarterInchInsideTheUpperLeftCorner) {
    Shape& title = Drop(kTitles, "Title block deco", 0, 0);
    for (const auto& text :
         {"EMPSCHM", "A TITLE OF CONSIDERABLE LENGTH THAT NEEDS MORE THAN THE LEAST WIDTH OF ITS BLOCK"}) {
        title.text = TextRuns{{text}};
        title.cells.At(Name::PinX).formula = "Width * 0.2 + 0.625 + 0.25 in";
        title.cells.At(Name::PinY).formula = "ThePage!PageHeight-Height * 0.1 - 0.125 - 0.25 in";
        title.LocalAt(CellRef(Name::Character, 0, RowKey::Number(0), Name::Size)).SetNumber(6.0 / 72);
        Recalculate();
        const QRectF bounds = Bounds();
        EXPECT_NEAR(bounds.left() / kUnitsPerInch, 0.25, 0.02);
        EXPECT_NEAR(bounds.top() / kUnitsPerInch, 0.25, 0.02);
        const auto scene = render::BuildScene(fonts_, *drawing_, First());
        const auto& last = scene.figures.back();
        ASSERT_EQ(last.text.fragments.size(), 1u) << "the title is on one line, in front of its block";
        EXPECT_TRUE(bounds.contains(last.text.place.mapRect(last.text.bounds)));
    }
}

TEST_F(DroppedTest, ANoteBesideABoxLeavesItUncovered) {
    Shape& box = Drop(kFlowchart, "Process", 3, 3);
    box.cells.Set(Name::Width, 2.1).Set(Name::Height, 1.1);
    Shape& note = Drop(kFlowchart, "ANNOTATION", 3.7, 3.7);
    note.cells.Set(Name::Width, 2).Set(Name::Height, 2).Set(Name::BeginX, 3.5).Set(Name::BeginY, 3.55);
    note.text = TextRuns{{"EMP-NAME-NDX\r\nEMP-LAST-NAME ASC\r\nEMP-FIRST-NAME ASC"}};
    Recalculate();
    const auto scene = render::BuildScene(fonts_, *drawing_, First());
    const auto& figure = scene.figures.back();
    const QRectF text = figure.text.place.mapRect(figure.text.bounds);
    EXPECT_NEAR(text.left() / kUnitsPerInch, 3.7, 0.01);
    EXPECT_NEAR(8.5 - text.bottom() / kUnitsPerInch, 3.7, 0.01);
    EXPECT_FALSE(text.intersects(scene.figures.front().bounds));
    // The plate is as large as the text, not as the note's block; the leader reaches the begin point.
    EXPECT_LT(figure.marks.front().path.boundingRect().height(), 0.6 * kUnitsPerInch);
    EXPECT_NEAR(figure.bounds.left() / kUnitsPerInch, 3.5, 0.05);
}

TEST_F(DroppedTest, ANotesStemFacesWhatItExplains) {
    Shape& note = Drop(kFlowchart, "ANNOTATION", 4, 4);
    note.text = TextRuns{{"INDEX\r\nFIELD ASC\r\nMA SORTED"}};
    const auto number = [&](const char* cell) { return Number(note, ParseCellName(drawing_->names, cell)); };
    const struct {
        double x, y;  ///< Of the begin point, from the note's foot.
        bool isStemRight, endsAtTip;
    } cases[] = {
        {-0.2, 0, false, false}, {1.5, 0, true, false}, {0.07, -0.2, false, false}, {0.07, 0.8, false, true}};
    for (const auto& each : cases) {
        note.cells.Set(Name::BeginX, 4 + each.x).Set(Name::BeginY, 4 + each.y);
        Recalculate();
        const double right = number("Geometry1.X2"), stem = number("Geometry2.X3");
        EXPECT_NEAR(stem, each.isStemRight ? right - 0.07 : 0.07, 1e-9) << each.x;
        EXPECT_NEAR(number("Geometry2.X2"), std::clamp(each.x, 0.0, right), 1e-9);
        EXPECT_NEAR(number("Geometry2.Y2"), each.endsAtTip ? number("Geometry2.Y6") : 0, 1e-9);
    }
}

TEST_F(DroppedTest, AConnectorsLineAndLabelFollowItsEnds) {
    Shape& line = Drop(kFlowchart, "Dynamic Connector", 0.5, 0.5);
    line.text = TextRuns{{"SET"}};
    line.cells.Set(Name::BeginX, 2).Set(Name::BeginY, 6).Set(Name::EndX, 5).Set(Name::EndY, 3);
    Recalculate();
    const auto scene = render::BuildScene(fonts_, *drawing_, First());
    const auto& figure = scene.figures.back();
    const QPointF label = figure.text.place.mapRect(figure.text.bounds).center() / kUnitsPerInch;
    EXPECT_NEAR(label.x(), 3.5, 0.02);
    EXPECT_NEAR(8.5 - label.y(), 4.5, 0.02);
    const auto& path = figure.marks.front().path;
    EXPECT_NEAR(path.elementAt(0).x / kUnitsPerInch, 2, 0.01);
    EXPECT_NEAR(8.5 - path.elementAt(0).y / kUnitsPerInch, 6, 0.01);
}

}  // namespace
}  // namespace norvelis::drawing::stencils
