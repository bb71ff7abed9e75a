#pragma once

class QApplication;

namespace norvelis::ui {

/// Gives the platform's own controls (menus, lists, boxes) a flat look in the colours of the palette, so that
/// they belong to the skinned forms.
void UseSkinStyle(QApplication& application);

}  // namespace norvelis::ui
