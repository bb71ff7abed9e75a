#include "ui/controls/name_grid.h"

#include <QHeaderView>
#include <QKeyEvent>

#include "ui/controls/context_menu.h"

namespace norvelis::ui {

NameGrid::NameGrid(const QString& name, std::string_view heading, const QString& choose, Host& host,
                   QWidget* parent)
    : FlxGrid(name, heading, host, parent) {
    verticalHeader()->hide();  // A row is its one cell.
    connect(this, &QAbstractItemView::clicked, this, &NameGrid::Choose);
    ContextMenu menu(this);
    menu.AddLine();
    menu.Add(choose + "\tReturn", [this] { Choose(currentIndex()); });
}

void NameGrid::SetNames(const std::vector<std::string>& names) {
    const QString marked = currentIndex().data().toString();
    std::vector<std::array<std::string, 1>> rows;
    for (const std::string& name : names) rows.push_back({name});
    SetRows(rows);
    Mark(marked);
}

void NameGrid::Mark(const QString& name) {
    const QModelIndex first = model()->index(0, 0);
    const auto same = model()->match(first, Qt::DisplayRole, name, 1, Qt::MatchExactly);
    setCurrentIndex(same.value(0, first));
}

void NameGrid::keyboardSearch(const QString& letter) {
    if (const QModelIndex found = typed_.Type(letter, *model()); found.isValid()) setCurrentIndex(found);
}

void NameGrid::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Choose(currentIndex());
    } else {
        FlxGrid::keyPressEvent(event);
    }
}

void NameGrid::Choose(const QModelIndex& index) {
    if (const std::string name = index.data().toString().toStdString(); !name.empty()) emit Chosen(name);
}

}  // namespace norvelis::ui
