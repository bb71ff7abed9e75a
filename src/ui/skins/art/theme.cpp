#include "ui/skins/art/theme.h"

namespace norvelis::ui {

namespace {

constexpr int kBrightWhite = 15;

QColor Hex(unsigned rgb) {
    return QColor::fromRgb(rgb);
}

Theme Daylight() {
    Theme theme;
    theme.name = "Daylight";
    theme.bevelled = false;
    theme.body = Hex(0xF6F8FB);
    theme.border = Hex(0xB9C4D0);
    theme.caption = theme.captionEnd = Hex(0xFFFFFF);
    theme.captionLine = Hex(0xDFE5EC);
    theme.glyph = Hex(0x4A5A6C);
    theme.accent = Hex(0x1F6FC4);
    theme.buttonTop = theme.buttonBottom = Hex(0xFFFFFF);
    theme.buttonBorder = Hex(0xBCC8D5);
    theme.markBorder = Hex(0x7D8DA0);
    theme.frameTop = Hex(0xE7EDF4);
    theme.frameBottom = Hex(0xCFDBE8);
    theme.frameMotif = Hex(0x9FB4CA);
    theme.label = Hex(0x334152);
    theme.title = Hex(0x1B2B3D);
    theme.buttonText = Hex(0x1D4F86);
    theme.textBoxBack = Hex(0xFFFFFF);
    theme.textBoxText = Hex(0x1B2B3D);
    theme.listBoxBack = Hex(0xFFFFFF);
    theme.buttonDownText = kBrightWhite;
    return theme;
}

Theme Midnight() {
    Theme theme;
    theme.name = "Midnight";
    theme.bevelled = false;
    theme.body = Hex(0x1F2731);
    theme.border = Hex(0x3B4756);
    theme.caption = theme.captionEnd = Hex(0x171D25);
    theme.captionLine = Hex(0x2E3946);
    theme.glyph = Hex(0xB6C2D0);
    theme.accent = Hex(0x2B72C8);
    theme.buttonTop = theme.buttonBottom = Hex(0x2C3744);
    theme.buttonBorder = Hex(0x46556A);
    theme.markBorder = Hex(0x76879D);
    theme.frameTop = Hex(0x161B22);
    theme.frameBottom = Hex(0x0E1217);
    theme.frameMotif = Hex(0x2F3D4E);
    theme.label = Hex(0xC4CFDB);
    theme.title = Hex(0xEDF2F8);
    theme.buttonText = Hex(0xDCE8F5);
    theme.textBoxBack = Hex(0x151B22);
    theme.textBoxText = Hex(0xE4EAF1);
    theme.listBoxBack = Hex(0x151B22);
    theme.buttonDownText = kBrightWhite;
    return theme;
}

Theme Classic() {
    Theme theme;
    theme.name = "Classic";
    theme.bevelled = true;
    theme.body = Hex(0xE9E6DF);
    theme.border = Hex(0x5C6F8C);
    theme.caption = Hex(0x2B5288);
    theme.captionEnd = Hex(0x4A70A4);
    theme.captionLine = Hex(0x24446F);
    theme.glyph = Hex(0xFFFFFF);
    theme.accent = Hex(0x3A67A6);
    theme.buttonTop = Hex(0xFDFCFA);
    theme.buttonBottom = Hex(0xD6D1C6);
    theme.buttonBorder = Hex(0x7D8797);
    theme.markBorder = Hex(0x6C7789);
    theme.frameTop = Hex(0x8FA5C2);
    theme.frameBottom = Hex(0x5D789C);
    theme.frameMotif = Hex(0xB9C9DD);
    theme.label = Hex(0x23282F);
    theme.title = Hex(0xFFFFFF);
    theme.buttonText = Hex(0x1C2C44);
    theme.textBoxBack = Hex(0xFFFFFF);
    theme.textBoxText = Hex(0x15181C);
    theme.listBoxBack = Hex(0xFFFFFF);
    theme.buttonDownText = kBrightWhite;
    return theme;
}

Theme Plain() {
    Theme theme = Daylight();
    theme.name.clear();
    theme.body = Hex(0xF2F2F2);
    theme.border = Hex(0xA8A8A8);
    theme.caption = theme.captionEnd = Hex(0xE4E4E4);
    theme.captionLine = Hex(0xCACACA);
    theme.glyph = Hex(0x404040);
    theme.accent = Hex(0x4A6785);
    theme.buttonTop = theme.buttonBottom = Hex(0xFBFBFB);
    theme.buttonBorder = Hex(0xB4B4B4);
    theme.markBorder = Hex(0x858585);
    theme.frameTop = Hex(0xDADCDE);
    theme.frameBottom = Hex(0xC6C9CC);
    theme.frameMotif = Hex(0xA9AEB4);
    theme.label = Hex(0x303030);
    theme.title = Hex(0x202020);
    theme.buttonText = Hex(0x303030);
    theme.textBoxText = Hex(0x202020);
    return theme;
}

}  // namespace

const std::array<Theme, 3>& DeliveredThemes() {
    static const std::array<Theme, 3> themes = {Daylight(), Midnight(), Classic()};
    return themes;
}

const Theme& PlainTheme() {
    static const Theme theme = Plain();
    return theme;
}

}  // namespace norvelis::ui
