#pragma once

#include <string>
#include <vector>

#include "core/app_state.h"

namespace norvelis::ui {

/// The colours of the skin in force: classic colour numbers (red in the lowest byte), but for
/// ButtonDownForeColor, which is one of the sixteen classic colours, 0 to 15.
struct SkinColors {
    int LabelForeColor = 0;
    int TitleColor = 0;
    int ButtonForeColor = 0;
    int TextBoxBackColor = 0;
    int TextBoxForeColor = 0;
    int ListBoxBackColor = 0;
    int ButtonDownForeColor = 0;

    bool operator==(const SkinColors&) const = default;
};

/// Section "Colors" of the .Ini of gSkinScheme; a key that is not there counts as 0.
SkinColors LoadColors(const AppState& app);

/// Writes all but ButtonDownForeColor. False when the .Ini is not there, which makes none, or could not be
/// written.
bool SaveColors(const AppState& app, const SkinColors& colors);

/// The skins of "\\Skins\\Skins.INI" whose folder exists, in its order.
std::vector<std::string> InstalledSkins(const AppState& app);

/// "\Skins\" + gSkinScheme, as a path.
std::string SkinFolder(const AppState& app);
/// The skin's own .Ini.
std::string SkinIni(const AppState& app);

}  // namespace norvelis::ui
