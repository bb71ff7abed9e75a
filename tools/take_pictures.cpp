// take_pictures APPLICATION-FOLDER OUT-FOLDER: a picture of every screen in every skin, for the
// documentation. The dictionary of the folder must hold a schema and its drawing be saved; its jobs and the
// log of their runs are replaced. The screens of SQL servers show the first ODBC data source.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTimeEdit>
#include <QTimer>
#include <QTreeView>
#include <cstdio>
#include <functional>

#include "base/paths.h"
#include "commands/start_up.h"
#include "core/places.h"
#include "core/settings.h"
#include "desktop/application.h"
#include "desktop/main_frame.h"
#include "scheduler/audit_log.h"
#include "store/connection.h"
#include "store/transaction.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/forms/form.h"
#include "ui/frame/child_area.h"
#include "ui/frame/mdi_main_menu.h"
#include "ui/screens/settings/frm_colors.h"
#include "ui/skins/skin_colors.h"

using namespace norvelis;
using namespace norvelis::ui;

namespace {

/// Says nothing and declines, but for a box that is to be seen.
class QuietHost : public QtHost {
  public:
    using Host::MessageBox;
    bool shows = false;
    std::function<void()> eachTurn = [] {};
    Answer MessageBox(const Message& message) override {
        if (shows) return QtHost::MessageBox(message);
        return message.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
    }
    void Turn() override {
        QtHost::Turn();
        const auto now = eachTurn;  // Which may put another in its place.
        now();
    }
};

/// The sample report with a field, a set, an index and an area under new names, a longer picture, another
/// order of a set.
std::string LaterEdition(std::string report) {
    const std::pair<std::string, std::string> edits[] = {{"MAKER-GRADE-0105", "MAKER-SKILL-0105"},
                                                         {"SHOP-MASTERS", "SHOP-LEADERS"},
                                                         {"COMM-DUE-IX", "COMM-DAY-IX"},
                                                         {"PEOPLE-AREA", "PERSON-AREA"},
                                                         {"MA NEXT", "MA LAST"},
                                                         {"S9(7)V99", "S9(9)V99"}};
    for (const auto& [former, present] : edits) {
        for (std::size_t at = 0; (at = report.find(former, at)) != std::string::npos; at += present.size())
            report.replace(at, former.size(), present);
    }
    return report;
}

void LetPaint() {
    QEventLoop loop;
    QTimer::singleShot(150, &loop, &QEventLoop::quit);
    loop.exec();
}

class Photographer {
  public:
    Photographer(mdiMainMenu& frame, QuietHost& host, QString folder)
        : frame_(frame), host_(host), folder_(std::move(folder)) {}

    void TakeAll() {
        for (const std::string& skin : InstalledSkins(frame_.Context().app)) {
            frame_.Context().skin.ChangeTo(skin);
            skin_ = QString::fromStdString(skin).toLower();
            TakeBrowsing();
            TakePages();
            TakeList();
            TakeFind();
            TakeFindings();
            TakeSizes();
            TakeMenu();
            TakeProgress();
            TakeSettings();
            TakeScheduler();
            TakeRun();
            TakeAbout();
            TakeConversion();
            TakeQuery();
            TakeComparison();
            TakeReport();
            TakePrintPreview();
            TakeHelp();
            TakeWaiting("printer", [&] { frame_.Context().printer.SetUp(); });
            TakeBox("question", {"Are you sure you want to extract IDMS report?", "Extract Confirmation",
                                 Buttons::YesNo, Icon::None, Answer::Ok});
            TakeBox("error", {"The following error has occured in your program: \r\n\r\nPath not found: "
                              "/reports/empschm.text\r\n\r\nError Number: 76",
                              "Error...", Buttons::Ok, Icon::Critical, Answer::Ok});
        }
    }

