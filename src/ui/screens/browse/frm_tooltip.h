#pragma once

#include "browse/record_details.h"
#include "ui/controls/tip_window.h"

namespace norvelis::ui {

class RecordBox;

/// The tool tip of a record: its box.
class frmToolTip : public TipWindow {
  public:
    explicit frmToolTip(QWidget* owner);

    void Fill(const RecordLabels& labels);

  private:
    RecordBox* box_;
};

}  // namespace norvelis::ui
