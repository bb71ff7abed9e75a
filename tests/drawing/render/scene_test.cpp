#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QColor>
#include <QPainter>
#include <cmath>
#include <limits>
#include <semaphore>

#include "base/failure.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/open.h"
#include "drawing/render/paint.h"
#include "drawing/render/tile_cache.h"
#include "drawing/render/walk_scene.h"
#include "sample_drawing.h"

namespace norvelis::drawing::render {
namespace {

constexpr double kPixels = 100;  // To the inch.

class SceneTest : public testing::Test {
  protected:
    SceneTest() { NeedFonts(); }

    Scene Build() { return BuildScene(fonts_, sample_.document, sample_.First()); }

    /// The colour at a place of the page, in inches from its lower left corner.
    std::string ColorAt(double x, double y) {
        const QImage picture = Picture(Build(), kPixels);
        const int row = picture.height() - 1 - static_cast<int>(y * kPixels);
        return picture.pixelColor(static_cast<int>(x * kPixels), row).name().toStdString();
    }

    /// How many pixels of the page are darker than white by far.
    int DarkPixels() {
        const QImage picture = Picture(Build(), kPixels);
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) count += qGray(picture.pixel(x, y)) < 128;
        }
        return count;
    }

    SampleDrawing sample_;
    FontLibrary fonts_;
};

TEST_F(SceneTest, BoxesAreWhereTheirPinsAreAndCoverThoseBehind) {
    sample_.AddBox(1, 2, 1, 1, "#ff0000");
    sample_.AddBox(1.3, 1.7, 1, 1, "#0000ff");
    EXPECT_EQ(ColorAt(0.6, 2.4), "#ff0000");
    EXPECT_EQ(ColorAt(1.2, 1.8), "#0000ff");
    EXPECT_EQ(ColorAt(2.5, 0.5), "#ffffff");
}

TEST_F(SceneTest, PartsOfATurnedAndFlippedGroupGoWithIt) {
    auto group = std::make_unique<Shape>();
    group->kind = ShapeKind::Group;
    group->cells.Set(Name::PinX, 2).Set(Name::PinY, 1.5).Set(Name::Width, 2).Set(Name::Height, 1);
    group->cells.Set(Name::LocPinX, 1).Set(Name::LocPinY, 0.5);
    group->shapes.push_back(sample_.Box(0.25, 0.25, 0.5, 0.5, "#00ff00"));  // At the group's lower left.
    Shape& added = sample_.First().Add(std::move(group));
    EXPECT_EQ(ColorAt(1.25, 1.25), "#00ff00");
    added.cells.Set(Name::FlipX, 1);
    EXPECT_EQ(ColorAt(2.75, 1.25), "#00ff00");
    added.cells.Set(Name::FlipX, 0).Set(Name::Angle, std::acos(-1) / 2);  // A quarter turn to the left.
    EXPECT_EQ(ColorAt(2.25, 0.75), "#00ff00");
}

TEST_F(SceneTest, LinesAreAsWideAsTheyAreStated) {
    sample_.AddLine(0.5, 1.5, 3, 0, 0.2, "#800080");
    EXPECT_EQ(ColorAt(2, 1.58), "#800080");
    EXPECT_EQ(ColorAt(2, 1.65), "#ffffff");
}

TEST_F(SceneTest, AnArrowWidensItsOwnEndOnly) {
    Shape& line = sample_.AddLine(1, 1.5, 2, 0, 0.04, "#000000");
    const int plain = DarkPixels();
    line.cells.Set(Name::EndArrow, 4).Set(Name::EndArrowSize, 6);
    EXPECT_GT(DarkPixels(), plain + 100);
    EXPECT_EQ(ColorAt(2.8, 1.56), "#000000");
    EXPECT_EQ(ColorAt(1.2, 1.56), "#ffffff");
    EXPECT_EQ(ColorAt(3.06, 1.5), "#ffffff");
}

TEST_F(SceneTest, EveryLineEndShowsAtItsEnd) {
    Shape& line = sample_.AddLine(1, 1.5, 2, 0, 0.02, "#000000");
    line.cells.Set(Name::EndArrowSize, 4);
    const Scene plain = Build();
    const double right = plain.figures.front().bounds.right();
    for (int arrow = 1; arrow <= 45; ++arrow) {
        line.cells.Set(Name::EndArrow, arrow);
        const Scene scene = Build();
        ASSERT_EQ(scene.figures.front().marks.size(), 2u) << arrow;
        const QRectF end = scene.figures.front().marks.back().path.boundingRect();
        EXPECT_GT(end.height(), 20) << arrow;
        EXPECT_NEAR(end.right(), right, 90) << arrow;
        EXPECT_NEAR(end.center().y(), 1.5 * kUnitsPerInch, 1) << arrow;
    }
    line.cells.Set(Name::EndArrow, 46);
    EXPECT_EQ(Build().figures.front().marks.size(), 1u);
}

