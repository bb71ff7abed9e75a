#pragma once

#include <QObject>
#include <QPoint>
#include <QTimer>
#include <string>

#include "browse/record_tree.h"

namespace norvelis::ui {

class cTreeView;
class DrawingControl2;
class Form;
class frmToolTip;
class frmToolTip2;

/// What a screen shows of the node that the mouse rests on: the tool tip of a record or schema and, beside
/// the tree, the drawing last saved for it. On its way to a button the mouse crosses other nodes, which
/// changes nothing. The store is read only when the mouse rests on another text.
class NodeHover : public QObject {
  public:
    /// Records alone.
    NodeHover(Form& form, cTreeView& tree);
    /// From now on of schemas too, and shows the drawings.
    void ShowDrawingsIn(DrawingControl2& control) { preview_ = &control; }

    void Hide();

  private:
    void Moved(NodeIndex node, QPoint place);
    void Rested();
    void ShowRecord(const std::string& schema, const std::string& record, QPoint place);
    void ShowSchema(const std::string& schema, QPoint place);
    void ShowDrawing(const std::string& schema, const std::string& name);

    Form& form_;
    cTreeView& tree_;
    DrawingControl2* preview_ = nullptr;
    frmToolTip* recordTip_;
    frmToolTip2* schemaTip_;
    std::string hoverText_;  ///< Of the node that is shown.
    QTimer rest_;            ///< Runs while the mouse is over a node of another text.
    std::string restSchema_, restText_;
    QPoint restPlace_;  ///< In the tree.
};

}  // namespace norvelis::ui
