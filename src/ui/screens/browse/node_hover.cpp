#include "ui/screens/browse/node_hover.h"

#include <chrono>

#include "base/failure.h"
#include "base/text.h"
#include "browse/record_details.h"
#include "core/settings.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/drawing_files.h"
#include "ui/forms/form.h"
#include "ui/screens/browse/frm_tooltip.h"
#include "ui/screens/browse/frm_tooltip2.h"

namespace norvelis::ui {

namespace {

constexpr int kTipOffset = 1000 / 15;
constexpr auto kRest = std::chrono::milliseconds(200);

}  // namespace

NodeHover::NodeHover(Form& form, cTreeView& tree)
    : QObject(&form),
      form_(form),
      tree_(tree),
      recordTip_(new frmToolTip(&form)),
      schemaTip_(new frmToolTip2(&form)),
      rest_(this) {
    rest_.setObjectName("rest");
    rest_.setSingleShot(true);
    rest_.setInterval(kRest);
    connect(&rest_, &QTimer::timeout, this, &NodeHover::Rested);
    connect(&tree, &cTreeView::NodeHovered, this, &NodeHover::Moved);
    connect(&form, &Form::Closed, this, &NodeHover::Hide);
    connect(&form, &Form::Minimized, this, &NodeHover::Hide);
}

void NodeHover::Hide() {
    rest_.stop();
    recordTip_->hide();
    schemaTip_->hide();
}

void NodeHover::Moved(NodeIndex node, QPoint place) {
    rest_.stop();
    if (node == kNoNode) {
        hoverText_.clear();
        Hide();
        return;
    }
    restText_ = Trim(tree_.Tree().Text(node));
    if (restText_.empty()) return recordTip_->hide();
    if (restText_ == hoverText_) return;
    restSchema_ = tree_.Tree().Schema(node);
    restPlace_ = place;
    rest_.start();
}

void NodeHover::Rested() {
    hoverText_ = restText_;
    AppState& app = form_.App();
    app.gSchemaName = restSchema_;
    const QPoint tip = form_.mapToGlobal(restPlace_) + QPoint(kTipOffset, kTipOffset);
    try {
        if (hoverText_ != app.gSchemaName) {
            ShowRecord(app.gSchemaName, hoverText_, tip);
        } else {
            ShowSchema(app.gSchemaName, tip);
        }
        ShowDrawing(app.gSchemaName, hoverText_);
    } catch (const RuntimeFailure&) {
        // What cannot be looked up leaves the screen as it was.
    }
}

void NodeHover::ShowRecord(const std::string& schema, const std::string& record, QPoint place) {
    schemaTip_->hide();
    const auto labels = ReadRecordLabels(*form_.App().gConnection, schema, record);
    if (!labels) return;
    recordTip_->Fill(*labels);
    recordTip_->ShowAt(place);
}

void NodeHover::ShowSchema(const std::string& schema, QPoint place) {
    recordTip_->hide();
    if (!preview_) return;
    const auto labels = ReadSchemaLabels(*form_.App().gConnection, schema);
    if (!labels) return;
    schemaTip_->Fill(*labels);
    schemaTip_->ShowAt(place);
}

// A drawing that is being made keeps the control.
void NodeHover::ShowDrawing(const std::string& schema, const std::string& name) {
    if (!preview_ || form_.Context().commands.Busy()) return;
    preview_->SetSrc(SavedDrawing(DrawingFolder(form_.App()), schema, name));
}

}  // namespace norvelis::ui
