#pragma once

#include <memory>

class QPrinter;
class QWidget;

namespace norvelis {
struct AppState;
}

namespace norvelis::ui {

/// The printer of the program. It is looked for when it is first needed.
class PrinterChoice {
  public:
    explicit PrinterChoice(AppState& app);
    ~PrinterChoice();

    void SetWindow(QWidget* window) { window_ = window; }  ///< Owner of the dialogs.

    /// Lets the person set up paper and how it is turned, which are kept in Local.Ini as the dialog shows
    /// them; printing begins with them.
    void SetUp();
    /// Asks where to print, beginning with what is set up; null when the person cancels.
    QPrinter* Choose();

  private:
    QPrinter& SetUpPrinter();  ///< With what is kept.

    AppState& app_;
    QWidget* window_ = nullptr;
    std::unique_ptr<QPrinter> printer_;
};

}  // namespace norvelis::ui
