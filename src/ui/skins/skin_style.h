#pragma once

class QApplication;

namespace norvelis::ui {

struct Skin;

/// Gives the platform's own controls (menus, lists, boxes) a flat look in the colours of the palette, so that
/// they belong to the skinned forms.
void UseSkinStyle(QApplication& application);

/// Takes palette and button pictures of a skin.
void SetStyleSkin(const Skin& skin);

}  // namespace norvelis::ui
