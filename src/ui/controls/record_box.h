#pragma once

#include <QPalette>
#include <QWidget>

#include "browse/record_details.h"

class QLabel;

namespace norvelis::ui {

/// What a record is, as its box in a Bachman diagram. What is too long for its cell is shortened in the
/// painting alone, and whole in its tool tip.
class RecordBox : public QWidget {
  public:
    /// In the palette's colors of these roles.
    RecordBox(QPalette::ColorRole face, QPalette::ColorRole text, QWidget* parent);

    void Fill(const RecordLabels& labels);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    QLabel* AddLabel(const QString& name, const QString& spoken);

    QLabel *lblRecordname_, *lblareaname_, *lbltableid_, *lblrecmode_, *lblreckey_, *lblreclen_, *lbldn_,
        *lblDN2_;
};

}  // namespace norvelis::ui
