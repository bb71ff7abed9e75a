#include "ui/skins/skin_colors.h"

#include <array>
#include <cmath>
#include <sstream>

#include "base/ini.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"

namespace norvelis::ui {

namespace {

constexpr std::string_view kSection = "Colors";

struct Key {
    std::string_view name;
    int SkinColors::*color;
};
constexpr std::array<Key, 7> kKeys = {{{"LabelForeColor", &SkinColors::LabelForeColor},
                                       {"TitleColor", &SkinColors::TitleColor},
                                       {"ButtonForeColor", &SkinColors::ButtonForeColor},
                                       {"TextBoxBackColor", &SkinColors::TextBoxBackColor},
                                       {"TextBoxForeColor", &SkinColors::TextBoxForeColor},
                                       {"ListBoxBackColor", &SkinColors::ListBoxBackColor},
                                       {"ButtonDownForeColor", &SkinColors::ButtonDownForeColor}}};

int WholeNumber(std::string_view text) {
    const double value = Val(text);
    return std::abs(value) < 0x1000000 ? static_cast<int>(value) : 0;
}

}  // namespace

std::vector<std::string> InstalledSkins(const AppState& app) {
    std::vector<std::string> skins;
    const std::string list = app.AppPath(places::kSkinList);
    if (!FileExists(list)) return skins;
    std::istringstream lines(ReadFile(list));
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) line.pop_back();
        const std::string name(Trim(line));
        if (!name.empty() && FolderExists(app.AppPath(places::Skin(name)))) skins.push_back(name);
    }
    return skins;
}

std::string SkinFolder(const AppState& app) {
    return app.AppPath(places::Skin(app.gSkinScheme));
}

std::string SkinIni(const AppState& app) {
    return app.AppPath(places::Skin(app.gSkinScheme) + "\\" + app.gSkinScheme + ".Ini");
}

SkinColors LoadColors(const AppState& app) {
    SkinColors colors;
    const std::string file = SkinIni(app);
    for (const Key& key : kKeys) colors.*key.color = WholeNumber(ReadINIValue(kSection, key.name, file));
    return colors;
}

bool SaveColors(const AppState& app, const SkinColors& colors) {
    const std::string file = SkinIni(app);
    if (!FileExists(file)) return false;
    for (const Key& key : kKeys) {
        if (key.color == &SkinColors::ButtonDownForeColor) continue;
        if (!WriteINIValue(kSection, key.name, std::to_string(colors.*key.color), file)) return false;
    }
    return true;
}

}  // namespace norvelis::ui
