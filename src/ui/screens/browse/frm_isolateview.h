#pragma once

#include "browse/record_tree.h"
#include "diagram/draw_sequence.h"
#include "ui/forms/form.h"

namespace norvelis::ui {

class cTreeView;
class DrawingPanel;
class FlxGrid;
class NodeHover;

/// One record with everything below it, taken out of its schema: its tree, details and layout, and a drawing
/// of these records alone.
class frm_IsolateView : public Form {
    Q_OBJECT

  public:
    explicit frm_IsolateView(const ScreenContext& context);

    void Take(const ScreenRequest& request) override;  ///< IsolateRecord.

    /// Fills both grids; the label too when there is such a record.
    void getinfo(const std::string& recordName);
    /// Draws the contents of the tree.
    void ProcessSingle();

  private:
    void Isolate(RecordTree tree);
    QWidget* TreeAndDetails();
    QWidget* DrawingAndFields();
    void ClickNode(NodeIndex node);
    void ClickShape(const QString& name);
    void ApplyLayout();
    void Draw(const std::function<DrawResult(DrawingState&, const RecordTree&)>& draw);

    cTreeView* Tviewrec_;
    NodeHover* hover_;
    FlxGrid *FlxGrid_, *FlxGrid2_;
    QLabel* Label1_;
    DrawingPanel* panel_;
    std::string schema_;
};

}  // namespace norvelis::ui
