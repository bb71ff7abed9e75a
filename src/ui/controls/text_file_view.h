#pragma once

#include <QAbstractListModel>
#include <QTimer>
#include <memory>

#include "ui/controls/line_list_view.h"
#include "viewer/report_lines.h"

namespace norvelis::ui {

enum class TextBytes { Utf8, Windows1252 };

/// The lines of a text file of any size. The file is indexed between the turns of the event loop and never
/// read as a whole; what is on show is read from it when it is painted.
class TextFileModel : public QAbstractListModel {
    Q_OBJECT

  public:
    TextFileModel(TextBytes bytes, QObject* parent);

    /// RuntimeFailure 53 or 75 with the path; the file on show stays then.
    void SetFile(const std::string& path);
    void Clear();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& line, int role) const override;

  private:
    void Step();

    TextBytes bytes_;
    std::unique_ptr<viewer::ReportLines> lines_;
    int shown_ = 0;
    QTimer indexing_;
};

/// Shows a text file, which can not be changed. Ctrl+C copies the marked line.
class TextFileView : public LineListView {
    Q_OBJECT

  public:
    TextFileView(const QString& name, const QString& spoken, TextBytes bytes, QWidget* parent);

    void ShowFile(const std::string& path) { model_->SetFile(path); }  ///< Fails as SetFile.
    void Clear() { model_->Clear(); }

  protected:
    int WidestLine() const override;
    void paintEvent(QPaintEvent* event) override;

  private:
    TextFileModel* model_;
    int widest_ = 0;  ///< Of the lines that were on show.
};

}  // namespace norvelis::ui
