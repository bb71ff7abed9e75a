#pragma once

#include <QAbstractScrollArea>
#include <optional>
#include <vector>

#include "viewer/report_lines.h"
#include "viewer/report_search.h"

namespace norvelis::ui {

/// The lines of a report in a fixed pitch: numbers at their left, a column ruler above, a rule where a page
/// begins. Of the report only what is in sight is read, so its size does not matter. Keys and mouse move a
/// caret and mark text; Ctrl+wheel changes the size of the letters.
class ReportView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    ReportView(const QString& name, QWidget* parent);

    /// The report must outlive its use here; null shows nothing.
    void Show(const viewer::ReportLines* report);
    void LinesChanged();  ///< More lines are known, or others.

    /// Brings a place into sight and marks `length` columns behind it.
    void GoTo(viewer::Place place, std::uint64_t length = 0);
    void ShowFrom(std::uint64_t line);  ///< As the first in sight.
    std::uint64_t FirstLine() const;

    /// Marks all places of the text that are in sight, from now on; nothing marks none.
    void MarkAll(std::optional<viewer::TextSearch> text);

    /// What is marked: from, and up to. Equal places: nothing is.
    viewer::Place MarkedFrom() const { return std::min(anchor_, caret_); }
    viewer::Place MarkedTo() const { return std::max(anchor_, caret_); }
    bool HasMarked() const { return anchor_ != caret_; }
    void MarkEverything();

    int TextSize() const { return textSize_; }
    void SetTextSize(int pixels);

  signals:
    void Moved();  ///< Other lines are in sight.

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void scrollContentsBy(int, int) override;
    void wheelEvent(QWheelEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void focusInEvent(QFocusEvent*) override;
    void focusOutEvent(QFocusEvent*) override;

  private:
    /// The part of a line that was read to be shown.
    struct Shown {
        std::string bytes;
        std::uint64_t start = 0;  ///< Its first column.
        bool startsPage = false;
    };

    void Fetch();
    void SetRanges();
    int Rows() const;     ///< That are wholly in sight.
    int Columns() const;  ///< The same.
    int RulerHeight() const;
    int NumbersWidth() const;
    double XOf(std::uint64_t column) const;
    viewer::Place PlaceAt(QPointF pixel) const;
    void MoveCaret(viewer::Place to, bool marks);
    void MoveCaretBy(int lines, bool marks);
    void EnsureVisible(viewer::Place place);
    void PaintLine(QPainter& painter, int row) const;
    void PaintMarked(QPainter& painter, std::uint64_t line, int top) const;
    void PaintText(QPainter& painter, const Shown& shown, int baseline) const;
    void PaintRuler(QPainter& painter) const;
    void PaintNumbers(QPainter& painter) const;

    const viewer::ReportLines* report_ = nullptr;
    std::vector<Shown> shown_;  ///< From the first line in sight.
    std::uint64_t widest_ = 0;  ///< Columns of the longest line that has been in sight.
    std::optional<viewer::TextSearch> search_;
    viewer::Place anchor_, caret_;
    int textSize_, lineHeight_ = 1, ascent_ = 0;
    double columnWidth_ = 1;
};

}  // namespace norvelis::ui
