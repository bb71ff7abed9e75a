#include "ui/screens/settings/background_choice.h"

#include <QMouseEvent>
#include <QPainter>

#include "core/settings.h"
#include "ui/controls/picture_controls.h"

namespace norvelis::ui {

namespace {

// The picture's measures, in its pixels, and the screen's.
constexpr int kPictureWidth = 132, kPictureHeight = 102, kPictureGap = 8;
constexpr int kColumns = 6, kRows = 3, kCount = kColumns * kRows;
constexpr QSize kCell(60, 46);
constexpr int kAcross = 7, kRadio = 20;

}  // namespace

BackgroundChoice::BackgroundChoice(const Picture& picBackground, QWidget* parent)
    : QWidget(parent), picture_(picBackground), radios_(this) {
    setObjectName("picBackground");
    setFixedSize(kColumns * (kCell.width() + kAcross) - kAcross, kRows * (kCell.height() + kRadio));
    for (int i = 0; i < kCount; ++i) {
        const QString name = QString::fromUtf8(kBackgroundNames[static_cast<std::size_t>(i)].data());
        auto* radio = new SkinRadio(QString("imgBackSelected%1").arg(i), "Radio", name, this);
        radio->setToolTip("Click on these radio buttons to select visio background");
        radio->move(Cell(i).center().x() - radio->width() / 2, Cell(i).bottom() + 1);
        radios_.addButton(radio, i);
    }
    connect(&radios_, &QButtonGroup::idClicked, this, &BackgroundChoice::ChosenByPerson);
    connect(&radios_, &QButtonGroup::buttonToggled, this, [this](const QAbstractButton* radio, bool on) {
        update();
        if (on) emit NameChanged(radio->accessibleName());
    });
}

void BackgroundChoice::Choose(int index) {
    if (auto* radio = radios_.button(index)) radio->setChecked(true);
}

QRect BackgroundChoice::Cell(int index) const {
    return {QPoint((index % kColumns) * (kCell.width() + kAcross),
                   (index / kColumns) * (kCell.height() + kRadio)),
            kCell};
}

void BackgroundChoice::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    for (int i = 0; i < kCount; ++i) {
        const QPoint corner(kPictureGap + (i % kColumns) * (kPictureWidth + kPictureGap),
                            kPictureGap + (i / kColumns) * (kPictureHeight + kPictureGap));
        if (picture_.IsNull()) {
            painter.fillRect(Cell(i), palette().color(QPalette::Midlight));
        } else {
            picture_.PaintPart(painter, Cell(i), QRectF(corner, QSizeF(kPictureWidth, kPictureHeight)));
        }
        const bool chosen = i == Chosen();
        PaintEdge(painter, Cell(i), palette().color(chosen ? QPalette::Highlight : QPalette::Mid),
                  chosen ? 2 : 1);
    }
}

void BackgroundChoice::mousePressEvent(QMouseEvent* event) {
    for (int i = 0; i < kCount; ++i) {
        if (Cell(i).contains(event->position().toPoint())) radios_.button(i)->click();
    }
}

}  // namespace norvelis::ui
