#pragma once

#include <QCheckBox>
#include <QColor>
#include <QPushButton>
#include <QRadioButton>

#include "ui/skins/skin.h"

// The controls that a skin draws: each shows one of two pictures. What they are to the keyboard and to a
// screen reader comes from the classes they derive from.
namespace norvelis::ui {

/// What LoadSkins looks for among a form's controls: the one with a Tag that names its pictures.
class PictureControl {
  public:
    PictureControl(const PictureControl&) = delete;
    PictureControl& operator=(const PictureControl&) = delete;
    virtual ~PictureControl() = default;

    /// "Button", "Minimize", "Maximize", "Restore", "Close", "Check" or "Radio"; others take no picture.
    const QString& Tag() const { return tag_; }
    /// For a control whose meaning changes; the pictures must be the same for both.
    void SetTag(const QString& tag) { tag_ = tag; }

    void SetPictures(const PicturePair& pictures) {
        pictures_ = pictures;
        PicturesChanged();
    }

  protected:
    explicit PictureControl(QString tag) : tag_(std::move(tag)) {}
    virtual void PicturesChanged() = 0;

    PicturePair pictures_;

  private:
    QString tag_;
};

/// A push button: caption over a picture that stretches to its size.
class SkinButton : public QPushButton, public PictureControl {
  public:
    SkinButton(const QString& name, const QString& caption, QWidget* parent);

    void SetCaptionColors(const QColor& up, const QColor& down);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent*) override;
    void keyPressEvent(QKeyEvent* event) override;  ///< Return presses it too.
    void PicturesChanged() override { update(); }

  private:
    QColor up_, down_;
};

/// Close, minimise, and maximise or restore in a form's caption.
class WindowButton : public QPushButton, public PictureControl {
  public:
    WindowButton(const QString& name, const QString& tag, const QString& spoken, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent*) override;
    void PicturesChanged() override;
};

/// A check box or radio button that is only its picture; the words beside it are a label.
template <typename Base>
class SkinMark : public Base, public PictureControl {
  public:
    SkinMark(const QString& name, const QString& tag, const QString& spoken, QWidget* parent);

    QSize sizeHint() const override { return pictures_.first.Size(); }
    QSize minimumSizeHint() const override { return pictures_.first.Size(); }

  protected:
    void paintEvent(QPaintEvent*) override;
    bool hitButton(const QPoint& place) const override { return this->rect().contains(place); }
    void PicturesChanged() override;
};
using SkinCheck = SkinMark<QCheckBox>;
using SkinRadio = SkinMark<QRadioButton>;

}  // namespace norvelis::ui
