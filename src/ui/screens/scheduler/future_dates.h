#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "scheduler/calculate.h"

class QListWidget;
class QTextEdit;

namespace norvelis::ui {

/// The dates that Create books, and beside them in words what a person may not expect of them.
class FutureDates : public QWidget {
    Q_OBJECT

  public:
    FutureDates(Clock& clock, QWidget* parent);

    /// The runs that the element has given.
    void Show(const XmlNode& scheduleElement, const FutureRuns& runs);
    void SetAlsoNext(bool alsoNext);               ///< The next date is booked too.
    void SetReport(const std::string& path);       ///< Which may be missing.
    void DefinitionChanged();                      ///< Since the dates were worked out.
    std::vector<std::string> DatesToBook() const;  ///< As Create stores them.
    void FillWords();                              ///< Again, as things are now.

  private:
    Clock& clock_;
    std::optional<XmlNode> element_;
    FutureRuns runs_;
    bool alsoNext_ = false, definitionChanged_ = false;
    std::string report_;
    QListWidget* lstFuture_;
    QTextEdit* words_;
};

}  // namespace norvelis::ui
