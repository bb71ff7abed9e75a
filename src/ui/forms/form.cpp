#include "ui/forms/form.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "ui/controls/picture_controls.h"
#include "ui/forms/edge_grips.h"
#include "ui/forms/reading_order.h"
#include "ui/forms/skins_and_colors.h"
#include "ui/forms/window_settings.h"
#include "ui/skins/art/skin_art.h"
#include "ui/skins/skin_style.h"

namespace norvelis::ui {

namespace {

constexpr int kMargin = 500 / kTwipsPerPixel;
constexpr int kWithinReach = 80;  ///< Of a caption, in points.
constexpr QSize kSmallest(240, 120);

/// Parts of a form's background that keep their size: the caption with its ends, and the border.
constexpr QMarginsF kBackgroundMargins(8, kCaptionHeight, 140, 8);

}  // namespace

Form::Form(const ScreenContext& context, const QString& name, const QString& caption, QSize size)
    : QWidget(&context.area, Qt::SubWindow), context_(context), size_(size), picture_(PlainForm(size)) {
    setObjectName(name);
    setWindowTitle(caption);
    setAccessibleName(caption);
    lblCaption_ = MakeLabel(this, "lblCaption", caption, "TitleColor");
    QFont font = lblCaption_->font();
    font.setWeight(QFont::DemiBold);
    font.setPixelSize(qRound(14 * TextScale()));
    lblCaption_->setFont(font);
    lblCaption_->adjustSize();
    imgMinimize_ = new WindowButton("imgMinimize", "Minimize", "Minimize", this);
    imgRestore_ = new WindowButton("imgRestore", "Maximize", "Maximize", this);
    imgClose_ = new WindowButton("imgClose", "Close", "Close", this);
    const CaptionPlaces places = PlacesFor(size);
    lblCaption_->move(places.lblCaption);
    imgMinimize_->move(places.imgMinimize);
    imgRestore_->move(places.imgRestore);
    imgClose_->move(places.imgClose);
    connect(imgClose_, &QPushButton::clicked, this, &QWidget::close);
    connect(imgMinimize_, &QPushButton::clicked, this, &Form::Minimized);
    connect(imgRestore_, &QPushButton::clicked, this, &Form::ToggleMaximized);
    grips_ = new EdgeGrips({*this, [this] { return SmallestSize(); }, [this] { emit Touched(); },
                            [this] { emit ArrangedByPerson(); }});
}

Form::~Form() = default;

void Form::Load() {
    LoadINISettings();
    ApplySkin();
    SetReadingOrder(*this);
    imgRestore_->setVisible(Grows());
    grips_->SetVisible(Grows());
    resize(OriginalSize());
    Place();
}

void Form::ApplySkin() {
    if (const Picture picture = App().gUseSkins ? FormPicture(App(), tag2_) : Picture(); !picture.IsNull()) {
        SetPicture(picture);
        ShiftWindowButtons(0);
        LoadSkins(App(), context_.skin.Get(), *this, tag2_);
        ShiftWindowButtons(width() - size_.width());
    }
    ApplyColors();
}

void Form::ApplyColors() {
    SetColors(context_.skin.Get(), *this);
    SkinApplied();
}

void Form::LoadINISettings() {
    SetTag2(kFormTag);
}

void Form::SetPicture(const Picture& picture) {
    picture_ = picture;
    update();
}

QRect Form::Body() const {
    const QSize size = size_ * TextScale();
    return QRect(QPoint(0, kCaptionHeight), QPoint(size.width() - 1, size.height() - 1));
}

void Form::ShowAndWait() {
    SetMaximized(false);
    setParent(context_.area.window(), Qt::Dialog | Qt::FramelessWindowHint);
    setWindowModality(Qt::ApplicationModal);
    imgMinimize_->hide();
    imgRestore_->hide();
    move(WaitingPlace());
    QEventLoop loop;
    connect(this, &Form::Closed, &loop, &QEventLoop::quit);
    const QPointer<Form> here(this);
    show();
    loop.exec();
    if (!here) return;
    setParent(&context_.area, Qt::SubWindow);
    imgMinimize_->show();
    imgRestore_->setVisible(Grows());
}

QPoint Form::WaitingPlace() {
    return context_.area.window()->geometry().center() - rect().center();
}

QColor Form::CaptionColor() const {
    return picture_.At(lblCaption_->pos());
}

void Form::Place() {
    if (isWindow()) return;
    // On a low display the margin shrinks before the form's foot is hidden.
    const QSize spare = parentWidget()->size() - size();
    MoveTo(QPoint(std::clamp(spare.width(), 0, kMargin), std::clamp(spare.height(), 0, kMargin)));
}

void Form::MoveInside() {
    if (isWindow()) return;
    const QSize spare = parentWidget()->size() - size();
    MoveTo(QPoint(spare.width() < 0 ? x() : std::clamp(x(), 0, spare.width()),
                  spare.height() < 0 ? y() : std::clamp(y(), 0, spare.height())));
}

QSize Form::OriginalSize() const {
    const QSize forText = size_ * TextScale();
    return forText.boundedTo(context_.area.size().expandedTo(size_));
}

QSize Form::SmallestSize() const {
    const QSize needed = layout() ? layout()->totalMinimumSize() : OriginalSize();
    return needed.expandedTo(kSmallest).boundedTo(OriginalSize());
}

void Form::BackToOriginalSize() {
    emit ArrangedByPerson();
    SetMaximized(false);
    resize(OriginalSize());
    Place();
    ForgetFormGeometry(*this, App().gLocalIni);
}

void Form::SetMaximized(bool maximized) {
    if (maximized == IsMaximized() || isWindow()) return;
    if (maximized) {
        beforeMaximized_ = geometry();
        FillArea();
    } else {
        setGeometry(*std::exchange(beforeMaximized_, std::nullopt));
        MoveTo(pos());
    }
    grips_->SetVisible(!maximized && Grows());
    ShowRestoreButton();
}

void Form::ToggleMaximized() {
    if (!Grows()) return;
    emit ArrangedByPerson();
    SetMaximized(!IsMaximized());
}

void Form::FillArea() {
    setGeometry(parentWidget()->rect());
}

void Form::ShowRestoreButton() {
    const QString now = IsMaximized() ? "Restore" : "Maximize";
    imgRestore_->SetTag(now);
    imgRestore_->setAccessibleName(now);
    imgRestore_->setToolTip(now);
}

void Form::RestoreGeometry() {
    const auto left = SavedFormGeometry(*this, App().gLocalIni);
    if (!left || !Grows()) return;
    resize(left->normal.size().boundedTo(parentWidget()->size()).expandedTo(SmallestSize()));
    MoveTo(left->normal.topLeft());
    MoveInside();
    SetMaximized(left->maximized);
}

void Form::SaveGeometry() const {
    if (isWindow() || !Grows()) return;
    const FormGeometry now{beforeMaximized_.value_or(geometry()), IsMaximized()};
    if (now.maximized || now.normal.size() != OriginalSize()) {
        SaveFormGeometry(*this, now, App().gLocalIni);
    } else {
        ForgetFormGeometry(*this, App().gLocalIni);
    }
}

void Form::ShiftWindowButtons(int by) {
    for (QWidget* button : {imgClose_, imgRestore_, imgMinimize_})
        button->move(button->pos() + QPoint(by - shift_, 0));
    shift_ = by;
}

void Form::resizeEvent(QResizeEvent*) {
    ShiftWindowButtons(width() - size_.width());
    grips_->Follow();
}

void Form::MoveTo(QPoint place) {
    if (!isWindow()) {
        const QSize area = parentWidget()->size();
        place.setX(std::clamp(place.x(), kWithinReach - width(), area.width() - kWithinReach));
        place.setY(std::clamp(place.y(), 0, std::max(0, area.height() - kCaptionHeight)));
    }
    move(place);
}

void Form::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    picture_.PaintPatches(painter, rect(), kBackgroundMargins);
}

