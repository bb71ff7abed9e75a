#pragma once

#include <QString>

#include "ui/skins/skin.h"

class QWidget;

// How a skin comes onto the controls of a form.
namespace norvelis::ui {

/// A picture for each control by its Tag, and the places of caption and window buttons by the form's size
/// tag.
void LoadSkins(const AppState& app, const Skin& skin, QWidget& form, const QString& sizeTag);

/// The skin's colors for labels, text boxes and lists, but for controls whose Tag holds "nocolorchange".
void SetColors(const Skin& skin, QWidget& form);

}  // namespace norvelis::ui
