#include "ui/controls/search_box.h"

#include <QKeyEvent>

#include "ui/controls/c_tree_view.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"

namespace norvelis::ui {

namespace {

const QString kHint = "TYPE HERE";

}  // namespace

SearchBox::SearchBox(Host& host, cTreeView& tree, QWidget* form)
    : QObject(form),
      host_(host),
      tree_(tree),
      Text1_(new QLineEdit(kHint, form)),
      button_(new SkinButton("cmdSearch", {}, form)) {
    Text1_->setObjectName("Text1");
    Text1_->setAccessibleName("Record to locate");
    Text1_->setTextMargins(5, 0, 5, 0);
    Text1_->setMinimumHeight(button_->sizeHint().height());
    Text1_->installEventFilter(this);
    button_->setToolTip("Click to search Record");
    ShowCaption();
    connect(Text1_, &QLineEdit::textChanged, this, [this] {
        search_.TextChanged();
        ShowCaption();
    });
    connect(Text1_, &QLineEdit::returnPressed, this, &SearchBox::Search);
    connect(button_, &QPushButton::clicked, this, &SearchBox::Search);
    OnKeys(form, QKeySequence::Find, [this] {
        Text1_->setFocus(Qt::ShortcutFocusReason);
        Text1_->selectAll();
    });
}

void SearchBox::Search() {
    emit Searching();
    const RecordTree tree = tree_.Tree();
    const auto hit = search_.Click(host_, tree, Text1_->text().toStdString());
    ShowCaption();
    if (!hit || tree_.Tree() != tree) return;
    tree_.Select(*hit);
    tree_.MarkRed(*hit);
}

void SearchBox::ShowCaption() {
    button_->setText(QString::fromStdString(search_.Caption()));
}

bool SearchBox::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        if (Text1_->text().trimmed().toUpper() == kHint) Text1_->clear();
    } else if (event->type() == QEvent::KeyRelease) {
        const QString upper = Text1_->text().toUpper();
        if (upper != Text1_->text()) {
            const int cursor = Text1_->cursorPosition();
            Text1_->setText(upper);
            Text1_->setCursorPosition(cursor);
        }
    } else if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        tree_.setFocus();
        return true;
    }
    return QObject::eventFilter(object, event);
}

}  // namespace norvelis::ui
