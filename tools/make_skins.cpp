// make_skins SKIN-FOLDER: the delivered skins, each with its pictures and .Ini, and the list of them. A
// skin's .Ini that is there stays: a person may have changed its colours.
#include <QGuiApplication>
#include <QImage>
#include <cstdio>

#include "base/failure.h"
#include "base/ini.h"
#include "base/paths.h"
#include "ui/skins/art/classic_colors.h"
#include "ui/skins/art/skin_art.h"

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

/// All hues from left to right, white over full colour to black from top to bottom, greys at the right edge.
void PaintPalette(QPainter& painter, QSize size) {
    const int greys = 16;
    for (double x = 0; x < size.width(); x += 0.5) {
        const bool grey = x >= size.width() - greys;
        const double hue = x / (size.width() - greys);
        QLinearGradient column(0, 0, 0, size.height());
        column.setColorAt(0, Qt::white);
        if (!grey) column.setColorAt(0.5, QColor::fromHsvF(static_cast<float>(hue), 1, 1));
        column.setColorAt(1, Qt::black);
        painter.fillRect(QRectF(x, 0, 0.5, size.height()), column);
    }
}

/// Twelve columns of ten solid colours.
void PaintSolidColors(QPainter& painter, QSize size) {
    const int columns = 12, rows = 10;
    for (int column = 0; column < columns; ++column) {
        for (int row = 0; row < rows; ++row) {
            const float shade = static_cast<float>(row) / (rows - 1);
            QColor color = QColor::fromRgbF(1 - shade, 1 - shade, 1 - shade);
            if (column > 0) {
                const float hue = static_cast<float>(column - 1) / (columns - 1);
                color = QColor::fromHslF(hue, 0.85F, 0.92F - 0.78F * shade);
            }
            const QSizeF cell(static_cast<double>(size.width()) / columns,
                              static_cast<double>(size.height()) / rows);
            painter.fillRect(QRectF(QPointF(column * cell.width(), row * cell.height()), cell), color);
        }
    }
}

void WriteBitmaps(const std::string& folder) {
    const QSize size(184, 150);
    WritePicture(folder, "ColorPicker.Jpg", size, [&](QPainter& painter) { PaintPalette(painter, size); });
    WritePicture(folder, "ColorSquare.Jpg", size,
                 [&](QPainter& painter) { PaintSolidColors(painter, size); });
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
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_skins SKIN-FOLDER BITMAP-FOLDER\n");
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
        WriteBitmaps(argv[2]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "make_skins: %s\n", failure.what());
        return 1;
    }
}
