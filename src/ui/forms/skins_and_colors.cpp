#include "ui/forms/skins_and_colors.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTextEdit>
#include <utility>

#include "base/ini.h"
#include "base/text.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/form.h"
#include "ui/frame/mdi_main_menu.h"
#include "ui/skins/art/classic_colors.h"

namespace norvelis::ui {

namespace {

void LoadPictures(const Skin& skin, Form& form) {
    const auto controls = form.findChildren<QWidget*>();
    for (auto control = controls.rbegin(); control != controls.rend(); ++control) {
        if (auto* pictured = dynamic_cast<PictureControl*>(*control))
            pictured->SetPictures(skin.ForTag(pictured->Tag()));
    }
}

void PlaceByIni(const AppState& app, Form& form, std::string_view keys, const char* control) {
    const std::string file = SkinIni(app), section = form.Tag2().toStdString();
    const auto twips = [&](std::string_view side) {
        return static_cast<int>(Val(ReadINIValue(section, std::string(keys) + std::string(side), file)));
    };
    const int left = twips("Left");
    auto* found = form.findChild<QWidget*>(control);
    if (left != 0 && found) found->move(left / kTwipsPerPixel, twips("Top") / kTwipsPerPixel);
}

void SetColor(QWidget& control, QPalette::ColorRole role, int color) {
    QPalette palette = control.palette();
    palette.setColor(role, ColorOf(color));
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
    } else if (qobject_cast<QLineEdit*>(&control) || qobject_cast<QTextEdit*>(&control)) {
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

void RevertSkin(mdiMainMenu& frame, const std::string& scheme, bool use) {
    AppState& app = frame.App();
    app.gSkinScheme = scheme;
    app.gUseSkins = use;
    frame.LoadColors();
    app.host.MessageBox("Unable to load this skin. Reverting back to the previous skin.");
}

bool ChangeSkin(mdiMainMenu& frame, const std::string& name) {
    AppState& app = frame.App();
    const std::string formerScheme = std::exchange(app.gSkinScheme, name);
    const bool formerUse = std::exchange(app.gUseSkins, true);
    if (!FormPicture(app, kFormTag).IsNull() && LoadSkins(frame)) {
        frame.SkinChanged();
        return true;
    }
    RevertSkin(frame, formerScheme, formerUse);
    return false;
}

bool LoadSkins(mdiMainMenu& frame) {
    const AppState& app = frame.App();
    if (!app.gUseSkins) {
        frame.SetSkin(PlainSkin());
        return true;
    }
    const auto skin = ReadSkin(app);
    if (!skin) return false;
    frame.SetSkin(*skin);
    return true;
}

bool LoadSkins(mdiMainMenu& frame, Form& form) {
    const AppState& app = frame.App();
    if (!app.gUseSkins) return true;
    const Picture picture = FormPicture(app, form.Tag2());
    if (picture.IsNull()) return false;
    form.SetPicture(picture);
    LoadPictures(frame.GetSkin(), form);
    PlaceByIni(app, form, "Caption", "lblCaption");
    PlaceByIni(app, form, "Close", "imgClose");
    PlaceByIni(app, form, "Restore", "imgRestore");
    PlaceByIni(app, form, "Minimize", "imgMinimize");
    return true;
}

void SetColors(mdiMainMenu& frame, Form& form) {
    for (QWidget* control : form.findChildren<QWidget*>()) SetColorsOf(*control, frame.GetSkin());
}

}  // namespace norvelis::ui