TEST_F(SceneTest, DashesLeaveGaps) {
    Shape& line = sample_.AddLine(0.5, 1.5, 3, 0, 0.04, "#000000");
    const int solid = DarkPixels();
    line.cells.Set(Name::LinePattern, 2);
    EXPECT_LT(DarkPixels(), solid * 0.8);
    EXPECT_GT(DarkPixels(), solid * 0.3);
}

TEST_F(SceneTest, GradientsRunFromTheForegroundByTheirNumber) {
    Shape& box = sample_.AddBox(2, 1.5, 2, 2, "#ff0000");
    box.cells.SetText(Name::FillBkgnd, "#0000ff");
    struct Case {
        int pattern;
        double x, y;  // Where the foreground is purest.
    };
    for (const Case& each : {Case{25, 1.05, 1.5},
                             {27, 2.95, 1.5},
                             {28, 2, 2.45},
                             {30, 2, 0.55},
                             {31, 1.05, 2.45},
                             {40, 2, 1.5}}) {
        box.cells.Set(Name::FillPattern, each.pattern);
        const QColor color(QString::fromStdString(ColorAt(each.x, each.y)));
        EXPECT_GT(color.red(), 220) << "pattern " << each.pattern;
        EXPECT_LT(color.blue(), 40) << "pattern " << each.pattern;
    }
}

TEST_F(SceneTest, HatchesShowBothColoursInsideTheirOutline) {
    Shape& box = sample_.AddBox(2, 1.5, 2, 2, "#000000");
    box.cells.SetText(Name::FillBkgnd, "#ffff00").Set(Name::FillPattern, 6);
    const int dark = DarkPixels();
    EXPECT_GT(dark, 500);
    EXPECT_LT(dark, 20000);
    EXPECT_EQ(ColorAt(0.5, 1.5), "#ffffff");
}

TEST_F(SceneTest, WhatLiesOnHiddenLayersAloneIsNotShown) {
    sample_.First().sheet.At(Name::Layer).At(RowKey::Number(0)).cells.Set(Name::Visible, 0);
    sample_.First().sheet.At(Name::Layer).At(RowKey::Number(1)).cells.Set(Name::Visible, 1);
    sample_.AddBox(1, 1.5, 1, 1, "#ff0000").cells.SetText(Name::LayerMember, "0");
    sample_.AddBox(3, 1.5, 1, 1, "#00ff00").cells.SetText(Name::LayerMember, "0;1");
    EXPECT_EQ(ColorAt(1, 1.5), "#ffffff");
    EXPECT_EQ(ColorAt(3, 1.5), "#00ff00");
}

TEST_F(SceneTest, TheBackgroundPageLiesBehind) {
    Page& back = sample_.AddPage(4, 3);
    back.background = true;
    back.Add(sample_.Box(2, 1.5, 4, 3, "#ffff00"));
    sample_.AddBox(1, 1.5, 1, 1, "#ff0000");
    sample_.First().backPage = back.id;
    back.backPage = sample_.First().id;  // A circle, as a damaged file may have it.
    EXPECT_EQ(ColorAt(1, 1.5), "#ff0000");
    EXPECT_EQ(ColorAt(3, 1.5), "#ffff00");
}

