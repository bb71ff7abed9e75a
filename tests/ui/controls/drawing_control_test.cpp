#include "ui/controls/drawing_control.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QSignalSpy>
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

/// A page of 10 by 8 inches with one box, an inch around its middle at (3, 2).
class OneBox : public DrawingPicture {
  public:
    QSizeF PageSize() const override { return {10 * kUnits, 8 * kUnits}; }
    double UnitsPerInch() const override { return kUnits; }
    void Paint(QPainter& painter, const QRect& view, double, double) override {
        painter.fillRect(QRect(QPoint(), view.size()), Qt::white);
    }
    std::optional<Shape> ShapeAt(QPointF place, double) const override {
        return Bounds().contains(place) ? ShapeNamed("BOX") : std::nullopt;
    }
    std::optional<Shape> ShapeNamed(const QString& name) const override {
        if (name != "BOX") return std::nullopt;
        return Shape{"BOX", "tip", "", Bounds()};
    }

  private:
    static QRectF Bounds() { return {2.5 * kUnits, 1.5 * kUnits, kUnits, kUnits}; }
};

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
                            [this](const QString& path) -> std::unique_ptr<DrawingPicture> {
                                ++opened;
                                if (path.endsWith("broken.vsd"))
                                    throw RuntimeFailure(FailureNumber::DeviceIoError, "not a drawing");
                                return std::make_unique<OneBox>();
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
        [&](const QString& path) -> std::unique_ptr<DrawingPicture> {
            {
                const std::lock_guard lock(mutex);
                read.push_back(path);
            }
            if (path == "large.vsd") mayEnd.acquire();
            return std::make_unique<OneBox>();
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
        double scale;
    };
    std::vector<Painted> paints;
    class Counting : public OneBox {
      public:
        explicit Counting(std::vector<Painted>& paints) : paints_(paints) {}
        void Paint(QPainter& painter, const QRect& view, double scale, double ratio) override {
            paints_.push_back({QThread::currentThread(), scale});
            OneBox::Paint(painter, view, scale, ratio);
        }

      private:
        std::vector<Painted>& paints_;
    };
    DrawingControl2 shown(
        "DrawingControl2", [&](const QString&) { return std::make_unique<Counting>(paints); }, nullptr);
    shown.resize(500, 400);
    shown.show();
    shown.SetSrc(File());
    UntilShown(shown);
    shown.grab();
    ASSERT_GE(paints.size(), 2u);
    EXPECT_NE(paints.front().thread, QThread::currentThread());
    EXPECT_EQ(paints.back().thread, QThread::currentThread());
    EXPECT_EQ(paints.front().scale, paints.back().scale);
}

TEST_F(DrawingControlTest, WhatCanNotBeShownSaysWhyAndHarmsNothing) {
    Open("broken.vsd");
    const QImage words = control.grab().toImage();
    control.SetSrc("");
    EXPECT_NE(words, control.grab().toImage()) << "the reason stands there";
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

}  // namespace
}  // namespace norvelis::ui
