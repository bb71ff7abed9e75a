#include "ui/skins/skin.h"

#include <cmath>

#include "base/paths.h"
#include "ui/skins/art/classic_colors.h"
#include "ui/skins/art/skin_art.h"

namespace norvelis::ui {

namespace {

Picture SkinFile(const AppState& app, const QString& file) {
    return Picture::FromFile(QString::fromStdString(SkinFolder(app)) + "/" + file);
}

QColor Mixed(const QColor& a, const QColor& b, double part) {
    const auto mix = [part](int from, int to) {
        return static_cast<int>(std::lround(from + (to - from) * part));
    };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

QColor Middle(const Picture& picture) {
    return picture.At(QPoint(picture.Size().width() / 2, picture.Size().height() / 2));
}

struct TagPictures {
    const char* tag;
    SkinPicture first, second;
};
constexpr TagPictures kTagPictures[] = {{"Button", SkinPicture::ButtonUp, SkinPicture::ButtonDown},
                                        {"Minimize", SkinPicture::MinimizeUp, SkinPicture::MinimizeDown},
                                        {"Maximize", SkinPicture::RestoreUp, SkinPicture::RestoreDown},
                                        {"Restore", SkinPicture::RestoreUp, SkinPicture::RestoreDown},
                                        {"Close", SkinPicture::CloseUp, SkinPicture::CloseDown},
                                        {"Check", SkinPicture::CheckOn, SkinPicture::CheckOff},
                                        {"Radio", SkinPicture::RadioOn, SkinPicture::RadioOff}};

}  // namespace

PicturePair Skin::ForTag(const QString& tag) const {
    for (const TagPictures& entry : kTagPictures) {
        if (tag == QLatin1String(entry.tag)) return {(*this)[entry.first], (*this)[entry.second]};
    }
    return {};
}

QColor Skin::ButtonDownColor() const {
    return ClassicColor(colors.ButtonDownForeColor);
}

QPalette Skin::Palette() const {
    const QColor button = Middle((*this)[SkinPicture::ButtonUp]);
    const QColor accent = Middle((*this)[SkinPicture::ButtonDown]);
    const QColor label = ColorOf(colors.LabelForeColor), text = ColorOf(colors.TextBoxForeColor);
    const QColor base = ColorOf(colors.TextBoxBackColor), buttonText = ColorOf(colors.ButtonForeColor);

    QPalette palette(button, body);
    palette.setColor(QPalette::Window, body);
    palette.setColor(QPalette::WindowText, label);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, Mixed(base, text, 0.035));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::PlaceholderText, Mixed(text, base, 0.35));
    palette.setColor(QPalette::Button, button);
    palette.setColor(QPalette::ButtonText, buttonText);
    palette.setColor(QPalette::ToolTipBase, Mixed(base, text, 0.06));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, ButtonDownColor());
    palette.setColor(QPalette::Link, Mixed(accent, label, 0.4));
    palette.setColor(QPalette::Light, Mixed(body, Qt::white, 0.5));
    palette.setColor(QPalette::Midlight, Mixed(body, label, 0.10));
    palette.setColor(QPalette::Mid, Mixed(body, label, 0.28));
    palette.setColor(QPalette::Dark, Mixed(body, label, 0.45));
    palette.setColor(QPalette::Shadow, Mixed(body, Qt::black, 0.7));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, Mixed(palette.color(QPalette::Active, role), body, 0.55));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, Mixed(accent, body, 0.6));
    for (const auto role : {QPalette::Base, QPalette::Button})
        palette.setColor(QPalette::Disabled, role, body);
    return palette;
}

namespace {

Skin MakePlainSkin() {
    const Theme& theme = PlainTheme();
    Skin skin;
    skin.colors = {ColorNumber(theme.label),
                   ColorNumber(theme.title),
                   ColorNumber(theme.buttonText),
                   ColorNumber(theme.textBoxBack),
                   ColorNumber(theme.textBoxText),
                   ColorNumber(theme.listBoxBack),
                   theme.buttonDownText};
    for (int i = 0; i < kSkinPictures; ++i) {
        const auto picture = static_cast<SkinPicture>(i);
        skin.imgSkins[static_cast<std::size_t>(i)] = Picture::Drawn(
            SkinPictureSize(picture),
            [picture, &theme](QPainter& painter) { PaintSkinPicture(painter, theme, picture); });
    }
    skin.body = theme.body;
    const QSize size(800, 600);
    skin.frame =
        Picture::Drawn(size, [size, &theme](QPainter& painter) { PaintFrame(painter, theme, size); });
    return skin;
}

}  // namespace

const Skin& PlainSkin() {
    static const Skin skin = MakePlainSkin();
    return skin;
}

Picture PlainForm(QSize size) {
    return Picture::Drawn(size, [size](QPainter& painter) { PaintForm(painter, PlainTheme(), size); });
}

std::optional<Skin> ReadSkin(const AppState& app) {
    if (app.gSkinScheme.empty() || !FolderExists(SkinFolder(app)) || !FileExists(SkinIni(app)))
        return std::nullopt;
    Skin skin;
    skin.colors = LoadColors(app);
    skin.frame = SkinFile(app, QString(kFrameTag) + ".Jpg");
    if (skin.frame.IsNull()) return std::nullopt;
    for (std::size_t i = 0; i < skin.imgSkins.size(); ++i) {
        skin.imgSkins[i] = SkinFile(app, kSkinPictureFiles[i]);
        if (skin.imgSkins[i].IsNull()) return std::nullopt;
    }
    const Picture form = FormPicture(app, kFormTag);
    skin.body = form.IsNull() ? skin[SkinPicture::CheckOff].At(QPoint(0, 0)) : Middle(form);
    return skin;
}

Picture FormPicture(const AppState& app, const QString& sizeTag) {
    return SkinFile(app, sizeTag + ".Jpg");
}

}  // namespace norvelis::ui
