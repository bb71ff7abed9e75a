#include "ui/screens/browse/tree_form.h"

#include <QHBoxLayout>
#include <QScopeGuard>
#include <functional>

#include "base/failure.h"
#include "browse/tree_load.h"
#include "ui/controls/button_row.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/drawing_files.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/search_box.h"
#include "ui/screens/browse/node_hover.h"

namespace norvelis::ui {

namespace {

struct PagingButton {
    const char *caption, *toolTip, *spoken;
};
constexpr PagingButton kPaging[] = {
    {"HM", "Go to Top of Treeview", "Top"}, {"PUP", "Page Up", "Page up"},
    {"UP", "Scroll 1 line up", "Line up"},  {"DN", "Scroll 1 line down", "Line down"},
    {"PDN", "Page Down", "Page down"},      {"END", "Go to bottom of tree view", "Bottom"}};
constexpr int kPagingAir = 14;  ///< Beside the caption of a paging button.
constexpr auto kNoSchema = "No schema yet: IDMS Report > Extract IDMS Report";

QBoxLayout* Row() {
    auto* row = new QHBoxLayout;
    row->setSpacing(TreeForm::kGap);
    return row;
}

}  // namespace

TreeForm::TreeForm(const ScreenContext& context, const QString& name, const QString& caption, QSize size,
                   const TreeVariant& variant)
    : Form(context, name, caption, size),
      Tview_(new cTreeView("Tview", this)),
      hover_(new NodeHover(*this, *Tview_)),
      variant_(variant),
      search_(new SearchBox(context.app.host, *Tview_, this)) {
    Tview_->SetEmptyText(kNoSchema);
    connect(Tview_, &cTreeView::NodeClicked, this, &TreeForm::ClickNode);
    connect(search_, &SearchBox::Searching, hover_, &NodeHover::Hide);
    OnKeys(this, QKeySequence::Refresh, [this] { RunLoad(); });
}

QBoxLayout* TreeForm::TreeAndPaging() {
    auto* row = Row();
    row->addWidget(Tview_, 1);
    row->addLayout(PagingStrip());
    return row;
}

QBoxLayout* TreeForm::SearchRow() {
    auto* row = Row();
    row->addWidget(search_->Text1(), 1);
    row->addWidget(search_->Button());
    return row;
}

ButtonRow* TreeForm::TreeButtons() {
    const auto underWaitCursor = [this](void (cTreeView::*command)()) {
        return [this, command] {
            hover_->Hide();
            const clsHourglass hourglass(App().host);
            std::invoke(command, *Tview_);
        };
    };
    auto* row = new ButtonRow(this);
    SkinButton* expand =
        row->Add("ExpandAll", "EXPAND", "Expand the Tree View", underWaitCursor(&cTreeView::ExpandAll));
    SkinButton* collapse = row->Add("CollapseAll", "COLLAPSE", "Compress  the Tree View",
                                    underWaitCursor(&cTreeView::CollapseAll));
    SkinButton* refresh =
        row->Add("cmdRefresh", "REFRESH", "Click to Reload the Treev view", [this] { RunLoad(); });
    Context().commands.DisableWhileBusy(refresh);
    ContextMenu menu(Tview_);
    menu.Add("&Show in report", [this] { ShowInReport(); });
    AddDrawing(menu, [this]() -> PointedRecord {
        const NodeIndex node = Tview_->SelectedNode();
        if (node == kNoNode) return {};
        hover_->Hide();
        return {Tview_->Tree().Schema(node), Tview_->Tree().Text(node)};
    });
    menu.AddLine();
    menu.Add("&Expand all", expand);
    menu.Add("Co&llapse all", collapse);
    menu.Add("&Refresh\tF5", refresh);
    menu.Add("&Help\tF1", [this] { Context().request(ShowHelp{Screen::Treeview}); });
    return row;
}

void TreeForm::AddDrawing(ContextMenu& menu, const std::function<PointedRecord()>& record) {
    AddDrawChoices(menu, Context().commands, record,
                   [this](const std::string& schema, const RecordChoice& choice) {
                       Context().request(DrawChosen{schema, choice});
                   });
}

QBoxLayout* TreeForm::PagingStrip() {
    auto* strip = new QVBoxLayout;
    strip->setSpacing(kGap);
    for (int i = 0; i < static_cast<int>(std::size(kPaging)); ++i) {
        const PagingButton& paging = kPaging[i];
        auto* button = new SkinButton(QString("cmdMove%1").arg(i), paging.caption, this);
        button->setToolTip(paging.toolTip);
        button->setAccessibleName(paging.spoken);
        button->setFixedWidth(button->fontMetrics().horizontalAdvance("PDN") + kPagingAir);
        connect(button, &QPushButton::clicked, Tview_,
                [this, i] { Tview_->ScrollView(static_cast<cTreeView::Scroll>(i)); });
        strip->addWidget(button);
        if (i == 2) strip->addStretch();
    }
    return strip;
}

void TreeForm::RunLoad() {
    Context().commands.Run({"Loading the tree", Screen::Treeview}, [this] {
        const RecordTree before = Tview_->Tree();
        App().host.SetAfterCancel("The tree is as it was before.");
        try {
            loadtreeform();
        } catch (const Canceled&) {
            Tview_->SetTree(before);
            throw;
        }
    });
}

void TreeForm::ShowInReport() {
    const NodeIndex node = Tview_->SelectedNode();
    if (node == kNoNode) return;
    hover_->Hide();
    const bool isSchema = Tview_->Tree().Level(node) == 1;
    Context().request(ShowReport{isSchema ? std::string() : Tview_->Tree().Text(node)});
}

void TreeForm::loadtreeform() {
    hover_->Hide();
    const clsHourglass hourglass(App().host);
    process_Refresh();
}

void TreeForm::process_Refresh() {
    AppState& app = App();
    Tview_->SetEmptyText({});  // It is not empty but being filled.
    const auto filled = qScopeGuard([this] { Tview_->SetEmptyText(kNoSchema); });
    Tview_->SetTree({});
    Tview_->SetTree(norvelis::process_Refresh(app, *app.gConnection, variant_));
}

void TreeForm::ClickNode(NodeIndex node) {
    AppState& app = App();
    const RecordTree tree = Tview_->Tree();  // Turns of the event loop may bring another one.
    hover_->Hide();
    const clsHourglass hourglass(app.host);
    try {
        app.gSchemaName = tree.Schema(node);
        if (Tview_->Tree() == tree) Tview_->MarkRed(node);
        Context().request(IsolateRecord{tree.Subtree(node)});
    } catch (const RuntimeFailure&) {
        // A failed look-up leaves the screens as they were.
    }
}

}  // namespace norvelis::ui
