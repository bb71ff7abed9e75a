#pragma once

#include <QString>
#include <functional>

#include "diagram/drawing_state.h"

namespace norvelis::ui {

class cTreeView;
class DrawingPanel;
struct ScreenContext;

/// One draw command of a screen: what it works on, and how it is seen there. The screen's tree follows the
/// boxes and its panel shows the drawing grow. The person may go on browsing meanwhile: once the
/// tree shows something else, the drawing is finished without touching the screen.
class ScreenDrawing : private DrawScreen {
  public:
    using Show = std::function<void(const QString&)>;

    ScreenDrawing(const ScreenContext& context, cTreeView& tree, DrawingPanel& panel);
    /// A snapshot of a drawing that was not finished gives way to what was on show before, and the tree is
    /// not left scrolled sideways by the boxes that it followed.
    ~ScreenDrawing() override;

    DrawingState& State() { return state_; }
    bool OnShow() const;  ///< The screen still shows what is drawn.
    const RecordTree& Tree() const { return drawn_; }

    Show showText = [](const QString&) {};
    Show showFile = [](const QString&) {};

  private:
    void EnsureVisible(NodeIndex node) override;
    void SelectNode(NodeIndex node) override;
    void MarkNode(NodeIndex node) override;
    void ShowText(const std::string& text) override;
    void ShowFile(const std::string& path) override;

    cTreeView& tree_;
    DrawingPanel& panel_;
    QString before_;
    RecordTree drawn_;
    int sideways_;  ///< How far the tree was scrolled.
    DrawingState state_;
};

}  // namespace norvelis::ui
