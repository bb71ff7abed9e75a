#include "ui/screens/viewers/view_idms_report.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPrinter>
#include <QVBoxLayout>

#include "base/failure.h"
#include "base/text.h"
#include "commands/frame_commands.h"
#include "ui/controls/button_row.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/split.h"
#include "ui/screens/viewers/print_lines.h"
#include "ui/screens/viewers/report_view.h"
#include "viewer/reading_place.h"
#include "viewer/report_places.h"
#include "viewer/report_search.h"

namespace norvelis::ui {

namespace {

constexpr int kRecordsWidth = 170;
constexpr std::size_t kMostToCopy = 32 << 20;
constexpr int kPagesWithoutQuestion = 50;

QLineEdit* Box(const char* name, const char* hint, QWidget* form) {
    auto* box = new QLineEdit(form);
    box->setObjectName(name);
    box->setPlaceholderText(hint);
    box->setAccessibleName(hint);
    box->setTextMargins(5, 0, 5, 0);
    return box;
}

QString WordsOf(viewer::FileChange change) {
    const std::string_view words = viewer::WordsFor(change);
    return QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size()));
}

QString Quoted(const QString& text) {
    return '"' + text + '"';
}

}  // namespace

ViewIDMSReport::ViewIDMSReport(const ScreenContext& context)
    : Form(context, "ViewIDMSReport", "IDMS SCHEMA REPORT", QSize(850, 510)),
      lblLocation_(MakeLabel(this, "lblLocation", {})),
      lblStatus_(new ElidedLabel("lblStatus", {}, this)) {
    lblLocation_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 10, 16, 10);
    column->addWidget(lblLocation_);
    column->addLayout(SearchRow());
    column->addWidget(RecordsAndLines(), 1);
    column->addWidget(lblStatus_);
    MakeMenu();
    reading_.setInterval(0);
    connect(&reading_, &QTimer::timeout, this, &ViewIDMSReport::ReadOn);
    connect(RichTextBox1_, &ReportView::Moved, this, &ViewIDMSReport::Compare);
}

ViewIDMSReport::~ViewIDMSReport() {
    Close();
}

QBoxLayout* ViewIDMSReport::SearchRow() {
    txtFind_ = Box("txtFind", "Text to find", this);
    txtLine_ = Box("txtLine", "Line", this);
    txtLine_->setMaximumWidth(80);
    auto* row = new ButtonRow(this);
    row->addWidget(txtFind_, 1);
    row->Add("cmdNext", "NEXT", "The next place of the text (F3)", [this] { Find(true); });
    row->Add("cmdPrevious", "PREVIOUS", "The place before (Shift+F3)", [this] { Find(false); });
    row->addWidget(txtLine_);
    row->Add("cmdGoTo", "GO TO", "Go to the line of this number", [this] { GoToLine(); });
    row->Add("cmdPrintMarked", "PRINT MARKED", "Print the lines that are marked", [this] { PrintMarked(); });
    connect(txtFind_, &QLineEdit::returnPressed, this, [this] { Find(true); });
    connect(txtFind_, &QLineEdit::textChanged, this, &ViewIDMSReport::MarkFound);
    connect(txtLine_, &QLineEdit::returnPressed, this, &ViewIDMSReport::GoToLine);
    const auto focus = [](QLineEdit* box) {
        return [box] {
            box->setFocus(Qt::ShortcutFocusReason);
            box->selectAll();
        };
    };
    OnKeys(this, QKeySequence::Find, focus(txtFind_));
    OnKeys(this, Qt::CTRL | Qt::Key_G, focus(txtLine_));
    OnKeys(this, Qt::Key_F3, [this] { Find(true); });
    OnKeys(this, Qt::SHIFT | Qt::Key_F3, [this] { Find(false); });
    OnKeys(this, QKeySequence::Refresh, [this] { Context().request(ShowReport{}); });
    return row;
}

