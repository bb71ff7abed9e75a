#include "ui/controls/c_tree_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <vector>

#include "ui/controls/context_menu.h"
#include "ui/controls/tree_line_delegate.h"

namespace norvelis::ui {

cTreeView::cTreeView(const QString& name, QWidget* parent)
    : LineListView(parent),
      lines_(new RecordTreeModel(this)),
      delegate_(new TreeLineDelegate(*lines_, this)) {
    setObjectName(name);
    setAccessibleName("Schemas and records");
    setModel(lines_);
    setItemDelegate(delegate_);
    setMouseTracking(true);
    connect(this, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& index) { emit NodeClicked(lines_->NodeOf(index)); });
    ContextMenu menu(this);
    menu.Add("&Open record\tReturn", [this] {
        if (SelectedNode() != kNoNode) emit NodeClicked(SelectedNode());
    });
    menu.Add("&Copy name", QKeySequence::Copy,
             [this] { QGuiApplication::clipboard()->setText(currentIndex().data().toString()); });
}

void cTreeView::SetTree(RecordTree tree) {
    lines_->SetTree(std::move(tree));
    setCurrentIndex(lines_->index(0));
}

NodeIndex cTreeView::SelectedNode() const {
    return lines_->NodeOf(currentIndex());
}

void cTreeView::Select(NodeIndex node) {
    EnsureVisible(node);
    setCurrentIndex(lines_->IndexOf(node));
}

bool cTreeView::SelectRecord(const QString& name) {
    const std::string text = name.toStdString();
    const NodeIndex now = SelectedNode();
    NodeIndex node = now;
    if (now == kNoNode || Tree().Text(now) != text) {
        node = now == kNoNode ? kNoNode : Tree().FirstOf(text, Tree().Schema(now));
        if (node == kNoNode) node = Tree().FirstOf(text);
    }
    if (node == kNoNode) return false;
    Select(node);
    return true;
}

void cTreeView::EnsureVisible(NodeIndex node) {
    if (!lines_->IndexOf(node).isValid()) Rearrange([node](auto& branches) { branches.EnsureVisible(node); });
    scrollTo(lines_->IndexOf(node), QAbstractItemView::EnsureVisible);
}

void cTreeView::ExpandAll() {
    if (lines_->rowCount() < static_cast<int>(Tree().Size()))
        Rearrange([](ExtendedTreeView& branches) { branches.ExpandAll(); });
    scrollTo(currentIndex(), QAbstractItemView::EnsureVisible);
}

void cTreeView::CollapseAll() {
    Rearrange([](ExtendedTreeView& branches) { branches.CollapseAll(); });
}

void cTreeView::SetExpanded(NodeIndex node, bool expanded) {
    Rearrange([&](ExtendedTreeView& branches) { branches.SetExpanded(node, expanded); });
}

void cTreeView::Rearrange(const std::function<void(ExtendedTreeView&)>& change) {
    const NodeIndex selected = SelectedNode();
    lines_->Rearrange(change);
    if (selected != kNoNode && !currentIndex().isValid())
        setCurrentIndex(lines_->IndexOf(lines_->Branches().ShownInstead(selected)));
}

void cTreeView::ScrollView(Scroll where) {
    QScrollBar& bar = *verticalScrollBar();
    const int line = LineHeight(), page = (viewport()->height() / line - 1) * line;
    const int first = bar.value() / line * line;
    switch (where) {
        case Scroll::Top:
            bar.setValue(0);
            break;
        case Scroll::PageUp:
            bar.setValue(first - page);
            break;
        case Scroll::LineUp:
            bar.setValue(first - line);
            break;
        case Scroll::LineDown:
            bar.setValue(first + line);
            break;
        case Scroll::PageDown:
            bar.setValue(first + page);
            break;
        case Scroll::Bottom:
            bar.setValue(bar.maximum());
            break;
    }
    setFocus();
}

int cTreeView::WidestLine() const {
    const RecordTree& tree = Tree();
    std::vector<int> widths(tree.TextCount(), -1);
    std::vector<NodeIndex> openEnds;  // Of the branches that the line hangs from.
    int widest = 0;
    for (const NodeIndex node : lines_->Branches().Lines()) {
        while (!openEnds.empty() && node >= openEnds.back()) openEnds.pop_back();
        openEnds.push_back(tree.SubtreeEnd(node));
        int& width = widths[tree.TextIdOf(node)];
        if (width < 0) width = fontMetrics().horizontalAdvance(QString::fromStdString(tree.Text(node)));
        const int level = static_cast<int>(openEnds.size());
        widest = std::max(widest, TreeLineDelegate::TextLeft(level) + width);
    }
    return widest + TreeLineDelegate::kTextMargin;
}

// The list brings lines into view from top to bottom only; a deep node's text is also far to the right.
void cTreeView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    LineListView::scrollTo(index, hint);
    const NodeIndex node = lines_->NodeOf(index);
    if (node == kNoNode) return;
    const int width = fontMetrics().horizontalAdvance(index.data().toString());
    const int left = TreeLineDelegate::TextLeft(Tree().Level(node));
    QScrollBar& bar = *horizontalScrollBar();
    const int needed = left + width + TreeLineDelegate::kTextMargin - viewport()->width();
    bar.setValue(std::min(std::max(bar.value(), needed), left - TreeLineDelegate::TextLeft(1)));
}

NodeIndex cTreeView::SignAt(QPoint place) const {
    const NodeIndex node = lines_->NodeOf(indexAt(place));
    if (node == kNoNode || !lines_->Branches().HasChildren(node)) return kNoNode;
    const int x = place.x() + horizontalOffset();
    const int right = Tree().Level(node) * TreeLineDelegate::kIndentation;
    return x < right && x >= right - TreeLineDelegate::kIndentation ? node : kNoNode;
}

void cTreeView::mousePressEvent(QMouseEvent* event) {
    const NodeIndex sign = SignAt(event->position().toPoint());
    pressedSign_ = event->button() == Qt::LeftButton && sign != kNoNode;
    if (pressedSign_) {
        SetExpanded(sign, !lines_->Branches().Expanded(sign));
    } else {
        LineListView::mousePressEvent(event);
    }
}

void cTreeView::mouseReleaseEvent(QMouseEvent* event) {
    if (!pressedSign_) LineListView::mouseReleaseEvent(event);
    pressedSign_ = false;
}

// The second press of a double click is one more press.
void cTreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (SignAt(event->position().toPoint()) != kNoNode) mousePressEvent(event);
}

// A press that is dragged over other lines selects none of them.
void cTreeView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    const bool inside = viewport()->rect().contains(place);
    emit NodeHovered(inside ? lines_->NodeOf(indexAt(place)) : kNoNode, place);
}

void cTreeView::leaveEvent(QEvent* event) {
    LineListView::leaveEvent(event);
    emit NodeHovered(kNoNode, {});
}

void cTreeView::keyPressEvent(QKeyEvent* event) {
    const NodeIndex node = SelectedNode();
    if (node == kNoNode) return LineListView::keyPressEvent(event);
    const ExtendedTreeView& branches = lines_->Branches();
    const bool open = branches.Expanded(node) && branches.HasChildren(node);
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            emit NodeClicked(node);
            break;
        case Qt::Key_Right:
            if (open) {
                Select(node + 1);
            } else {
                SetExpanded(node, true);
            }
            break;
        case Qt::Key_Left:
            if (open) {
                SetExpanded(node, false);
            } else if (Tree().Parent(node) != kNoNode) {
                Select(Tree().Parent(node));
            }
            break;
        default:
            LineListView::keyPressEvent(event);
    }
}

}  // namespace norvelis::ui
