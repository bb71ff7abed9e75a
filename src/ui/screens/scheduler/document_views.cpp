#include "ui/screens/scheduler/document_views.h"

#include <QDesktopServices>
#include <QUrl>
#include <QVBoxLayout>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/log.h"
#include "core/places.h"
#include "scheduler/audit_log.h"
#include "ui/controls/button_row.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/text_file_view.h"
#include "ui/forms/drawing_tools.h"

namespace norvelis::ui {

namespace {

QVBoxLayout* Column(QWidget* frame, QLayout* row, QWidget* document) {
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(row);
    column->addWidget(document, 1);
    return column;
}

}  // namespace

DocumentViews::DocumentViews(const ScreenContext& context, QWidget* parent)
    : QWidget(parent), app_(context.app), frames_(new QStackedWidget(this)) {
    auto* row = new ButtonRow(this);
    row->Add("cmdViewLogs", "View Logs", "Show the audit log of the runs", [this] { ShowLogs(); });
    row->Add("cmdRefreshLogs", "Refresh Logs File", "Read the audit log again", [this] { ShowLogs(); });
    row->Add("ClearLogs", "Clear Logs", "Empty the audit log, and with it the history of the runs",
             [this] { ClearLogs(); });
    row->addStretch();
    reportFrame_ = ReportFrame();
    logFrame_ = LogFrame();
    drawingFrame_ = DrawingFrame(context);
    for (QWidget* frame : {logFrame_, reportFrame_, drawingFrame_}) frames_->addWidget(frame);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->addLayout(row);
    column->addWidget(frames_, 1);
}

QWidget* DocumentViews::ReportFrame() {
    auto* frame = new QWidget(frames_);
    frame->setObjectName("ReportFrame");
    lblReport_ = new ElidedLabel("lblReport", {}, frame);
    RichTextBox2_ = new TextFileView("RichTextBox2", "Schema report", TextBytes::Windows1252, frame);
    auto* row = new ButtonRow(frame);
    row->addWidget(lblReport_, 1);
    row->Add("ViewinNotePad", "View in Notepad", "Open the report in the system's editor",
             [this] { OpenInEditor(report_); });
    Column(frame, row, RichTextBox2_);
    return frame;
}

QWidget* DocumentViews::LogFrame() {
    auto* frame = new QWidget(frames_);
    frame->setObjectName("LogFrame");
    RichTextBox1_ = new TextFileView("RichTextBox1", "Audit log", TextBytes::Utf8, frame);
    RichTextBox1_->SetEmptyText("View Logs shows what the runs did");
    const std::string log = app_.AppPath(places::kAuditLog);
    auto* row = new ButtonRow(frame);
    row->addWidget(new ElidedLabel("lblLog", QString::fromStdString(log), frame), 1);
    row->Add("ViewLogInNP", "View in Notepad", "Open the audit log in the system's editor",
             [this, log] { OpenInEditor(log); });
    Column(frame, row, RichTextBox1_);
    return frame;
}

QWidget* DocumentViews::DrawingFrame(const ScreenContext& context) {
    auto* frame = new QWidget(frames_);
    frame->setObjectName("DrawingFrame");
    lblDrawing_ = new ElidedLabel("lblDrawing", {}, frame);
    Viewer1_ = new DrawingControl2("Viewer1", context.openDrawing, frame);
    Viewer1_->SetEmptyText("View Visio File shows the drawing of a schedule");
    AddDrawingTools(*Viewer1_, context);
    auto* row = new ButtonRow(frame);
    row->addWidget(lblDrawing_, 1);
    DrawingControl2* drawing = Viewer1_;
    row->Add("cmdZoomOut", "Zoom Out", "Smaller (-)", [drawing] { drawing->ZoomOut(); });
    row->Add("cmdZoomIn", "Zoom In", "Larger (+)", [drawing] { drawing->ZoomIn(); });
    row->Add("cmdFit", "Fit", "The whole page", [drawing] { drawing->Fit(); });
    Column(frame, row, Viewer1_);
    return frame;
}

bool DocumentViews::ShowReport(const std::string& path) {
    if (!FileExists(path)) {
        app_.host.MessageBox("IDMS Report File NOT Found:" + path);
        return false;
    }
    Guarded("ViewReport", [&] {
        RichTextBox2_->ShowFile(path);
        report_ = path;
        lblReport_->setText(QString::fromStdString(path));
    });
    frames_->setCurrentWidget(reportFrame_);
    return true;
}

void DocumentViews::ShowLogs() {
    const std::string log = app_.AppPath(places::kAuditLog);
    RichTextBox1_->SetEmptyText("The audit log is empty: nothing has run");
    Guarded("ViewLogs", [&] {
        if (FileExists(log)) {
            RichTextBox1_->ShowFile(log);
            RichTextBox1_->scrollToBottom();
        } else {
            RichTextBox1_->Clear();
        }
    });
    frames_->setCurrentWidget(logFrame_);
}

void DocumentViews::ShowDrawing(const std::string& file) {
    lblDrawing_->setText(QString::fromStdString(file));
    Viewer1_->SetSrc(QString::fromStdString(file));
    frames_->setCurrentWidget(drawingFrame_);
}

void DocumentViews::ClearLogs() {
    if (!ClearAuditLog(app_))
        app_.host.MessageBox("The audit log could not be emptied:" + std::string(kLineBreak) +
                             app_.AppPath(places::kAuditLog));
    ShowLogs();
}

void DocumentViews::OpenInEditor(const std::string& path) {
    if (!FileExists(path)) return app_.host.MessageBox("There is no file to view: " + path);
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(Resolve(path)))))
        app_.host.MessageBox("No editor could be started for:" + std::string(kLineBreak) + path);
}

void DocumentViews::Guarded(const char* procedure, const std::function<void()>& step) {
    try {
        step();
    } catch (const RuntimeFailure& failure) {
        WriteToErrorLog(app_, "frm_Scheduler", procedure, failure.what(), static_cast<int>(failure.Number()));
    }
}

}  // namespace norvelis::ui
