#include "ui/screens/viewers/view_visio_file.h"

#include <QVBoxLayout>

#include "base/paths.h"
#include "base/text.h"
#include "ui/controls/button_row.h"
#include "ui/controls/drawing_control.h"
#include "ui/controls/elided_label.h"
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
    Show(QString::fromStdString(drawing->file));
    DrawingControl2_->setFocus();
}

void ViewVisioFile::Show(const QString& file) {
    lblFile_->setText(file);
    DrawingControl2_->SetSrc(file);
}

void ViewVisioFile::PickFile() {
    Host& host = App().host;
    const auto file = host.OpenFileDialog("", "*.vsd");
    if (!file || file->empty()) return host.MessageBox("Request denied. File not selected");
    if (file->size() < 4 || UpperCase(file->substr(file->size() - 4)) != ".VSD")
        return host.MessageBox("Request denied. Must be a VISIO (.VSD) file.");
    if (!FileExists(*file)) return host.MessageBox("There are no visio drawing to view");
    Show(QString::fromStdString(*file));
}

}  // namespace norvelis::ui
