#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QToolTip>
#include <QUrl>
#include <QWheelEvent>
#include <utility>

#include "ui/controls/drawing_control.h"

// What mouse and keys do in a drawing.
namespace norvelis::ui {

using drawing::walk::kNone;
using drawing::walk::PageShape;

namespace {

constexpr int kArrowStep = 48;  // Pixels.

bool LeadsOut(const PageShape& shape) {
    return !shape.address.empty() && !shape.LinkWithin();
}

/// A link may lead to the web, to a person or to a file, and to nothing that would be run.
bool MayFollow(const QUrl& url) {
    const QString scheme = url.scheme().toLower();
    return scheme == "http" || scheme == "https" || scheme == "mailto" || scheme == "file";
}

/// The one drawing file that is dragged; empty when it is something else.
QString DrawingIn(const QMimeData& dragged) {
    const QList<QUrl> urls = dragged.urls();
    const QString file = urls.size() == 1 ? urls.front().toLocalFile() : QString();
    const QStringList kinds = {"vsd", "vsdx", "vdx"};
    return kinds.contains(QFileInfo(file).suffix(), Qt::CaseInsensitive) ? file : QString();
}

/// Keys that forms and menus have another use for, which is theirs while no drawing has the keyboard.
bool IsAlsoShortcut(const QKeyEvent& key) {
    const auto modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (key.matches(QKeySequence::Find)) return true;
    if (modifiers == Qt::AltModifier) return key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    return false;
}

}  // namespace

QPointF DrawingControl2::Anchor() const {
    const QPoint pointer = mapFromGlobal(QCursor::pos());
    return Room().contains(pointer) && underMouse() ? pointer : Room().center();
}

void DrawingControl2::wheelEvent(QWheelEvent* event) {
    constexpr double kNotch = 120;
    ZoomBy(event->angleDelta().y() / kNotch, event->position());
    event->accept();
}

void DrawingControl2::mousePressEvent(QMouseEvent* event) {
    switch (event->button()) {
        case Qt::LeftButton:
            pressed_ = dragged_ = event->position();
            rest_->stop();
            break;
        case Qt::RightButton:  // The commands of the menu are for what is under the mouse.
            if (const int shape = ShapeUnder(event->position()); shape != kNone) Select(shape);
            break;
        case Qt::BackButton:
            return GoBack();
        case Qt::ForwardButton:
            return GoForward();
        default:
            break;
    }
}

void DrawingControl2::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    if (!pressed_) return RestOn(ShapeUnder(at));
    if (!dragging_ && (at - *pressed_).manhattanLength() < QApplication::startDragDistance()) return;
    if (!dragging_ && event->modifiers().testFlag(Qt::ShiftModifier) && picture_)
        frame_ = QRectF(*pressed_, QSizeF());
    dragging_ = true;
    if (frame_) {
        frame_ = QRectF(*pressed_, at).normalized();
        setCursor(Qt::CrossCursor);
        update();
    } else {
        setCursor(Qt::ClosedHandCursor);
        Go(Step::Glide, [&] { view_.MoveBy(at - dragged_); });
    }
    dragged_ = at;
}

void DrawingControl2::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !pressed_) return;
    const std::optional<QRectF> frame = std::exchange(frame_, std::nullopt);
    if (frame) {
        const QRectF onPage(view_.PageAt(frame->topLeft()), view_.PageAt(frame->bottomRight()));
        Go(Step::Jump, [&] { view_.ShowWhole(onPage); });
        update();
    } else if (!dragging_) {
        Click(*pressed_, event->modifiers());
    }
    pressed_.reset();
    dragging_ = false;
    unsetCursor();
}

void DrawingControl2::Click(QPointF pixel, Qt::KeyboardModifiers keys) {
    const int shape = ShapeUnder(pixel);
    if (shape == kNone || !keys.testFlag(Qt::ControlModifier)) return Press(shape);
    const QUrl link(QString::fromStdString(Page()[shape].address));
    const QPointF place = view_.PageAt(pixel);
    if (MayFollow(link)) {
        Select(shape);
        QDesktopServices::openUrl(link);
    } else if (const int end = Page().FarEnd(shape, {place.x(), place.y()}); end != kNone) {
        Follow(shape, end);
    } else {
        Press(shape);
    }
}

/// Between the whole page and a size that can be read.
void DrawingControl2::mouseDoubleClickEvent(QMouseEvent* event) {
    if (view_.Fitted() == PageView::Fit::Page) {
        Go(Step::Jump, [&] { view_.SetScale(view_.LifeSize(), event->position()); });
    } else {
        Fit();
    }
}

