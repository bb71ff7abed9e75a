#pragma once

#include <QDateTime>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "drawing/walk/walker.h"
#include "ui/controls/drawing_loader.h"
#include "ui/controls/page_view.h"

class QAction;

namespace norvelis::ui {

class DrawingCard;
class DrawingFindBar;
class DrawingMap;

/// Shows a drawing file: fitted at first, zoomed by wheel and keys around the pointer, moved by dragging, by
/// the arrow keys and in a small map, with the shapes' screen tips and links. A click selects a shape; one
/// walks on from it along its lines. Texts are found, and what one rests on is lit up with its neighbors.
class DrawingControl2 : public QWidget {
    Q_OBJECT

  public:
    DrawingControl2(const QString& name, OpenDrawing open, QWidget* parent);
    ~DrawingControl2() override;

    /// Empty shows nothing. A file that is on show already is read again when it has changed. Files are read
    /// in the background and appear when they are ready; one that can not be shown leaves the reason in its
    /// place.
    void SetSrc(const QString& path);
    QString Src() const { return src_; }
    bool Loading() const { return loader_.Loading(); }
    /// What was seen last was not sharp yet: it is being painted in the background.
    bool Painting() const { return picture_ && !sharp_; }

    /// The shapes of the page on show; none without a drawing.
    const drawing::walk::PageWalk& Page() const { return picture_ ? picture_->Walk() : nothing_; }

    /// What is said in place of a drawing when there is none.
    void SetEmptyText(const QString& text) { emptyText_ = text; }

    /// Marks the shape of that name and brings it into view; no such shape: nothing is marked.
    void SelectShape(const QString& name);
    QString SelectedShape() const;

    /// Shows the box of that record, or a line of that set, in the middle, large enough to be read, and marks
    /// it; words when the drawing has neither. While a file is being read this waits until it is on show.
    void ShowShape(const QString& name);
    void ShowSet(const drawing::walk::SetLine& set);  ///< The line of it, likewise.

    /// Words about the selected shape, until another one is.
    void ShowMarked(int shape, const QString& name);  ///< Words when there is none.
    void Tell(const QString& heading, const std::vector<std::array<std::string, 2>>& items);

    /// Pixels to the inch over those of the screen: 1 is life size.
    double Zoom() const;

    QSize sizeHint() const override { return {420, 360}; }

  public slots:
    void Fit();
    void FitWidth();
    void ShowLifeSize();
    void ZoomIn();
    void ZoomOut();
    void ZoomToShape();  ///< The selected one; without it the whole page.
    void GoBack();
    void GoForward();
    void OpenFind();
    void FindNext(bool forward);
    void StepLine(bool forward);  ///< Selects the next line of the selected box.
    void FollowSet();             ///< From the selected line to its other end.
    void LightSelected();
    void ShowMap(bool wanted);

  signals:
    void ShapeClicked(const QString& name);
    void LineClicked(const drawing::walk::SetLine& line);  ///< One between two boxes.
    void FileDropped(const QString& path);                 ///< A drawing of any kind that can be shown.
    void SrcChanged(const QString& path);  ///< Another file, or none; not when it is read again.

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void leaveEvent(QEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void dragEnterEvent(QDragEnterEvent*) override;
    void dropEvent(QDropEvent*) override;

  private:
    using Step = ViewTrail::Step;

    void AddCommands();
    void Show(DrawingLoader::Result result);
    void SayOpening();

    /// Changes the view; the one before can be gone back to.
    void Go(Step step, const std::function<void()>& change);
    void ZoomBy(double steps, QPointF anchor);
    void Return(const std::optional<PageView::Place>& place);
    void ViewChanged();
    void SelectionChanged();
    void PlaceOverlays();
    QPointF Anchor() const;  ///< The pointer when it is over the control, else the middle.

    int ShapeUnder(QPointF pixel) const;
    void Select(int shape);
    void ShowReadable(int shape);
    void Press(int shape);  ///< As by a click.
    void Click(QPointF pixel, Qt::KeyboardModifiers keys);
    void Follow(int line, int end);
    void RestOn(int shape);
    void Search();
    void EndSearch();
    bool CanEnd() const;
    void EndLast();  ///< Of light, words, search and selection.
    bool Handle(const QKeyEvent& key);
    void ShowTip(QPoint place, QPoint globalPlace);

    DrawingLoader loader_;
    QTimer slow_;   ///< Runs until a file that is being read takes the place of another one's picture.
    QTimer* rest_;  ///< Runs while the mouse rests on a shape that is not lit up yet.
    bool rereads_ = false;  ///< The file that is being read is the one on show.
    QString src_, reason_;
    QString emptyText_ = "No drawing yet: DRAW DIAGRAM draws what the tree holds";
    std::function<void()> showLoaded_;  ///< What is to be shown of the file that is being read.
    QDateTime changed_;
    std::unique_ptr<DrawingPicture> picture_;
    drawing::walk::PageWalk nothing_;
    drawing::walk::Walker walker_;
    PageView view_;
    ViewTrail trail_;
    bool sharp_ = true, mapWanted_ = true;
    DrawingFindBar* findBar_;
    DrawingMap* map_;
    DrawingCard* card_;
    QAction *back_, *forward_, *toShape_, *follow_, *showMap_;

    int hovered_ = drawing::walk::kNone;
    std::optional<QPointF> pressed_;
    QPointF dragged_;  ///< Where the mouse was last while it moves the page.
    bool dragging_ = false;
    std::optional<QRectF> frame_;  ///< Drawn with Shift: the part of the page to be shown, in pixels.
};

}  // namespace norvelis::ui
