#include "ui/controls/drawing_control.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QThread>
#include <QWheelEvent>
#include <fstream>
#include <mutex>
#include <semaphore>

#include "base/failure.h"
#include "testing/temporary_folder.h"
#include "ui/until_shown.h"

namespace norvelis::ui {
namespace {

constexpr double kUnits = 100;  // To the inch.

using drawing::walk::PageShape;
using drawing::walk::PageWalk;

PageShape BoxAt(const char* name, double x, double y) {
    const Rect bounds = RectAround({x * kUnits, y * kUnits}, kUnits, kUnits);
    return {
        name,
        std::string(name) + "\n0100 CALC",
        "",
        "",
        false,
        drawing::walk::kNone,
        drawing::walk::kNone,
        bounds,
        bounds,
        {{{{bounds.x0, bounds.y0}, {bounds.x1, bounds.y0}, {bounds.x1, bounds.y1}, {bounds.x0, bounds.y1}},
          0,
          true}}};
}

/// A page of 10 by 8 inches with two boxes, an inch around (3, 2) and (7, 6), and a set behind them.
PageWalk TwoBoxes() {
    PageShape line{"Dynamic connector", "BOX-OTHER\nNPO\nMA LAST", "", "", false, 1, 2, {}, {}, {}};
    line.bounds = {3 * kUnits, 2 * kUnits, 7 * kUnits, 6 * kUnits};
    line.label = RectAround({5 * kUnits, 4 * kUnits}, 60, 20);
    line.outlines = {{{{line.bounds.x0, line.bounds.y0}, {line.bounds.x1, line.bounds.y1}}, 1, false}};
    return {{line, BoxAt("BOX", 3, 2), BoxAt("OTHER", 7, 6)}, {0, 0, 10 * kUnits, 8 * kUnits}};
}

class TwoBoxPicture : public DrawingPicture {
  public:
    QSizeF PageSize() const override { return {10 * kUnits, 8 * kUnits}; }
    double UnitsPerInch() const override { return kUnits; }
    const QImage& Overview() const override { return overview_; }
    void OnReady(std::function<void()>) override {}
    void Prepare(const QRect&, double, double) override {}
    bool Paint(QPainter& painter, const QRect& view, double, double) override {
        painter.fillRect(QRect(QPoint(), view.size()), Qt::white);
        return true;
    }

  private:
    QImage overview_{100, 80, QImage::Format_RGB32};
};

using MakePicture = std::function<std::unique_ptr<DrawingPicture>()>;

/// Pages that look alike.
class TestPages : public DrawingPages {
  public:
    explicit TestPages(MakePicture make = [] { return std::make_unique<TwoBoxPicture>(); })
        : make_(std::move(make)) {}
    int Count() const override { return static_cast<int>(pages.size()); }
    QString Name(int page) const override { return pages[static_cast<std::size_t>(page)].first; }
    const PageWalk& Walk(int page) const override { return pages[static_cast<std::size_t>(page)].second; }
    std::unique_ptr<DrawingPicture> Picture(int) const override { return make_(); }

    std::vector<std::pair<QString, PageWalk>> pages{{"ONLY", TwoBoxes()}};

  private:
    MakePicture make_;
};
using SomePages = std::shared_ptr<const DrawingPages>;

class DrawingControlTest : public testing::Test {
  protected:
    DrawingControlTest() {
        control.resize(500, 400);
        control.show();
        Write("a drawing");
    }
    void Write(const std::string& text) { std::ofstream(folder.Path("a.vsd")) << text; }
    QString File() const { return QString::fromStdString(folder.Path("a.vsd")); }
    /// Where a place of the page (inches) is in the control while it is fitted.
    QPoint Pixel(double x, double y) const {
        const double scale = std::min((500.0 - 24) / 10, (400.0 - 24) / 8);
        return {static_cast<int>(250 + (x - 5) * scale), static_cast<int>(200 + (y - 4) * scale)};
    }

    void Open(const QString& path) {
        control.SetSrc(path);
        UntilShown(control);
    }

