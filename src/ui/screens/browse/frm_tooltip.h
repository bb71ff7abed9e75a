#pragma once

#include "browse/record_details.h"
#include "ui/controls/tip_window.h"

namespace norvelis::ui {

/// What a record is, as its box in a Bachman diagram.
class frmToolTip : public TipWindow {
  public:
    explicit frmToolTip(QWidget* owner);

    void Fill(const RecordLabels& labels);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    QLabel *lblRecordname_, *lblareaname_, *lbltableid_, *lblrecmode_, *lblreckey_, *lblreclen_, *lbldn_,
        *lblDN2_;
};

}  // namespace norvelis::ui
