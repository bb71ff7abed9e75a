#pragma once

#include <array>
#include <string>
#include <vector>

#include "ui/forms/form.h"

class QPlainTextEdit;

namespace norvelis::ui {

class FlxGrid;

/// The statements of a conversion to be read before anything is created: a list of all, and the whole text of
/// the one that is marked. Copying and saving are in the list's context menu.
class frmStatements : public Form {
    Q_OBJECT

  public:
    explicit frmStatements(const ScreenContext& context);

    /// Record and statement; `ending` is why there are no more, if there should be.
    void Show(const std::vector<std::array<std::string, 2>>& statements, const std::string& ending);

  protected:
    void LoadINISettings() override;

  private:
    FlxGrid* FlxGrid_;
    QPlainTextEdit* txtStatement_;
    QLabel* lblEnding_;
};

}  // namespace norvelis::ui