QWidget* ViewIDMSReport::RecordsAndLines() {
    lstRecords_ = new QListWidget(this);
    lstRecords_->setObjectName("lstRecords");
    lstRecords_->setAccessibleName("Records of the report");
    lstRecords_->setToolTip("The records of the report: a click goes to the section of one");
    lstRecords_->setUniformItemSizes(true);
    connect(lstRecords_, &QListWidget::currentRowChanged, this, &ViewIDMSReport::ShowSection);
    connect(lstRecords_, &QListWidget::itemClicked, this, [this] { ShowSection(lstRecords_->currentRow()); });
    RichTextBox1_ = new ReportView("RichTextBox1", this);
    QSplitter* sides =
        Split(Qt::Horizontal, lstRecords_, RichTextBox1_, kRecordsWidth, Body().width() - kRecordsWidth);
    sides->setStretchFactor(1, 1);
    return sides;
}

void ViewIDMSReport::MakeMenu() {
    ContextMenu menu(RichTextBox1_);
    menu.Add("&Copy", QKeySequence::Copy, [this] { Copy(); });
    menu.Add("Mark &all", QKeySequence::SelectAll, [this] { RichTextBox1_->MarkEverything(); });
    menu.Add("&Print marked lines", QKeySequence::Print, [this] { PrintMarked(); });
    menu.AddLine();
    menu.Add("&Find\tCtrl+F", [this] { txtFind_->setFocus(); });
    menu.Add("&Go to line\tCtrl+G", [this] { txtLine_->setFocus(); });
    menu.Add("&Open again\tF5", [this] { Context().request(ShowReport{}); });
}

void ViewIDMSReport::Take(const ScreenRequest& request) {
    const auto* show = std::get_if<ShowReport>(&request);
    if (!show) return;
    try {
        const clsHourglass hourglass(App().host);
        if (!commands::mnu_View_IDMS_Report_File(App())) return;
        const bool anywhere = show->record.empty() && show->set.empty() && show->line == 0;
        if (!report_ || path_ != App().gReportFile || report_->Compare() != viewer::FileChange::None ||
            anywhere)
            Open(App().gReportFile);
    } catch (const RuntimeFailure& failure) {
        return App().host.MessageBox(failure.what());
    }
    RichTextBox1_->setFocus();
    const std::string ofReport = viewer::SchemaOf(*report_);
    if (!show->schema.empty() && !ofReport.empty() && !SameName(ofReport, show->schema))
        return App().host.MessageBox("The report of the settings is of schema " + ofReport +
                                     ". Set the report of schema " + show->schema + " to see its lines.");
    wantedRecord_ = show->record;
    wantedField_ = show->field;
    wantedSet_ = show->set;
    if (!wantedRecord_.empty()) wantedLine_.reset();
    if (show->line != 0 && !ShowLine(show->line - 1, true))
        return App().host.MessageBox("The report has no line " + std::to_string(show->line) +
                                     ": it is another one than was extracted.");
    ShowWanted();
}

void ViewIDMSReport::Open(const std::string& path) {
    auto report = std::make_shared<viewer::ReportLines>(path);
    SaveINISettings();  // Of the one before, or of the same one that is opened again.
    Close();
    report_ = std::move(report);
    hasGrown_ = false;
    path_ = path;
    const QString shown = QString::fromStdString(path);
    lblLocation_->setText("IDMS Schema Report File location is:\n" + shown);
    lblLocation_->setToolTip(shown);
    const viewer::ReadingPlace place = viewer::ReadReadingPlace(App().gLocalIni, path);
    RichTextBox1_->SetTextSize(place.textSize);
    RichTextBox1_->Show(report_.get());
    wantedLine_ = place.line;
    reading_.start();
    ReadOn();
}

void ViewIDMSReport::Close() {
    search_.request_stop();
    reading_.stop();
    RichTextBox1_->Show(nullptr);
    lstRecords_->clear();
    report_.reset();
}

void ViewIDMSReport::SaveINISettings() {
    if (!report_) return;
    viewer::WriteReadingPlace(App().gLocalIni, path_,
                              {wantedLine_.value_or(RichTextBox1_->FirstLine()), RichTextBox1_->TextSize()});
}

