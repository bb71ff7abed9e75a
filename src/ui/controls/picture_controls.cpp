#include "ui/controls/picture_controls.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>

#include "ui/skins/button_face.h"

namespace norvelis::ui {

namespace {

QColor Accent(const QWidget& control) {
    return control.palette().color(QPalette::Highlight);
}

}  // namespace

SkinButton::SkinButton(const QString& name, const QString& caption, QWidget* parent)
    : QPushButton(caption, parent), PictureControl("Button") {
    setObjectName(name);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    SetPictures(PlainSkin().ForTag(Tag()));
    SetCaptionColors(palette().color(QPalette::ButtonText), PlainSkin().ButtonDownColor());
}

void SkinButton::SetCaptionColors(const QColor& up, const QColor& down) {
    up_ = up;
    down_ = down;
    update();
}

QSize SkinButton::sizeHint() const {
    constexpr int kAir = 28;
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + kAir, ButtonHeight(pictures_.first, metrics.height())};
}

// In a narrow form the air beside the captions goes before the captions are cut.
QSize SkinButton::minimumSizeHint() const {
    constexpr int kLeastAir = 10;
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + kLeastAir, sizeHint().height()};
}

void SkinButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QPushButton::keyPressEvent(event);
    }
}

void SkinButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool down = isDown() || isChecked();
    PaintButtonFace(painter, rect(), pictures_, Accent(*this),
                    {down, isEnabled() && underMouse(), hasFocus()});
    painter.setPen(!isEnabled() ? palette().color(QPalette::Disabled, QPalette::ButtonText)
                   : down       ? down_
                                : up_);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

WindowButton::WindowButton(const QString& name, const QString& tag, const QString& spoken, QWidget* parent)
    : QPushButton(parent), PictureControl(tag) {
    setObjectName(name);
    setAccessibleName(spoken);
    setToolTip(spoken);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::NoFocus);
    SetPictures(PlainSkin().ForTag(Tag()));
}

void WindowButton::PicturesChanged() {
    setFixedSize(pictures_.first.Size());
    update();
}

void WindowButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    (isDown() ? pictures_.second : pictures_.first).Paint(painter, rect());
    if (!isDown() && underMouse()) PaintUnderMouse(painter, rect(), Accent(*this), 4);
}

template <typename Base>
SkinMark<Base>::SkinMark(const QString& name, const QString& tag, const QString& spoken, QWidget* parent)
    : Base(parent), PictureControl(tag) {
    this->setObjectName(name);
    this->setAccessibleName(spoken);
    this->setAttribute(Qt::WA_Hover);
    SetPictures(PlainSkin().ForTag(Tag()));
}

template <typename Base>
void SkinMark<Base>::PicturesChanged() {
    this->setFixedSize(pictures_.first.Size());
    this->update();
}

template <typename Base>
void SkinMark<Base>::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    (this->isChecked() ? pictures_.first : pictures_.second).Paint(painter, this->rect());
    if (this->hasFocus()) PaintFocusRing(painter, this->rect(), Accent(*this), this->width() / 2.0);
}

template class SkinMark<QCheckBox>;
template class SkinMark<QRadioButton>;

}  // namespace norvelis::ui
