#pragma once

#include "ui/forms/form.h"

namespace norvelis::ui {

/// What this program is, and which version of it.
class frmAbout : public Form {
  public:
    explicit frmAbout(const ScreenContext& context);

    /// In the middle of the frame, where it hides no other form's caption.
    void Place() override;
    bool Grows() const override { return false; }

  protected:
    void LoadINISettings() override;
};

}  // namespace norvelis::ui
