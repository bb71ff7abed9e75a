#include "ui/screens/browse/screen_drawing.h"

#include <QScrollBar>

#include "base/paths.h"
#include "diagram/drawing_look.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/forms/drawing_panel.h"
#include "ui/forms/screen_context.h"

namespace norvelis::ui {

ScreenDrawing::ScreenDrawing(const ScreenContext& context, cTreeView& tree, DrawingPanel& panel)
    : tree_(tree),
      panel_(panel),
      before_(panel.Drawing().Src()),
      drawn_(tree.Tree()),
      sideways_(tree.horizontalScrollBar()->value()),
      state_(context.app, *context.app.gConnection, context.engine, *this) {
    state_.options.layout = panel.Layout();
    TakeKeptLook(context.app.gLocalIni, state_.options);
    state_.options.fresh = panel.Fresh();
}

ScreenDrawing::~ScreenDrawing() {
    if (!OnShow()) return;
    tree_.horizontalScrollBar()->setValue(sideways_);
    DrawingControl2& control = panel_.Drawing();
    const std::string shown = control.Src().toStdString();
    if (!shown.empty() && !FileExists(shown)) control.SetSrc(before_);
}

bool ScreenDrawing::OnShow() const {
    return tree_.Tree() == drawn_;
}

void ScreenDrawing::EnsureVisible(NodeIndex node) {
    if (OnShow()) tree_.EnsureVisible(node);
}

void ScreenDrawing::SelectNode(NodeIndex node) {
    if (OnShow()) tree_.Select(node);
}

void ScreenDrawing::MarkNode(NodeIndex node) {
    if (!OnShow()) return;
    tree_.Select(node);
    tree_.MarkRed(node);
}

void ScreenDrawing::ShowText(const std::string& text) {
    if (OnShow()) showText(QString::fromStdString(text));
}

void ScreenDrawing::ShowFile(const std::string& path) {
    if (!OnShow()) return;
    const QString file = QString::fromStdString(path);
    panel_.Drawing().SetSrc(FileExists(path) ? file : QString());
    showFile(file);
}

}  // namespace norvelis::ui
