#include "ui/screens/browse/frm_treeview.h"

#include <QHBoxLayout>
#include <QSplitter>

#include "base/failure.h"
#include "base/paths.h"
#include "browse/found_name.h"
#include "browse/tree_load.h"
#include "commands/frame_commands.h"
#include "core/log.h"
#include "core/places.h"
#include "core/settings.h"
#include "diagram/draw_chosen.h"
#include "diagram/draw_commands.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/drawing_files.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/vbal_progress_bar.h"
#include "ui/forms/cancel_button.h"
#include "ui/forms/drawing_panel.h"
#include "ui/screens/browse/node_hover.h"
#include "ui/screens/browse/screen_drawing.h"

namespace norvelis::ui {

namespace {

constexpr int kTreeSide = 376;  // The part with the tree, at first.
constexpr int kProgressHeight = 20;

constexpr DrawingPanel::Words kPanelWords{"Draw IDMS schema in a single page",
                                          "Print the Diagram showing on the right", "Label1",
                                          "You must select and Draw a record diagram then PRINT it"};

}  // namespace

frm_Treeview::frm_Treeview(const ScreenContext& context)
    : TreeForm(context, "frm_Treeview", "RECORDS TREEVIEW", QSize(850, 510), kTreeview) {
    auto* tree = new QVBoxLayout;
    tree->setSpacing(kGap);
    tree->addLayout(TreeAndPaging(), 1);
    tree->addLayout(SearchRow());
    ButtonRow* buttons = TreeButtons();
    SkinButton* maximize = buttons->Add("Max", "MAXIMIZE", "View Larger Tree View", [this] { Maximize(); });
    Context().commands.DisableWhileBusy(maximize);
    ContextMenu menu(Tview_);
    menu.Add("&Larger tree", maximize);
    menu.AddLine();
    for (const char* entry :
         {"mnu_Draw_Fancy_Single", "mnu_Draw_Fancy_Separate", "mnu_Classic_Extract_Report"})
        menu.Add(Context().menuEntry(entry));
    tree->addLayout(buttons);
    auto* columns = new QSplitter(Qt::Horizontal, this);
    columns->setChildrenCollapsible(false);
    columns->setHandleWidth(kMargin);
    auto* treeSide = new QWidget(columns);
    tree->setContentsMargins(0, 0, 0, 0);
    treeSide->setLayout(tree);
    panel_ = new DrawingPanel(context, kPanelWords, this);
    hover_->ShowDrawingsIn(panel_->Drawing());
    connect(&panel_->Drawing(), &DrawingControl2::ShapeClicked, Tview_, &cTreeView::SelectRecord);
    connect(panel_, &DrawingPanel::DrawWanted, this, &frm_Treeview::DrawSinglePage);
    connect(panel_, &DrawingPanel::ByAreaWanted, this, [this](const std::string& schema) {
        DrawPart({schema, {.kind = RecordChoice::Kind::ByArea}});
    });
    ContextMenu drawing(&panel_->Drawing());
    AddDrawing(drawing, [this]() -> PointedRecord {
        const NodeIndex node = Tview_->SelectedNode();
        if (node == kNoNode) return {};
        return {Tview_->Tree().Schema(node), panel_->Drawing().SelectedShape().toStdString()};
    });
    columns->addWidget(panel_);
    columns->setStretchFactor(1, 1);
    columns->setSizes({kTreeSide, Body().width() - kTreeSide});
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, Body().top() + 12, kMargin, 10);
    rows->setSpacing(8);
    rows->addWidget(columns, 1);
    rows->addLayout(ProgressRow());
}

QBoxLayout* frm_Treeview::ProgressRow() {
    lblFile_ = new ElidedLabel("lblFile", {}, this);
    lblFile_->setFixedHeight(kProgressHeight);
    lblStatus_ = new ElidedLabel("lblStatus", {}, this);
    vbalProgressBar1_ = new vbalProgressBar("vbalProgressBar1", this);
    vbalProgressBar3_ = new vbalProgressBar("vbalProgressBar3", this);
    auto* row = new QHBoxLayout;
    row->setSpacing(kGap);
    row->addWidget(lblFile_, 2);
    row->addWidget(lblStatus_, 2);
    row->addWidget(vbalProgressBar1_, 3);
    row->addWidget(vbalProgressBar3_, 3);
    AddCancelButton(Context(), *row, this);
    return row;
}

