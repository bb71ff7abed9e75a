#include "ui/controls/drawing_find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QToolButton>

namespace norvelis::ui {

DrawingFindBar::DrawingFindBar(QWidget* parent)
    : QWidget(parent), txtFind_(new QLineEdit(this)), lblFound_(new QLabel(this)) {
    setObjectName("FindBar");
    setAccessibleName("Find in the drawing");
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_NoMousePropagation);
    txtFind_->setObjectName("txtFindInDrawing");
    txtFind_->setPlaceholderText("Find in the drawing");
    txtFind_->setAccessibleName("Text to find in the drawing");
    txtFind_->setTextMargins(5, 0, 5, 0);
    txtFind_->setMinimumWidth(60);
    lblFound_->setObjectName("lblFoundInDrawing");
    lblFound_->setAccessibleName("Places of the text");
    lblFound_->setMinimumWidth(fontMetrics().horizontalAdvance("888 of 888"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 4, 6, 4);
    row->setSpacing(4);
    row->addWidget(txtFind_, 1);
    row->addWidget(lblFound_);
    const auto add = [&](const char* name, const char* words, Qt::ArrowType arrow) {
        auto* button = new QToolButton(this);
        button->setObjectName(name);
        button->setToolTip(words);
        button->setAccessibleName(words);
        button->setArrowType(arrow);
        button->setAutoRaise(true);
        row->addWidget(button);
        return button;
    };
    connect(add("cmdPreviousHit", "The place before (Shift+F3)", Qt::UpArrow), &QToolButton::clicked, this,
            &DrawingFindBar::PreviousWanted);
    connect(add("cmdNextHit", "The next place (F3)", Qt::DownArrow), &QToolButton::clicked, this,
            &DrawingFindBar::NextWanted);
    QToolButton* close = add("cmdEndFind", "End the search (Esc)", Qt::NoArrow);
    close->setText(QString(QChar(0x00D7)));  // A multiplication sign.
    connect(close, &QToolButton::clicked, this, &DrawingFindBar::CloseWanted);
    connect(txtFind_, &QLineEdit::textChanged, this, &DrawingFindBar::Typed);
    setFocusProxy(txtFind_);
    hide();
}

void DrawingFindBar::Open() {
    show();
    raise();
    txtFind_->setFocus(Qt::ShortcutFocusReason);
    txtFind_->selectAll();
}

QString DrawingFindBar::Text() const {
    return txtFind_->text();
}

void DrawingFindBar::ShowCount(std::size_t present, std::size_t count) {
    lblFound_->setText(Text().trimmed().isEmpty() ? QString()
                       : count == 0               ? QString("not there")
                       : present == 0             ? QString("%1 on other pages").arg(count)
                                                  : QString("%1 of %2").arg(present).arg(count));
}

// The line edit leaves Return to its parents, and the drawing has another use for it.
void DrawingFindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QWidget::keyPressEvent(event);
    if (event->modifiers().testFlag(Qt::ShiftModifier)) {
        emit PreviousWanted();
    } else {
        emit NextWanted();
    }
}

void DrawingFindBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace norvelis::ui