    TemporaryFolder folder;
    int opened = 0;
    DrawingControl2 control{"DrawingControl2",
                            [this](const QString& path) -> SomePages {
                                ++opened;
                                if (path.endsWith("broken.vsd"))
                                    throw RuntimeFailure(FailureNumber::DeviceIoError, "not a drawing");
                                return std::make_shared<TestPages>();
                            },
                            nullptr};
};

TEST_F(DrawingControlTest, AFileIsReadOnceAndAgainWhenItChanged) {
    Open(File());
    Open(File());
    EXPECT_EQ(opened, 1);
    std::filesystem::last_write_time(folder.Path("a.vsd"),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::seconds(5));
    Open(File());
    EXPECT_EQ(opened, 2);
    control.SetSrc("");
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(control.Src(), "");
}

TEST_F(DrawingControlTest, ALargeFileDoesNotHoldUpTheWindowAndTheLastOneAskedForCounts) {
    std::mutex mutex;
    std::vector<QString> read;
    std::binary_semaphore mayEnd{0};
    DrawingControl2 slow(
        "DrawingControl2",
        [&](const QString& path) -> SomePages {
            {
                const std::lock_guard lock(mutex);
                read.push_back(path);
            }
            if (path == "large.vsd") mayEnd.acquire();
            return std::make_shared<TestPages>();
        },
        nullptr);
    slow.resize(500, 400);
    slow.show();
    const QImage nothing = slow.grab().toImage();
    slow.SetSrc("large.vsd");
    EXPECT_TRUE(QTest::qWaitFor([&] { return slow.grab().toImage() != nothing; }))
        << "after a while it says what it waits for";
    slow.SetSrc("passed over.vsd");
    slow.SetSrc("wanted.vsd");
    EXPECT_EQ(slow.Src(), "wanted.vsd");
    mayEnd.release();
    UntilShown(slow);
    EXPECT_EQ(read, std::vector<QString>({"large.vsd", "wanted.vsd"}));
    QTest::mouseClick(&slow, Qt::LeftButton, {}, Pixel(3, 2));
    EXPECT_EQ(slow.SelectedShape(), "BOX");

    slow.SetSrc("large.vsd");
    slow.SetSrc("");
    EXPECT_EQ(slow.grab().toImage(), nothing);
    mayEnd.release();
    slow.SetSrc("wanted.vsd");
    UntilShown(slow);
    slow.SetSrc("large.vsd");
    mayEnd.release();  // The control may go while a file is being read.
}

TEST_F(DrawingControlTest, WhatIsSeenFirstIsPaintedBeforeTheWindowHasToPaintIt) {
    struct Painted {
        QThread* thread;
        QRect view;
        double scale;
    };
    std::vector<Painted> prepared, paints;
    class Counting : public TwoBoxPicture {
      public:
        Counting(std::vector<Painted>& prepared, std::vector<Painted>& paints)
            : prepared_(prepared), paints_(paints) {}
        void Prepare(const QRect& view, double scale, double) override {
            prepared_.push_back({QThread::currentThread(), view, scale});
        }
        bool Paint(QPainter& painter, const QRect& view, double scale, double ratio) override {
            paints_.push_back({QThread::currentThread(), view, scale});
            return TwoBoxPicture::Paint(painter, view, scale, ratio);
        }

      private:
        std::vector<Painted>&prepared_, &paints_;
    };
    DrawingControl2 shown(
        "DrawingControl2",
        [&](const QString&) {
            return std::make_shared<TestPages>([&] { return std::make_unique<Counting>(prepared, paints); });
        },
        nullptr);
    shown.resize(500, 400);
    shown.show();
    shown.SetSrc(File());
    UntilShown(shown);
    shown.grab();
    ASSERT_EQ(prepared.size(), 1u);
    ASSERT_FALSE(paints.empty());
    EXPECT_NE(prepared[0].thread, QThread::currentThread());
    EXPECT_EQ(paints.back().thread, QThread::currentThread());
    EXPECT_EQ(paints.back().scale, prepared[0].scale);
    EXPECT_TRUE(prepared[0].view.contains(paints.back().view));
}

TEST_F(DrawingControlTest, WhatCanNotBeShownSaysWhyAndHarmsNothing) {
    Open("broken.vsd");
    const QImage words = control.grab().toImage();
    control.SetSrc("");
    EXPECT_NE(words, control.grab().toImage()) << "the reason is there";
    Open("broken.vsd");
    QTest::mouseClick(&control, Qt::LeftButton);
    QTest::keyClick(&control, Qt::Key_Plus);
    control.SelectShape("BOX");
    EXPECT_EQ(control.SelectedShape(), "");
}

TEST_F(DrawingControlTest, AClickSelectsTheShapeUnderIt) {
    Open(File());
    QSignalSpy clicked(&control, &DrawingControl2::ShapeClicked);
    QTest::mouseClick(&control, Qt::LeftButton, {}, Pixel(3, 2));
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked[0][0], "BOX");
    EXPECT_EQ(control.SelectedShape(), "BOX");
    QTest::mouseClick(&control, Qt::LeftButton, {}, Pixel(8, 6));
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(control.SelectedShape(), "");
}

TEST_F(DrawingControlTest, TheWheelZoomsAroundThePointerAndADragMovesThePage) {
    Open(File());
    const double fitted = control.Zoom();
    const QPointF at = Pixel(3, 2);
    for (int i = 0; i < 4; ++i) {
        QWheelEvent notch(at, control.mapToGlobal(at), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&control, &notch);
    }
    EXPECT_NEAR(control.Zoom() / fitted, std::pow(1.25, 4), 0.01);
    QSignalSpy clicked(&control, &DrawingControl2::ShapeClicked);
    QTest::mouseClick(&control, Qt::LeftButton, {}, at.toPoint());
    EXPECT_EQ(clicked.count(), 1) << "the box is still under the pointer";

    const QPoint from = at.toPoint(), to = from + QPoint(150, 100);
    QTest::mousePress(&control, Qt::LeftButton, {}, from);
    QTest::mouseMove(&control, from + QPoint(60, 40));
    QTest::mouseMove(&control, to);
    QTest::mouseRelease(&control, Qt::LeftButton, {}, to);
    EXPECT_EQ(clicked.count(), 1) << "a drag is no click";
    QTest::mouseClick(&control, Qt::LeftButton, {}, to);
    EXPECT_EQ(clicked.count(), 2) << "the box went along";
}

TEST_F(DrawingControlTest, KeysZoomFitAndMoveWithoutLosingThePage) {
    Open(File());
    const double fitted = control.Zoom();
    for (int i = 0; i < 60; ++i) QTest::keyClick(&control, Qt::Key_Plus);
    EXPECT_LE(control.Zoom(), 8.01);
    for (int i = 0; i < 400; ++i) QTest::keyClick(&control, Qt::Key_Right);
    for (int i = 0; i < 60; ++i) QTest::keyClick(&control, Qt::Key_Minus);
    EXPECT_GT(control.Zoom(), fitted * 0.4);
    QTest::keyClick(&control, Qt::Key_0);
    EXPECT_DOUBLE_EQ(control.Zoom(), fitted);
    control.resize(1000, 800);
    QApplication::processEvents();
    EXPECT_GT(control.Zoom(), fitted * 1.8) << "a fitted page stays fitted";
}

TEST_F(DrawingControlTest, AClickOnALineTellsItsSetAndCtrlClickFollowsIt) {
    Open(File());
    std::vector<std::string> set;
    QObject::connect(&control, &DrawingControl2::LineClicked, [&](const drawing::walk::SetLine& line) {
        set = {line.set, line.owner, line.member};
        control.Tell("Set", {{"Order", "<last>"}});
    });
    QSignalSpy clicked(&control, &DrawingControl2::ShapeClicked);
    QTest::mouseClick(&control, Qt::LeftButton, {}, Pixel(5, 4));
    EXPECT_EQ(set, (std::vector<std::string>{"BOX-OTHER", "BOX", "OTHER"}));
    EXPECT_EQ(clicked.count(), 0);
    auto& card = *control.findChild<QLabel*>("DrawingCard");
    EXPECT_TRUE(card.isVisible());
    EXPECT_TRUE(card.text().contains("&lt;last&gt;"));
    const double fitted = control.Zoom();
    QTest::mouseClick(&control, Qt::LeftButton, Qt::ControlModifier, Pixel(4, 3));
    EXPECT_EQ(control.SelectedShape(), "OTHER") << "the end farther from the pointer";
    EXPECT_FALSE(card.isVisible());
    EXPECT_GT(control.Zoom(), fitted) << "it can be read";
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.rect().center());
    EXPECT_EQ(clicked.back()[0], "OTHER") << "it is in the middle";
    // By keys: the line of the box, and along it to where it comes from.
    QTest::keyClick(&control, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_TRUE(card.isVisible());
    QTest::keyClick(&control, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(control.SelectedShape(), "BOX");
    for (int i = 0; i < 2; ++i) QTest::keyClick(&control, Qt::Key_Left, Qt::AltModifier);
    EXPECT_DOUBLE_EQ(control.Zoom(), fitted) << "back over the views visited";
    QTest::keyClick(&control, Qt::Key_Left, Qt::AltModifier);
    QTest::keyClick(&control, Qt::Key_Right, Qt::AltModifier);
    EXPECT_GT(control.Zoom(), fitted);
}

TEST_F(DrawingControlTest, FindMarksAllHitsAndGoesFromOneToTheNext) {
    Open(File());
    control.activateWindow();
    control.setFocus();
    const QImage before = control.grab().toImage();
    QTest::keyClick(&control, Qt::Key_F, Qt::ControlModifier);
    auto& text = *control.findChild<QLineEdit*>("txtFindInDrawing");
    auto& found = *control.findChild<QLabel*>("lblFoundInDrawing");
    QTest::keyClicks(&text, "oTHer");
    EXPECT_EQ(found.text(), "1 of 2");
    EXPECT_NE(control.grab().toImage(), before);
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(found.text(), "2 of 2");
    EXPECT_EQ(control.SelectedShape(), "Dynamic connector");
    QTest::keyClick(&control, Qt::Key_F3);
    EXPECT_EQ(control.SelectedShape(), "OTHER");
    QTest::keyClicks(&text, "x");
    EXPECT_EQ(found.text(), "not there");
    QTest::keyClick(&text, Qt::Key_Escape);
    EXPECT_TRUE(text.parentWidget()->isHidden());
    control.ShowShape("box-other ");
    EXPECT_EQ(control.SelectedShape(), "Dynamic connector") << "a set by its name";
    control.ShowShape("GONE");
    EXPECT_TRUE(control.findChild<QLabel*>("DrawingCard")->text().contains("GONE is not on this drawing"));
    EXPECT_EQ(control.SelectedShape(), "");
    control.SetSrc("");
    control.SetSrc(File());
    control.ShowShape("OTHER");
    UntilShown(control);
    EXPECT_EQ(control.SelectedShape(), "OTHER") << "once it is read";
}

TEST_F(DrawingControlTest, RestingOnABoxLightsUpItsLinesAndNeighborsAndDimsTheRest) {
    class Grey : public TwoBoxPicture {
        bool Paint(QPainter& painter, const QRect& view, double, double) override {
            painter.fillRect(QRect(QPoint(), view.size()), QColor(100, 100, 100));
            return true;
        }
    };
    DrawingControl2 grey(
        "DrawingControl2",
        [](const QString&) { return std::make_shared<TestPages>([] { return std::make_unique<Grey>(); }); },
        nullptr);
    grey.resize(control.size());
    control.hide();  // The mouse moves over the one in front.
    grey.show();
    grey.SetSrc(File());
    UntilShown(grey);
    const auto shade = [&](double x, double y) { return qGray(grey.grab().toImage().pixel(Pixel(x, y))); };
    QTest::mouseMove(&grey, Pixel(3, 2));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shade(9, 1) > 150; }, 60'000)) << "dimmed";
    for (const double place : {3.0, 7.0}) EXPECT_EQ(shade(place, place - 1), 100) << "both boxes are clear";
    QTest::mouseMove(&grey, Pixel(9, 1));
    EXPECT_EQ(shade(9, 1), 100);
    grey.SelectShape("BOX");
    QTest::keyClick(&grey, Qt::Key_Space);
    EXPECT_GT(shade(9, 1), 150) << "by the keyboard";
    QTest::keyClick(&grey, Qt::Key_Escape);
    EXPECT_EQ(shade(9, 1), 100);
}

TEST_F(DrawingControlTest, TheViewFollowsWidthBoxFrameAndMap) {
    Open(File());
    auto& map = *control.findChild<QWidget*>("DrawingMap");
    EXPECT_FALSE(map.isVisible()) << "all is seen";
    const double fitted = control.Zoom();
    QTest::keyClick(&control, Qt::Key_2, Qt::ControlModifier);
    EXPECT_GE(control.Zoom(), fitted);
    control.SelectShape("OTHER");
    QTest::keyClick(&control, Qt::Key_3, Qt::ControlModifier);
    EXPECT_GT(control.Zoom(), 3) << "the box fills the view";
    EXPECT_TRUE(map.isVisible());
    const QPointF box(map.width() * 0.3, map.height() * 0.25);
    QTest::mouseClick(&map, Qt::LeftButton, {}, box.toPoint());
    QSignalSpy clicked(&control, &DrawingControl2::ShapeClicked);
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.rect().center());
    EXPECT_EQ(control.SelectedShape(), "BOX");
    QTest::keyClick(&control, Qt::Key_M);
    EXPECT_FALSE(map.isVisible());
    control.Fit();
    QTest::mousePress(&control, Qt::LeftButton, Qt::ShiftModifier, Pixel(6, 5));
    for (const double end : {7.0, 8.0}) {
        QMouseEvent move(QEvent::MouseMove, Pixel(end, end - 1), control.mapToGlobal(Pixel(end, end - 1)),
                         Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&control, &move);
    }
    QTest::mouseRelease(&control, Qt::LeftButton, Qt::ShiftModifier, Pixel(8, 7));
    EXPECT_NEAR(control.Zoom() / fitted, 4, 0.2) << "two inches of eight";
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.rect().center());
    EXPECT_EQ(control.SelectedShape(), "OTHER");
}