void frm_Treeview::Load() {
    AppState& app = App();
    const auto log = [&app](std::string_view line) {
        WriteToProcessLog(app, "Form Treeview", "Form_Load", line);
    };
    for (const char* made :
         {"entering.....", "call InitializeTreeview.....", "In InitializeTreeview.....",
          "Exiting InitializeTreeview.....", "Done InitializeTreeview.....", "LoadINISettings....."}) {
        log(made);
    }
    Form::Load();
    log("Done LoadINISettings.....");
    log("DrawingControl2.....");
    panel_->Drawing().SetSrc({});
    log("Done DrawingControl2.....");
    log("DB check.....");
    if (FileExists(app.AppPath(places::kStore))) {
        log("DB Found.....");
    } else {
        app.host.MessageBox("Please locate and extract IDMS Report File.");
        log("DB missing.....");
        app.host.WaitCursor(false);
    }
    log("Done DB check.....");
    log("vbalProgressBar1.....");
    app.progress.SetText(Bar::TreeviewText, "Loading Shapes. Please wait..");
    log("call getvisiolocation.....");
    getvisiolocation(app);
    log("Completed without errors.....");
}

void frm_Treeview::loadtreeform() {
    AppState& app = App();
    const auto log = [&app](std::string_view line) {
        WriteToProcessLog(app, "Treeview", "loadtreeform", line);
    };
    log("Entered form treeview.....");
    log("frm_Treeview.process_Refresh....");
    TreeForm::loadtreeform();
    log("Done....");
}

void frm_Treeview::Take(const ScreenRequest& request) {
    if (std::holds_alternative<LoadTree>(request)) RunLoad();
    if (std::holds_alternative<RefreshTree>(request)) process_Refresh();
    if (const auto* draw = std::get_if<DrawDictionary>(&request)) DrawAll(draw->singlePage);
    if (const auto* draw = std::get_if<DrawChosen>(&request)) DrawPart(*draw);
    if (const auto* show = std::get_if<ShowInTree>(&request)) Show(show->found);
}

void frm_Treeview::Show(const FoundName& found) {
    hover_->Hide();
    if (Tview_->Tree().Size() == 0 && !Context().commands.Busy()) RunLoad();
    const NodeIndex node = NodeOf(Tview_->Tree(), found);
    if (node == kNoNode) return Context().request(ShowInList{found});
    App().host.OpenScreen(Screen::Treeview, false);
    Tview_->Select(node);
    Tview_->MarkRed(node);
    Tview_->setFocus();
    if (!Context().commands.Busy()) ShowInDrawing(found);  // Otherwise one may be growing there.
}

// The drawings of the whole schema have everything; the record's own may be all there is.
void frm_Treeview::ShowInDrawing(const FoundName& found) {
    const std::string folder = DrawingFolder(App());
    QString file;
    for (const std::string& name : {found.schema, found.schema + kByAreaDrawing, found.record}) {
        file = SavedDrawing(folder, found.schema, name);
        if (!file.isEmpty()) break;
    }
    if (file.isEmpty()) return;
    DrawingControl2& drawing = panel_->Drawing();
    drawing.SetSrc(file);
    if (found.kind == FindKind::Schema) return drawing.Fit();
    if (found.kind == FindKind::Set) return drawing.ShowSet({found.name, found.record, found.member});
    drawing.ShowShape(QString::fromStdString(found.record));
}

void frm_Treeview::DrawSinglePage() {
    Context().commands.Run({"Draw Diagram", Screen::Treeview}, [this] {
        commands::DrawSinglePage(App(), [this](bool single) { DrawAll(single); });
    });
}

void frm_Treeview::DrawAll(bool singlePage) {
    AppState& app = App();
    const clsHourglass hourglass(app.host);
    if (Tview_->Tree().Size() == 0) process_Refresh();  // It may not have been filled yet.
    try {
        ScreenDrawing drawing(Context(), *Tview_, *panel_);
        drawing.showFile = [this](const QString& file) { lblFile_->setText(file); };
        drawing.State().gSingleDrawing = singlePage;
        DrawVisioDiagram(drawing.State(), &drawing.Tree());
        if (singlePage && drawing.OnShow() && !drawing.State().options.pageForEachArea)
            panel_->ProposeByArea(SizeHint(drawing.State()), drawing.State().gDrawSchema);
    } catch (const RuntimeFailure& failure) {
        WriteToErrorLog(app, "frmTreeview", "DrawVisioDiagram", failure.what(),
                        static_cast<int>(failure.Number()));
    }
}

void frm_Treeview::DrawPart(const DrawChosen& part) {
    App().host.OpenScreen(Screen::Treeview, false);
    Context().commands.Run({"Draw Diagram", Screen::Treeview}, [this, &part] {
        const clsHourglass hourglass(App().host);
        ScreenDrawing drawing(Context(), *Tview_, *panel_);
        drawing.showFile = [this](const QString& file) { lblFile_->setText(file); };
        DrawChosenRecords(drawing.State(), part.schema, part.choice);
    });
}

void frm_Treeview::Maximize() {
    hover_->Hide();
    const clsHourglass hourglass(App().host);
    Context().request(ShowLargerTree{});
}

void frm_Treeview::ShowStatus(const QString& text) {
    lblStatus_->setText(text);
}

void frm_Treeview::ShowProgress(Bar bar, const ProgressBar& state) {
    (bar == Bar::TreeviewText ? vbalProgressBar1_ : vbalProgressBar3_)->Show(state);
}

}  // namespace norvelis::ui
