#pragma once

#include <QButtonGroup>
#include <functional>
#include <map>

#include "ui/form.h"
#include "ui/skin_colors.h"

class QComboBox;

namespace norvelis::ui {

class BackgroundChoice;
class ColorPalette;

/// The settings screen: skin and its colours, report, drawing folder, start-up screen, look of the diagrams.
class frmColors : public Form {
    Q_OBJECT

  public:
    explicit frmColors(mdiMainMenu& frame);

    void Load() override;

    /// Let the person pick the schema report or the drawing folder; each choice is stored at once.
    void changerptfile();
    void changevisiolocation();

    /// Writes everything on the screen.
    void SaveChanges();

  protected:
    void LoadINISettings() override;
    void SaveINISettings() override;
    bool QueryUnload() override;
    void SkinApplied() override;

  private:
    QLayout* LeftColumn();
    QLayout* ColorRows();
    QLayout* PaletteRows();
    QLayout* RightColumn();
    QLayout* SaveRow();

    void LoadAllSkinSchemes();
    void LoadApplicationSettings();
    void ChooseSkin();
    void SetItemColor(const QColor& color);
    void MoreColors();
    void ShowHideSolidColors(bool show);
    void StoreReport(const QString& path);
    void StoreFolder(const QString& folder);
    void Changed();  ///< By the person; saved at once with auto apply on.
    SkinColors Samples() const;
    /// A step that a failure of the store may end; the screen stays.
    void Guarded(const char* procedure, const std::function<void()>& step);

    /// What shows one of the colours, by the index of its radio picture.
    struct Sample {
        QWidget* widget;
        QPalette::ColorRole role;
        int SkinColors::*color;
    };
    std::map<int, Sample> samples_;

    QComboBox *cboSkinSchemes_, *cboStartUpForm_;
    QButtonGroup imgSelected_;
    ColorPalette *picColorPalette_, *picColorsSquare_;
    QLabel *lblTitleColor_, *lblHideSolidColors_, *lblUnderMouse_, *ReportLocation_, *VisioLocation_;
    QAbstractButton *imgShowHideSolidColors_, *imgAutoApply_, *imgVisioSet_;
    BackgroundChoice* backgrounds_;
    bool changed_ = false;
};

}  // namespace norvelis::ui
