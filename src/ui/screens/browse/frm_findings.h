#pragma once

#include "ui/forms/form.h"

namespace norvelis::ui {

class FlxGrid;

/// What reading the dictionary's reports lost: warnings, then notes, each with its line in the report and
/// what can be done about it. One leads to its line there.
class frm_Findings : public Form {
    Q_OBJECT

  public:
    explicit frm_Findings(const ScreenContext& context);

    void Take(const ScreenRequest& request) override;  ///< ShowFindings.

  protected:
    void LoadINISettings() override;

  private:
    void Fill();
    void ShowInReport();

    FlxGrid* FlxGrid_;
    QLabel* lblCount_;
};

}  // namespace norvelis::ui
