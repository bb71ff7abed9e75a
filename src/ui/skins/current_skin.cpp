#include "ui/skins/current_skin.h"

#include <utility>

#include "base/paths.h"
#include "ui/skins/skin_style.h"

namespace norvelis::ui {

CurrentSkin::CurrentSkin(AppState& app) : app_(app), skin_(PlainSkin()) {}

bool CurrentSkin::LoadSkins() {
    if (app_.gUseSkins) {
        auto skin = ReadSkin(app_);
        if (!skin) return false;
        skin_ = std::move(*skin);
    } else {
        skin_ = PlainSkin();
    }
    Apply();
    return true;
}

void CurrentSkin::LoadColors() {
    const bool fromSkin = app_.gUseSkins && FileExists(SkinIni(app_));
    skin_.colors = fromSkin ? ui::LoadColors(app_) : PlainSkin().colors;
}

void CurrentSkin::Apply() {
    SetStyleSkin(skin_);
    emit Applied();
}

bool CurrentSkin::ChangeTo(const std::string& name) {
    const std::string formerScheme = std::exchange(app_.gSkinScheme, name);
    const bool formerUse = std::exchange(app_.gUseSkins, true);
    if (!FormPicture(app_, kFormTag).IsNull() && LoadSkins()) {
        emit SkinChanged();
        return true;
    }
    RevertTo(formerScheme, formerUse);
    return false;
}

void CurrentSkin::RevertTo(const std::string& scheme, bool use) {
    app_.gSkinScheme = scheme;
    app_.gUseSkins = use;
    LoadColors();
    app_.host.MessageBox("Unable to load this skin. Reverting back to the previous skin.");
}

}  // namespace norvelis::ui
