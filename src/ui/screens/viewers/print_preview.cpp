#include "ui/screens/viewers/print_preview.h"

#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "commands/print_commands.h"
#include "commands/sheet_document.h"
#include "diagram/print_drawing.h"
#include "paper/kept_choice.h"
#include "ui/controls/button_row.h"
#include "ui/controls/click_label.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/keys.h"
#include "ui/controls/picture_controls.h"
#include "ui/screens/viewers/sheets_view.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

using paper::Fit;
using paper::SheetChoice;
using paper::Turn;

namespace {

constexpr int kChoicesWidth = 270;

// In the order of the enums, and of the modes of a print.
constexpr const char* kFits[] = {"One sheet", "Columns and rows", "Scale"};
constexpr const char* kTurns[] = {"What takes fewer sheets", "Portrait", "Landscape"};
constexpr const char* kModes[] = {"All pages", "Every n-th page", "Odd pages"};
constexpr int kModeCount = std::size(kModes);
constexpr const char* kNoPrinter = "No printer is set up";

template <std::size_t N>
QComboBox* List(const char* name, const char* spoken, const char* const (&entries)[N], QWidget* form) {
    auto* list = new QComboBox(form);
    list->setObjectName(name);
    list->setAccessibleName(spoken);
    for (const char* entry : entries) list->addItem(entry);
    return list;
}

template <typename Box>
Box* Number(const char* name, const char* spoken, double least, double most, const char* unit,
            QWidget* form) {
    auto* box = new Box(form);
    box->setObjectName(name);
    box->setAccessibleName(spoken);
    if constexpr (std::is_same_v<Box, QSpinBox>) {
        box->setRange(static_cast<int>(least), static_cast<int>(most));
    } else {
        box->setDecimals(1);
        box->setRange(least, most);
    }
    box->setSuffix(unit);
    return box;
}

void AddRow(QGridLayout& grid, const char* heading, QWidget* form, QWidget* control) {
    const int row = grid.rowCount();
    grid.addWidget(MakeLabel(form, {}, heading), row, 0);
    grid.addWidget(control, row, 1);
}

QString SizeWords(const paper::SheetPlan& plan, const SheetChoice& choice) {
    return QString("%1 x %2 of %3, %4, %5 per cent of life size")
        .arg(plan.columns)
        .arg(plan.rows)
        .arg(QString::fromStdString(choice.paper.name))
        .arg(plan.paper.width > plan.paper.height ? "landscape" : "portrait")
        .arg(std::round(plan.scale * 1000) / 10);
}

}  // namespace

PrintPreview::PrintPreview(const ScreenContext& context)
    : Form(context, "PrintPreview", "PRINT PREVIEW", kLargeForm), view_(new SheetsView("sheets", this)) {
    connect(view_, &SheetsView::SheetClicked, this, &PrintPreview::ClickSheet);
    auto* sides = new QHBoxLayout;
    sides->setSpacing(14);
    QWidget* choices = Choices();
    context.commands.DisableWhileBusy(choices);
    sides->addWidget(choices);
    sides->addWidget(view_, 1);
    lblCount_ = new ElidedLabel("lblCount", {}, this);
    auto* buttons = new ButtonRow(this);
    buttons->addWidget(lblCount_, 1);
    cmdPrint_ = buttons->Add("cmdPrint", "PRINT", "Send the sheets to the printer (Ctrl+P)",
                             [this] { PrintOnPrinter(); });
    cmdPdf_ = buttons->Add("cmdPdf", "PDF FILE", "Write the sheets to a PDF file", [this] { PrintToPdf(); });
    connect(&context.commands, &LongCommands::BusyChanged, this, &PrintPreview::EnableButtons);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, Body().top() + 12, 16, 16);
    column->addLayout(sides, 1);
    column->addLayout(buttons);
    OnKeys(this, QKeySequence::Print, [this] { cmdPrint_->click(); });
    context.commands.DisableWhileBusy(OnKeys(this, Qt::Key_Escape, &QWidget::close));  // Then it cancels.
}

