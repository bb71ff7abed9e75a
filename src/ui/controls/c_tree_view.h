#pragma once

#include "ui/controls/line_list_view.h"
#include "ui/controls/record_tree_model.h"

namespace norvelis::ui {

class TreeLineDelegate;

/// The tree control of the browsing screens: schemas, records and members with their branches. Arrows,
/// paging and letters move about; Right and Left open and close; Return is a click.
class cTreeView : public LineListView {
    Q_OBJECT

  public:
    cTreeView(const QString& name, QWidget* parent);

    void SetTree(RecordTree tree);
    const RecordTree& Tree() const { return lines_->Tree(); }
    NodeIndex SelectedNode() const;

    void Select(NodeIndex node);  ///< And brings it into view.
    /// Selects the nearest node of that text: the selected one itself, else the first of its schema, else the
    /// first of all. False when there is none.
    bool SelectRecord(const QString& name);
    void EnsureVisible(NodeIndex node);  ///< Opens what is closed above it.
    void MarkRed(NodeIndex node) { lines_->MarkRed(node); }
    void ExpandAll();
    void CollapseAll();

    enum class Scroll { Top, PageUp, LineUp, LineDown, PageDown, Bottom };
    /// The paging buttons; the keyboard goes back to the tree.
    void ScrollView(Scroll where);

    void scrollTo(const QModelIndex& index, ScrollHint hint) override;

  signals:
    void NodeClicked(NodeIndex node);
    /// The mouse moved over this node, or the keys to it, at this place of the control; kNoNode when it is
    /// over none.
    void NodeHovered(NodeIndex node, QPoint place);

  protected:
    void mousePressEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void leaveEvent(QEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void focusOutEvent(QFocusEvent*) override;
    int WidestLine() const override;

  private:
    void TakeKey(QKeyEvent*);
    void Rearrange(const std::function<void(ExtendedTreeView&)>& change);
    void SetExpanded(NodeIndex node, bool expanded);
    /// The node whose opening sign is there.
    NodeIndex SignAt(QPoint place) const;

    RecordTreeModel* lines_;
    TreeLineDelegate* delegate_;
    bool pressedSign_ = false;
};

}  // namespace norvelis::ui