void Form::mousePressEvent(QMouseEvent* event) {
    emit Touched();
    if (event->button() == Qt::LeftButton && !IsMaximized()) StartFormDrag(event->globalPosition().toPoint());
}

void Form::mouseMoveEvent(QMouseEvent* event) {
    if (!dragFrom_) return;
    emit ArrangedByPerson();
    const QPoint place = event->globalPosition().toPoint() - *dragFrom_;
    MoveTo(isWindow() ? place : parentWidget()->mapFromGlobal(place));
}

void Form::mouseReleaseEvent(QMouseEvent*) {
    dragFrom_.reset();
}

void Form::mouseDoubleClickEvent(QMouseEvent* event) {
    dragFrom_.reset();
    if (event->button() == Qt::LeftButton && event->position().y() < kCaptionHeight && !isWindow())
        ToggleMaximized();
}

void Form::keyPressEvent(QKeyEvent* event) {
    if (isWindow() && event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void Form::Unload() {
    unloading_ = true;
    close();
    unloading_ = false;
}

void Form::closeEvent(QCloseEvent* event) {
    if (!unloading_ && !QueryUnload()) return event->ignore();
    SaveINISettings();
    SaveGeometry();
    event->accept();
    emit Closed();
}

void Form::StartFormDrag(QPoint globalPlace) {
    if (isWindow() && windowHandle()->startSystemMove()) return;
    dragFrom_ = globalPlace - mapToGlobal(QPoint(0, 0));
}

QLabel* MakeLabel(QWidget* parent, const QString& name, const QString& text, const QString& tag) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    if (!tag.isEmpty()) label->setProperty("Tag", tag);
    return label;
}

}  // namespace norvelis::ui