PrintPreview::~PrintPreview() = default;

QWidget* PrintPreview::Choices() {
    auto* side = new QWidget(this);
    side->setFixedWidth(kChoicesWidth * Body().width() / kLargeForm.width());
    lblDrawing_ = new ElidedLabel("lblDrawing", {}, this);
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(6);
    AddSize(*grid);
    AddPaper(*grid);
    AddWhat(*grid);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(lblDrawing_);
    column->addLayout(grid);
    column->addStretch();
    for (auto* list : side->findChildren<QComboBox*>())
        connect(list, &QComboBox::currentIndexChanged, this, &PrintPreview::Cut);
    for (auto* box : side->findChildren<QSpinBox*>())
        connect(box, &QSpinBox::valueChanged, this, &PrintPreview::Cut);
    for (auto* box : side->findChildren<QDoubleSpinBox*>())
        connect(box, &QDoubleSpinBox::valueChanged, this, &PrintPreview::Cut);
    for (auto* check : {chkEnlarge_, chkMarks_, chkFooter_})
        connect(check, &QAbstractButton::toggled, this, &PrintPreview::Cut);
    connect(txtSheets_, &QLineEdit::textChanged, this, &PrintPreview::Cut);
    return side;
}

void PrintPreview::AddSize(QGridLayout& grid) {
    cboFit_ = List("cboFit", "Size of the picture", kFits, this);
    AddRow(grid, "Size", this, cboFit_);
    chkEnlarge_ = AddCheck(grid, "chkEnlarge", "Larger than life where it fits");
    spnColumns_ = Number<QSpinBox>("spnColumns", "Columns of sheets", 1, paper::kMostSheetsInRow, "", this);
    spnRows_ = Number<QSpinBox>("spnRows", "Rows of sheets", 1, paper::kMostSheetsInRow, "", this);
    spnPercent_ = Number<QDoubleSpinBox>("spnPercent", "Per cent of life size", paper::kLeastPercent,
                                         paper::kMostPercent, " %", this);
    AddRow(grid, "Columns", this, spnColumns_);
    AddRow(grid, "Rows", this, spnRows_);
    AddRow(grid, "Scale", this, spnPercent_);
}

void PrintPreview::AddPaper(QGridLayout& grid) {
    cboPaper_ = new QComboBox(this);
    cboPaper_->setObjectName("cboPaper");
    cboPaper_->setAccessibleName("Paper");
    for (const paper::Paper& paper : paper::Papers()) cboPaper_->addItem(QString::fromStdString(paper.name));
    AddRow(grid, "Paper", this, cboPaper_);
    cboTurn_ = List("cboTurn", "How sheets are turned", kTurns, this);
    AddRow(grid, "Sheets are", this, cboTurn_);
    spnOverlap_ = Number<QDoubleSpinBox>("spnOverlap", "What two neighbor sheets both show", 0,
                                         paper::kMostOverlap, " mm", this);
    AddRow(grid, "Overlap", this, spnOverlap_);
    chkMarks_ = AddCheck(grid, "chkMarks", "Crop marks");
    chkFooter_ = AddCheck(grid, "chkFooter", "Footer");
}

void PrintPreview::AddWhat(QGridLayout& grid) {
    cboPages_ = List("cboPages", "Pages of the drawing", kModes, this);
    AddRow(grid, "Pages", this, cboPages_);
    spnStep_ = Number<QSpinBox>("spnStep", "Step from page to page", 1, 1000, "", this);
    AddRow(grid, "Step", this, spnStep_);
    txtSheets_ = new QLineEdit(this);
    txtSheets_->setObjectName("txtSheets");
    txtSheets_->setAccessibleName("Sheets to print");
    txtSheets_->setPlaceholderText("all, or such as 3,5-6");
    txtSheets_->setTextMargins(5, 0, 5, 0);
    AddRow(grid, "Sheets", this, txtSheets_);
    cboPrinter_ = new QComboBox(this);
    cboPrinter_->setObjectName("cboPrinter");
    cboPrinter_->setAccessibleName("Printer");
    AddRow(grid, "Printer", this, cboPrinter_);
}

