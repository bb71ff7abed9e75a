#include "ui/screens/settings/color_samples.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <algorithm>

#include "ui/controls/click_label.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/form.h"
#include "ui/screens/settings/color_palette.h"
#include "ui/skins/art/classic_colors.h"

namespace norvelis::ui {

namespace {

constexpr int kSampleHeight = 28;  ///< With the usual text.

/// Of the items, in their order.
constexpr const char* kItemNames[] = {"Label",
                                      "ButtonLabel",
                                      "TextboxBackgroundColor",
                                      "TextboxForegroundColor",
                                      "ListboxBackgroundColor",
                                      "SkinSchemes",
                                      "TitleColor"};

}  // namespace

ColorSamples::ColorSamples(const Picture& palette, const Picture& solidColors, QWidget* parent)
    : QWidget(parent), imgSelected_(this) {
    for (int i = 0; i <= TitleColor; ++i) {
        auto* radio = new SkinRadio(QString("imgSelected%1").arg(i), "Radio", kItemNames[i], this);
        radio->setToolTip("Click on these radio buttons to select what's to the right of them");
        imgSelected_.addButton(radio, i);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(SampleRows());
    column->addSpacing(4);
    column->addLayout(PaletteRow(palette, solidColors));
    column->addLayout(ChoiceRow());
}

QLayout* ColorSamples::SampleRows() {
    const auto label = [this](const char* name, const char* text, const char* tip, const char* tag,
                              Item item) {
        auto* made =
            new ClickLabel(name, text, this, [this, item] { imgSelected_.button(item)->setChecked(true); });
        made->setToolTip(tip);
        made->setProperty("Tag", tag);
        return made;
    };
    auto* lblLabelColor =
        label("lblLabelColor", "Label Color", "Click here to set the color of all labels", "", Label);
    auto* lblButtonLabelColor =
        label("lblButtonLabelColor", "Button Text Color",
              "Click here to set the color of all text on buttons", "ButtonLabel", ButtonLabel);
    lblTitleColor_ =
        label("lblTitleColor", "Title Color", "Click here to set the color of the window name or title",
              "TitleColor", TitleColor);
    lblTitleColor_->setAutoFillBackground(true);
    lblTitleColor_->setMargin(4);
    const int height = std::max(kSampleHeight, fontMetrics().height() + 10);
    lblTitleColor_->setFixedHeight(height);
    const auto textBox = [this](const char* name, const char* text) {
        auto* made = new QLineEdit(text, this);
        made->setObjectName(name);
        made->setReadOnly(true);
        made->setFocusPolicy(Qt::NoFocus);
        return made;
    };
    auto* txtBack = textBox("txtTextBoxBackGroundColor", "Textbox Background Color");
    auto* txtFore = textBox("txtTextBoxForeGroundColor", "Textbox Foreground Color");
    auto* list = new QListWidget(this);
    list->setObjectName("lstListBoxBackGroundColor");
    list->addItem("Listbox Background Color");
    list->item(0)->setSizeHint(QSize(0, height - 4));
    list->setSelectionMode(QAbstractItemView::NoSelection);
    list->setFocusPolicy(Qt::NoFocus);
    for (QWidget* box :
         {static_cast<QWidget*>(txtBack), static_cast<QWidget*>(txtFore), static_cast<QWidget*>(list)})
        box->setFixedHeight(height);

    samples_ = {{Label, {lblLabelColor, QPalette::WindowText, &SkinColors::LabelForeColor}},
                {ButtonLabel, {lblButtonLabelColor, QPalette::WindowText, &SkinColors::ButtonForeColor}},
                {TitleColor, {lblTitleColor_, QPalette::WindowText, &SkinColors::TitleColor}},
                {TextboxBackgroundColor, {txtBack, QPalette::Base, &SkinColors::TextBoxBackColor}},
                {TextboxForegroundColor, {txtFore, QPalette::Text, &SkinColors::TextBoxForeColor}},
                {ListboxBackgroundColor, {list, QPalette::Base, &SkinColors::ListBoxBackColor}}};

    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(5);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(3, 3);
    const auto row = [&](int at, int column, Item item) {
        grid->addWidget(imgSelected_.button(item), at, column);
        grid->addWidget(samples_[item].widget, at, column + 1);
    };
    row(0, 0, Label);
    row(1, 0, ButtonLabel);
    row(2, 0, TitleColor);
    row(0, 2, TextboxBackgroundColor);
    row(1, 2, TextboxForegroundColor);
    row(2, 2, ListboxBackgroundColor);
    return grid;
}

QLayout* ColorSamples::PaletteRow(const Picture& palette, const Picture& solidColors) {
    picColorPalette_ = new ColorPalette("picColorPalette", palette, this);
    picColorPalette_->setAccessibleName("Palette");
    picColorsSquare_ = new ColorPalette("picColorsSquare", solidColors, this);
    picColorsSquare_->setAccessibleName("Solid colors");
    QSizePolicy keepsPlace = picColorsSquare_->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    picColorsSquare_->setSizePolicy(keepsPlace);
    for (ColorPalette* part : {picColorPalette_, picColorsSquare_}) {
        connect(part, &ColorPalette::Picked, this, &ColorSamples::SetItemColor);
        connect(part, &ColorPalette::Hovered, this,
                [this](const QColor& color) { lblUnderMouse_->setPalette(QPalette(color, color)); });
    }
    auto* row = new QHBoxLayout;
    row->addWidget(picColorPalette_);
    row->addStretch();
    row->addWidget(picColorsSquare_);
    return row;
}

QLayout* ColorSamples::ChoiceRow() {
    auto* check = new SkinCheck("imgShowHideSolidColors", "Check", "Show Solid Colors", this);
    lblHideSolidColors_ = new ClickLabel("lblHideSolidColors", {}, this, [check] { check->click(); });
    connect(check, &QAbstractButton::toggled, this, &ColorSamples::ShowHideSolidColors);
    check->setChecked(true);
    lblUnderMouse_ = MakeLabel(this, "lblUnderMouse", {}, "nocolorchange");
    lblUnderMouse_->setAutoFillBackground(true);
    lblUnderMouse_->setFixedSize(48, 22);
    auto* lblWindowsColors = new SkinButton("lblWindowsColors", "More Colors", this);
    lblWindowsColors->setToolTip("Click here to go to the Windows Colors screen");
    connect(lblWindowsColors, &QPushButton::clicked, this, &ColorSamples::MoreColors);
    auto* row = new QHBoxLayout;
    row->addWidget(check);
    row->addWidget(lblHideSolidColors_, 1);
    row->addWidget(lblUnderMouse_);
    row->addWidget(lblWindowsColors);
    return row;
}

void ColorSamples::SetItemColor(const QColor& color) {
    const auto found = samples_.find(imgSelected_.checkedId());
    if (found == samples_.end()) return;
    const Sample& sample = found->second;
    QPalette palette = sample.widget->palette();
    palette.setColor(sample.role, color);
    sample.widget->setPalette(palette);
    emit Picked(found->first, color);
}

void ColorSamples::MoreColors() {
    const auto found = samples_.find(imgSelected_.checkedId());
    if (found == samples_.end()) return;
    const QColor present = found->second.widget->palette().color(found->second.role);
    const QColor chosen = QColorDialog::getColor(present, this);
    if (chosen.isValid()) SetItemColor(chosen);
}

void ColorSamples::ShowHideSolidColors(bool show) {
    picColorsSquare_->setVisible(show);
    lblHideSolidColors_->setText(show ? "Hide Solid Colors" : "Show Solid Colors");
}

SkinColors ColorSamples::Colors() const {
    SkinColors colors;
    for (const auto& [item, sample] : samples_)
        colors.*sample.color = ColorNumber(sample.widget->palette().color(sample.role));
    return colors;
}

void ColorSamples::SetTitleBackground(const QColor& color) {
    QPalette palette = lblTitleColor_->palette();
    palette.setColor(QPalette::Window, color);
    lblTitleColor_->setPalette(palette);
}

void ColorSamples::AllowPicking(bool on) {
    for (QWidget* part : {static_cast<QWidget*>(picColorPalette_), static_cast<QWidget*>(picColorsSquare_),
                          findChild<QWidget*>("lblWindowsColors")})
        part->setEnabled(on);
}

}  // namespace norvelis::ui