  private:
    void Save(const QPixmap& picture, const QString& name) const {
        constexpr int kSmallest = 0;  // Of a PNG's "quality": packed as well as it goes.
        picture.save(folder_ + "/" + name + "-" + skin_ + ".png", "PNG", kSmallest);
    }
    void Take(QWidget& widget, const QString& name) const {
        LetShow();
        QPixmap picture = widget.grab();
        QPainter painter(&picture);
        for (auto* tip : frame_.findChildren<QWidget*>(QRegularExpression("^frmToolTip"))) {
            if (tip->isVisible()) painter.drawPixmap(tip->pos() - widget.mapToGlobal(QPoint()), tip->grab());
        }
        painter.end();
        Save(picture, name);
    }
    void LetShow() const {
        for (const auto* drawing : frame_.findChildren<DrawingControl2*>()) {
            while (drawing->Loading() || (drawing->isVisible() && drawing->Painting())) LetPaint();
        }
        LetPaint();
    }
    /// What waits for an answer while `act` runs; it is closed then.
    void TakeWaiting(const QString& name, const std::function<void()>& act) const {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &frame_, [this, name, &timer] {
            QWidget* waiting = QApplication::activeModalWidget();
            if (!waiting) return;  // It takes a while with a large dictionary.
            timer.stop();
            Save(waiting->grab(), name);
            waiting->close();
        });
        timer.start(300);
        act();
    }
    /// The steps through the browsing screens: the tree with the drawing of its first schema, a search, the
    /// mouse over a record, that record on its own and drawn, its drawing in the larger window, the larger
    /// tree.
    void TakeBrowsing() {
        Form& screen = *frame_.Find(Screen::Treeview);
        auto& Tview = *screen.findChild<cTreeView*>("Tview");
        const RecordTree tree = Tview.Tree();
        NodeIndex record = 2;  // The first member of an entry record.
        while (tree.Level(record) < 3) ++record;
        const auto hover = [&](NodeIndex node) {
            const QModelIndex line = Tview.model()->index(static_cast<int>(node), 0);
            emit Tview.NodeHovered(node, QPoint(130, Tview.visualRect(line).center().y()));
            const auto* rest = screen.findChild<QTimer*>("rest");
            while (rest->isActive()) LetPaint();
        };
        hover(0);
        hover(kNoNode);
        host_.OpenScreen(Screen::Treeview, false);
        Take(frame_, "tree");
        screen.findChild<QLineEdit*>("Text1")->setText(QString::fromStdString(tree.Text(record)));
        for (int i = 0; i < 2; ++i) Press(screen, "cmdSearch");
        hover(Tview.SelectedNode());
        Take(frame_, "hover");
        hover(kNoNode);
        emit Tview.NodeClicked(record);
        Form& isolate = *frame_.Find(Screen::IsolateView);
        Press(isolate, "cmdDraw");
        Take(frame_, "isolate");
        hover(0);
        hover(kNoNode);
        Press(screen, "Label1");
        LetShow();
        for (int i = 0; i < 3; ++i) Press(*frame_.Find(Screen::DrawingViewer), "cmdZoomIn");
        Take(frame_, "viewer");
        TakeWalk();
        frame_.Find(Screen::DrawingViewer)->close();
        Press(screen, "Max");
        Take(frame_, "treemax");
        frame_.Find(Screen::TreeviewMax)->close();
        isolate.close();
    }
    /// The larger drawing with a search, the words about a line, and the neighbors of the box at its end.
    void TakeWalk() {
        Form& viewer = *frame_.Find(Screen::DrawingViewer);
        auto& drawing = *viewer.findChild<DrawingControl2*>();
        drawing.Fit();
        drawing.OpenFind();
        auto& text = *drawing.findChild<QLineEdit*>("txtFindInDrawing");
        text.setText("STEP");
        Take(viewer, "drawing-find");
        text.clear();
        drawing.FindNext(true);
        const auto key = [&drawing](Qt::Key key, Qt::KeyboardModifiers with = {}) {
            QKeyEvent press(QEvent::KeyPress, key, with);
            QApplication::sendEvent(&drawing, &press);
        };
        key(Qt::Key_Escape);
        const auto& page = drawing.Page();
        int line = 0;  // Of a sorted set, if there is one.
        while (line + 1 < page.Count() &&
               !(page[line].IsLine() && page[line].text.find(" ASC ") != std::string::npos))
            ++line;
        drawing.ShowShape(QString::fromStdString(page.Title(line)));
        key(Qt::Key_Return);
        Take(viewer, "drawing-line");
        drawing.FollowSet();
        drawing.Fit();
        drawing.LightSelected();
        Take(viewer, "drawing-neighbors");
    }
    /// The schema by area: its second page in the larger window, with colors that tell areas.
    void TakePages() {
        Form& screen = *frame_.Find(Screen::Treeview);
        const std::string schema = screen.findChild<cTreeView*>("Tview")->Tree().Schema(0);
        const auto choose = [&screen](std::initializer_list<const char*> entries) {
            for (const char* entry : entries) screen.findChild<QAction*>(entry)->trigger();
        };
        choose({"mnuBoxesByArea", "mnuLinesByOwner"});
        RecordChoice byArea;
        byArea.kind = RecordChoice::Kind::ByArea;
        frame_.Context().request(DrawChosen{schema, byArea});
        choose({"mnuBoxesUsual", "mnuLinesRandom"});
        LetShow();
        Press(screen, "Label1");
        Form& viewer = *frame_.Find(Screen::DrawingViewer);
        LetShow();
        viewer.findChild<DrawingControl2*>()->StepPage(true);
        Take(viewer, "drawing-pages");
        viewer.close();
        auto* look = screen.findChild<QMenu*>("mnuLook");
        auto* button = look->parentWidget();
        look->popup(button->mapToGlobal(QPoint(0, button->height())));
        LetPaint();
        QPixmap picture = frame_.grab();
        QPainter(&picture).drawPixmap(frame_.mapFromGlobal(look->pos()), look->grab());
        look->close();
        Save(picture, "drawing-look");
    }
    /// The list with a record that has owners and members, if there is one.
    void TakeList() {
        host_.OpenScreen(Screen::Listview, false);
        Form& list = *frame_.Find(Screen::Listview);
        auto& FlxGrid3 = *list.findChild<QAbstractItemView*>("FlxGrid3");
        const auto lacks = [&list](const char* part) { return list.findChild<QWidget*>(part)->isHidden(); };
        for (int row = 0; row < FlxGrid3.model()->rowCount(); ++row) {
            FlxGrid3.setCurrentIndex(FlxGrid3.model()->index(row, 0));
            emit FlxGrid3.clicked(FlxGrid3.currentIndex());
            if (!lacks("FromList") && !lacks("ToList")) break;
        }
        Take(list, "list");
        list.close();
    }
    /// What has a name, and a field of these in the list.
    void TakeFind() {
        frame_.Context().request(FindAnything{});
        Form& find = *frame_.Find(Screen::Find);
        auto& txtFind = *find.findChild<QLineEdit*>("txtFind");
        txtFind.setText("supplier");
        Take(find, "find");
        txtFind.setText("field:supplier-town");
        Press(find, "cmdGo");
        Take(frame_, "found");
        frame_.Find(Screen::Listview)->close();
    }
    void TakeFindings() {
        frame_.Context().request(ShowFindings{});
        Form& findings = *frame_.Find(Screen::Findings);
        Take(findings, "findings");
        findings.close();
    }
    /// Tree and isolate view on a small, a usual and a large display: each skin shows one of them.
    void TakeSizes() {
        constexpr QSize kSizes[] = {{1024, 768}, {1600, 1000}, {3840, 2160}};
        const QSize before = frame_.size(), now = kSizes[size_++ % std::size(kSizes)];
        frame_.resize(now);
        host_.OpenScreen(Screen::Treeview, false);
        Form& tree = *frame_.Find(Screen::Treeview);
        frame_.findChild<QAction*>("mnuTile")->trigger();
        emit tree.findChild<cTreeView*>("Tview")->NodeClicked(0);
        LetShow();
        constexpr int kWidest = 1600;  // Of a picture on a page.
        const QPixmap picture = frame_.grab();
        Save(picture.width() > kWidest ? picture.scaledToWidth(kWidest, Qt::SmoothTransformation) : picture,
             QString("tiled-%1x%2").arg(now.width()).arg(now.height()));
        frame_.resize(before);
        for (const Screen screen : {Screen::IsolateView, Screen::Treeview})
            frame_.Find(screen)->BackToOriginalSize();
        frame_.Find(Screen::IsolateView)->close();
    }
    static void Press(Form& form, const char* button) { form.findChild<QAbstractButton*>(button)->click(); }
    void TakeMenu() {
        auto* menu = frame_.findChild<QMenu*>("ppm_extract");
        frame_.menuBar()->setActiveAction(menu->menuAction());
        menu->setActiveAction(frame_.findChild<QAction*>("mnu_Draw_Fancy_Single"));
        LetPaint();
        QPixmap picture = frame_.grab();
        QPainter(&picture).drawPixmap(frame_.mapFromGlobal(menu->pos()), menu->grab());
        menu->close();
        Save(picture, "frame");
    }
    /// The bars of an extraction, half done.
    void TakeProgress() {
        Progress& progress = frame_.Context().app.progress;
        for (const Bar bar : {Bar::TreeviewText, Bar::TreeviewValue}) {
            progress.BResetprogressbar(bar, 100);
            progress.SetVisible(bar, true);
        }
        progress.SetText(Bar::TreeviewText, "Loading Shapes. Please wait..");
        progress.BStepprogressbar(Bar::TreeviewValue, 42, "COMMISSION");
        host_.Status("Collecting CALC and VIA Records ");
        Take(*frame_.Find(Screen::Treeview), "progress");
        for (const Bar bar : {Bar::TreeviewText, Bar::TreeviewValue}) progress.SetVisible(bar, false);
        host_.Status({});
    }
    void TakeSettings() {
        host_.OpenScreen(Screen::Settings, false);
        auto& settings = dynamic_cast<frmColors&>(*frame_.Find(Screen::Settings));
        Take(settings, "settings");
        TakeWaiting("picker", [&] { settings.changerptfile(); });
        TakeWaiting("folders", [&] { settings.changevisiolocation(); });
        settings.close();
    }
    /// Jobs as people book them; the first half of them has run.
    void Book(int jobs) const {
        Connection& store = *frame_.Context().app.gConnection;
        Transaction transaction(store);
        store.Execute("Delete * FROM schedules");
        const char* const names[] = {"Payroll", "Stock", "Customer orders", "Month end", "Archive"};
        for (int i = 0; i < jobs; ++i) {
            const std::string name =
                names[i % 5] + (jobs > 5 ? " " + std::to_string(i / 5 + 1) : std::string());
            store.Execute(
                "Insert into schedules (name, address, tel, email, nextschedule, idmsreport, processed, "
                "visiofile) values (?, 'Computer center', '4711', 'dba@example.org', ?, "
                "'/srv/reports/empschm.text', ?, '/srv/reports/empschm.vsd')",
                {name, std::to_string(46'380 + i) + ".25", i < jobs / 2 ? "1" : "0"});
        }
        transaction.Commit();
    }
    /// As a night leaves it.
    void FillLog() const {
        AppState& app = frame_.Context().app;
        ClearAuditLog(app);
        const std::pair<const char*, RunEnd> runs[] = {
            {"Payroll", {RunResult::Ok, 14, 13, 1, 0.4, ""}},
            {"Stock", {RunResult::Missing, 0, 0, 0, 0.0, "The report is missing."}},
            {"Customer orders", {RunResult::Ok, 204, 318, 2, 1.9, ""}}};
        Job job;
        job.nextschedule = app.clock.Now();
        job.idmsreport = "/srv/reports/empschm.text";
        for (const auto& [name, end] : runs) {
            ++job.scheduleid;
            job.name = name;
            WriteBegin(app, job);
            WriteEnd(app, job, end);
        }
    }
    /// The scheduler with a job on show, the log of the runs, and many jobs.
    void TakeScheduler() {
        Book(3);
        host_.OpenScreen(Screen::Scheduler, false);
        Form& screen = *frame_.Find(Screen::Scheduler);
        screen.findChild<QLineEdit*>("txtNumofDays")->setText("1");
        screen.findChild<QTimeEdit*>("dtpFreqTime")->setTime({6, 0});
        Press(screen, "cmdCalculate");
        auto& jobs = *screen.findChild<QTreeView*>("tvwKestrimoor");
        jobs.expand(jobs.model()->index(0, 0));
        emit jobs.clicked(jobs.model()->index(0, 0));
        Take(screen, "scheduler");
        auto& tabs = *screen.findChild<QTabWidget*>("SSTab1");
        FillLog();
        tabs.setCurrentIndex(1);
        Press(screen, "cmdViewLogs");
        Take(screen, "scheduler-log");
        tabs.setCurrentIndex(0);
        Book(2000);
        Press(screen, "cmdPopulate");
        Press(screen, "optOccurs2");
        Press(screen, "optFreq1");
        Take(screen, "scheduler-many");
        Book(0);
        screen.close();
    }
    /// The scheduler while a job runs.
    void TakeRun() {
        AppState& app = frame_.Context().app;
        Book(3);
        app.gConnection->Execute(
            "Update schedules set nextschedule = 46000, idmsreport = ? where name = 'Customer orders'",
            {getreportlocation(app)});
        host_.OpenScreen(Screen::Scheduler, false);
        Form& screen = *frame_.Find(Screen::Scheduler);
        screen.findChild<QAction*>("mnu_RunSchedules")->trigger();
        host_.eachTurn = [this, &screen] {
            if (!frame_.Context().commands.Busy()) return;
            Save(screen.grab(), "scheduler-run");
            host_.eachTurn = [] {};
        };
        constexpr int kTicksToFirstRun = 17;
        for (int tick = 0; tick < kTicksToFirstRun; ++tick)
            QMetaObject::invokeMethod(screen.findChild<QTimer*>("Timer3"), "timeout");
        screen.findChild<QAction*>("mnu_stopSchedules")->trigger();
        Book(0);
        screen.close();
    }
    void TakeAbout() {
        host_.OpenScreen(Screen::About, false);
        Take(*frame_.Area().Active(), "about");
        frame_.Area().Active()->close();
    }
    void TakeReport() {
        frame_.Context().request(ShowReport{"SUPPLIER"});
        Form& report = *frame_.Find(Screen::ReportViewer);
        report.findChild<QLineEdit*>("txtFind")->setText("supplier");
        Take(report, "report");
        report.close();
    }
    /// The drawing beside the tree on six sheets.
    void TakePrintPreview() {
        const QString drawing =
            frame_.Find(Screen::Treeview)->findChild<DrawingControl2*>("DrawingControl2")->Src();
        frame_.Context().request(PreviewPrint{drawing.toStdString()});
        Form& preview = *frame_.Find(Screen::PrintPreview);
        preview.findChild<QComboBox*>("cboFit")->setCurrentIndex(1);
        preview.findChild<QSpinBox*>("spnColumns")->setValue(3);
        preview.findChild<QSpinBox*>("spnRows")->setValue(2);
        Take(preview, "print");
        preview.close();
    }
    void TakeHelp() {
        frame_.Context().request(ShowHelp{Screen::Treeview});
        Take(*frame_.Find(Screen::Help), "help");
        frame_.Find(Screen::Help)->close();
    }
    /// Connected to the first data source of the machine, if it has one.
    void TakeConversion() {
        host_.OpenScreen(Screen::ConvertSql, false);
        Form& screen = *frame_.Find(Screen::ConvertSql);
        if (!screen.findChild<QAbstractButton*>("allSources")->isChecked()) Press(screen, "allSources");
        auto& sources = *screen.findChild<QComboBox*>("cboDSN");
        sources.setCurrentIndex(0);
        source_ = sources.currentText();
        screen.findChild<QLineEdit*>("txtDBNameIDMS")->setText("My-Db");
        Press(screen, "cmdConnectDBmysql");
        table_ = screen.findChild<QTableView*>("FlxGrid7")->currentIndex().data().toString();
        Take(screen, "convert");
        TakeWaiting("statements", [&] { Press(screen, "cmdStatements"); });
        Press(screen, "chkKeepTables");
        TakeWaiting("kept-tables", [&] { Press(screen, "cmdStatements"); });
        Press(screen, "chkKeepTables");
        Press(screen, "cmdDisconnect");
        screen.close();
    }
    /// The rows of the first table of that source.
    void TakeQuery() {
        host_.OpenScreen(Screen::TableProcedures, false);
        Form& screen = *frame_.Find(Screen::TableProcedures);
        screen.findChild<QLineEdit*>("txtdsnName")->setText(source_);
        screen.findChild<QLineEdit*>("txtProcName")->setText("ALL OF " + table_);
        screen.findChild<QPlainTextEdit*>("txtSqlStatement")->setPlainText("select * from " + table_);
        Press(screen, "Execute");
        Take(screen, "procedures");
        screen.close();
    }
    /// The dictionary's first schema and what a report makes of it that lost a few things.
    void TakeComparison() {
        const std::string sample = frame_.Context().app.AppPath(places::kSampleReport);
        const std::string later = frame_.Context().app.AppPath("\\reportfiles\\empschm-later.text");
        WriteFile(later, LaterEdition(ReadFile(sample)));
        setreportlocation(frame_.Context().app, later);
        host_.OpenScreen(Screen::Compare, false);
        Form& screen = *frame_.Find(Screen::Compare);
        Press(screen, "cmdCompare");
        Take(screen, "compare");
        screen.close();
        setreportlocation(frame_.Context().app, sample);
        DeleteFile(later);
    }
    void TakeBox(const QString& name, const Message& message) {
        host_.shows = true;
        TakeWaiting(name, [&] { host_.MessageBox(message); });
        host_.shows = false;
    }

    mdiMainMenu& frame_;
    QuietHost& host_;
    QString folder_, skin_;
    QString source_, table_;  ///< Of the SQL screens.
    std::size_t size_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: take_pictures APPLICATION-FOLDER OUT-FOLDER\n");
        return 2;
    }
    desktop::Application application(argc, argv);
    QFont font = QApplication::font();  // Whatever the machine's is.
    font.setPixelSize(13);
    QApplication::setFont(font);
    QuietHost host;
    SystemClock clock;
    AppState app(argv[1], host, clock, Random(1));
    desktop::DrawingTools drawingTools(app);
    const auto made = desktop::MakeMainFrame(app, drawingTools, [](const std::exception& failure) {
        std::fprintf(stderr, "take_pictures: %s\n", failure.what());
        std::exit(1);
    });
    mdiMainMenu& frame = *made;
    host.SetDisplay(&frame);
    const auto work = [&] {
        commands::SubMain(app, frame);
        frame.resize(1100, 720);
        if (app.gConnection->Count("Select count(*) FROM Parents") == 0)
            throw std::runtime_error("the dictionary is empty: extract a report first");
        frame.Find(Screen::Treeview)->findChild<QAbstractButton*>("ExpandAll")->click();
        Photographer(frame, host, argv[2]).TakeAll();
        QApplication::quit();
    };
    QTimer::singleShot(0, &frame, [&] { frame.Run(work); });
    return QApplication::exec();
}
