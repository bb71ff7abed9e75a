#pragma once

#include <functional>

#include "browse/record_tree.h"
#include "ui/forms/draw_choices.h"
#include "ui/forms/form.h"

class QBoxLayout;

namespace norvelis {
struct TreeVariant;
}

namespace norvelis::ui {

class cTreeView;
class ButtonRow;
class NodeHover;
class SearchBox;

/// What the screens that show the whole record tree share: the tree with paging, search, expand, collapse
/// and refresh, what a click on a node and the mouse over one do.
class TreeForm : public Form {
    Q_OBJECT

  public:
    static constexpr int kGap = 6, kMargin = 16;  ///< Between controls, and around them.

    /// A click on a node: it turns red and the isolate screen opens on it. A failed look-up is ignored.
    void ClickNode(NodeIndex node);

  protected:
    TreeForm(const ScreenContext& context, const QString& name, const QString& caption, QSize size,
             const TreeVariant& variant);

    // The parts of the screen, to be put together by each.
    QBoxLayout* TreeAndPaging();
    QBoxLayout* SearchRow();
    ButtonRow* TreeButtons();
    /// The entries that draw a part of the schema of the record that is pointed at.
    void AddDrawing(ContextMenu& menu, const std::function<PointedRecord()>& record);

    virtual void loadtreeform();  ///< Fills the tree from the store, under the wait cursor.
    void process_Refresh();       ///< The same without wait cursor.
    void RunLoad();               ///< loadtreeform as a long command.

    cTreeView* Tview_;
    NodeHover* hover_;

  private:
    QBoxLayout* PagingStrip();
    void ShowInReport();

    const TreeVariant& variant_;
    SearchBox* search_;
};

}  // namespace norvelis::ui
