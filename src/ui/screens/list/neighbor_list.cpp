#include "ui/screens/list/neighbor_list.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <algorithm>

#include "ui/controls/context_menu.h"

namespace norvelis::ui {

namespace {

constexpr int kOtherSchemaRole = Qt::UserRole;

/// Paints the name of another schema behind the record's.
class NeighborDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const QString schema = index.data(kOtherSchemaRole).toString();
        if (schema.isEmpty()) return;
        option->text += "  [" + schema + "]";
        option->font.setItalic(true);
        option->fontMetrics = QFontMetrics(option->font);
    }
};

QStringList SetsOf(const Neighbor& neighbor) {
    QStringList sets;
    for (const std::string& set : neighbor.sets) sets.push_back(QString::fromStdString(set));
    return sets;
}

QListWidgetItem* ItemOf(const Neighbor& neighbor) {
    auto* item = new QListWidgetItem(QString::fromStdString(neighbor.name));
    const QString schema = QString::fromStdString(neighbor.otherSchema);
    QStringList lines = SetsOf(neighbor);
    if (!schema.isEmpty()) {
        lines.push_front("In schema " + schema + ":");
        item->setData(kOtherSchemaRole, schema);
        item->setData(Qt::AccessibleTextRole, item->text() + " in schema " + schema);
    }
    item->setData(Qt::AccessibleDescriptionRole, lines.join(", "));
    for (QString& line : lines) line = line.toHtmlEscaped();
    item->setToolTip("<qt>" + lines.join("<br>") + "</qt>");
    return item;
}

}  // namespace

NeighborList::NeighborList(const QString& name, const QString& spoken, QWidget* parent)
    : QListWidget(parent) {
    setObjectName(name);
    setAccessibleName(spoken);
    setItemDelegate(new NeighborDelegate(this));
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    connect(this, &QAbstractItemView::clicked, this, &NeighborList::Choose);
    ContextMenu menu(this);
    menu.Add("&Show record\tReturn", [this] { Choose(currentIndex()); });
    menu.Add("&Copy name", QKeySequence::Copy,
             [this] { QGuiApplication::clipboard()->setText(currentIndex().data().toString()); });
}

std::string NeighborList::OtherSchema(const QModelIndex& index) {
    return index.data(kOtherSchemaRole).toString().toStdString();
}

void NeighborList::Show(const std::vector<Neighbor>& neighbors) {
    clear();
    for (const Neighbor& neighbor : neighbors) addItem(ItemOf(neighbor));
    if (hasFocus()) setCurrentRow(0);
}

void NeighborList::keyboardSearch(const QString& letter) {
    if (const QModelIndex found = typed_.Type(letter, *model()); found.isValid()) setCurrentIndex(found);
}

void NeighborList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Choose(currentIndex());
    } else {
        QListWidget::keyPressEvent(event);
    }
}

// The first press of a double click has brought other names below the mouse.
void NeighborList::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
}

void NeighborList::focusInEvent(QFocusEvent* event) {
    QListWidget::focusInEvent(event);
    if (count() > 0) setCurrentRow(std::max(0, currentRow()));
}

void NeighborList::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) clearSelection();
}

void NeighborList::Choose(const QModelIndex& index) {
    if (const std::string name = index.data().toString().toStdString(); !name.empty()) emit Chosen(name);
}

}  // namespace norvelis::ui