/// A piece of the report, and what it has of the records.
void ViewIDMSReport::ReadOn() {
    report_->Step();
    const auto& sections = report_->Sections();
    QStringList names;
    for (auto i = static_cast<std::size_t>(lstRecords_->count()); i < sections.size(); ++i)
        names << QString::fromStdString(ToUtf8(sections[i].record));
    const QSignalBlocker nothingChosen(lstRecords_);
    lstRecords_->addItems(names);
    RichTextBox1_->LinesChanged();
    if (wantedLine_ && (*wantedLine_ < report_->Count() || report_->IsComplete()))
        RichTextBox1_->ShowFrom(*std::exchange(wantedLine_, std::nullopt));
    if (report_->IsComplete()) {
        reading_.stop();
        Compare();
    }
    ShowCount();
    ShowWanted();
}

void ViewIDMSReport::ShowSection(int row) {
    if (row < 0 || !report_) return;
    wantedLine_.reset();
    const std::uint64_t line = report_->Sections()[static_cast<std::size_t>(row)].line;
    RichTextBox1_->GoTo({line, 0});
    RichTextBox1_->ShowFrom(line);
}

void ViewIDMSReport::ShowWanted() {
    if (!report_) return;
    if (!wantedSet_.empty()) ShowSet();
    if (!wantedRecord_.empty()) ShowRecord();
}

void ViewIDMSReport::ShowSet() {
    const std::string set = std::exchange(wantedSet_, {});
    const auto line = viewer::LineOfSet(*report_, Trim(set));
    if (!line) return App().host.MessageBox("The report has no set " + set + ".");
    ShowLine(*line, true);
}

void ViewIDMSReport::ShowField(std::uint64_t section) {
    const std::string field = std::exchange(wantedField_, {});
    const auto line = viewer::LineOfField(*report_, section, field);
    if (!line) return App().host.MessageBox("The section of the record has no field " + field + ".");
    ShowLine(*line, true);
}

void ViewIDMSReport::ShowRecord() {
    const auto& sections = report_->Sections();
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (!SameName(ToUtf8(sections[i].record), Trim(wantedRecord_))) continue;
        // A section is there as a whole when the next one is.
        if (!wantedField_.empty() && i + 1 == sections.size() && !report_->IsComplete()) return;
        wantedRecord_.clear();
        lstRecords_->setCurrentRow(static_cast<int>(i));
        ShowSection(static_cast<int>(i));
        if (!wantedField_.empty()) ShowField(sections[i].line);
        return;
    }
    if (!report_->IsComplete()) return;
    const std::string record = std::exchange(wantedRecord_, {});
    App().host.MessageBox("The report has no record " + record + ".");
}

void ViewIDMSReport::ShowCount() {
    if (report_->Compare() != viewer::FileChange::None) return;
    if (!report_->IsComplete())
        return Say(QString("%1 per cent read").arg(qRound(100 * report_->Progress())));
    const QString grown = hasGrown_ ? ". " + WordsOf(viewer::FileChange::Grown) : QString();
    Say(QString("%1 lines, %2 records").arg(report_->Count()).arg(lstRecords_->count()) + grown);
}

void ViewIDMSReport::Say(const QString& words) {
    lblStatus_->setText(words);
}

// What is appended is read on; what is gone can not be shown.
void ViewIDMSReport::Compare() {
    if (!report_ || searching_) return;
    const viewer::FileChange change = report_->Compare();
    if (change == viewer::FileChange::None) return;
    Say(WordsOf(change));
    if (change != viewer::FileChange::Grown) return;
    hasGrown_ = true;
    report_->GoOn();
    reading_.start();
}

void ViewIDMSReport::MarkFound() {
    const auto bytes = viewer::ReportBytes(txtFind_->text().toStdString());
    RichTextBox1_->MarkAll(bytes && !bytes->empty() ? std::optional(viewer::TextSearch(*bytes))
                                                    : std::nullopt);
}

