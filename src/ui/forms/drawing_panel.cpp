#include "ui/forms/drawing_panel.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

#include "commands/frame_commands.h"
#include "commands/print_commands.h"
#include "core/places.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/keys.h"
#include "ui/controls/layout_types.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/drawing_tools.h"
#include "ui/forms/look_menu.h"

namespace norvelis::ui {

DrawingPanel::DrawingPanel(const ScreenContext& context, const Words& words, QWidget* form)
    : QWidget(form),
      context_(context),
      nothingToPrint_(words.nothingToPrint),
      lblDrawing_(new ElidedLabel("lblDrawing", {}, this)),
      DrawingControl2_(new DrawingControl2("DrawingControl2", context.openDrawing, this)),
      LayoutTypes_(new LayoutTypes(this)),
      buttons_(new ButtonRow(this)) {
    connect(DrawingControl2_, &DrawingControl2::SrcChanged, this, &DrawingPanel::ShowName);
    connect(LayoutTypes_, &LayoutTypes::Picked, this, &DrawingPanel::DrawWanted);
    buttons_->addWidget(LayoutTypes_, 1);
    SkinButton* draw =
        buttons_->Add("cmdDraw", "DRAW DIAGRAM", words.drawToolTip, [this] { emit DrawWanted(); });
    // Before a press is let go the mouse may have shown another drawing.
    SkinButton* print = buttons_->Add("cmdPrint", "PRINT", words.printToolTip,
                                      [this] { Print(std::exchange(toPrint_, {})); });
    connect(print, &QPushButton::pressed, this, [this] { toPrint_ = DrawingControl2_->Src().toStdString(); });
    SkinButton* edit = buttons_->Add(words.editName, "EDIT VIEW", "View larger IDMS diagram", [this] {
        context_.request(ShowDrawing{DrawingControl2_->Src().toStdString(), DrawingControl2_->PageNumber()});
    });
    for (QWidget* waiting :
         {static_cast<QWidget*>(LayoutTypes_), static_cast<QWidget*>(draw), static_cast<QWidget*>(print)})
        context_.commands.DisableWhileBusy(waiting);
    connect(DrawingControl2_, &DrawingControl2::FileDropped, this, [this](const QString& file) {
        if (!context_.commands.Busy())
            DrawingControl2_->SetSrc(file);  // One that is being made keeps the control.
    });
    AddDrawingTools(*DrawingControl2_, context);
    ContextMenu menu(DrawingControl2_);
    menu.AddLine();
    QAction* open = menu.Add("&Open drawing...\tCtrl+O", [this] { mnu_viewvisio(); });
    open->setObjectName("mnu_viewvisio");
    context_.commands.DisableWhileBusy(open);
    context_.commands.DisableWhileBusy(OnKeys(form, QKeySequence::Open, [this] { mnu_viewvisio(); }));
    menu.Add("&Draw diagram", draw);
    QAction* fresh = menu.Add("Draw with a fresh la&yout", [this] {
        fresh_ = true;
        emit DrawWanted();
        fresh_ = false;
    });
    fresh->setObjectName("mnuDrawFresh");
    context_.commands.DisableWhileBusy(fresh);
    menu.Add("&Print", print);
    menu.Add("&Edit view", edit);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(ButtonRow::kGap);
    column->addLayout(NameRow());
    column->addWidget(DrawingControl2_, 1);
    column->addWidget(Proposal());
    column->addLayout(buttons_);
}

QLayout* DrawingPanel::NameRow() {
    auto* look = new QToolButton(this);
    look->setObjectName("cmdLook");
    look->setText("Pages and colors");
    look->setToolTip("What the next drawing looks like");
    look->setPopupMode(QToolButton::InstantPopup);
    look->setAutoRaise(true);
    look->setMenu(new LookMenu(context_.app.gLocalIni, look));
    auto* row = new QHBoxLayout;
    row->addWidget(lblDrawing_, 1);
    row->addWidget(look);
    return row;
}

QWidget* DrawingPanel::Proposal() {
    proposal_ = new QWidget(this);
    auto* row = new ButtonRow(proposal_);
    proposal_->setLayout(row);
    row->setContentsMargins(0, 0, 0, 0);
    lblProposal_ = new ElidedLabel("lblProposal", {}, proposal_);
    row->addWidget(lblProposal_, 1);
    context_.commands.DisableWhileBusy(
        row->Add("cmdByArea", "DRAW BY AREA", "Draw a page for each area of the schema", [this] {
            proposal_->hide();
            emit ByAreaWanted(proposed_);
        }));
    proposal_->hide();
    connect(DrawingControl2_, &DrawingControl2::SrcChanged, proposal_, &QWidget::hide);
    return proposal_;
}

void DrawingPanel::ProposeByArea(const std::string& reason, const std::string& schema) {
    proposed_ = schema;
    lblProposal_->setText(QString::fromStdString(reason));
    proposal_->setVisible(!reason.empty());
}

int DrawingPanel::Layout() const {
    return LayoutTypes_->currentIndex();
}

// The schema's folder tells drawings of one name apart. A snapshot's own name means nothing to anybody.
void DrawingPanel::ShowName(const QString& file) {
    const QFileInfo drawing(file);
    const QDir snapshots(QString::fromStdString(context_.app.AppPath(places::kSnapshots)));
    lblDrawing_->setText(file.isEmpty()               ? QString()
                         : drawing.dir() == snapshots ? QString("Being drawn")
                                                      : drawing.dir().dirName() + '/' + drawing.fileName());
    lblDrawing_->setToolTip(file);
}

void DrawingPanel::Print(const std::string& file) const {
    if (commands::HasDrawing(context_.app.host, file, nothingToPrint_)) context_.request(PreviewPrint{file});
}

void DrawingPanel::mnu_viewvisio() {
    const auto file = commands::mnu_viewvisio(context_.app.host);
    if (file) DrawingControl2_->SetSrc(QString::fromStdString(*file));
}

}  // namespace norvelis::ui
