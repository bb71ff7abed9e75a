#include "ui/forms/printer_choice.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <algorithm>

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

QPrinter& PrinterChoice::SetUpPrinter() {
    if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    const paper::SheetChoice choice = paper::SetUpChoice(app_.gLocalIni);
    printer_->setPageSize(PageSizeOf(choice.paper));
    printer_->setPageOrientation(choice.turn == paper::Turn::Landscape ? QPageLayout::Landscape
                                                                       : QPageLayout::Portrait);
    return *printer_;
}

void PrinterChoice::SetUp() {
    QPrinter& printer = SetUpPrinter();
    if (QPageSetupDialog(&printer, window_).exec() != QDialog::Accepted) return;
    const QPageLayout chosen = printer.pageLayout();
    paper::SheetChoice choice = paper::SetUpChoice(app_.gLocalIni);
    choice.turn =
        chosen.orientation() == QPageLayout::Landscape ? paper::Turn::Landscape : paper::Turn::Portrait;
    const auto papers = paper::Papers();
    const auto paper = std::ranges::find_if(
        papers, [&](const paper::Paper& each) { return PageSizeOf(each).isEquivalentTo(chosen.pageSize()); });
    if (paper != papers.end()) {
        choice.paper = *paper;
    } else {
        app_.host.MessageBox("Drawings are not printed on " + chosen.pageSize().name().toStdString() + ". " +
                             choice.paper.name + " stays the paper.");
    }
    paper::KeepSetUpChoice(app_.gLocalIni, choice);
}

QPrinter* PrinterChoice::Choose() {
    app_.host.WaitCursor(false);
    const bool chosen = QPrintDialog(&SetUpPrinter(), window_).exec() == QDialog::Accepted;
    app_.host.WaitCursor(true);
    return chosen ? printer_.get() : nullptr;
}

}  // namespace norvelis::ui
