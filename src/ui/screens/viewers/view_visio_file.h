#pragma once

#include "ui/forms/form.h"

namespace norvelis::ui {

class DrawingControl2;

/// The larger window for one drawing: the one on show in the screen it was opened from, or one that the
/// person picks.
class ViewVisioFile : public Form {
    Q_OBJECT

  public:
    explicit ViewVisioFile(const ScreenContext& context);

    void Take(const ScreenRequest& request) override;  ///< ShowDrawing.

  protected:
    void LoadINISettings() override;

  private:
    void PickFile();
    void Print();
    void Show(const QString& file, int page);

    DrawingControl2* DrawingControl2_;
    QLabel* lblFile_;
};

}  // namespace norvelis::ui
