#pragma once

#include <QDateTime>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "ui/controls/drawing_loader.h"

namespace norvelis::ui {

/// Shows a drawing file: fitted at first, zoomed by wheel and keys around the pointer, moved by dragging and
/// by the arrow keys, with the shapes' screen tips and links. A click selects a shape.
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

    /// What is said in place of a drawing when there is none.
    void SetEmptyText(const QString& text) { emptyText_ = text; }

    /// Marks the shape of that name and brings it into view; no such shape: nothing is marked.
    void SelectShape(const QString& name);
    QString SelectedShape() const { return selected_ ? selected_->name : QString(); }

    /// Shows the shape of that name in the middle, large enough to be read, and marks it. While a file is
    /// being read this waits until it is on show.
    void ShowShape(const QString& name);

    /// Pixels to the inch over those of the screen: 1 is life size.
    double Zoom() const;

    QSize sizeHint() const override { return {420, 360}; }

  public slots:
    void Fit();
    void ZoomIn();
    void ZoomOut();

  signals:
    void ShapeClicked(const QString& name);
    void FileDropped(const QString& path);  ///< A drawing of any kind that can be shown.
    void SrcChanged(const QString& path);   ///< Another file, or none; not when it is read again.

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void dragEnterEvent(QDragEnterEvent*) override;
    void dropEvent(QDropEvent*) override;

  private:
    void Show(DrawingLoader::Result result);
    void SayOpening();
    double FitScale() const;
    /// The same place of the page stays under `anchor`.
    void SetScale(double scale, QPointF anchor);
    void ShowLifeSize(QPointF anchor);
    void MoveBy(QPointF pixels);
    void KeepInReach();
    QPointF PageAt(QPointF pixel) const { return (pixel - origin_) / scale_; }
    std::optional<DrawingPicture::Shape> ShapeUnder(QPointF pixel) const;
    void Click(QPointF pixel, Qt::KeyboardModifiers keys);
    void ShowTip(QPoint place, QPoint globalPlace);

    DrawingLoader loader_;
    QTimer slow_;  ///< Runs until a file that is being read takes the place of another one's picture.
    bool rereads_ = false;  ///< The file that is being read is the one on show.
    QString src_, reason_;
    QString emptyText_ = "No drawing yet: DRAW DIAGRAM draws what the tree holds";
    QString toShow_;  ///< A shape of the file that is being read.
    QDateTime changed_;
    std::unique_ptr<DrawingPicture> picture_;
    std::optional<DrawingPicture::Shape> selected_;
    bool fitted_ = true;
    double scale_ = 1;  ///< Pixels to the page unit.
    QPointF origin_;    ///< Of the page's upper left corner in the control.
    std::optional<QPointF> pressed_;
    QPointF dragged_;  ///< Where the mouse was last while it moves the page.
    bool dragging_ = false;
};

}  // namespace norvelis::ui