TEST_F(SceneTest, TextKeepsTheOrderColourAndSizeOfItsRuns) {
    Shape& box = sample_.AddBox(2, 1.5, 3, 2, "#ffffff");
    box.text = TextRuns{{"EMPLOYEE", 1}, {"\r\nCALC", 2}};
    SampleDrawing::Letters(box, 1, Name::Color).SetNumber(2);
    SampleDrawing::Letters(box, 1, Name::Size).SetNumber(10.0 / 72);
    SampleDrawing::Letters(box, 1, Name::Style).SetNumber(1);
    SampleDrawing::Letters(box, 2, Name::Color).SetNumber(4);
    SampleDrawing::Letters(box, 2, Name::Size).SetNumber(8.0 / 72);
    const Scene scene = Build();
    ASSERT_EQ(scene.figures.size(), 1u);
    const auto& fragments = scene.figures.front().text.fragments;
    ASSERT_EQ(fragments.size(), 2u);
    EXPECT_EQ(fragments[0].text, "EMPLOYEE");
    EXPECT_EQ(fragments[0].color, QColor(255, 0, 0));
    EXPECT_EQ(fragments[0].font.pixelSize(), 100);
    EXPECT_TRUE(fragments[0].font.bold());
    EXPECT_EQ(fragments[1].text, "CALC");
    EXPECT_EQ(fragments[1].color, QColor(0, 0, 255));
    EXPECT_FALSE(fragments[1].font.bold());
    EXPECT_GT(fragments[1].start.y(), fragments[0].start.y() + 80);
    // Both centred on the box's middle.
    for (const auto& fragment : fragments)
        EXPECT_NEAR(fragment.start.x() + fragment.width / 2, 1.5 * kUnitsPerInch, 1);
}

TEST_F(SceneTest, LettersHaveTheirStyleAndHeight) {
    Shape& box = sample_.AddBox(2, 1.5, 3, 2, "#ffffff");
    box.text = TextRuns{{"a", 0}, {"b", 1}, {"c", 2}, {"d", 3}};
    SampleDrawing::Letters(box, 0, Name::Style).SetNumber(2 | 4);
    SampleDrawing::Letters(box, 1, Name::Strikethru).SetNumber(1);
    SampleDrawing::Letters(box, 2, Name::Pos).SetNumber(1);
    SampleDrawing::Letters(box, 3, Name::Case).SetNumber(1);
    const auto fragments = Build().figures.front().text.fragments;
    ASSERT_EQ(fragments.size(), 4u);
    EXPECT_TRUE(fragments[0].font.italic() && fragments[0].font.underline() &&
                !fragments[0].font.strikeOut());
    EXPECT_TRUE(fragments[1].font.strikeOut());
    EXPECT_LT(fragments[2].start.y(), fragments[1].start.y());  // Superscript: smaller and higher.
    EXPECT_LT(fragments[2].font.pixelSize(), fragments[1].font.pixelSize());
    EXPECT_EQ(fragments[3].text, "D");
}

TEST_F(SceneTest, TabsAndAlignmentPlaceTheRuns) {
    Shape& box = sample_.AddBox(2, 1.5, 3, 2, "#ffffff");
    box.cells.Set(Name::LeftMargin, 0)
        .Set(Name::RightMargin, 0)
        .Set(Name::VerticalAlign, 0)
        .Set(Name::TopMargin, 0);
    box.text = TextRuns{{"a\tb\nc"}};
    box.LocalAt({Name::Paragraph, 0, RowKey::Number(0), Name::HorzAlign}).SetNumber(0);
    box.LocalAt({Name::Tabs, 0, RowKey::Number(0), Name::Position0}).SetNumber(1.25);
    const auto fragments = [this] { return Build().figures.front().text.fragments; };
    const auto left = [](const Fragment& fragment) { return fragment.start.x() / kUnitsPerInch; };
    ASSERT_EQ(fragments().size(), 3u);
    EXPECT_NEAR(left(fragments()[0]), 0, 0.01);
    EXPECT_NEAR(left(fragments()[1]), 1.25, 0.01);
    const double top = fragments()[2].start.y();
    box.cells.Set(Name::VerticalAlign, 2).Set(Name::BottomMargin, 0);
    EXPECT_GT(fragments()[2].start.y(), top + 1.4 * kUnitsPerInch);
    box.LocalAt({Name::Paragraph, 0, RowKey::Number(0), Name::HorzAlign}).SetNumber(2);
    const Fragment last = fragments()[2];
    EXPECT_NEAR(left(last) + last.width / kUnitsPerInch, 3, 0.01);
}

TEST_F(SceneTest, TextIsAsWideAsItWasMeasured) {
    Shape& box = sample_.AddBox(2, 1.5, 3, 1, "#ffffff");
    box.text = TextRuns{{"HHHHHHHHHH"}};
    SampleDrawing::Letters(box, 0, Name::Size).SetNumber(14.0 / 72);
    const double width = Build().figures.front().text.fragments.front().width / kUnitsPerInch;
    const QImage picture = Picture(Build(), kPixels);
    int first = picture.width(), last = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) > 160) continue;
            first = std::min(first, x);
            last = std::max(last, x);
        }
    }
    EXPECT_NEAR((last - first) / kPixels, width, 0.06);  // But for the first and last letter's side bearings.
}

