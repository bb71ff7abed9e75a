#pragma once

#include "ui/form.h"

namespace norvelis::ui {

/// What this program is, and which version of it.
class frmAbout : public Form {
  public:
    explicit frmAbout(mdiMainMenu& frame);

  protected:
    void LoadINISettings() override;
};

}  // namespace norvelis::ui
