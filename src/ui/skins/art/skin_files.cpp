#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

const std::array<const char*, kSkinPictures> kSkinPictureFiles = {
    "ButtonUP.Jpg",   "ButtonDN.Jpg",   "CheckON.Jpg", "CheckOFF.Jpg", "CloseUP.Jpg",   "CloseDN.Jpg",
    "MinimizeUP.Jpg", "MinimizeDN.Jpg", "RadioON.Jpg", "RadioOFF.Jpg", "RestoreUP.Jpg", "RestoreDN.Jpg"};

QString ScaledFile(const QString& file, double scale) {
    if (scale == 1) return file;
    const auto dot = file.lastIndexOf('.');
    return file.left(dot) + "@" + QString::number(scale) + "x" + file.mid(dot);
}

}  // namespace norvelis::ui