TEST_F(SceneTest, AClickMeetsTheFrontmostShapeAndThinLinesWithinReach) {
    Shape& back = sample_.AddBox(1, 1.5, 1, 1, "#ff0000");
    Shape& front = sample_.AddBox(1.2, 1.5, 1, 1, "#00ff00");
    Shape& line = sample_.AddLine(2, 1, 1.5, 1, 0.01, "#000000");
    back.name = "back", front.name = "front", line.name = "line";
    const walk::PageWalk page = WalkOf(Build());
    const auto at = [&](double x, double y, double slack) {
        const int shape = page.At({x * kUnitsPerInch, (3 - y) * kUnitsPerInch}, slack);
        return shape == walk::kNone ? "nothing" : page[shape].name;
    };
    EXPECT_EQ(at(0.6, 1.5, 0), "back");
    EXPECT_EQ(at(1.2, 1.5, 0), "front");
    EXPECT_EQ(at(2.75, 1.53, 0), "nothing");
    EXPECT_EQ(at(2.75, 1.53, 40), "line");
    EXPECT_EQ(at(3.4, 1.1, 40), "nothing");  // In the line's box, far from the line.
}

TEST_F(SceneTest, ShapesOnLockedLayersAreSeenAndNotTakenHoldOf) {
    sample_.AddBox(1, 1.5, 1, 1, "#ff0000").cells.SetText(Name::LayerMember, "0");
    sample_.First().sheet.At(Name::Layer).At(RowKey::Number(0)).cells.Set(Name::Lock, 1);
    const Scene scene = Build();
    EXPECT_EQ(scene.figures.size(), 1u);
    EXPECT_EQ(WalkOf(scene).At({1 * kUnitsPerInch, 1.5 * kUnitsPerInch}, 0), walk::kNone);
}

TEST_F(SceneTest, PartsSpeakForTheirGroup) {
    auto group = std::make_unique<Shape>();
    group->kind = ShapeKind::Group;
    group->cells.Set(Name::Width, 2).Set(Name::Height, 1).SetText(Name::Comment, "a group's tip");
    group->name = "group";
    auto part = sample_.Box(1, 1, 1, 1, "#00ff00");
    part->text = TextRuns{{"words"}};
    group->shapes.push_back(std::move(part));
    const int id = sample_.First().Add(std::move(group)).id;
    Shape& line = sample_.AddLine(2, 1, 1.5, 1, 0.01, "#000000");
    sample_.First().connects.push_back({line.id, "BeginX", 9, id + 1, "PinX", 3});
    sample_.First().connects.push_back({line.id, "EndX", 12, id, "PinX", 3});
    const walk::PageWalk page = WalkOf(Build());
    const int met = page.At({1 * kUnitsPerInch, 2 * kUnitsPerInch}, 0);
    ASSERT_NE(met, walk::kNone);
    EXPECT_EQ(page[met].name, "group");
    EXPECT_EQ(page[met].tip, "a group's tip");
    EXPECT_EQ(page[met].text, "words");
    EXPECT_EQ(page[1].begin, met) << "glued to its part";
    EXPECT_EQ(page[1].end, met);
}

TEST_F(SceneTest, ABackgroundPageIsSeenAndNotWalkedOver) {
    Page& back = sample_.AddPage(4, 3);
    back.background = true;
    back.Add(sample_.Box(1, 1.5, 1, 1, "#ff0000"));
    sample_.First().backPage = back.id;
    sample_.AddBox(3, 1.5, 1, 1, "#00ff00").name = "own";
    const Scene scene = Build();
    EXPECT_EQ(scene.figures.size(), 2u);
    const walk::PageWalk page = WalkOf(scene);
    ASSERT_EQ(page.Count(), 1);
    EXPECT_EQ(page[0].name, "own");
}

TEST_F(SceneTest, DamagedNumbersDoNoHarm) {
    const double worst[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                            -1e300, 1e300};
    for (const double value : worst) {
        Shape& box = sample_.AddBox(value, value, value, value, "#ff0000");
        box.cells.Set(Name::Angle, value)
            .Set(Name::LineWeight, value)
            .Set(Name::EndArrow, value)
            .Set(Name::Rounding, value);
        box.text = TextRuns{{"text"}};
        SampleDrawing::Letters(box, 0, Name::Size).SetNumber(value);
    }
    sample_.AddBox(1, 1, 1, 1, "#00ff00");
    EXPECT_EQ(Build().figures.size(), 5u);
    EXPECT_EQ(Picture(Build(), 10).width(), 40);
}

