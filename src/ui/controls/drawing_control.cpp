#include "ui/controls/drawing_control.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QUrl>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/controls/context_menu.h"
#include "ui/controls/empty_text.h"

namespace norvelis::ui {

namespace {

constexpr int kMargin = 12;         // Pixels around a fitted page.
constexpr int kWithinReach = 40;    // Pixels of the page that stay in sight.
constexpr double kZoomStep = 1.25;  // Of a key or a notch of the wheel.
constexpr double kLargest = 8;      // Times life size.
constexpr int kArrowStep = 48;      // Pixels.
constexpr double kSlack = 3;        // Pixels beside a shape that still hit it.
constexpr int kSlow = 250;          // Milliseconds for which another file's picture may stay.
constexpr double kReadable = 0.8;   // Of life size: six points can be read.

/// A link may lead to the web, to a person or to a file, and to nothing that would be run.
bool MayFollow(const QUrl& url) {
    const QString scheme = url.scheme().toLower();
    return scheme == "http" || scheme == "https" || scheme == "mailto" || scheme == "file";
}

double ScaleToFit(QSizeF page, QSize control) {
    const double across = (control.width() - 2 * kMargin) / page.width(),
                 down = (control.height() - 2 * kMargin) / page.height();
    return std::max(std::min(across, down), 1e-6);
}

/// The one drawing file that is dragged; empty when it is something else.
QString DrawingIn(const QMimeData& dragged) {
    const QList<QUrl> urls = dragged.urls();
    const QString file = urls.size() == 1 ? urls.front().toLocalFile() : QString();
    const QStringList kinds = {"vsd", "vsdx", "vdx"};
    return kinds.contains(QFileInfo(file).suffix(), Qt::CaseInsensitive) ? file : QString();
}

/// Has the picture paint its whole page as it will be seen first, so that it is ready to be shown.
void PaintAhead(DrawingPicture& picture, QSize control, double pixelRatio) {
    const double scale = ScaleToFit(picture.PageSize(), control);
    const QRect page = QRectF(QPointF(), picture.PageSize() * scale).toAlignedRect();
    QImage image(page.size() * pixelRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelRatio);
    QPainter painter(&image);
    picture.Paint(painter, page, scale, pixelRatio);
}

}  // namespace

DrawingControl2::DrawingControl2(const QString& name, OpenDrawing open, QWidget* parent)
    : QWidget(parent), loader_(std::move(open)) {
    setObjectName(name);
    setAccessibleName("Drawing");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setMinimumSize(80, 60);
    setAttribute(Qt::WA_OpaquePaintEvent);  // Nothing behind it is painted while the page is dragged.
    ContextMenu menu(this);
    menu.Add("&Whole page\t0", [this] { Fit(); });
    menu.Add("&Life size\t1", [this] { ShowLifeSize(rect().center()); });
    menu.Add("Zoom &in\t+", [this] { ZoomIn(); });
    menu.Add("Zoom &out\t-", [this] { ZoomOut(); });
    slow_.setSingleShot(true);
    slow_.setInterval(kSlow);
    connect(&slow_, &QTimer::timeout, this, &DrawingControl2::SayOpening);
    connect(&loader_, &DrawingLoader::Loaded, this, [this] { Show(loader_.Take()); });
}

DrawingControl2::~DrawingControl2() = default;

void DrawingControl2::SetSrc(const QString& path) {
    const QDateTime changed = path.isEmpty() ? QDateTime() : QFileInfo(path).lastModified();
    if (path == src_ && changed == changed_) return;
    const bool another = path != src_;
    if (another) toShow_.clear();
    rereads_ = !another && picture_;
    src_ = path;
    changed_ = changed;
    if (another) emit SrcChanged(src_);
    setAccessibleDescription(src_.isEmpty() ? QString() : QFileInfo(src_).fileName());
    if (src_.isEmpty()) {
        loader_.Forget();
        Show({});
    } else {
        loader_.Load(src_, [size = size(), ratio = devicePixelRatioF()](DrawingPicture& picture) {
            PaintAhead(picture, size, ratio);
        });
        slow_.start();
    }
}

void DrawingControl2::Show(DrawingLoader::Result result) {
    slow_.stop();
    const QString selected = SelectedShape();
    picture_ = std::move(result.picture);
    reason_ = result.reason;
    selected_.reset();
    if (!rereads_ || fitted_) {
        Fit();
    } else if (picture_ && !selected.isEmpty()) {
        selected_ = picture_->ShapeNamed(selected);
    }
    if (!toShow_.isEmpty()) ShowShape(std::exchange(toShow_, {}));
    update();
}

void DrawingControl2::SayOpening() {
    if (!rereads_) Show({nullptr, "Opening " + QFileInfo(src_).fileName() + "..."});
}

double DrawingControl2::Zoom() const {
    return picture_ ? scale_ * picture_->UnitsPerInch() / logicalDpiX() : 1;
}

double DrawingControl2::FitScale() const {
    return picture_ ? ScaleToFit(picture_->PageSize(), size()) : 1;
}

void DrawingControl2::Fit() {
    fitted_ = true;
    if (!picture_) return;
    scale_ = FitScale();
    const QSizeF page = picture_->PageSize() * scale_;
    origin_ = QPointF(std::round((width() - page.width()) / 2), std::round((height() - page.height()) / 2));
    update();
}

void DrawingControl2::ZoomIn() {
    SetScale(scale_ * kZoomStep, rect().center());
}

void DrawingControl2::ZoomOut() {
    SetScale(scale_ / kZoomStep, rect().center());
}

void DrawingControl2::SetScale(double scale, QPointF anchor) {
    if (!picture_) return;
    const double largest = std::max(kLargest * logicalDpiX() / picture_->UnitsPerInch(), FitScale());
    scale = std::clamp(scale, FitScale() / 2, largest);
    const QPointF place = PageAt(anchor);
    fitted_ = false;
    scale_ = scale;
    origin_ = anchor - place * scale;
    KeepInReach();
    update();
}

void DrawingControl2::ShowLifeSize(QPointF anchor) {
    if (picture_) SetScale(logicalDpiX() / picture_->UnitsPerInch(), anchor);
}

void DrawingControl2::MoveBy(QPointF pixels) {
    if (!picture_) return;
    fitted_ = false;
    origin_ += pixels;
    KeepInReach();
    update();
}

void DrawingControl2::KeepInReach() {
    const QSizeF page = picture_->PageSize() * scale_;
    origin_.setX(
        std::clamp(origin_.x(), kWithinReach - page.width(), static_cast<double>(width() - kWithinReach)));
    origin_.setY(
        std::clamp(origin_.y(), kWithinReach - page.height(), static_cast<double>(height() - kWithinReach)));
    origin_ = QPointF(std::round(origin_.x()), std::round(origin_.y()));  // Tiles meet on whole pixels.
}

std::optional<DrawingPicture::Shape> DrawingControl2::ShapeUnder(QPointF pixel) const {
    return picture_ ? picture_->ShapeAt(PageAt(pixel), kSlack / scale_) : std::nullopt;
}

void DrawingControl2::SelectShape(const QString& name) {
    selected_ = picture_ && !name.isEmpty() ? picture_->ShapeNamed(name) : std::nullopt;
    if (selected_ && !fitted_) {
        const QPointF middle = origin_ + selected_->bounds.center() * scale_;
        if (!rect().contains(middle.toPoint())) MoveBy(QPointF(rect().center()) - middle);
    }
    update();
}

void DrawingControl2::ShowShape(const QString& name) {
    if (Loading()) {
        toShow_ = name;
        return;
    }
    SelectShape(name);
    if (!selected_) return;
    const QPointF middle = selected_->bounds.center();
    const double readable = kReadable * logicalDpiX() / picture_->UnitsPerInch();
    SetScale(std::max(scale_, readable), rect().center());
    MoveBy(QPointF(rect().center()) - (origin_ + middle * scale_));
}

void DrawingControl2::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().color(QPalette::Mid));
    if (!picture_) {
        return PaintEmptyText(painter, *this, reason_.isEmpty() ? emptyText_ : reason_);
    }
    const QRectF page(origin_, picture_->PageSize() * scale_);
    painter.fillRect(page.translated(3, 3), QColor(0, 0, 0, 40));
    const QRect seen = page.toAlignedRect() & event->rect();
    if (seen.isEmpty()) return;
    painter.save();
    painter.setClipRect(page);
    painter.translate(seen.topLeft());
    picture_->Paint(painter, seen.translated(-origin_.toPoint()), scale_, devicePixelRatioF());
    painter.restore();
    if (selected_) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        const QRectF bounds(origin_ + selected_->bounds.topLeft() * scale_,
                            selected_->bounds.size() * scale_);
        painter.drawRoundedRect(bounds.adjusted(-3, -3, 3, 3), 4, 4);
    }
}