QCheckBox* PrintPreview::AddCheck(QGridLayout& grid, const char* name, const char* caption) {
    auto* check = new SkinCheck(name, "Check", caption, this);
    auto* label = new ClickLabel(QString(name) + "Label", caption, this, [check] { check->click(); });
    auto* row = new QHBoxLayout;
    row->addWidget(check);
    row->addWidget(label, 1);
    grid.addLayout(row, grid.rowCount(), 1);
    return check;
}

void PrintPreview::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

void PrintPreview::SaveINISettings() {
    if (sheets_) paper::KeepChoiceFor(App().gLocalIni, file_, Choice());
}

void PrintPreview::Take(const ScreenRequest& request) {
    const auto* preview = std::get_if<PreviewPrint>(&request);
    if (!preview) return;
    if (Context().commands.Busy()) {  // It may be the printing of the sheets on show.
        App().host.MessageBox("A drawing can be printed when the running command has ended.");
        return;
    }
    try {
        const clsHourglass hourglass(App().host);
        Open(preview->file);
    } catch (const RuntimeFailure& failure) {
        App().host.MessageBox("This drawing can not be printed: " + preview->file + std::string(kLineBreak) +
                              failure.what());
        return;
    }
    App().host.OpenScreen(Screen::PrintPreview, false);
    cboFit_->setFocus();
}

void PrintPreview::Open(const std::string& file) {
    auto onDisk = std::make_unique<viewer::FileReader>(file);  // Before it is read: no change is missed.
    auto sheets = Context().printing.open(QString::fromStdString(file));
    SaveINISettings();  // Of the drawing before.
    view_->Show(nullptr);
    sheets_ = std::move(sheets);
    onDisk_ = std::move(onDisk);
    file_ = file;
    lblDrawing_->setText(QString::fromStdString(file));
    FillPages();
    FillPrinters();
    ShowChoice(paper::ChoiceFor(App().gLocalIni, file_));
}

/// Behind the modes of a print each page alone, where there are several.
void PrintPreview::FillPages() {
    const QSignalBlocker filling(cboPages_);
    cboPages_->setCurrentIndex(0);
    while (cboPages_->count() > kModeCount) cboPages_->removeItem(kModeCount);
    for (int page = 1; sheets_->PageCount() > 1 && page <= sheets_->PageCount(); ++page)
        cboPages_->addItem("Page " + sheets_->PageName(page));
}

void PrintPreview::FillPrinters() {
    const QString before = cboPrinter_->count() > 0
                               ? cboPrinter_->currentText()
                               : QString::fromStdString(paper::KeptPrinter(App().gLocalIni));
    const QSignalBlocker filling(cboPrinter_);
    cboPrinter_->clear();
    cboPrinter_->addItems(QPrinterInfo::availablePrinterNames());
    if (cboPrinter_->count() == 0) cboPrinter_->addItem(kNoPrinter);
    const int usual = cboPrinter_->findText(QPrinterInfo::defaultPrinterName());
    const int last = cboPrinter_->findText(before);
    cboPrinter_->setCurrentIndex(std::max(0, last >= 0 ? last : usual));
}

void PrintPreview::ShowChoice(const SheetChoice& choice) {
    showing_ = true;
    cboFit_->setCurrentIndex(static_cast<int>(choice.fit));
    chkEnlarge_->setChecked(choice.mayEnlarge);
    spnColumns_->setValue(choice.columns);
    spnRows_->setValue(choice.rows);
    spnPercent_->setValue(choice.percent);
    cboPaper_->setCurrentText(QString::fromStdString(choice.paper.name));
    cboTurn_->setCurrentIndex(static_cast<int>(choice.turn));
    spnOverlap_->setValue(choice.overlap);
    chkMarks_->setChecked(choice.cropMarks);
    chkFooter_->setChecked(choice.footer);
    cboPages_->setCurrentIndex(0);
    txtSheets_->clear();
    showing_ = false;
    Cut();
}

