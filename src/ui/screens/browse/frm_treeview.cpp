#include "ui/screens/browse/frm_treeview.h"

#include <QHBoxLayout>
#include <QSplitter>

#include "base/failure.h"
#include "base/paths.h"
#include "browse/tree_load.h"
#include "commands/frame_commands.h"
#include "core/log.h"
#include "core/places.h"
#include "core/settings.h"
#include "diagram/draw_commands.h"
#include "diagram/print_drawing.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/layout_types.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/vbal_progress_bar.h"
#include "ui/screens/browse/node_hover.h"
#include "ui/screens/browse/screen_drawing.h"

namespace norvelis::ui {

namespace {

constexpr int kTreeSide = 376;  // The part with the tree, at first.
constexpr int kProgressHeight = 20;

}  // namespace

frm_Treeview::frm_Treeview(const ScreenContext& context)
    : TreeForm(context, "frm_Treeview", "RECORDS TREEVIEW", QSize(850, 510), kTreeview) {
    SkinButton* maximize = LongCommandButton("Max", "MAXIMIZE", "View Larger Tree View");
    connect(maximize, &QPushButton::clicked, this, &frm_Treeview::Maximize);
    auto* tree = new QVBoxLayout;
    tree->setSpacing(kGap);
    tree->addLayout(TreeAndPaging(), 1);
    tree->addLayout(SearchRow());
    QBoxLayout* buttons = TreeButtons();
    buttons->addWidget(maximize);
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
    for (QLayout* side : {static_cast<QLayout*>(tree), static_cast<QLayout*>(DrawingColumn())}) {
        auto* widget = new QWidget(columns);
        side->setContentsMargins(0, 0, 0, 0);
        widget->setLayout(side);
    }
    columns->setStretchFactor(1, 1);
    columns->setSizes({kTreeSide, Body().width() - kTreeSide});
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, Body().top() + 12, kMargin, 10);
    rows->setSpacing(8);
    rows->addWidget(columns, 1);
    rows->addLayout(ProgressRow());
}

QBoxLayout* frm_Treeview::ProgressRow() {
    lblFile_ = MakeLabel(this, "lblFile", {});
    lblFile_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    lblFile_->setFixedHeight(kProgressHeight);
    lblStatus_ = MakeLabel(this, "lblStatus", {});
    vbalProgressBar1_ = new vbalProgressBar("vbalProgressBar1", this);
    vbalProgressBar3_ = new vbalProgressBar("vbalProgressBar3", this);
    auto* row = new QHBoxLayout;
    row->setSpacing(kGap);
    row->addWidget(lblFile_, 1);
    row->addWidget(lblStatus_);
    row->addWidget(vbalProgressBar1_, 3);
    row->addWidget(vbalProgressBar3_, 3);
    auto* cancel = new SkinButton("cmdCancel", "CANCEL", this);
    cancel->setToolTip("Cancel the running command (Escape)");
    Context().commands.CancelsBy(cancel);
    row->addWidget(cancel);
    return row;
}

QBoxLayout* frm_Treeview::DrawingColumn() {
    DrawingControl2_ = new DrawingControl2("DrawingControl2", Context().openDrawing, this);
    hover_->ShowDrawingsIn(*DrawingControl2_);
    connect(DrawingControl2_, &DrawingControl2::ShapeClicked, Tview_, &cTreeView::SelectRecord);
    LayoutTypes_ = new LayoutTypes(this);
    Context().commands.DisableWhileBusy(LayoutTypes_);
    connect(LayoutTypes_, &QComboBox::activated, this, &frm_Treeview::DrawSinglePage);
    SkinButton* draw = LongCommandButton("cmdDraw", "DRAW DIAGRAM", "Draw IDMS schema in a single page");
    connect(draw, &QPushButton::clicked, this, &frm_Treeview::DrawSinglePage);
    SkinButton* print = LongCommandButton("cmdPrint", "PRINT", "Print the Diagram showing on the right");
    connect(print, &QPushButton::clicked, this, &frm_Treeview::Print);
    auto* edit = new SkinButton("Label1", "EDIT VIEW", this);
    edit->setToolTip("View larger IDMS diagram");
    connect(edit, &QPushButton::clicked, this, [this] {
        hover_->Hide();
        Context().request(ShowDrawing{DrawingControl2_->Src().toStdString()});
    });
    auto* commands = new QHBoxLayout;
    commands->setSpacing(kGap);
    commands->addWidget(LayoutTypes_, 1);
    for (SkinButton* button : {draw, print, edit}) commands->addWidget(button);
    auto* column = new QVBoxLayout;
    column->setSpacing(kGap);
    column->addWidget(DrawingControl2_, 1);
    column->addLayout(commands);
    return column;
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
    DrawingControl2_->SetSrc({});
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
}

void frm_Treeview::DrawSinglePage() {
    Context().commands.Run({"Draw Diagram", Screen::Treeview}, [this] {
        commands::DrawSinglePage(App(), [this](bool single) { DrawAll(single); });
    });
}

void frm_Treeview::DrawAll(bool singlePage) {
    AppState& app = App();
    const clsHourglass hourglass(app.host);
    try {
        ScreenDrawing drawing(Context(), *Tview_, *DrawingControl2_, LayoutTypes_->currentIndex());
        drawing.showFile = [this](const QString& file) {
            lblFile_->setText(lblFile_->fontMetrics().elidedText(file, Qt::ElideMiddle, lblFile_->width()));
            lblFile_->setToolTip(file);
        };
        drawing.State().gSingleDrawing = singlePage;
        // Before the tree was filled the dictionary alone says what there is to draw.
        DrawVisioDiagram(drawing.State(), drawing.Tree().Size() > 0 ? &drawing.Tree() : nullptr);
    } catch (const RuntimeFailure& failure) {
        WriteToErrorLog(app, "frmTreeview", "DrawVisioDiagram", failure.what(),
                        static_cast<int>(failure.Number()));
    }
}

void frm_Treeview::Print() {
    Context().commands.Run({"Print", Screen::Treeview}, [this] {
        PrintDrawing(App(), Context().engine, DrawingControl2_->Src().toStdString(),
                     "You must select and Draw a record diagram then PRINT it");
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
