#pragma once

#include <QColor>
#include <QPalette>
#include <array>

#include "core/app_state.h"
#include "ui/skins/art/skin_files.h"
#include "ui/skins/picture.h"
#include "ui/skins/skin_colors.h"

namespace norvelis::ui {

/// What a picture control shows at rest (a check or radio button: when it is on), and otherwise.
struct PicturePair {
    Picture first, second;
};

/// The skin in force: what all forms take their shared pictures and colours from. Owned by the main frame.
struct Skin {
    SkinColors colors;
    std::array<Picture, kSkinPictures> imgSkins;
    Picture frame;  ///< The main frame's background.
    QColor body;    ///< What forms are filled with.

    const Picture& operator[](SkinPicture picture) const {
        return imgSkins[static_cast<std::size_t>(picture)];
    }

    /// The pictures of a control with this Tag: "Button", "Minimize", "Maximize", "Restore", "Close",
    /// "Check", "Radio"; no pictures for any other.
    PicturePair ForTag(const QString& tag) const;
    QColor ButtonDownColor() const;
    /// Colours for what a skin has no key for (trees, grids, menus, boxes), taken from its keys and pictures.
    QPalette Palette() const;
};

/// What the program looks like without a skin.
const Skin& PlainSkin();
/// The background of a form without a skin.
Picture PlainForm(QSize size);

/// Reads the skin of gSkinScheme. Nothing when its folder, its .Ini or one of its shared pictures is missing.
std::optional<Skin> ReadSkin(const AppState& app);

/// The background for a size tag in the folder of gSkinScheme; no picture when it is missing.
Picture FormPicture(const AppState& app, const QString& sizeTag);

}  // namespace norvelis::ui
