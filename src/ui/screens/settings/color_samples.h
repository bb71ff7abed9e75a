#pragma once

#include <QButtonGroup>
#include <QWidget>
#include <map>

#include "ui/skins/picture.h"
#include "ui/skins/skin_colors.h"

class QLabel;

namespace norvelis::ui {

class ColorPalette;

/// The colors of a skin on the settings screen: a sample for each, radio pictures that say which of them is
/// the current item, and the palettes that give it another color.
class ColorSamples : public QWidget {
    Q_OBJECT

  public:
    /// In the order of imgSelected. The choice of the skin is one of them and has no color.
    enum Item {
        Label,
        ButtonLabel,
        TextboxBackgroundColor,
        TextboxForegroundColor,
        ListboxBackgroundColor,
        SkinSchemes,
        TitleColor
    };

    ColorSamples(const Picture& palette, const Picture& solidColors, QWidget* parent);

    QAbstractButton* Radio(Item item) const { return imgSelected_.button(item); }
    SkinColors Colors() const;  ///< Of the samples, but for ButtonDownForeColor.

    void SetTitleBackground(const QColor& color);
    void AllowPicking(bool on);

  signals:
    void Picked(int item, const QColor& color);  ///< And the sample has it.

  private:
    struct Sample {
        QWidget* widget;
        QPalette::ColorRole role;
        int SkinColors::*color;
    };

    QLayout* SampleRows();
    QLayout* PaletteRow(const Picture& palette, const Picture& solidColors);
    QLayout* ChoiceRow();
    void SetItemColor(const QColor& color);
    void MoreColors();
    void ShowHideSolidColors(bool show);

    QButtonGroup imgSelected_;
    std::map<int, Sample> samples_;
    ColorPalette *picColorPalette_, *picColorsSquare_;
    QLabel *lblTitleColor_, *lblHideSolidColors_, *lblUnderMouse_;
};

}  // namespace norvelis::ui
