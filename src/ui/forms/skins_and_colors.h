#pragma once

#include <QPoint>
#include <string>

// How a skin comes onto forms.
namespace norvelis::ui {

class Form;
class mdiMainMenu;

/// The shared pictures and the frame's background. False, and the frame as it was, when the skin in force
/// cannot be read whole. Without a skin in force: the plain look.
bool LoadSkins(mdiMainMenu& frame);

/// The form's background by its size tag, a picture for each control by its Tag, and the places of caption
/// and window buttons. False when the background is missing, and the form then stays as it stands. Without a
/// skin in force a form keeps its own look.
bool LoadSkins(mdiMainMenu& frame, Form& form);

/// The skin's colours for labels, text boxes and lists, but for controls whose Tag holds "nocolorchange".
void SetColors(mdiMainMenu& frame, Form& form);

/// Says that a skin cannot be loaded and puts the former one (none without `use`) back in force.
void RevertSkin(mdiMainMenu& frame, const std::string& scheme, bool use);

/// Puts another skin in force and tells every open form. A skin that cannot be loaded is told in a box, the
/// former one stays, and the result is false.
bool ChangeSkin(mdiMainMenu& frame, const std::string& name);

/// The mouse was pressed on the form's background: the form follows it.
void StartFormDrag(Form& form, QPoint globalPlace);

}  // namespace norvelis::ui
