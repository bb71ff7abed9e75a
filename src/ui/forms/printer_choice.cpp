#include "ui/forms/printer_choice.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>

#include "core/host.h"

namespace norvelis::ui {

PrinterChoice::PrinterChoice(Host& host) : host_(host) {}

PrinterChoice::~PrinterChoice() = default;

QPrinter& PrinterChoice::Printer() {
    if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return *printer_;
}

void PrinterChoice::SetUp() {
    QPageSetupDialog(&Printer(), window_).exec();
}

QPrinter* PrinterChoice::Choose() {
    host_.WaitCursor(false);
    const bool chosen = QPrintDialog(&Printer(), window_).exec() == QDialog::Accepted;
    host_.WaitCursor(true);
    return chosen ? printer_.get() : nullptr;
}

}  // namespace norvelis::ui