void DrawingControl2::resizeEvent(QResizeEvent*) {
    if (fitted_) {
        Fit();
    } else if (picture_) {
        KeepInReach();
    }
}

void DrawingControl2::wheelEvent(QWheelEvent* event) {
    constexpr double kNotch = 120;
    SetScale(scale_ * std::pow(kZoomStep, event->angleDelta().y() / kNotch), event->position());
    event->accept();
}

void DrawingControl2::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    pressed_ = dragged_ = event->position();
}

void DrawingControl2::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    if (!pressed_) {
        const auto shape = ShapeUnder(at);
        setCursor(shape && !shape->address.isEmpty() ? Qt::PointingHandCursor : Qt::ArrowCursor);
        return;
    }
    if (!dragging_ && (at - *pressed_).manhattanLength() < QApplication::startDragDistance()) return;
    dragging_ = true;
    setCursor(Qt::ClosedHandCursor);
    MoveBy(at - dragged_);
    dragged_ = at;
}

void DrawingControl2::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !pressed_) return;
    if (!dragging_) Click(*pressed_, event->modifiers());
    pressed_.reset();
    dragging_ = false;
    unsetCursor();
}

void DrawingControl2::Click(QPointF pixel, Qt::KeyboardModifiers keys) {
    selected_ = ShapeUnder(pixel);
    update();
    if (!selected_) return;
    const QUrl link(selected_->address);
    if (keys.testFlag(Qt::ControlModifier) && MayFollow(link)) {
        QDesktopServices::openUrl(link);
    } else {
        emit ShapeClicked(selected_->name);
    }
}

