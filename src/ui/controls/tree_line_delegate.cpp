#include "ui/controls/tree_line_delegate.h"

#include <QPainter>
#include <algorithm>

namespace norvelis::ui {

namespace {

constexpr int kHoverAlpha = 28;
constexpr QColor kIncomplete(214, 137, 16);
constexpr int kMarkDistance = 8;  ///< Between a record's name and the mark behind it.

}  // namespace

void TreeLineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    QStyleOptionViewItem line = option;
    initStyleOption(&line, index);
    const QStyle* style = line.widget->style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &line, painter, line.widget);

    const bool selected = line.state & QStyle::State_Selected;
    if (line.state & QStyle::State_MouseOver && !selected) {
        QColor tint = line.palette.color(QPalette::Highlight);
        tint.setAlpha(kHoverAlpha);
        painter->fillRect(line.rect, tint);
    }

    const NodeIndex node = lines_.NodeOf(index);
    const ExtendedTreeView& branches = lines_.Branches();
    const int level = branches.Tree().Level(node);
    PaintGuides(*painter, line, node, level);
    if (branches.HasChildren(node)) {
        QStyleOption sign;
        sign.palette = line.palette;
        if (selected) sign.palette.setColor(QPalette::Dark, line.palette.color(QPalette::HighlightedText));
        sign.rect = line.rect;
        sign.rect.setLeft(line.rect.left() + (level - 1) * kIndentation);
        sign.rect.setWidth(kIndentation);
        sign.state = QStyle::State_Children;
        if (branches.Expanded(node)) sign.state |= QStyle::State_Open;
        style->drawPrimitive(QStyle::PE_IndicatorBranch, &sign, painter, line.widget);
    }
    painter->setFont(line.font);
    painter->setPen(line.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    const QRect text = line.rect.adjusted(TextLeft(level), 0, 0, 0);
    painter->drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, line.text);
    if (index.data(RecordTreeModel::kIncompleteRole).toBool()) {
        const int width = painter->fontMetrics().horizontalAdvance(line.text) + kMarkDistance;
        PaintIncomplete(*painter, text.adjusted(width, 0, 0, 0));
    }
}

// A triangle with an exclamation mark, as high as the letters, at the left of its place.
void TreeLineDelegate::PaintIncomplete(QPainter& painter, const QRect& place) {
    const int height = painter.fontMetrics().ascent();
    const QRect box(place.left(), place.center().y() - height / 2, height, height);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kIncomplete);
    painter.drawPolygon(QPolygon{box.bottomLeft(), QPoint(box.center().x(), box.top()), box.bottomRight()});
    QFont font = painter.font();
    font.setPixelSize(std::max(1, height * 2 / 3));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(box.adjusted(0, height / 5, 0, 0), Qt::AlignCenter, "!");
    painter.restore();
}

// A line under each branch that goes on below, as far as the branch's own sign.
void TreeLineDelegate::PaintGuides(QPainter& painter, const QStyleOptionViewItem& line, NodeIndex node,
                                   int level) const {
    const RecordTree& tree = lines_.Tree();
    painter.setPen(line.palette.color(QPalette::Midlight));
    for (int above = level - 2; above >= 0; --above) {
        const NodeIndex parent = tree.Parent(node);
        const int x = line.rect.left() + above * kIndentation + kIndentation / 2;
        const int middle = line.rect.center().y();
        const bool last = tree.SubtreeEnd(node) == tree.SubtreeEnd(parent);
        const bool own = above == level - 2;
        if (own) painter.drawLine(x, middle, x + kIndentation / 2, middle);
        if (own || !last) painter.drawLine(x, line.rect.top(), x, last ? middle : line.rect.bottom());
        node = parent;
    }
}

}  // namespace norvelis::ui
