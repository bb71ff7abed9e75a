#include "ui/controls/line_list_view.h"

#include <QHoverEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "ui/controls/empty_text.h"

namespace norvelis::ui {

LineListView::LineListView(QWidget* parent) : QAbstractItemView(parent) {
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
}

void LineListView::SetEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void LineListView::doItemsLayout() {
    lineHeight_ = std::max(1, sizeHintForRow(0));
    lineWidth_ = WidestLine();
    QAbstractItemView::doItemsLayout();
}

void LineListView::updateGeometries() {
    verticalScrollBar()->setRange(0, std::max(0, Count() * lineHeight_ - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(lineHeight_);
    horizontalScrollBar()->setRange(0, std::max(0, lineWidth_ - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(lineHeight_);
    QAbstractItemView::updateGeometries();
}

int LineListView::horizontalOffset() const {
    return horizontalScrollBar()->value();
}

int LineListView::verticalOffset() const {
    return verticalScrollBar()->value();
}

QRect LineListView::visualRect(const QModelIndex& index) const {
    if (!index.isValid()) return {};
    return {-horizontalOffset(), index.row() * lineHeight_ - verticalOffset(),
            std::max(lineWidth_, viewport()->width()), lineHeight_};
}

QModelIndex LineListView::indexAt(const QPoint& place) const {
    const int row = (place.y() + verticalOffset()) / lineHeight_;
    return place.y() >= 0 && row < Count() ? model()->index(row, 0) : QModelIndex();
}

void LineListView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!index.isValid()) return;
    executeDelayedItemsLayout();
    const int top = index.row() * lineHeight_, atBottom = top + lineHeight_ - viewport()->height();
    QScrollBar& bar = *verticalScrollBar();
    switch (hint) {
        case EnsureVisible:
            bar.setValue(std::min(std::max(bar.value(), atBottom), top));
            break;
        case PositionAtTop:
            bar.setValue(top);
            break;
        case PositionAtBottom:
            bar.setValue(atBottom);
            break;
        case PositionAtCenter:
            bar.setValue((top + atBottom) / 2);
            break;
    }
}

QModelIndex LineListView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
    if (Count() == 0) return {};
    const int row = currentIndex().row(), page = std::max(1, viewport()->height() / lineHeight_ - 1);
    const auto at = [this](int line) { return model()->index(std::clamp(line, 0, Count() - 1), 0); };
    switch (action) {
        case MoveUp:
        case MovePrevious:
            return at(row - 1);
        case MoveDown:
        case MoveNext:
            return at(row + 1);
        case MovePageUp:
            return at(row - page);
        case MovePageDown:
            return at(row + page);
        case MoveHome:
            return at(0);
        case MoveEnd:
            return at(Count() - 1);
        case MoveLeft:
        case MoveRight:
            break;
    }
    return currentIndex();
}

void LineListView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
    const QModelIndex index = indexAt(rect.topLeft());
    selectionModel()->select(QItemSelection(index, index), command);
}

QRegion LineListView::visualRegionForSelection(const QItemSelection& selection) const {
    QRegion region;
    for (const QModelIndex& index : selection.indexes()) region += visualRect(index);
    return region;
}

bool LineListView::viewportEvent(QEvent* event) {
    switch (event->type()) {
        case QEvent::HoverEnter:
        case QEvent::HoverMove:
            underMouse_ = indexAt(static_cast<QHoverEvent*>(event)->position().toPoint());
            break;
        case QEvent::HoverLeave:
            underMouse_ = QModelIndex();
            break;
        default:
            break;
    }
    return QAbstractItemView::viewportEvent(event);  // It repaints the lines that the mouse came to and left.
}

void LineListView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    if (Count() == 0) return PaintEmptyText(painter, *viewport(), emptyText_);
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const QStyle::State state = option.state;
    const int first = (event->rect().top() + verticalOffset()) / lineHeight_;
    const int last = std::min((event->rect().bottom() + verticalOffset()) / lineHeight_, Count() - 1);
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = model()->index(row, 0);
        option.rect = visualRect(index);
        option.state = state;
        option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
        option.state.setFlag(QStyle::State_MouseOver, index == underMouse_);
        option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
        itemDelegate()->paint(&painter, option, index);
    }
}

}  // namespace norvelis::ui
