#include "ui/forms/reading_order.h"

#include <QGridLayout>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <tuple>

namespace norvelis::ui {

namespace {

void Collect(QWidget& widget, std::vector<QWidget*>& order);

std::vector<QLayoutItem*> ItemsOf(QLayout& layout) {
    std::vector<std::tuple<int, int, QLayoutItem*>> items;
    const auto* grid = qobject_cast<QGridLayout*>(&layout);
    for (int i = 0; i < layout.count(); ++i) {
        int row = 0, column = 0, rows = 1, columns = 1;
        if (grid) grid->getItemPosition(i, &row, &column, &rows, &columns);
        items.emplace_back(row + rows - 1, column, layout.itemAt(i));  // What is high comes after its left.
    }
    if (grid) std::sort(items.begin(), items.end());
    std::vector<QLayoutItem*> sorted;
    for (const auto& [row, column, item] : items) sorted.push_back(item);
    return sorted;
}

void Collect(QLayout& layout, std::vector<QWidget*>& order) {
    for (QLayoutItem* item : ItemsOf(layout)) {
        if (item->widget()) Collect(*item->widget(), order);
        if (item->layout()) Collect(*item->layout(), order);
    }
}

void Collect(QWidget& widget, std::vector<QWidget*>& order) {
    if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) {
        order.push_back(tabs->tabBar());
        for (int i = 0; i < tabs->count(); ++i) Collect(*tabs->widget(i), order);
    } else if (widget.focusPolicy() & Qt::TabFocus) {
        order.push_back(&widget);
    } else if (const auto* splitter = qobject_cast<QSplitter*>(&widget)) {
        for (int i = 0; i < splitter->count(); ++i) Collect(*splitter->widget(i), order);
    } else if (widget.layout()) {
        Collect(*widget.layout(), order);
    } else {
        for (auto* child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) Collect(*child, order);
    }
}

}  // namespace

std::vector<QWidget*> ReadingOrder(QWidget& form) {
    std::vector<QWidget*> order;
    Collect(form, order);
    return order;
}

void SetReadingOrder(QWidget& form) {
    const std::vector<QWidget*> order = ReadingOrder(form);
    for (std::size_t i = 1; i < order.size(); ++i) QWidget::setTabOrder(order[i - 1], order[i]);
}

}  // namespace norvelis::ui
