#pragma once

#include <QColor>
#include <QString>
#include <array>

namespace norvelis::ui {

/// The colours that a skin's pictures and .Ini are made of.
struct Theme {
    QString name;
    bool bevelled;  ///< Buttons and captions with light and shade; otherwise flat with rounded corners.

    QColor body, border;
    QColor caption, captionEnd;  ///< Left and right end of the bar.
    QColor captionLine;
    QColor glyph;  ///< Signs on the window buttons.
    QColor accent;
    QColor buttonTop, buttonBottom, buttonBorder;
    QColor markBorder;  ///< Of check boxes and radio buttons, which are nothing but their border when off.
    QColor frameTop, frameBottom, frameMotif;  ///< The main frame's background.

    // What the .Ini says.
    QColor label, title, buttonText, textBoxBack, textBoxText, listBoxBack;
    int buttonDownText;  ///< One of the sixteen classic colours.
};

/// The delivered skins, the default first.
const std::array<Theme, 3>& DeliveredThemes();

/// How forms look without a skin.
const Theme& PlainTheme();

}  // namespace norvelis::ui