/// Page A with BOX and one that stands for OTHER of page B.
std::shared_ptr<TestPages> TwoPages() {
    const Rect page{0, 0, 10 * kUnits, 8 * kUnits};
    PageShape reference = BoxAt("OTHER", 7, 6);
    reference.address = "#B/OTHER";
    PageShape line{"Dynamic connector", "BOX-OTHER", "", "", false, 0, 1, {}, {}, {}};
    auto pages = std::make_shared<TestPages>();
    pages->pages = {{"A", PageWalk({BoxAt("BOX", 3, 2), reference, line}, page)},
                    {"B", PageWalk({BoxAt("OTHER", 5, 4), BoxAt("THIRD", 7, 6)}, page)}};
    return pages;
}

TEST_F(DrawingControlTest, EveryPageIsReachedByTabKeysLinkNameAndSearch) {
    DrawingControl2 paged(
        "DrawingControl2", [](const QString&) { return TwoPages(); }, nullptr);
    paged.resize(500, 400);
    paged.show();
    auto& tabs = *paged.findChild<QTabBar*>("pageTabs");
    const auto shows = [&](int page, const char* selected) {
        UntilShown(paged);
        EXPECT_EQ(paged.PageNumber(), page);
        EXPECT_EQ(tabs.currentIndex(), page);
        EXPECT_EQ(paged.SelectedShape(), selected);
    };
    paged.SetSrc(File());
    shows(0, "");
    EXPECT_TRUE(tabs.isVisible());
    EXPECT_EQ(tabs.tabText(1), "B");
    tabs.setCurrentIndex(1);
    shows(1, "");
    QTest::keyClick(&paged, Qt::Key_PageDown, Qt::ControlModifier);
    shows(0, "");

    QSignalSpy clicked(&paged, &DrawingControl2::ShapeClicked);
    paged.SelectShape("OTHER");
    QTest::keyClick(&paged, Qt::Key_Return);
    shows(1, "OTHER");
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked[0][0], "OTHER");
    paged.GoBack();
    shows(0, "");
    paged.GoForward();
    shows(1, "");
    paged.ShowShape("BOX");
    shows(0, "BOX");
    paged.ShowShape("OTHER");
    shows(1, "OTHER");

    paged.ShowPage(0);
    shows(0, "");
    paged.OpenFind();
    auto& text = *paged.findChild<QLineEdit*>("txtFindInDrawing");
    auto& found = *paged.findChild<QLabel*>("lblFoundInDrawing");
    text.setText("THIRD");
    EXPECT_EQ(found.text(), "1 on other pages");
    paged.FindNext(true);
    shows(1, "THIRD");
    text.setText("0100");
    paged.FindNext(false);
    EXPECT_EQ(found.text(), "3 of 4");
    paged.FindNext(false);
    shows(0, "OTHER");
    EXPECT_EQ(found.text(), "2 of 4");

    Write("another edition of the drawing");
    paged.ShowPage(1);
    paged.ShowPage(0);
    paged.ShowPage(1);
    shows(1, "");
    std::filesystem::last_write_time(folder.Path("a.vsd"),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::seconds(5));
    paged.SetSrc(File());
    shows(1, "");
}

}  // namespace
}  // namespace norvelis::ui
