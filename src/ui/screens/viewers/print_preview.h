#pragma once

#include <memory>
#include <vector>

#include "ui/controls/drawing_sheets.h"
#include "ui/forms/form.h"
#include "viewer/file_reader.h"

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QGridLayout;
class QLineEdit;
class QSpinBox;

namespace norvelis::ui {

class SheetsView;
class SkinButton;

/// A drawing as the sheets of paper that it takes: how large, on which paper, which of them, on which printer
/// or into which PDF file. What was chosen is remembered for each drawing.
class PrintPreview : public Form {
    Q_OBJECT

  public:
    explicit PrintPreview(const ScreenContext& context);
    ~PrintPreview() override;

    void Take(const ScreenRequest& request) override;  ///< PreviewPrint.

  protected:
    void LoadINISettings() override;
    void SaveINISettings() override;

  private:
    /// Where sheets go; a PDF file, or when that is empty a printer.
    struct Target {
        std::string pdf, printer;
    };

    QWidget* Choices();
    void AddSize(QGridLayout& grid);
    void AddPaper(QGridLayout& grid);
    void AddWhat(QGridLayout& grid);
    QCheckBox* AddCheck(QGridLayout& grid, const char* name, const char* caption);

    void Open(const std::string& file);
    void ShowChoice(const paper::SheetChoice& choice);
    paper::SheetChoice Choice() const;
    std::vector<int> Pages() const;         ///< That the mode takes, from 1.
    std::vector<int> ChosenSheets() const;  ///< RuntimeFailure as its parser, or when there is no such sheet.
    void Enable();
    void Cut();
    void EnableButtons();
    void ClickSheet(int sheet);
    void FillPages();
    void FillPrinters();

    bool IsAsOnDisk();  ///< False after words and, where the file has changed, with the file as it is now.
    void PrintOnPrinter();
    void PrintToPdf();
    void Print(const Target& target);
    bool Send(const Target& target, const std::vector<int>& pages);

    std::string file_;
    std::unique_ptr<viewer::FileReader> onDisk_;
    std::unique_ptr<DrawingSheets> sheets_;
    bool showing_ = false;          ///< The controls are being filled.
    bool isCut_ = false;            ///< The choices could be met.
    std::vector<int> pagesOfFile_;  ///< That are in the PDF file already.

    QLabel *lblDrawing_, *lblCount_;
    QComboBox *cboFit_, *cboPaper_, *cboTurn_, *cboPages_, *cboPrinter_;
    QSpinBox *spnColumns_, *spnRows_, *spnStep_;
    QDoubleSpinBox *spnPercent_, *spnOverlap_;
    QCheckBox *chkEnlarge_, *chkMarks_, *chkFooter_;
    QLineEdit* txtSheets_;
    SheetsView* view_;
    SkinButton *cmdPrint_, *cmdPdf_;
};

}  // namespace norvelis::ui
