#include "ui/forms/form.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QShortcut>
#include <QWindow>
#include <algorithm>

#include "ui/controls/picture_controls.h"
#include "ui/forms/skins_and_colors.h"
#include "ui/skins/art/skin_art.h"

namespace norvelis::ui {

namespace {

constexpr int kMargin = 500 / kTwipsPerPixel;
constexpr int kWithinReach = 80;  ///< Of a caption, in points.

}  // namespace

Form::Form(const ScreenContext& context, const QString& name, const QString& caption, QSize size)
    : QWidget(&context.area, Qt::SubWindow), context_(context), size_(size), picture_(PlainForm(size)) {
    setObjectName(name);
    setWindowTitle(caption);
    setAccessibleName(caption);
    lblCaption_ = MakeLabel(this, "lblCaption", caption, "TitleColor");
    QFont font = lblCaption_->font();
    font.setWeight(QFont::DemiBold);
    font.setPixelSize(14);
    lblCaption_->setFont(font);
    lblCaption_->adjustSize();
    imgMinimize_ = new WindowButton("imgMinimize", "Minimize", "Minimize", this);
    imgRestore_ = new WindowButton("imgRestore", "Restore", "Back to its place", this);
    imgClose_ = new WindowButton("imgClose", "Close", "Close", this);
    const CaptionPlaces places = PlacesFor(size);
    lblCaption_->move(places.lblCaption);
    imgMinimize_->move(places.imgMinimize);
    imgRestore_->move(places.imgRestore);
    imgClose_->move(places.imgClose);
    connect(imgClose_, &QPushButton::clicked, this, &QWidget::close);
    connect(imgMinimize_, &QPushButton::clicked, this, &Form::Minimized);
    connect(imgRestore_, &QPushButton::clicked, this, &Form::Place);
    const auto onKeys = [this](QKeyCombination keys, const auto& act) {
        auto* shortcut = new QShortcut(QKeySequence(keys), this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    onKeys(Qt::CTRL | Qt::Key_W, &QWidget::close);
    onKeys(Qt::CTRL | Qt::Key_F4, &QWidget::close);
    onKeys(Qt::CTRL | Qt::Key_M, &Form::Minimized);
    onKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_M, &Form::Place);
}

Form::~Form() = default;

void Form::Load() {
    LoadINISettings();
    ApplySkin();
    setFixedSize(size_);
    Place();
}

void Form::ApplySkin() {
    if (const Picture picture = App().gUseSkins ? FormPicture(App(), tag2_) : Picture(); !picture.IsNull()) {
        SetPicture(picture);
        LoadSkins(App(), context_.skin.Get(), *this, tag2_);
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
    return QRect(QPoint(0, kCaptionHeight), QPoint(size_.width() - 1, size_.height() - 1));
}

void Form::ShowAndWait() {
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
    imgRestore_->show();
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
    const int spare = parentWidget()->height() - height();
    MoveTo(QPoint(kMargin, std::clamp(spare, 0, kMargin)));
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
    picture_.Paint(painter, rect());
}

void Form::mousePressEvent(QMouseEvent* event) {
    emit Touched();
    if (event->button() == Qt::LeftButton) StartFormDrag(event->globalPosition().toPoint());
}

void Form::mouseMoveEvent(QMouseEvent* event) {
    if (!dragFrom_) return;
    const QPoint place = event->globalPosition().toPoint() - *dragFrom_;
    MoveTo(isWindow() ? place : parentWidget()->mapFromGlobal(place));
}

void Form::mouseReleaseEvent(QMouseEvent*) {
    dragFrom_.reset();
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