SheetChoice PrintPreview::Choice() const {
    SheetChoice choice;
    choice.fit = static_cast<Fit>(cboFit_->currentIndex());
    choice.mayEnlarge = choice.fit == Fit::OneSheet && chkEnlarge_->isChecked();
    if (choice.fit == Fit::Grid) {
        choice.columns = spnColumns_->value();
        choice.rows = spnRows_->value();
    }
    if (choice.fit == Fit::Scale) choice.percent = spnPercent_->value();
    choice.paper = paper::PaperNamed(cboPaper_->currentText().toStdString());
    choice.turn = static_cast<Turn>(cboTurn_->currentIndex());
    choice.overlap = spnOverlap_->value();
    choice.cropMarks = chkMarks_->isChecked();
    choice.footer = chkFooter_->isChecked();
    return choice;
}

namespace {

PrintMode ModeAt(int index) {
    if (index >= kModeCount) return PrintMode::Document;  // A part of it.
    return static_cast<PrintMode>(index + static_cast<int>(PrintMode::Document));
}

}  // namespace

std::vector<int> PrintPreview::Pages() const {
    if (cboPages_->currentIndex() >= kModeCount) return {cboPages_->currentIndex() - kModeCount + 1};
    const PrintMode mode = ModeAt(cboPages_->currentIndex());
    const int step = mode == PrintMode::Document ? 1 : mode == PrintMode::OddPages ? 2 : spnStep_->value();
    std::vector<int> pages;
    for (int page = 1; page <= sheets_->PageCount(); page += step) pages.push_back(page);
    return pages;
}

std::vector<int> PrintPreview::ChosenSheets() const {
    const std::string text(Trim(txtSheets_->text().toStdString()));
    const bool some = ModeAt(cboPages_->currentIndex()) == PrintMode::Document && !text.empty();
    return commands::ChosenSheets(some ? paper::ParseSheetNumbers(text) : std::vector<int>(),
                                  sheets_->Count());
}

/// Single sheets are counted over all pages; where pages are printed one by one each has its own count.
void PrintPreview::Enable() {
    const auto fit = static_cast<Fit>(cboFit_->currentIndex());
    chkEnlarge_->setEnabled(fit == Fit::OneSheet);
    spnColumns_->setEnabled(fit == Fit::Grid);
    spnRows_->setEnabled(fit == Fit::Grid);
    spnPercent_->setEnabled(fit == Fit::Scale);
    spnStep_->setEnabled(ModeAt(cboPages_->currentIndex()) == PrintMode::EveryNthPage);
    txtSheets_->setEnabled(ModeAt(cboPages_->currentIndex()) == PrintMode::Document);
}

void PrintPreview::Cut() {
    if (showing_ || !sheets_) return;
    Enable();
    const SheetChoice choice = Choice();
    isCut_ = false;
    try {
        sheets_->Cut(Pages(), choice, commands::FooterOf(App(), file_));
        const std::vector<int> chosen = ChosenSheets();
        const bool all = static_cast<int>(chosen.size()) == sheets_->Count();
        view_->Show(sheets_.get());
        view_->Choose(all ? std::vector<int>() : chosen);
        lblCount_->setText(QString::fromStdString(paper::CountedSheets(chosen.size())) + ": " +
                           SizeWords(sheets_->PlanOf(1), choice));
        isCut_ = true;
    } catch (const RuntimeFailure& failure) {
        lblCount_->setText(failure.what());
    }
    EnableButtons();
}

void PrintPreview::EnableButtons() {
    for (SkinButton* button : {cmdPrint_, cmdPdf_}) button->setEnabled(isCut_ && !Context().commands.Busy());
}