TEST_F(SceneTest, WhatRepeatsWithoutEndIsRefused) {
    // A small file: a master of many points and long texts, and many instances that state nothing themselves.
    Master& master = sample_.document.AddMaster("Bomb");
    auto shape = std::make_unique<Shape>();
    for (int i = 0; i < 20'000; ++i) {
        Row& row = shape->At(Name::Geometry).rows.emplace_back();
        row.key = RowKey::Number(i + 1);
        row.type = Name::LineTo;
    }
    shape->text = TextRuns{{std::string(100'000, 'x')}};
    shape->cells.SetText(Name::Comment, std::string(100'000, 'y'));
    master.Add(std::move(shape));
    for (int i = 0; i < 5'000; ++i) DropInstance(sample_.First(), master, 1, 1);
    EXPECT_THROW(Build(), RuntimeFailure);
}

TEST_F(SceneTest, GuidesAndPicturesOfUnknownKindsAreNotShown) {
    auto guide = sample_.Box(1, 1.5, 1, 1, "#ff0000");
    guide->kind = ShapeKind::Guide;
    sample_.First().Add(std::move(guide));
    auto picture = sample_.Box(3, 1.5, 1, 1, "#ffffff");
    picture->picture = std::make_unique<ForeignPicture>(ForeignPicture{"EnhMetaFile", "", "emf", "nothing"});
    sample_.First().Add(std::move(picture));
    EXPECT_EQ(ColorAt(1, 1.5), "#ffffff");
    EXPECT_EQ(Build().figures.size(), 1u);
}

TEST_F(SceneTest, AHugePageGivesAPictureOfBoundedSize) {
    sample_.First().sheet.cells.Set(Name::PageWidth, 1e6).Set(Name::PageHeight, 10);
    const QImage picture = Picture(Build(), 100, 2000);
    EXPECT_LE(picture.width(), 2000);
    EXPECT_GE(picture.height(), 1);
}

/// A view over a scene that is painted until all of it is ready.
struct WaitingView {
    std::counting_semaphore<> ready{0};
    TileCache cache;

    explicit WaitingView(const Scene& scene) : cache(scene) {
        cache.OnReady([this] { ready.release(); });
    }
    QImage Painted(const QRect& view, double scale) {
        QImage screen(view.size(), QImage::Format_RGB32);
        QPainter painter(&screen);
        while (!cache.Paint(painter, view, scale)) ready.acquire();
        return screen;
    }
};

TEST_F(SceneTest, MovingAViewPaintsOnlyWhatComesIntoSight) {
    sample_.First().sheet.cells.Set(Name::PageWidth, 40).Set(Name::PageHeight, 30);
    sample_.AddBox(1, 29, 1, 1, "#ff0000");
    const Scene scene = Build();
    WaitingView over(scene);
    const double scale = kPixels / kUnitsPerInch;
    const QRect view(0, 0, 512, 512);
    EXPECT_EQ(over.Painted(view, scale).pixelColor(100, 100).name(), "#ff0000");
    EXPECT_EQ(over.cache.PaintedTiles(), 4);
    const QImage moved = over.Painted(view.translated(20, 0), scale);
    EXPECT_EQ(over.cache.PaintedTiles(), 6);
    EXPECT_EQ(moved.pixelColor(125, 100).name(), "#ff0000");
    EXPECT_EQ(moved.pixelColor(135, 100).name(), "#ffffff");
    over.Painted(view, scale / 2);
    over.Painted(view, scale);
    EXPECT_EQ(over.cache.PaintedTiles(), 10) << "the scale before is still there";
}

TEST_F(SceneTest, AViewThatIsNotPaintedYetShowsTheSameBlurred) {
    sample_.AddBox(1, 1.5, 1, 1, "#ff0000");
    const Scene scene = Build();
    TileCache cache(scene);
    QImage screen(400, 300, QImage::Format_RGB32);
    QPainter painter(&screen);
    for (const double scale : {100 / kUnitsPerInch, 200 / kUnitsPerInch}) {
        screen.fill(Qt::black);
        const QPoint box = (QPointF(1, 1.5) * scale * kUnitsPerInch).toPoint();
        const QRect view(box - QPoint(100, 100), screen.size());
        EXPECT_FALSE(cache.Paint(painter, view, scale));
        EXPECT_EQ(screen.pixelColor(100, 100).name(), "#ff0000") << scale;
    }
}

}  // namespace
}  // namespace norvelis::drawing::render
