#include "ui/forms/skins_and_colors.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTextEdit>

#include "base/ini.h"
#include "base/text.h"
#include "ui/controls/picture_controls.h"
#include "ui/skins/art/classic_colors.h"

namespace norvelis::ui {

namespace {

void LoadPictures(const Skin& skin, QWidget& form) {
    const auto controls = form.findChildren<QWidget*>();
    for (auto control = controls.rbegin(); control != controls.rend(); ++control) {
        if (auto* pictured = dynamic_cast<PictureControl*>(*control))
            pictured->SetPictures(skin.ForTag(pictured->Tag()));
    }
}

void PlaceByIni(const AppState& app, QWidget& form, const std::string& section, std::string_view keys,
                const char* control) {
    const std::string file = SkinIni(app);
    const auto twips = [&](std::string_view side) {
        return static_cast<int>(Val(ReadINIValue(section, std::string(keys) + std::string(side), file)));
    };
    const int left = twips("Left");
    auto* found = form.findChild<QWidget*>(control);
    if (left != 0 && found) found->move(left / kTwipsPerPixel, twips("Top") / kTwipsPerPixel);
}

/// A disabled control looks as all do that are disabled.
void SetColor(QWidget& control, QPalette::ColorRole role, int color) {
    QPalette palette = control.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, role, ColorOf(color));
    control.setPalette(palette);
}

void SetColorsOf(QWidget& control, const Skin& skin) {
    const QString tag = control.property("Tag").toString();
    const SkinColors& colors = skin.colors;
    if (tag.contains("nocolorchange", Qt::CaseInsensitive)) return;
    if (auto* button = dynamic_cast<SkinButton*>(&control)) {
        button->SetCaptionColors(ColorOf(colors.ButtonForeColor), skin.ButtonDownColor());
    } else if (qobject_cast<QLabel*>(&control)) {
        SetColor(control, QPalette::WindowText,
                 tag == "TitleColor"    ? colors.TitleColor
                 : tag == "ButtonLabel" ? colors.ButtonForeColor
                                        : colors.LabelForeColor);
    } else if (qobject_cast<QLineEdit*>(&control) || qobject_cast<QTextEdit*>(&control) ||
               qobject_cast<QPlainTextEdit*>(&control)) {
        SetColor(control, QPalette::Base, colors.TextBoxBackColor);
        SetColor(control, QPalette::Text, colors.TextBoxForeColor);
    } else if (qobject_cast<QListView*>(&control) || qobject_cast<QComboBox*>(&control)) {
        for (const auto role : {QPalette::Base, QPalette::Button})
            SetColor(control, role, colors.ListBoxBackColor);
        for (const auto role : {QPalette::Text, QPalette::ButtonText})
            SetColor(control, role, colors.TextBoxForeColor);
    }
}

}  // namespace

void LoadSkins(const AppState& app, const Skin& skin, QWidget& form, const QString& sizeTag) {
    LoadPictures(skin, form);
    const std::string section = sizeTag.toStdString();
    PlaceByIni(app, form, section, "Caption", "lblCaption");
    PlaceByIni(app, form, section, "Close", "imgClose");
    PlaceByIni(app, form, section, "Restore", "imgRestore");
    PlaceByIni(app, form, section, "Minimize", "imgMinimize");
}

void SetColors(const Skin& skin, QWidget& form) {
    for (QWidget* control : form.findChildren<QWidget*>()) SetColorsOf(*control, skin);
}

}  // namespace norvelis::ui
