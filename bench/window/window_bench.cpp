#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "base/paths.h"
#include "core/settings.h"
#include "extract/driver.h"
#include "testing/layered_schema.h"
#include "testing/report_generator.h"
#include "testing/resident_memory.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/screens/browse/frm_treeview.h"
#include "ui/screens/viewers/report_view.h"
#include "ui/skins/skin_style.h"
#include "windows.h"

// What a person feels at the windows with very large schemas: how long a command takes, and for how long at
// most the window does not answer meanwhile. The windows are the real ones, painted off screen.
namespace norvelis::ui {
namespace {

double Seconds(const QElapsedTimer& since) {
    return static_cast<double>(since.nsecsElapsed()) / 1e9;
}

/// Runs a command and goes on until what it left behind is painted.
void Measure(const char* what, const std::function<void()>& command) {
    const double before = ResidentMegabytes();
    QElapsedTimer since;
    since.start();
    Pulse pulse;
    command();
    QApplication::processEvents();
    const double seconds = Seconds(since);
    QTest::qWait(100);
    fmt::print("| {:<44} | {:5.2f} | {:5.3f} | {:4.0f} |\n", what, seconds, pulse.Longest(),
               ResidentMegabytes() - before);
    std::fflush(stdout);
}

void LargeTree() {
    Windows windows;
    WriteLayers(*windows.app.gConnection, 305, 7);
    windows.Open();
    Measure("a tree of a million nodes filled", [&] { windows.frame->loadtreeform(); });
    fmt::print("| {} nodes | | | |\n", windows.Tview().Tree().Size());
    Measure("the same again, refreshed", [&] { windows.frame->loadtreeform(); });
    Measure("all branches closed", [&] { windows.Tview().CollapseAll(); });
    Measure("all branches opened", [&] { windows.Tview().ExpandAll(); });
    Measure("letters of a name that is not there", [&] { QTest::keyClicks(&windows.Tview(), "zz"); });
    Measure("a click on a record opens the isolate screen", [&] { emit windows.Tview().NodeClicked(1); });
    Measure("a click on its schema isolates all of it", [&] { emit windows.Tview().NodeClicked(0); });
}

void WriteLargeReport(const std::string& path, std::size_t bytes) {
    const std::string part = GenerateSchemaReport(1000, 2000, 30, 1);
    std::ofstream file(path, std::ios::binary);
    for (std::size_t written = 0; written < bytes; written += part.size()) file << part;
}

void LargeReport() {
    Windows windows;
    const std::string path = windows.folder.Path("report");
    WriteLargeReport(path, 300'000'000);
    setreportlocation(windows.app, path);
    windows.Open();
    Measure("a report of 300 MB opened, first lines shown", [&] {
        windows.frame->findChild<QAction*>("mnu_View_IDMS_Report_File")->trigger();
        windows.frame->Find(Screen::ReportViewer)->repaint();
    });
    Form& viewer = *windows.frame->Find(Screen::ReportViewer);
    auto& view = *viewer.findChild<ReportView*>("RichTextBox1");
    const auto& status = *viewer.findChild<QLabel*>("lblStatus");
    Measure("read to its end in the background", [&] {
        while (status.text().contains("per cent read"))
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    });
    Random random(1);
    double longest = 0;
    Measure("200 jumps to lines of it", [&] {
        for (int jump = 0; jump < 200; ++jump) {
            QElapsedTimer since;
            since.start();
            view.ShowFrom(random.Bits() % 3'000'000);
            view.repaint();
            longest = std::max(longest, Seconds(since));
            QApplication::processEvents();
        }
    });
    fmt::print("| the longest of these jumps | {:.3f} | | |\n", longest);
}

/// Waits until the control shows what it was given.
void UntilShown(const DrawingControl2& control) {
    while (control.Loading()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// Milliseconds of each frame while the page is dragged about.
void Pan(const char* what, DrawingControl2& control) {
    std::vector<double> frames;
    control.repaint();
    QPoint at = control.rect().center();
    QTest::mousePress(&control, Qt::LeftButton, {}, at);
    for (int i = 0; i < 240; ++i) {
        at += (i / 60) % 2 == 0 ? QPoint(9, 5) : QPoint(-7, -9);
        QElapsedTimer since;
        since.start();
        QTest::mouseMove(&control, at);
        control.repaint();
        frames.push_back(Seconds(since) * 1e3);
    }
    QTest::mouseRelease(&control, Qt::LeftButton, {}, at);
    std::sort(frames.begin(), frames.end());
    fmt::print("| {:<30} | {:5.1f} | {:5.1f} | {:5.1f} |\n", what, frames[frames.size() / 2],
               frames[frames.size() * 95 / 100], frames.back());
}

/// The windows with a generated schema of so many records in the tree.
void OpenSchema(Windows& windows, int records, int sets) {
    const std::string report = windows.folder.Path("report");
    WriteFile(report, GenerateSchemaReport(records, sets, 3, 1));
    setreportlocation(windows.app, report);
    process_Classic_Extract_Report(windows.app, InteractiveDriver(windows.app, {}),
                                   ValidateReportFile(getreportlocation(windows.app)));
    windows.Open();
    windows.frame->loadtreeform();
    QTest::qWait(200);
}

void DrawAll(Windows& windows) {
    windows.frame->findChild<QAction*>("mnu_Draw_Fancy_Single")->trigger();
}

/// The drawing beside the tree in the larger window.
DrawingControl2& OpenLarge(Windows& windows) {
    windows.TreeScreen().findChild<QPushButton*>("Label1")->click();
    auto& large = *windows.frame->Find(Screen::DrawingViewer)->findChild<DrawingControl2*>();
    UntilShown(large);
    return large;
}

void LargeDrawing() {
    Windows windows;
    OpenSchema(windows, 1000, 1600);
    auto& control = *windows.TreeScreen().findChild<DrawingControl2*>("DrawingControl2");
    Measure("1,000 records drawn on one page", [&] { DrawAll(windows); });
    control.SetSrc({});
    Measure("the mouse that rests on its schema shows the drawing", [&] {
        emit windows.Tview().NodeHovered(0, QPoint(40, 10));
        if (!QTest::qWaitFor([&] { return !control.Src().isEmpty(); }))
            throw std::runtime_error("the schema's drawing was not shown");
        UntilShown(control);
    });
    fmt::print("\n| 1,000 boxes, a drag | median ms | of 95 in 100 | longest |\n|---|--:|--:|--:|\n");
    Pan("the whole page, small window", control);
    DrawingControl2& large = OpenLarge(windows);
    Pan("the whole page, large window", large);
    QTest::keyClick(&large, Qt::Key_1);
    Pan("life size, large window", large);
}

/// What one does in a drawing of 2,000 boxes, each time until what is seen is sharp.
void LargeWalk() {
    Windows windows;
    OpenSchema(windows, 2000, 3200);
    DrawAll(windows);
    DrawingControl2& drawing = OpenLarge(windows);
    windows.frame->resize(1600, 1000);
    windows.frame->Find(Screen::DrawingViewer)->resize(1500, 850);
    const drawing::walk::PageWalk& page = drawing.Page();
    int hub = 0;
    for (int shape = 0; shape < page.Count(); ++shape) {
        if (page.LinesOf(shape).size() > page.LinesOf(hub).size()) hub = shape;
    }
    fmt::print("| {} shapes; the box with most lines has {} | | | |\n", page.Count(),
               page.LinesOf(hub).size());
    const auto measure = [&](const char* what, const std::function<void()>& act) {
        Measure(what, [&] {
            act();
            QApplication::processEvents();
            while (drawing.Painting()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        });
    };
    const auto key = [&](Qt::Key key, Qt::KeyboardModifiers with = {}) {
        return [&drawing, key, with] { QTest::keyClick(&drawing, key, with); };
    };
    measure("the whole page", key(Qt::Key_0));
    measure("resting on that box lights up its neighbors", [&] {
        drawing.SelectShape(QString::fromStdString(page[hub].name));
        drawing.LightSelected();
    });
    measure("nothing is lit up", key(Qt::Key_Escape));
    measure("find: a text that is in every box and line", [&] {
        drawing.OpenFind();
        QTest::keyClicks(drawing.findChild<QLineEdit*>("txtFindInDrawing"), "0");
    });
    measure("twenty times the next hit", [&] {
        for (int i = 0; i < 20; ++i) {
            drawing.FindNext(true);
            QApplication::processEvents();
        }
    });
    measure("the search is ended", [&] {
        for (int i = 0; i < 3; ++i) key(Qt::Key_Escape)();
    });
    measure("life size", key(Qt::Key_1));
    measure("page width", key(Qt::Key_2));
    measure("smaller and larger by ten steps", [&] {
        for (int i = 0; i < 20; ++i) {
            i < 10 ? drawing.ZoomIn() : drawing.ZoomOut();
            QApplication::processEvents();
        }
    });
    measure("the record with most lines is shown",
            [&] { drawing.ShowShape(QString::fromStdString(page[hub].name)); });
    measure("along ten of its lines", [&] {
        for (int i = 0; i < 10; ++i) {
            drawing.StepLine(true);
            QApplication::processEvents();
        }
    });
    measure("over a set to its other end", [&] { drawing.FollowSet(); });
    measure("back and forward", [&] {
        for (int i = 0; i < 20; ++i) {
            i < 10 ? drawing.GoBack() : drawing.GoForward();
            QApplication::processEvents();
        }
    });
    auto& map = *drawing.findChild<QWidget*>("DrawingMap");
    measure("a drag over the map", [&] {
        QTest::mousePress(&map, Qt::LeftButton, {}, QPoint(2, 2));
        for (int i = 0; i < 40; ++i) {
            const QPointF at(map.width() * i / 40.0, map.height() * i / 40.0);
            QMouseEvent move(QEvent::MouseMove, at, map.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(&map, &move);
            QApplication::processEvents();
        }
    });
    measure("the mouse moved over 400 places", [&] {
        for (int i = 0; i < 400; ++i) {
            QTest::mouseMove(&drawing, {10 + i * 3, 10 + i * 2});
            QApplication::processEvents();
        }
    });
}

}  // namespace
}  // namespace norvelis::ui

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    CLI::App program{"What a person feels at the windows with very large schemas"};
    std::string only;
    program.add_option("--only", only, "tree, report, drawing or walk; without it all");
    CLI11_PARSE(program, argc, argv);
    QApplication::setApplicationName("Norvelis");
    QApplication::setQuitOnLastWindowClosed(false);
    norvelis::ui::UseSkinStyle(application);
    fmt::print("| | s | longest wait s | grown MB |\n|---|--:|--:|--:|\n");
    if (only.empty() || only == "tree") norvelis::ui::LargeTree();
    if (only.empty() || only == "report") norvelis::ui::LargeReport();
    if (only.empty() || only == "drawing") norvelis::ui::LargeDrawing();
    if (only.empty() || only == "walk") norvelis::ui::LargeWalk();
}