void PrintPreview::ClickSheet(int sheet) {
    if (!txtSheets_->isEnabled()) return;
    std::vector<int> sheets;
    try {
        if (!txtSheets_->text().trimmed().isEmpty()) sheets = ChosenSheets();
    } catch (const RuntimeFailure&) {
        // What was typed is none; it gives way.
    }
    const auto there = std::find(sheets.begin(), sheets.end(), sheet);
    if (there != sheets.end()) {
        sheets.erase(there);
    } else {
        sheets.push_back(sheet);
    }
    std::sort(sheets.begin(), sheets.end());
    QStringList numbers;
    for (const int each : sheets) numbers << QString::number(each);
    txtSheets_->setText(numbers.join(','));
}

void PrintPreview::PrintOnPrinter() {
    const QString printer = cboPrinter_->currentText();
    const bool none = printer == kNoPrinter;
    if (!none) paper::KeepPrinter(App().gLocalIni, printer.toStdString());
    Print({{}, none ? std::string() : printer.toStdString()});
}

void PrintPreview::PrintToPdf() {
    const QFileInfo drawing(QString::fromStdString(file_));
    const QString proposed = drawing.absolutePath() + '/' + drawing.completeBaseName() + ".pdf";
    const auto path = App().host.SaveFileDialog("Write a PDF file", "PDF (*.pdf)", proposed.toStdString());
    if (path && !path->empty()) Print({*path, {}});
}

bool PrintPreview::IsAsOnDisk() {
    const viewer::FileChange change = onDisk_->Compare();
    if (change == viewer::FileChange::None) return true;
    const std::string end(kLineBreak);
    if (change == viewer::FileChange::Vanished) {
        return App().host.MessageBox({"The drawing was removed since it was opened: " + file_ + end +
                                          "Are you sure you want to print what is on show?",
                                      {},
                                      Buttons::YesNo,
                                      Icon::Question,
                                      Answer::No}) == Answer::Yes;
    }
    Open(file_);
    App().host.MessageBox("The drawing was changed since it was opened: " + file_ + end +
                          "It is shown as it is now. Nothing was printed yet.");
    return false;
}

void PrintPreview::Print(const Target& target) {
    Host& host = App().host;
    try {
        if (!sheets_ || !IsAsOnDisk() || !commands::MayPrint(host, ChosenSheets().size())) return;
    } catch (const RuntimeFailure& failure) {
        return host.MessageBox(failure.what());
    }
    SaveINISettings();
    Context().commands.Run({"Print", Screen::Treeview}, [&] {
        const clsHourglass hourglass(host);
        view_->Show(nullptr);  // The sheets are cut again for each page that is printed alone.
        pagesOfFile_.clear();
        const PrintMode mode = ModeAt(cboPages_->currentIndex());
        commands::SheetDocument document(sheets_->PageCount(), [&](const std::vector<int>& pages) {
            return Send(target, mode == PrintMode::Document ? Pages() : pages);
        });
        PrintDocument(host, document, mode, spnStep_->value());
    });
    Cut();
}

// Pages that are printed one by one are jobs of their own for a printer; a file is written again with each of
// them, so that at its end it has all.
bool PrintPreview::Send(const Target& target, const std::vector<int>& pages) {
    Host& host = App().host;
    const SheetChoice choice = Choice();
    try {
        pagesOfFile_.insert(pagesOfFile_.end(), pages.begin(), pages.end());
        sheets_->Cut(target.pdf.empty() ? pages : pagesOfFile_, choice, commands::FooterOf(App(), file_));
        const std::string pdf = sheets_->Pdf(ChosenSheets());
        if (!target.pdf.empty()) {
            commands::WritePdf(file_, target.pdf, pdf);
        } else {
            const std::string title =
                QFileInfo(QString::fromStdString(file_)).completeBaseName().toStdString();
            host.RunInBackground([&](const std::stop_token&) {
                Context().printing.send(target.printer, title, choice.paper.name, pdf);
            });
        }
        return true;
    } catch (const RuntimeFailure& failure) {
        host.MessageBox(failure.what());
        return false;
    }
}

}  // namespace norvelis::ui
