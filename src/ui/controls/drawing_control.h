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
class QTabBar;

namespace norvelis::ui {

class DrawingCard;
class DrawingFindBar;
class DrawingMap;

/// Shows a drawing file: fitted at first, zoomed by wheel and keys around the pointer, moved by dragging, by
/// the arrow keys and in a small map, with the shapes' screen tips and links. Of several pages one is on
/// show, with tabs below it. A click selects a shape, and on one that stands for a shape of another page it
/// goes there; one walks on from it along its lines. Texts are found, and what one rests on is lit up with
/// its neighbors.
class DrawingControl2 : public QWidget {
    Q_OBJECT

  public:
    DrawingControl2(const QString& name, OpenDrawing open, QWidget* parent);
    ~DrawingControl2() override;

    /// Empty shows nothing. A file that is on show already is read again when it has changed. Files are read
    /// in the background and appear when they are ready; one that can not be shown leaves the reason in its
    /// place. Without a page (counted from 0) another file begins with its first, and one that is read again
    /// stays where it is.
    void SetSrc(const QString& path, std::optional<int> page = std::nullopt);
    QString Src() const { return src_; }
    bool Loading() const { return loader_.Loading(); }
    /// What was seen last was not sharp yet: it is being painted in the background.
    bool Painting() const { return picture_ && !sharp_; }

    int PageCount() const { return pages_ ? pages_->Count() : 0; }
    int PageNumber() const { return page_; }  ///< Of the one on show, from 0.
    QString PageName() const { return pages_ ? pages_->Name(page_) : QString(); }
    /// The shapes of the page on show; none without a drawing.
    const drawing::walk::PageWalk& Page() const { return picture_ ? pages_->Walk(page_) : nothing_; }

    /// What is said in place of a drawing when there is none.
    void SetEmptyText(const QString& text) { emptyText_ = text; }

    /// Marks the shape of that name and brings it into view; no such shape: nothing is marked.
    void SelectShape(const QString& name);
    QString SelectedShape() const;

    /// Shows the box of that record, or a line of that set, in the middle, large enough to be read, and marks
    /// it, on whichever page it is; words when the drawing has neither. While a file is being read this waits
    /// until it is on show.
    void ShowShape(const QString& name);
    void ShowSet(const drawing::walk::SetLine& set);  ///< The line of it, likewise.

    /// Words about the selected shape, until another one is.
    void Tell(const QString& heading, const std::vector<std::array<std::string, 2>>& items);

    /// Pixels to the inch over those of the screen: 1 is life size.
    double Zoom() const;

    QSize sizeHint() const override { return {420, 360}; }

  public slots:
    void ShowPage(int page);
    void StepPage(bool forward);  ///< Around.
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

    using FindShape = std::function<int(const drawing::walk::PageWalk&)>;
    enum class Loads { Nothing, AnotherFile, SameFile, AnotherPage };

    void AddCommands();
    void AddTabs();
    void ShowTabs();
    int TabsHeight(int pages) const;
    QRect Room() const { return rect().adjusted(0, 0, 0, -TabsHeight(PageCount())); }  ///< Of the page.
    void Load(std::shared_ptr<const DrawingPages> pages, int page, const QString& pageName);
    bool CanTurn() const;  ///< No other file is being read.
    /// Shows that page, then calls `then`; at once when it is on show.
    void TurnTo(int page, const std::function<void()>& then);
    /// The same as a step that can be gone back.
    void GoToPage(int page, const std::function<void()>& then);
    /// The page with what `find` looks for, rather than one that only refers to it; the one on show when
    /// there is none.
    int PageWith(const FindShape& find) const;
    void FollowLink(const drawing::walk::LinkTarget& target);
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
    void ShowFound(const QString& name, const FindShape& find);
    void ShowMarked(int shape, const QString& name);  ///< Words when there is none.
    void Press(int shape);                            ///< As by a click.
    void Click(QPointF pixel, Qt::KeyboardModifiers keys);
    void Follow(int line, int end);
    void RestOn(int shape);
    void Search();
    void CountFound();
    void ShowHit(int hit);
    std::size_t HitsOn(int page) const;
    int NextPageWithHits(bool forward) const;  ///< kNone when no other one has.
    void EndSearch();
    bool CanEnd() const;
    void EndLast();  ///< Of light, words, search and selection.
    bool Handle(const QKeyEvent& key);
    void ShowTip(QPoint place, QPoint globalPlace);

    DrawingLoader loader_;
    QTimer slow_;   ///< Runs until a file that is being read takes the place of another one's picture.
    QTimer* rest_;  ///< Runs while the mouse rests on a shape that is not lit up yet.
    Loads loads_ = Loads::Nothing;
    QString src_, reason_;
    QString emptyText_ = "No drawing yet: DRAW DIAGRAM draws what the tree holds";
    std::function<void()> showLoaded_;  ///< What is to be shown of the page that is being made ready.
    QDateTime changed_;
    std::shared_ptr<const DrawingPages> pages_;
    int page_ = 0;
    std::unique_ptr<DrawingPicture> picture_;
    drawing::walk::PageWalk nothing_;
    drawing::walk::Walker walker_;
    PageView view_;
    ViewTrail trail_;
    bool sharp_ = true, mapWanted_ = true;
    DrawingFindBar* findBar_;
    DrawingMap* map_;
    DrawingCard* card_;
    QTabBar* tabs_;
    QAction *nextPage_, *previousPage_, *back_, *forward_, *toShape_, *follow_, *showMap_;

    int hovered_ = drawing::walk::kNone;
    std::optional<QPointF> pressed_;
    QPointF dragged_;  ///< Where the mouse was last while it moves the page.
    bool dragging_ = false;
    std::optional<QRectF> frame_;  ///< Drawn with Shift: the part of the page to be shown, in pixels.
};

}  // namespace norvelis::ui
