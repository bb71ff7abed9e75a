#pragma once

#include <memory>

class QPrinter;
class QWidget;

namespace norvelis {
class Host;
}

namespace norvelis::ui {

/// The printer of the program and its settings, which last until the program ends. It is looked for when it
/// is first needed.
class PrinterChoice {
  public:
    explicit PrinterChoice(Host& host);
    ~PrinterChoice();

    void SetWindow(QWidget* window) { window_ = window; }  ///< Owner of the dialogs.

    void SetUp();
    /// Asks where to print; null when the person cancels.
    QPrinter* Choose();

  private:
    QPrinter& Printer();

    Host& host_;
    QWidget* window_ = nullptr;
    std::unique_ptr<QPrinter> printer_;
};

}  // namespace norvelis::ui
