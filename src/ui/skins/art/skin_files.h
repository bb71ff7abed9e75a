#pragma once

#include <QString>
#include <array>

// The files of a skin's folder. A picture may come in sharper variants beside the plain one, for displays
// with more pixels to the point: "ButtonUP.Jpg", "ButtonUP@1.5x.Jpg", "ButtonUP@2x.Jpg".
namespace norvelis::ui {

/// The pictures that all forms share, in the order of the control array imgSkins.
enum class SkinPicture {
    ButtonUp,
    ButtonDown,
    CheckOn,
    CheckOff,
    CloseUp,
    CloseDown,
    MinimizeUp,
    MinimizeDown,
    RadioOn,
    RadioOff,
    RestoreUp,
    RestoreDown
};
inline constexpr int kSkinPictures = 12;

/// File names in that order.
extern const std::array<const char*, kSkinPictures> kSkinPictureFiles;

/// Size tags of the forms, which name both a background ("850x510.Jpg") and a section of the skin's .Ini.
inline constexpr auto kFormTag = "850x510";
inline constexpr auto kLargeFormTag = "1040x620";
inline constexpr auto kFrameTag = "800x600";
inline constexpr auto kPickerTag = "500x300";

inline constexpr std::array<double, 3> kPictureScales = {1, 1.5, 2};

/// The name of the variant for `scale` device pixels to the point.
QString ScaledFile(const QString& file, double scale);

inline constexpr int kTwipsPerPixel = 15;

}  // namespace norvelis::ui
