#include "ui/forms/printer_choice.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>

#include "core/app_state.h"
#include "paper/kept_choice.h"

namespace norvelis::ui {

namespace {

QPageSize PageSizeOf(const paper::Paper& paper) {
    return QPageSize(QSizeF(paper.width, paper.height), QPageSize::Millimeter,
                     QString::fromStdString(paper.name), QPageSize::FuzzyMatch);
}

}  // namespace

PrinterChoice::PrinterChoice(AppState& app) : app_(app) {}

PrinterChoice::~PrinterChoice() = default;

QPrinter& PrinterChoice::Printer() {
    if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return *printer_;
}

void PrinterChoice::SetUp() {
    QPrinter& printer = Printer();
    paper::SheetChoice choice = paper::SetUpChoice(app_.gLocalIni);
    const QPageLayout::Orientation before =
        choice.turn == paper::Turn::Landscape ? QPageLayout::Landscape : QPageLayout::Portrait;
    printer.setPageSize(PageSizeOf(choice.paper));
    printer.setPageOrientation(before);
    if (QPageSetupDialog(&printer, window_).exec() != QDialog::Accepted) return;
    const QPageLayout chosen = printer.pageLayout();
    for (const paper::Paper& paper : paper::Papers()) {
        if (PageSizeOf(paper).isEquivalentTo(chosen.pageSize())) choice.paper = paper;
    }
    if (chosen.orientation() != before)
        choice.turn = before == QPageLayout::Portrait ? paper::Turn::Landscape : paper::Turn::Portrait;
    paper::KeepSetUpChoice(app_.gLocalIni, choice);
}

QPrinter* PrinterChoice::Choose() {
    app_.host.WaitCursor(false);
    const bool chosen = QPrintDialog(&Printer(), window_).exec() == QDialog::Accepted;
    app_.host.WaitCursor(true);
    return chosen ? printer_.get() : nullptr;
}

}  // namespace norvelis::ui
