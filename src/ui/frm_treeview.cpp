#include "ui/frm_treeview.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QTreeView>

#include "browse/tree_load.h"
#include "core/log.h"
#include "ui/mdi_main_menu.h"
#include "ui/picture_controls.h"
#include "ui/record_tree_model.h"
#include "ui/vbal_progress_bar.h"

namespace norvelis::ui {

frm_Treeview::frm_Treeview(mdiMainMenu& frame)
    : Form(frame, "frm_Treeview", "RECORDS TREEVIEW", QSize(850, 510)) {
    RecordTree empty(frame.App().random);
    empty.Complete();
    model_ = new RecordTreeModel(std::move(empty), this);
    Tview_ = new QTreeView(this);
    Tview_->setObjectName("Tview");
    Tview_->setAccessibleName("Schemas and records");
    Tview_->setModel(model_);
    Tview_->setHeaderHidden(true);
    Tview_->setUniformRowHeights(true);
    Tview_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lblStatus_ = MakeLabel(this, "lblStatus", {});
    vbalProgressBar1_ = new vbalProgressBar("vbalProgressBar1", this);
    vbalProgressBar3_ = new vbalProgressBar("vbalProgressBar3", this);

    auto* refresh = new SkinButton("cmdRefresh", "REFRESH", this);
    refresh->setToolTip("Click to Reload the Treev view");
    auto* expand = new SkinButton("ExpandAll", "EXPAND", this);
    expand->setToolTip("Expand the Tree View");
    auto* collapse = new SkinButton("CollapseAll", "COLLAPSE", this);
    collapse->setToolTip("Compress  the Tree View");
    connect(refresh, &QPushButton::clicked, &frame, &mdiMainMenu::loadtreeform);
    connect(expand, &QPushButton::clicked, Tview_, &QTreeView::expandAll);
    connect(collapse, &QPushButton::clicked, Tview_, &QTreeView::collapseAll);
    connect(&frame, &mdiMainMenu::BusyChanged, refresh, &QWidget::setDisabled);
    auto* again = new QShortcut(QKeySequence::Refresh, this);
    again->setContext(Qt::WidgetWithChildrenShortcut);
    connect(again, &QShortcut::activated, &frame, &mdiMainMenu::loadtreeform);

    auto* buttons = new QHBoxLayout;
    for (SkinButton* button : {refresh, expand, collapse}) buttons->addWidget(button);
    buttons->addStretch();
    auto* bars = new QHBoxLayout;
    bars->addWidget(lblStatus_, 1);
    bars->addWidget(vbalProgressBar1_, 1);
    bars->addWidget(vbalProgressBar3_, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(18, Body().top() + 14, 18, 14);
    column->setSpacing(10);
    column->addLayout(buttons);
    column->addWidget(Tview_, 1);
    column->addLayout(bars);
}

void frm_Treeview::loadtreeform() {
    AppState& app = Frame().App();
    const auto log = [&app](std::string_view line) {
        WriteToProcessLog(app, "Treeview", "loadtreeform", line);
    };
    log("Entered form treeview.....");
    const clsHourglass hourglass(app.host);
    log("frm_Treeview.process_Refresh....");
    process_Refresh();
    log("Done....");
}

void frm_Treeview::process_Refresh() {
    AppState& app = Frame().App();
    model_->SetTree(norvelis::process_Refresh(app, *app.gConnection, kTreeview));
    Tview_->expandToDepth(0);
    Tview_->setCurrentIndex(model_->index(0, 0));
}

void frm_Treeview::ShowStatus(const QString& text) {
    lblStatus_->setText(text);
}

void frm_Treeview::ShowProgress(Bar bar, const ProgressBar& state) {
    (bar == Bar::TreeviewText ? vbalProgressBar1_ : vbalProgressBar3_)->Show(state);
}

}  // namespace norvelis::ui
