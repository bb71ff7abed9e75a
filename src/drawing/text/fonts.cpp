#include "drawing/text/fonts.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <array>
#include <map>
#include <tuple>
#include <unordered_map>

#include "base/text.h"
#include FT_FREETYPE_H
#include FT_ADVANCES_H

namespace norvelis::drawing {

namespace {

struct Replaced {
    std::string_view name, substitute;
};
// Liberation was drawn to the widths of these.
constexpr std::array<Replaced, 6> kSubstitutes = {{
    {"Times New Roman", "Liberation Serif"},
    {"Times", "Liberation Serif"},
    {"Arial", "Liberation Sans"},
    {"Helvetica", "Liberation Sans"},
    {"Courier New", "Liberation Mono"},
    {"Courier", "Liberation Mono"},
}};

class FreeTypeFace : public FontFace {
  public:
    explicit FreeTypeFace(FT_Face face) : face_(face), unit_(1.0 / face->units_per_EM) {
        ascent_ = face->ascender * unit_;
        descent_ = -face->descender * unit_;
        common_.fill(-1);
    }
    ~FreeTypeFace() override { FT_Done_Face(face_); }
    FreeTypeFace(const FreeTypeFace&) = delete;
    FreeTypeFace& operator=(const FreeTypeFace&) = delete;

    double Advance(char32_t character) override {
        if (character < common_.size()) {
            double& known = common_[character];
            if (known < 0) known = Load(character);
            return known;
        }
        const auto [known, isNew] = others_.emplace(character, 0.0);
        if (isNew) known->second = Load(character);
        return known->second;
    }

  private:
    double Load(char32_t character) const {
        FT_Fixed advance = 0;
        const FT_UInt glyph = FT_Get_Char_Index(face_, character);
        return FT_Get_Advance(face_, glyph, FT_LOAD_NO_SCALE, &advance) == 0
                   ? static_cast<double>(advance) * unit_
                   : 0.5;
    }

    FT_Face face_;
    double unit_;
    std::array<double, 0x180> common_;
    std::unordered_map<char32_t, double> others_;
};

class NoFont : public FontFace {
  public:
    double Advance(char32_t) override { return 0.5; }
};

std::string FontFile(FcConfig* config, const std::string& family, bool bold, bool italic, int& index) {
    std::string file;
    FcPattern* pattern =
        FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, family.c_str(), FC_WEIGHT, FcTypeInteger,
                       bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR, FC_SLANT, FcTypeInteger,
                       italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN, FC_SCALABLE, FcTypeBool, FcTrue, nullptr);
    FcConfigSubstitute(config, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result;
    if (FcPattern* match = FcFontMatch(config, pattern, &result)) {
        FcChar8* name = nullptr;
        if (FcPatternGetString(match, FC_FILE, 0, &name) == FcResultMatch)
            file = reinterpret_cast<const char*>(name);
        FcPatternGetInteger(match, FC_INDEX, 0, &index);
        FcPatternDestroy(match);
    }
    FcPatternDestroy(pattern);
    return file;
}

}  // namespace

std::string SubstituteFamily(const std::string& name) {
    for (const auto& each : kSubstitutes) {
        if (EqualIgnoringCase(each.name, name)) return std::string(each.substitute);
    }
    return name;
}

struct FontLibrary::State {
    FT_Library library = nullptr;
    FcConfig* config = nullptr;
    std::map<std::tuple<std::string, bool, bool>, std::unique_ptr<FontFace>> faces;

    ~State() {
        faces.clear();
        if (library) FT_Done_FreeType(library);
        if (config) FcConfigDestroy(config);
    }
};

FontLibrary::FontLibrary() : state_(std::make_unique<State>()) {}
FontLibrary::~FontLibrary() = default;

FontFace& FontLibrary::Face(const std::string& family, bool bold, bool italic) {
    auto& face = state_->faces[{family, bold, italic}];
    if (face) return *face;
    if (!state_->config) state_->config = FcInitLoadConfigAndFonts();
    if (!state_->library && FT_Init_FreeType(&state_->library) != 0) state_->library = nullptr;
    FT_Face loaded = nullptr;
    if (state_->config && state_->library) {
        int index = 0;
        const std::string file = FontFile(state_->config, SubstituteFamily(family), bold, italic, index);
        if (!file.empty() && FT_New_Face(state_->library, file.c_str(), index, &loaded) != 0)
            loaded = nullptr;
    }
    if (loaded && loaded->units_per_EM > 0) {
        face = std::make_unique<FreeTypeFace>(loaded);
    } else {
        if (loaded) FT_Done_Face(loaded);
        face = std::make_unique<NoFont>();
    }
    return *face;
}

}  // namespace norvelis::drawing
