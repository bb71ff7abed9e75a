// What the scheduler screen costs with many jobs: its two trees filled, beside the bare statement with all
// rows and columns read. The windows are the real ones, painted off screen.
#include <fmt/format.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <functional>
#include <vector>

#include "store/connection.h"
#include "store/transaction.h"
#include "ui/skins/skin_style.h"
#include "windows.h"

namespace norvelis::ui {
namespace {

constexpr int kJobs = 2000, kRuns = 21;

void WriteJobs(Connection& store) {
    Transaction transaction(store);
    for (int i = 0; i < kJobs; ++i) {
        store.Execute(
            "Insert into schedules (name, address, tel, email, nextschedule, idmsreport, processed, "
            "visiofile) "
            "values (?, 'Computer center', '4711', 'dba@example.org', ?, '/srv/reports/empschm.text', ?, "
            "'/srv/reports/empschm.vsd')",
            {fmt::format("job {}", (i * 37) % kJobs), fmt::format("{}", 46'350 + i), i % 2 == 0 ? "0" : "1"});
    }
    transaction.Commit();
}

void RunBare(Connection& store) {
    auto rows = store.Select("Select * FROM schedules order by name");
    for (; !rows.Eof(); rows.MoveNext()) {
        for (const char* column : {"scheduleid", "name", "address", "tel", "fax", "email", "nextschedule",
                                   "idmsreport", "processed", "visiofile"})
            rows.Value(column);
    }
}

struct Cost {
    double milliseconds = 0, longestTurn = 0;
};

Cost Measure(const std::function<void()>& work) {
    std::vector<double> times;
    Cost cost;
    for (int i = 0; i < kRuns; ++i) {
        Pulse pulse;
        QElapsedTimer since;
        since.start();
        work();
        QApplication::processEvents();
        times.push_back(static_cast<double>(since.nsecsElapsed()) / 1e6);
        cost.longestTurn = std::max(cost.longestTurn, pulse.Longest() * 1e3);
    }
    std::nth_element(times.begin(), times.begin() + kRuns / 2, times.end());
    cost.milliseconds = times[kRuns / 2];
    return cost;
}

void Report(const char* what, const std::function<void()>& work, double bare) {
    const Cost cost = Measure(work);
    fmt::print("| {} | {:.1f} | {:.1f} | {:.2f} | {:.1f} |\n", what, cost.milliseconds, bare,
               cost.milliseconds / bare, cost.longestTurn);
}

void ManyJobs() {
    Windows windows;
    Connection& store = *windows.app.gConnection;
    WriteJobs(store);
    windows.Open();
    windows.host.OpenScreen(Screen::Scheduler, false);
    QTest::qWait(100);
    Form& screen = *windows.frame->Find(Screen::Scheduler);
    const double bare = Measure([&] { RunBare(store); }).milliseconds;
    Report(
        "all jobs read again", [&] { screen.findChild<QAbstractButton*>("cmdPopulate")->click(); }, bare);
    screen.findChild<QLineEdit*>("Text1")->setText("is nowhere");
    Report(
        "a search that finds nothing", [&] { screen.findChild<QAbstractButton*>("cmdSearch")->click(); },
        bare);
}

}  // namespace
}  // namespace norvelis::ui

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationName("Norvelis");
    QApplication::setQuitOnLastWindowClosed(false);
    norvelis::ui::UseSkinStyle(application);
    fmt::print("| 2,000 jobs | ms | statement alone ms | ratio | longest turn ms |\n|---|--:|--:|--:|--:|\n");
    norvelis::ui::ManyJobs();
}
