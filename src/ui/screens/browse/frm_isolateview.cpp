#include "ui/screens/browse/frm_isolateview.h"

#include <QHBoxLayout>
#include <QScopeGuard>
#include <QShortcut>
#include <QSplitter>

#include "base/failure.h"
#include "base/text.h"
#include "browse/record_details.h"
#include "core/settings.h"
#include "diagram/draw_commands.h"
#include "diagram/print_drawing.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/drawing_files.h"
#include "ui/controls/flx_grid.h"
#include "ui/controls/layout_types.h"
#include "ui/controls/picture_controls.h"
#include "ui/screens/browse/node_hover.h"
#include "ui/screens/browse/screen_drawing.h"

namespace norvelis::ui {

namespace {

constexpr int kLeftWidth = 324;

QSplitter* Stacked(QWidget* upper, QWidget* lower, int upperHeight, int lowerHeight) {
    auto* stack = new QSplitter(Qt::Vertical);
    stack->setChildrenCollapsible(false);
    stack->setHandleWidth(8);
    stack->addWidget(upper);
    stack->addWidget(lower);
    stack->setSizes({upperHeight, lowerHeight});
    return stack;
}

}  // namespace

frm_IsolateView::frm_IsolateView(const ScreenContext& context)
    : Form(context, "frm_IsolateView", "RECORDS LEVEL ISOLATION", QSize(850, 510)) {
    auto* sides = new QSplitter(Qt::Horizontal, this);
    sides->setChildrenCollapsible(false);
    sides->setHandleWidth(10);
    sides->addWidget(TreeAndDetails());
    sides->addWidget(DrawingAndLayout());
    sides->setStretchFactor(1, 1);
    sides->setSizes({kLeftWidth, Body().width() - kLeftWidth});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 12, 16, 16);
    column->setSpacing(8);
    column->addWidget(sides, 1);
    column->addLayout(Commands());

    hover_ = new NodeHover(*this, *Tviewrec_);
    hover_->ShowDrawingsIn(*DrawingControl2_);
    connect(Tviewrec_, &cTreeView::NodeClicked, this, &frm_IsolateView::ClickNode);
    connect(DrawingControl2_, &DrawingControl2::ShapeClicked, this, &frm_IsolateView::ClickShape);
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, &QWidget::close);
    context.commands.DisableWhileBusy(escape);  // Then it cancels.
}

QWidget* frm_IsolateView::TreeAndDetails() {
    Tviewrec_ = new cTreeView("Tviewrec", this);
    FlxGrid_ = new FlxGrid("FlxGrid", kIsolateDetailsHeading, App().host, this);
    FlxGrid_->setToolTip("Record Details");
    return Stacked(Tviewrec_, FlxGrid_, 200, 190);
}

QWidget* frm_IsolateView::DrawingAndLayout() {
    DrawingControl2_ = new DrawingControl2("DrawingControl2", Context().openDrawing, this);
    FlxGrid2_ = new FlxGrid("FlxGrid2", kLayoutHeading, App().host, this);
    FlxGrid2_->setToolTip("Record Layout");
    return Stacked(DrawingControl2_, FlxGrid2_, 240, 150);
}

QLayout* frm_IsolateView::Commands() {
    Label1_ = MakeLabel(this, "Label1", {});
    LayoutTypes_ = new LayoutTypes(this);
    connect(LayoutTypes_, &QComboBox::activated, this, &frm_IsolateView::ProcessSingle);
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(Label1_, 1);
    auto* cancel = new SkinButton("cmdCancel", "CANCEL", this);
    cancel->setToolTip("Cancel the running command (Escape)");
    Context().commands.CancelsBy(cancel);
    row->addWidget(cancel);
    row->addWidget(LayoutTypes_);
    const auto addButton = [&](const QString& name, const QString& caption, const QString& toolTip,
                               const auto& command) {
        auto* button = new SkinButton(name, caption, this);
        button->setToolTip(toolTip);
        connect(button, &QPushButton::clicked, this, command);
        row->addWidget(button);
        return button;
    };
    QWidget* arrange = addButton("cmdApplyLayout", "ARRANGE", "Arrange the diagram on show by this layout",
                                 &frm_IsolateView::ApplyLayout);
    QWidget* draw = addButton("cmdDraw", "DRAW DIAGRAM", "Draw the record with all that is below it",
                              &frm_IsolateView::ProcessSingle);
    QWidget* print = addButton("cmdPrint", "PRINT", "Print the diagram on show", &frm_IsolateView::Print);
    addButton("cmdEdit", "EDIT VIEW", "View larger IDMS diagram",
              [this] { Context().request(ShowDrawing{DrawingControl2_->Src().toStdString()}); });
    for (QWidget* waiting : {static_cast<QWidget*>(LayoutTypes_), arrange, draw, print})
        Context().commands.DisableWhileBusy(waiting);
    return row;
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
    DrawingControl2_->SetSrc(SavedDrawing(folder, schema, name));
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
        DrawingControl2_->SetSrc(SavedDrawing(folder, schema_, name));
    } catch (const RuntimeFailure&) {
        // A failed look-up leaves the screen as it was.
    }
}

void frm_IsolateView::ClickShape(const QString& name) {
    if (Tviewrec_->SelectRecord(name)) getinfo(name.toStdString());
}

void frm_IsolateView::ProcessSingle() {
    Context().commands.Run({"Draw Diagram", Screen::Treeview}, [this] {
        const clsHourglass hourglass(App().host);
        ScreenDrawing drawing(Context(), *Tviewrec_, *DrawingControl2_, LayoutTypes_->currentIndex());
        drawing.showText = [this](const QString& text) { Label1_->setText(text); };
        auto labelAsBefore = qScopeGuard([this, &drawing, before = Label1_->text()] {
            if (drawing.OnShow()) Label1_->setText(before);
        });
        if (norvelis::ProcessSingle(drawing.State(), schema_, drawing.Tree()) == DrawResult::Saved)
            labelAsBefore.dismiss();
    });
}

void frm_IsolateView::ApplyLayout() {
    const QString file = DrawingControl2_->Src();
    if (file.isEmpty()) return;
    Context().commands.Run({"Arrange", Screen::Treeview}, [this, file] {
        ScreenDrawing drawing(Context(), *Tviewrec_, *DrawingControl2_, LayoutTypes_->currentIndex());
        if (ApplyLayoutToFile(drawing.State(), file.toStdString())) {
            if (DrawingControl2_->Src() == file) DrawingControl2_->SetSrc(file);
        } else {
            App().host.MessageBox("This drawing could not be arranged: " + file.toStdString());
        }
    });
}

void frm_IsolateView::Print() {
    Context().commands.Run({"Print", Screen::Treeview}, [this] {
        PrintDrawing(App(), Context().engine, DrawingControl2_->Src().toStdString(),
                     "You must Draw visio diagram then PRINT it");
    });
}

}  // namespace norvelis::ui