void ViewIDMSReport::Find(bool forward) {
    const QString text = txtFind_->text();
    if (text.isEmpty()) return txtFind_->setFocus();
    if (!report_ || searching_) return;
    Compare();
    const auto bytes = viewer::ReportBytes(text.toStdString());
    if (!bytes) return Say(Quoted(text) + " is not in the report");
    const viewer::TextSearch search(*bytes);
    const viewer::Place place = RichTextBox1_->MarkedFrom();
    const std::uint64_t here = report_->OffsetOf(place.line) + place.column;
    const std::uint64_t from = here + (RichTextBox1_->HasMarked() ? 1 : 0);

    std::optional<std::uint64_t> found;
    bool again = false;
    const QPointer<ViewIDMSReport> open(this);
    searching_ = true;
    search_ = {};
    App().host.RunInBackground([&, report = report_, stop = search_.get_token()](const std::stop_token&) {
        const viewer::FileReader& file = report->File();
        found = forward ? search.FindNext(file, from, stop) : search.FindPrevious(file, here, stop);
        again = !found;
        if (again)
            found = forward ? search.FindNext(file, 0, stop) : search.FindPrevious(file, file.Size(), stop);
    });
    if (!open) return;
    searching_ = false;
    if (!report_ || search_.stop_requested()) return;
    if (!found) return Say(Quoted(text) + " is not in the report");
    report_->IndexTo(*found);
    RichTextBox1_->LinesChanged();
    const viewer::Place at = report_->PlaceAt(*found);
    RichTextBox1_->GoTo(at, search.Length());
    Say(QString("Line %1, column %2%3")
            .arg(at.line + 1)
            .arg(at.column + 1)
            .arg(!again    ? ""
                 : forward ? ", found again from the top"
                           : ", found again from the end"));
}

void ViewIDMSReport::GoToLine() {
    bool isNumber = false;
    const qulonglong line = txtLine_->text().trimmed().toULongLong(&isNumber);
    if (!isNumber || line == 0) {
        txtLine_->setFocus();
        return Say("A line is a number from 1 on");
    }
    if (!report_) return;
    if (!ShowLine(line - 1, false)) return Say(QString("The report has %1 lines").arg(report_->Count()));
    RichTextBox1_->setFocus();
}

bool ViewIDMSReport::ShowLine(std::uint64_t line, bool marked) {
    const bool there = report_->IndexToLine(line);
    RichTextBox1_->LinesChanged();
    if (!there) return false;
    wantedLine_.reset();
    RichTextBox1_->GoTo({line, 0}, marked ? report_->LengthOf(line) : 0);
    return true;
}

void ViewIDMSReport::Copy() {
    if (!report_ || !RichTextBox1_->HasMarked()) return;
    const std::string bytes =
        report_->ReadBetween(RichTextBox1_->MarkedFrom(), RichTextBox1_->MarkedTo(), kMostToCopy + 1);
    if (bytes.size() > kMostToCopy)
        return App().host.MessageBox("That is more than can be copied at once: mark fewer lines.");
    QGuiApplication::clipboard()->setText(QString::fromStdString(ToUtf8(bytes)).remove('\r'));
}

void ViewIDMSReport::PrintMarked() {
    Host& host = App().host;
    if (!report_ || !RichTextBox1_->HasMarked())
        return host.MessageBox("Mark the lines to print: drag over them, or over their numbers.");
    const viewer::Place from = RichTextBox1_->MarkedFrom(), to = RichTextBox1_->MarkedTo();
    const std::uint64_t last = to.column == 0 ? to.line - 1 : to.line;
    Context().commands.Run({"Print", Screen::Treeview}, [&] {
        const clsHourglass hourglass(host);
        QPrinter* printer = Context().printer.Choose();
        if (!printer) return;
        const auto report = report_;  // Another one may be opened meanwhile.
        const PrintedLines lines(*report, from.line, last,
                                 QFileInfo(QString::fromStdString(path_)).fileName());
        const int pages = lines.PageCount(host, *printer);
        const std::string question = "Are you sure you want to print " + std::to_string(pages) + " pages?";
        if (pages > kPagesWithoutQuestion &&
            host.MessageBox({question, {}, Buttons::YesNo, Icon::Question, Answer::No}) != Answer::Yes)
            return;
        if (!lines.Print(host, *printer))
            host.MessageBox("The printer does not take these lines: " + printer->printerName().toStdString());
    });
}

}  // namespace norvelis::ui
