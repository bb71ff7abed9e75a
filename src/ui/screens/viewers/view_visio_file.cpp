#include "ui/screens/viewers/view_visio_file.h"

#include <QAction>
#include <QVBoxLayout>

#include "commands/frame_commands.h"
#include "commands/print_commands.h"
#include "ui/controls/button_row.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/keys.h"
#include "ui/forms/drawing_tools.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

ViewVisioFile::ViewVisioFile(const ScreenContext& context)
    : Form(context, "ViewVisioFile", "DRAWING", kLargeForm),
      DrawingControl2_(new DrawingControl2("DrawingControl2", context.openDrawing, this)),
      lblFile_(new ElidedLabel("lblFile", {}, this)) {
    DrawingControl2_->SetEmptyText("No drawing on show: OPEN FILE shows one");
    auto* row = new ButtonRow(this);
    row->addWidget(lblFile_, 1);
    DrawingControl2* drawing = DrawingControl2_;
    row->Add("cmdZoomOut", "ZOOM OUT", "Smaller (-)", [drawing] { drawing->ZoomOut(); });
    row->Add("cmdZoomIn", "ZOOM IN", "Larger (+)", [drawing] { drawing->ZoomIn(); });
    row->Add("cmdFit", "FIT", "The whole page", [drawing] { drawing->Fit(); });
    row->Add("cmdOpen", "OPEN FILE", "Show another drawing", [this] { PickFile(); });
    connect(drawing, &DrawingControl2::FileDropped, this, [this](const QString& file) { Show(file, 0); });
    AddDrawingTools(*drawing, context);
    ContextMenu menu(drawing);
    menu.AddLine();
    QAction* open = menu.Add("&Open drawing...\tCtrl+O", [this] { PickFile(); });
    open->setObjectName("mnu_viewvisio");
    menu.Add("&Print...\tCtrl+P", [this] { Print(); });
    OnKeys(this, QKeySequence::Open, [this] { PickFile(); });
    OnKeys(this, QKeySequence::Print, [this] { Print(); });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 12, 16, 16);
    column->addLayout(row);
    column->addWidget(DrawingControl2_, 1);
}

void ViewVisioFile::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

void ViewVisioFile::Take(const ScreenRequest& request) {
    const auto* drawing = std::get_if<ShowDrawing>(&request);
    if (!drawing) return;
    App().host.OpenScreen(Screen::DrawingViewer, false);
    Show(QString::fromStdString(drawing->file), drawing->page);
    DrawingControl2_->setFocus();
}

void ViewVisioFile::Show(const QString& file, int page) {
    lblFile_->setText(file);
    DrawingControl2_->SetSrc(file, page);
}

void ViewVisioFile::PickFile() {
    if (const auto file = commands::mnu_viewvisio(App().host)) Show(QString::fromStdString(*file), 0);
}

void ViewVisioFile::Print() {
    const std::string file = DrawingControl2_->Src().toStdString();
    if (commands::HasDrawing(App().host, file, "There are no visio drawing to view"))
        Context().request(PreviewPrint{file});
}

}  // namespace norvelis::ui
