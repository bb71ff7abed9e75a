#pragma once

#include <functional>

#include "ui/forms/form.h"

class QAbstractButton;
class QComboBox;

namespace norvelis::ui {

class BackgroundChoice;
class ColorSamples;

/// The settings screen: skin and its colors, report, drawing folder, start-up screen, look of the diagrams.
class frmColors : public Form {
    Q_OBJECT

  public:
    explicit frmColors(const ScreenContext& context);

    void Load() override;
    void Take(const ScreenRequest& request) override;  ///< PickReport, PickDrawingFolder.

    /// Let the person pick the schema report or the drawing folder; each choice is stored at once.
    void changerptfile();
    void changevisiolocation();

    /// Writes everything on the screen.
    void SaveChanges();

    /// Asks what is to become of unsaved changes.
    bool QueryUnload() override;

  protected:
    void LoadINISettings() override;
    void SaveINISettings() override;
    void SkinApplied() override;

  private:
    QLayout* LeftColumn();
    QLayout* RightColumn();
    QLayout* SaveRow();

    void LoadAllSkinSchemes();
    void LoadApplicationSettings();
    void ChooseSkin();
    void ColorPicked(int item, const QColor& color);
    void StoreReport(const QString& path);
    void StoreFolder(const QString& folder);
    void Changed();  ///< By the person; saved at once with auto apply on.
    /// A step that a failure of the store may end; the screen stays.
    void Guarded(const char* procedure, const std::function<void()>& step);

    QComboBox *cboSkinSchemes_, *cboStartUpForm_;
    ColorSamples* samples_;
    QLabel *ReportLocation_, *VisioLocation_;
    QAbstractButton *imgAutoApply_, *imgVisioSet_;
    BackgroundChoice* backgrounds_;
    bool changed_ = false;
};

}  // namespace norvelis::ui
