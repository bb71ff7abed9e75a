#pragma once

#include <QStackedWidget>
#include <QWidget>

#include "ui/forms/screen_context.h"

class QLabel;

namespace norvelis::ui {

class DrawingControl2;
class TextFileView;

/// The documents of jobs, one at a time: the schema report, the audit log of the runs, a drawing.
class DocumentViews : public QWidget {
    Q_OBJECT

  public:
    DocumentViews(const ScreenContext& context, QWidget* parent);

    /// False, after words, when there is no such file.
    bool ShowReport(const std::string& path);
    void ShowLogs();
    void ShowDrawing(const std::string& file);

  private:
    QWidget* ReportFrame();
    QWidget* LogFrame();
    QWidget* DrawingFrame(const ScreenContext& context);
    void ClearLogs();
    void OpenInEditor(const std::string& path);
    void Guarded(const char* procedure, const std::function<void()>& step);

    AppState& app_;
    std::string report_;
    QStackedWidget* frames_;
    QWidget *reportFrame_, *logFrame_, *drawingFrame_;
    QLabel *lblReport_, *lblDrawing_;
    TextFileView *RichTextBox1_, *RichTextBox2_;  ///< The log, the report.
    DrawingControl2* Viewer1_;
};

}  // namespace norvelis::ui
