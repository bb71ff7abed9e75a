// make_skins SKIN-FOLDER: the delivered skins, each with its pictures and .Ini, and the list of them. A
// skin's .Ini that is there stays: a person may have changed its colours.
#include <QGuiApplication>
#include <QImage>
#include <cstdio>

#include "core/failure.h"
#include "core/ini.h"
#include "core/paths.h"
#include "ui/skins/skin_art.h"

using namespace norvelis;
using namespace norvelis::ui;

namespace {

constexpr int kJpegQuality = 97;

template <typename Draw>
void WritePicture(const std::string& folder, const QString& file, QSize size, const Draw& draw) {
    for (const double scale : kPictureScales) {
        QImage image((QSizeF(size) * scale).toSize(), QImage::Format_RGB32);
        QPainter painter(&image);
        painter.scale(scale, scale);
        draw(painter);
        painter.end();
        WriteFileThrough(folder + "/" + ScaledFile(file, scale).toStdString(),
                         [&image](const std::string& temporary) {
                             if (!image.save(QString::fromStdString(temporary), "JPG", kJpegQuality))
                                 throw RuntimeFailure(FailureNumber::DeviceIoError, temporary);
                         });
    }
}

void WritePictures(const std::string& folder, const Theme& theme) {
    for (int i = 0; i < kSkinPictures; ++i) {
        const auto picture = static_cast<SkinPicture>(i);
        WritePicture(folder, kSkinPictureFiles[static_cast<std::size_t>(i)], SkinPictureSize(picture),
                     [&](QPainter& painter) { PaintSkinPicture(painter, theme, picture); });
    }
    for (const QSize size : {QSize(850, 510), QSize(1040, 620), QSize(500, 300)}) {
        WritePicture(folder, QString("%1x%2.Jpg").arg(size.width()).arg(size.height()), size,
                     [&](QPainter& painter) { PaintForm(painter, theme, size); });
    }
    WritePicture(folder, "800x600.Jpg", QSize(800, 600),
                 [&](QPainter& painter) { PaintFrame(painter, theme, QSize(800, 600)); });
}

/// Red in the lowest byte: the classic number of a colour.
int ColorNumber(const QColor& color) {
    return color.red() + color.green() * 0x100 + color.blue() * 0x10000;
}

std::string IniOf(const Theme& theme) {
    std::string ini = "[Colors]\n";
    const auto add = [&ini](const char* key, int value) {
        ini += std::string(key) + "=" + std::to_string(value) + "\n";
    };
    add("LabelForeColor", ColorNumber(theme.label));
    add("TitleColor", ColorNumber(theme.title));
    add("ButtonForeColor", ColorNumber(theme.buttonText));
    add("TextBoxBackColor", ColorNumber(theme.textBoxBack));
    add("TextBoxForeColor", ColorNumber(theme.textBoxText));
    add("ListBoxBackColor", ColorNumber(theme.listBoxBack));
    add("ButtonDownForeColor", theme.buttonDownText);
    for (const QSize size : {QSize(850, 510), QSize(1040, 620), QSize(500, 300)}) {
        const CaptionPlaces places = PlacesFor(size);
        ini += "\n[" + std::to_string(size.width()) + "x" + std::to_string(size.height()) + "]\n";
        const auto place = [&add](const std::string& key, QPoint at) {
            add((key + "Left").c_str(), at.x() * kTwipsPerPixel);
            add((key + "Top").c_str(), at.y() * kTwipsPerPixel);
        };
        place("Caption", places.lblCaption);
        place("Close", places.imgClose);
        place("Restore", places.imgRestore);
        place("Minimize", places.imgMinimize);
    }
    return ini;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_skins SKIN-FOLDER\n");
        return 2;
    }
    try {
        const std::string root = argv[1];
        std::string list;
        for (const Theme& theme : DeliveredThemes()) {
            const std::string name = theme.name.toStdString(), folder = root + "/" + name;
            if (!CreateFolder(folder)) throw RuntimeFailure(FailureNumber::PathNotFound, folder);
            WritePictures(folder, theme);
            WriteFile(folder + "/" + name + ".Ini", IniOf(theme));
            list += name + "\n";
        }
        WriteFile(root + "/Skins.INI", list);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "make_skins: %s\n", failure.what());
        return 1;
    }
}
