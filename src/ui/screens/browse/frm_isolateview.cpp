#include "ui/screens/browse/frm_isolateview.h"

#include <QScopeGuard>
#include <QVBoxLayout>

#include "base/failure.h"
#include "base/text.h"
#include "browse/record_details.h"
#include "core/settings.h"
#include "diagram/draw_chosen.h"
#include "diagram/draw_commands.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/drawing_files.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/flx_grid.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/controls/split.h"
#include "ui/forms/cancel_button.h"
#include "ui/forms/draw_choices.h"
#include "ui/forms/drawing_panel.h"
#include "ui/screens/browse/node_hover.h"
#include "ui/screens/browse/screen_drawing.h"

namespace norvelis::ui {

namespace {

constexpr int kLeftWidth = 324;

constexpr DrawingPanel::Words kPanelWords{"Draw the record with all that is below it",
                                          "Print the diagram on show", "cmdEdit",
                                          "You must Draw visio diagram then PRINT it"};

}  // namespace

frm_IsolateView::frm_IsolateView(const ScreenContext& context)
    : Form(context, "frm_IsolateView", "RECORDS LEVEL ISOLATION", QSize(850, 510)) {
    QWidget* tree = TreeAndDetails();
    QSplitter* sides =
        Split(Qt::Horizontal, tree, DrawingAndFields(), kLeftWidth, Body().width() - kLeftWidth);
    sides->setStretchFactor(1, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 12, 16, 16);
    column->addWidget(sides);

    hover_ = new NodeHover(*this, *Tviewrec_);
    hover_->ShowDrawingsIn(panel_->Drawing());
    connect(Tviewrec_, &cTreeView::NodeClicked, this, &frm_IsolateView::ClickNode);
    connect(&panel_->Drawing(), &DrawingControl2::ShapeClicked, this, &frm_IsolateView::ClickShape);
    context.commands.DisableWhileBusy(OnKeys(this, Qt::Key_Escape, &QWidget::close));  // Then it cancels.
}

QWidget* frm_IsolateView::TreeAndDetails() {
    Tviewrec_ = new cTreeView("Tviewrec", this);
    FlxGrid_ = new FlxGrid("FlxGrid", kIsolateDetailsHeading, App().host, this);
    FlxGrid_->setToolTip("Record Details");
    Label1_ = new ElidedLabel("Label1", {}, this);
    auto* side = new QWidget(this);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    auto* progress = new QHBoxLayout;
    progress->addWidget(Label1_, 1);
    AddCancelButton(Context(), *progress, this);
    column->addLayout(progress);
    column->addWidget(Split(Qt::Vertical, Tviewrec_, FlxGrid_, 210, 200), 1);
    return side;
}

QWidget* frm_IsolateView::DrawingAndFields() {
    panel_ = new DrawingPanel(Context(), kPanelWords, this);
    connect(panel_, &DrawingPanel::DrawWanted, this, &frm_IsolateView::ProcessSingle);
    ButtonRow& buttons = panel_->Buttons();
    SkinButton* arrange = buttons.Add(
        "cmdApplyLayout", "ARRANGE", "Arrange the diagram on show by this layout", [this] { ApplyLayout(); });
    buttons.insertWidget(1, arrange);  // beside the layouts
    Context().commands.DisableWhileBusy(arrange);
    ContextMenu tree(Tviewrec_);
    tree.Add("&Show in report", [this] {
        const NodeIndex node = Tviewrec_->SelectedNode();
        if (node != kNoNode) Context().request(ShowReport{Tviewrec_->Tree().Text(node)});
    });
    tree.Add("&Draw diagram", [this] { ProcessSingle(); });
    const auto draw = [this](const std::string& schema, const RecordChoice& choice) {
        Draw([&](DrawingState& drawing, const RecordTree&) {
            return DrawChosenRecords(drawing, schema, choice).result;
        });
    };
    connect(panel_, &DrawingPanel::ByAreaWanted, this,
            [draw](const std::string& schema) { draw(schema, {.kind = RecordChoice::Kind::ByArea}); });
    AddDrawChoices(
        tree, Context().commands,
        [this]() -> PointedRecord {
            const NodeIndex node = Tviewrec_->SelectedNode();
            return node == kNoNode ? PointedRecord() : PointedRecord{schema_, Tviewrec_->Tree().Text(node)};
        },
        draw);
    ContextMenu drawing(&panel_->Drawing());
    drawing.Add("&Arrange", arrange);
    AddDrawChoices(
        drawing, Context().commands,
        [this]() -> PointedRecord {
            return {schema_, panel_->Drawing().SelectedShape().toStdString()};
        },
        draw);
    FlxGrid2_ = new FlxGrid("FlxGrid2", kLayoutHeading, App().host, this);
    FlxGrid2_->setToolTip("Record Layout");
    return Split(Qt::Vertical, panel_, FlxGrid2_, 290, 130);
}

void frm_IsolateView::Take(const ScreenRequest& request) {
    const auto* record = std::get_if<IsolateRecord>(&request);
    if (!record) return;
    Isolate(record->tree);
    App().host.OpenScreen(Screen::IsolateView, false);
}

void frm_IsolateView::Isolate(RecordTree tree) {
    const std::string folder = getvisiolocation(App());
    const std::string name = tree.Text(0), schema = tree.Schema(0);
    getinfo(name);
    Tviewrec_->SetTree(std::move(tree));
    Tviewrec_->ExpandAll();
    hover_->Hide();
    panel_->Drawing().SetSrc(SavedDrawing(folder, schema, name));
    schema_ = Trim(schema);
}

void frm_IsolateView::getinfo(const std::string& recordName) {
    const RecordDetails details = norvelis::getinfo(*App().gConnection, recordName);
    FlxGrid_->SetRows(details.items);
    FlxGrid2_->SetRows(details.layout);
    if (!details.currentRecord.empty()) Label1_->setText(QString::fromStdString(details.currentRecord));
}

void frm_IsolateView::ClickNode(NodeIndex node) {
    const std::string name = Tviewrec_->Tree().Text(node);
    if (node == 0 || name == schema_) return;
    const clsHourglass hourglass(App().host);
    try {
        const std::string folder = getvisiolocation(App());
        getinfo(name);
        hover_->Hide();
        panel_->Drawing().SetSrc(SavedDrawing(folder, schema_, name));
    } catch (const RuntimeFailure&) {
        // A failed look-up leaves the screen as it was.
    }
}

void frm_IsolateView::ClickShape(const QString& name) {
    if (Tviewrec_->SelectRecord(name)) getinfo(name.toStdString());
}

void frm_IsolateView::ProcessSingle() {
    Draw([this](DrawingState& drawing, const RecordTree& tree) {
        const DrawResult result = norvelis::ProcessSingle(drawing, schema_, tree);
        const bool isSchema = tree.Size() > 0 && tree.Text(0) == schema_;
        if (isSchema && !drawing.options.pageForEachArea) panel_->ProposeByArea(SizeHint(drawing), schema_);
        return result;
    });
}

void frm_IsolateView::Draw(const std::function<DrawResult(DrawingState&, const RecordTree&)>& draw) {
    Context().commands.Run({"Draw Diagram", Screen::Treeview}, [this, &draw] {
        const clsHourglass hourglass(App().host);
        ScreenDrawing drawing(Context(), *Tviewrec_, *panel_);
        drawing.showText = [this](const QString& text) { Label1_->setText(text); };
        auto labelAsBefore = qScopeGuard([this, &drawing, before = Label1_->text()] {
            if (drawing.OnShow()) Label1_->setText(before);
        });
        if (draw(drawing.State(), drawing.Tree()) == DrawResult::Saved) labelAsBefore.dismiss();
    });
}

void frm_IsolateView::ApplyLayout() {
    const QString file = panel_->Drawing().Src();
    if (file.isEmpty()) return;
    Context().commands.Run({"Arrange", Screen::Treeview}, [this, file] {
        ScreenDrawing drawing(Context(), *Tviewrec_, *panel_);
        const auto result = ApplyLayoutToFile(drawing.State(), file.toStdString());
        if (!result.failure.empty())
            App().host.MessageBox(NotWritten(result));
        else if (!result.saved)
            App().host.MessageBox("This drawing could not be arranged: " + file.toStdString());
        if (result.saved && panel_->Drawing().Src() == file) panel_->Drawing().SetSrc(file);
    });
}

}  // namespace norvelis::ui
