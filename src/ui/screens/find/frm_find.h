#pragma once

#include <vector>

#include "browse/find_index.h"
#include "ui/forms/form.h"

class QCheckBox;
class QLineEdit;

namespace norvelis::ui {

class FlxGrid;

/// Everything of the dictionary by its name: the list is made at each key stroke, Return goes to what is
/// marked in it. The names are read when the screen is opened, and again when the dictionary may be another.
class frmFind : public Form {
    Q_OBJECT

  public:
    explicit frmFind(const ScreenContext& context);

    void Take(const ScreenRequest& request) override;  ///< FindAnything.
    QWidget* OpensAt() const override;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    enum class Place { Best, Tree, Report };

    QWidget* SearchRow();
    void ReadNames();
    void Search();
    void Mark(int row);
    void ShowCount(std::size_t count);
    const FoundName* Marked() const;
    void GoTo(Place place);
    void Request(const FoundName& found, Place place) const;
    void ShowWhereUsed();

    FindIndex index_;
    QString notRead_;               ///< Why the names could not be read; empty when they were.
    std::vector<FoundName> found_;  ///< The rows of the grid.

    QLineEdit* txtFind_;
    QCheckBox* chkWhereUsed_;
    FlxGrid* FlxGrid_;
    QLabel* lblCount_;
};

}  // namespace norvelis::ui
