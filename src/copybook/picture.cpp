#include "copybook/picture.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "base/text.h"

namespace norvelis::copybook {

namespace {

constexpr std::array<std::pair<std::string_view, Storage>, 18> kUsages = {{
    {"DISPLAY", Storage::Display},
    {"DISP", Storage::Display},
    {"DISPLAY-1", Storage::DoubleByte},
    {"NATIONAL", Storage::DoubleByte},
    {"COMP", Storage::Binary},
    {"COMP-4", Storage::Binary},
    {"COMP-5", Storage::Binary},
    {"COMPUTATIONAL", Storage::Binary},
    {"COMPUTATIONAL-4", Storage::Binary},
    {"BINARY", Storage::Binary},
    {"COMP-3", Storage::Packed},
    {"COMPUTATIONAL-3", Storage::Packed},
    {"PACKED-DECIMAL", Storage::Packed},
    {"COMP-1", Storage::ShortFloat},
    {"COMP-2", Storage::LongFloat},
    {"COMPUTATIONAL-1", Storage::ShortFloat},
    {"COMPUTATIONAL-2", Storage::LongFloat},
    {"POINTER", Storage::Address},
}};

constexpr long kMostPlaces = 1000000;
constexpr long kMostDigits = 18;

/// What the symbols of a picture add up to.
struct Places {
    long shown = 0;          ///< Places that a DISPLAY item keeps.
    long digits = 0;         ///< 9s alone.
    bool onlyNumber = true;  ///< No symbols but those of numbers: 9 S V P.
    bool isSigned = false;
};

/// "(12)" at `text`, which is moved behind it: 12. 1 when there is none, 0 when it is no number.
long TakeRepeat(std::string_view& text) {
    if (!text.starts_with('(')) return 1;
    const std::size_t close = text.find(')');
    const std::string_view number = close == std::string_view::npos ? "" : text.substr(1, close - 1);
    const bool isNumber = !number.empty() && number.size() <= 6 &&
                          std::ranges::all_of(number, [](unsigned char c) { return std::isdigit(c) != 0; });
    if (!isNumber) return 0;
    text.remove_prefix(close + 1);
    return static_cast<long>(Val(number));
}

std::optional<Places> Count(std::string_view picture) {
    constexpr std::string_view kCounted = "XA9BEGNZ0,.+-*$/CRD", kUncounted = "SVP";
    Places places;
    const std::string upper = UpperCase(picture);
    std::string_view rest = upper;
    while (!rest.empty()) {
        const char symbol = rest.front();
        rest.remove_prefix(1);
        const long repeat = TakeRepeat(rest);
        if (repeat == 0) return std::nullopt;
        if (kCounted.find(symbol) != std::string_view::npos) {
            places.shown += repeat;
        } else if (kUncounted.find(symbol) == std::string_view::npos) {
            return std::nullopt;
        }
        if (symbol == '9') {
            places.digits += repeat;
        } else if (symbol == 'S') {
            places.isSigned = true;
        } else if (symbol != 'V' && symbol != 'P') {
            places.onlyNumber = false;
        }
        if (places.shown > kMostPlaces) return std::nullopt;
    }
    return places.shown == 0 ? std::nullopt : std::optional(places);
}

}  // namespace

Storage StorageOf(std::string_view usage) {
    if (EqualIgnoringCase(usage, "INDEX")) return Storage::Address;
    for (const auto& [name, storage] : kUsages)
        if (EqualIgnoringCase(name, usage)) return storage;
    return Storage::Unknown;
}

bool NeedsPicture(Storage storage) {
    return storage != Storage::ShortFloat && storage != Storage::LongFloat && storage != Storage::Address;
}

std::optional<long> BytesOf(std::string_view picture, Storage storage) {
    if (storage == Storage::LongFloat) return 8;
    if (!NeedsPicture(storage)) return 4;
    const auto places = Count(picture);
    if (!places) return std::nullopt;
    const bool isNumber = places->onlyNumber && places->digits > 0 && places->digits <= kMostDigits;
    switch (storage) {
        case Storage::Display:
            return places->shown;
        case Storage::DoubleByte:
            return 2 * places->shown;
        case Storage::Binary:
            if (!isNumber) return std::nullopt;
            return places->digits <= 4 ? 2 : places->digits <= 9 ? 4 : 8;
        case Storage::Packed:
            if (!isNumber) return std::nullopt;
            return places->digits / 2 + 1;
        default:
            return std::nullopt;
    }
}

bool IsSignedDisplay(std::string_view picture, Storage storage) {
    const auto places = Count(picture);
    return storage == Storage::Display && places && places->onlyNumber && places->isSigned;
}

}  // namespace norvelis::copybook