/// Between the whole page and a size that can be read.
void DrawingControl2::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!picture_) return;
    if (fitted_) {
        ShowLifeSize(event->position());
    } else {
        Fit();
    }
}

void DrawingControl2::keyPressEvent(QKeyEvent* event) {
    const QPointF pointer = mapFromGlobal(QCursor::pos());
    const QPointF anchor = rect().contains(pointer.toPoint()) ? pointer : QPointF(rect().center());
    switch (event->key()) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return SetScale(scale_ * kZoomStep, anchor);
        case Qt::Key_Minus:
            return SetScale(scale_ / kZoomStep, anchor);
        case Qt::Key_0:
        case Qt::Key_Home:
            return Fit();
        case Qt::Key_1:
            return ShowLifeSize(anchor);
        case Qt::Key_Left:
            return MoveBy({kArrowStep, 0});
        case Qt::Key_Right:
            return MoveBy({-kArrowStep, 0});
        case Qt::Key_Up:
            return MoveBy({0, kArrowStep});
        case Qt::Key_Down:
            return MoveBy({0, -kArrowStep});
        case Qt::Key_PageUp:
            return MoveBy({0, height() * 0.9});
        case Qt::Key_PageDown:
            return MoveBy({0, -height() * 0.9});
        default:
            QWidget::keyPressEvent(event);
    }
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
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    ShowTip(help->pos(), help->globalPos());
    return true;
}

void DrawingControl2::ShowTip(QPoint place, QPoint globalPlace) {
    const auto shape = ShapeUnder(place);
    QStringList lines;
    if (shape && !shape->tip.isEmpty()) lines << shape->tip;
    if (shape && !shape->address.isEmpty()) lines << shape->address << "Ctrl+click opens it";
    if (lines.isEmpty()) return QToolTip::hideText();
    QToolTip::showText(globalPlace, lines.join('\n').toHtmlEscaped().replace('\n', "<br>"), this);
}

}  // namespace norvelis::ui
