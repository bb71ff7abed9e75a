#pragma once

class QApplication;

namespace norvelis::ui {

struct Skin;

/// Gives the platform's own controls (menus, lists, boxes) a flat look in the colours of the palette, so that
/// they belong to the skinned forms.
void UseSkinStyle(QApplication& application);

/// How much larger the desktop's text is than the text that the screens are made for; 1 or more.
double TextScale();

/// Takes palette and button pictures of a skin.
void SetStyleSkin(const Skin& skin);

}  // namespace norvelis::ui
