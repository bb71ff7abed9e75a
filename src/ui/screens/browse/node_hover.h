#pragma once

#include <QObject>
#include <string>

#include "browse/record_tree.h"

namespace norvelis::ui {

class cTreeView;
class DrawingControl2;
class Form;
class frmToolTip;
class frmToolTip2;

/// What a screen shows of the node under the mouse: the tool tip of a record or schema and, beside the tree,
/// the drawing last saved for it. The store is read only when the mouse reaches another text.
class NodeHover : public QObject {
  public:
    /// Records alone.
    NodeHover(Form& form, cTreeView& tree);
    /// From now on of schemas too, and shows the drawings.
    void ShowDrawingsIn(DrawingControl2& control) { preview_ = &control; }

    void Hide();

  private:
    void Moved(NodeIndex node, QPoint place);
    void ShowRecord(const std::string& schema, const std::string& record, QPoint place);
    void ShowSchema(const std::string& schema, QPoint place);
    void ShowDrawing(const std::string& schema, const std::string& name);

    Form& form_;
    cTreeView& tree_;
    DrawingControl2* preview_ = nullptr;
    frmToolTip* recordTip_;
    frmToolTip2* schemaTip_;
    std::string hoverText_;
};

}  // namespace norvelis::ui
