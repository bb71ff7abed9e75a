#pragma once

#include "browse/record_details.h"
#include "ui/controls/tip_window.h"

namespace norvelis::ui {

/// What a schema is.
class frmToolTip2 : public TipWindow {
  public:
    explicit frmToolTip2(QWidget* owner);

    void Fill(const SchemaLabels& labels);

  private:
    QLabel *lblRecordname_, *lblSchemaRelease_, *lblschemaVersion_, *lblschemadate_;
};

}  // namespace norvelis::ui