void DrawingControl2::RestOn(int shape) {
    if (shape == hovered_) return;
    hovered_ = shape;
    if (walker_.Lit()) {
        walker_.Dim();
        update();
    }
    if (shape == kNone) {
        rest_->stop();
        setCursor(Qt::ArrowCursor);
    } else {
        rest_->start();
        const PageShape& own = Page()[shape];
        setCursor(own.address.empty() && !own.IsLine() ? Qt::ArrowCursor : Qt::PointingHandCursor);
    }
}

void DrawingControl2::leaveEvent(QEvent*) {
    RestOn(kNone);
}

void DrawingControl2::keyPressEvent(QKeyEvent* event) {
    if (!picture_ || !Handle(*event)) QWidget::keyPressEvent(event);
}

bool DrawingControl2::Handle(const QKeyEvent& key) {
    const bool control = key.modifiers().testFlag(Qt::ControlModifier),
               alt = key.modifiers().testFlag(Qt::AltModifier),
               shift = key.modifiers().testFlag(Qt::ShiftModifier);
    const auto move = [this](double x, double y) { Go(Step::Glide, [&] { view_.MoveBy({x, y}); }); };
    switch (key.key()) {
        case Qt::Key_F:
            if (!key.matches(QKeySequence::Find)) return false;
            OpenFind();
            break;
        case Qt::Key_F3:
            FindNext(!shift);
            break;
        case Qt::Key_Escape:
            if (!CanEnd()) return false;
            EndLast();
            break;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            ZoomBy(1, Anchor());
            break;
        case Qt::Key_Minus:
            ZoomBy(-1, Anchor());
            break;
        case Qt::Key_0:
        case Qt::Key_Home:
            Fit();
            break;
        case Qt::Key_1:
            ShowLifeSize();
            break;
        case Qt::Key_2:
            FitWidth();
            break;
        case Qt::Key_3:
            ZoomToShape();
            break;
        case Qt::Key_M:
            if (control || alt) return false;
            ShowMap(!mapWanted_);
            break;
        case Qt::Key_Space:
            LightSelected();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            control ? FollowSet() : Press(walker_.Selected());
            break;
        case Qt::Key_Left:
            alt ? GoBack() : control ? StepLine(false) : move(kArrowStep, 0);
            break;
        case Qt::Key_Right:
            alt ? GoForward() : control ? StepLine(true) : move(-kArrowStep, 0);
            break;
        case Qt::Key_Up:
            move(0, kArrowStep);
            break;
        case Qt::Key_Down:
            move(0, -kArrowStep);
            break;
        case Qt::Key_PageUp:
            control ? StepPage(false) : move(0, Room().height() * 0.9);
            break;
        case Qt::Key_PageDown:
            control ? StepPage(true) : move(0, -Room().height() * 0.9);
            break;
        default:
            return false;
    }
    return true;
}

void DrawingControl2::dragEnterEvent(QDragEnterEvent* event) {
    if (!DrawingIn(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void DrawingControl2::dropEvent(QDropEvent* event) {
    const QString file = DrawingIn(*event->mimeData());
    if (file.isEmpty()) return;
    event->acceptProposedAction();
    emit FileDropped(file);
}

bool DrawingControl2::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        ShowTip(help->pos(), help->globalPos());
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride && picture_) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool ends = key.key() == Qt::Key_Escape && CanEnd();
        if (ends || IsAlsoShortcut(key)) event->accept();
    }
    return QWidget::event(event);
}

void DrawingControl2::ShowTip(QPoint place, QPoint globalPlace) {
    const int shape = ShapeUnder(place);
    QStringList lines;
    if (shape != kNone) {
        const PageShape& own = Page()[shape];
        if (!own.tip.empty()) lines << QString::fromStdString(own.tip);
        if (LeadsOut(own))
            lines << QString::fromStdString(own.address) << "Ctrl+click opens it";
        else if (const auto target = own.LinkWithin())
            lines << QString::fromStdString("A click goes to " + target->shape + " on page " + target->page);
        else if (own.IsLine())
            lines << "Ctrl+click goes to the other end";
    }
    if (lines.isEmpty()) return QToolTip::hideText();
    QToolTip::showText(globalPlace,
                       "<span style='white-space: pre-wrap'>" + lines.join('\n').toHtmlEscaped() + "</span>",
                       this);
}

}  // namespace norvelis::ui
