#include "cobol/picture.h"

#include <charconv>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "base/words.h"

namespace norvelis::cobol {

namespace {

constexpr long kWidest = 1'000'000'000;

struct Symbol {
    char letter;
    long count;
};

/// "S9(3)V99" as S x 1, 9 x 3, V x 1, 9 x 2. Nothing when a repetition is no positive number in parentheses.
std::optional<std::vector<Symbol>> SymbolsOf(const std::string& picture) {
    std::vector<Symbol> symbols;
    for (std::size_t at = 0; at < picture.size(); ++at) {
        if (picture[at] == '(') {
            const auto close = picture.find(')', at);
            if (symbols.empty() || close == std::string::npos) return std::nullopt;
            long count = 0;
            const char* end = picture.data() + close;
            const auto read = std::from_chars(picture.data() + at + 1, end, count);
            if (read.ec != std::errc() || read.ptr != end || count < 1 || count > kWidest)
                return std::nullopt;
            symbols.back().count += count - 1;
            at = close;
            if (at + 1 < picture.size() && picture[at + 1] == '(') return std::nullopt;
        } else if (!symbols.empty() && symbols.back().letter == picture[at]) {
            ++symbols.back().count;
        } else {
            symbols.push_back({picture[at], 1});
        }
    }
    return symbols;
}

/// S first, then digits with at most one V, P at one end of them. Invalid when it is no number of that form.
Picture NumberOf(const std::vector<Symbol>& symbols) {
    Picture number;
    number.kind = Picture::Kind::Number;
    bool point = false, leading = false, trailing = false;
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const auto [letter, count] = symbols[i];
        switch (letter) {
            case 'S':
                if (i > 0 || count > 1) return {};
                number.isSigned = true;
                break;
            case 'V':
                if (point || count > 1 || leading) return {};
                point = true;
                break;
            case 'P':
                if (leading || trailing || (number.nines > 0 && point)) return {};
                (number.nines == 0 ? leading : trailing) = true;
                number.digits += count;
                if (leading) number.decimals += count;
                break;
            case '9':
                if (trailing) return {};
                number.nines += count;
                number.digits += count;
                if (point || leading) number.decimals += count;
                break;
            default:
                return {};
        }
    }
    return number.nines > 0 && number.digits <= kWidest ? number : Picture{};
}

bool Holds(std::string_view letters, char letter) {
    return letters.find(letter) != std::string_view::npos;
}

/// What is printed: V and P take no place, CR and DB two. There must be a place for a character or a digit,
/// at most one decimal point and one sign.
Picture PrintedOf(const std::vector<Symbol>& symbols) {
    constexpr std::string_view kText = "XA9", kWide = "GN", kPlaces = "XA9GNZ*", kFloating = "+-$";
    constexpr std::string_view kEditing = "ZB0/,.*+-$", kSilent = "VP";
    Picture printed;
    bool text = true, wide = true, edits = false, places = false;
    long points = 0, signs = 0;
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const auto [letter, count] = symbols[i];
        const char next = i + 1 < symbols.size() ? symbols[i + 1].letter : ' ';
        const bool credit = (letter == 'C' && next == 'R') || (letter == 'D' && next == 'B');
        const bool exponent = letter == 'E' && (next == '+' || next == '-');
        const bool silent = Holds(kSilent, letter);
        const bool editing = credit || exponent || Holds(kEditing, letter);
        text = text && Holds(kText, letter);
        wide = wide && Holds(kWide, letter);
        edits = edits || editing;
        if (!editing && !silent && !Holds(kPlaces, letter)) return {};
        places = places || Holds(kPlaces, letter) || (Holds(kFloating, letter) && count > 1);
        if (letter == '.' || letter == 'V') points += count;
        if (credit || letter == '+' || letter == '-') ++signs;
        if (exponent) --signs;  // The one behind it is the exponent's own.
        if (!silent) printed.width += count;
        if (credit) printed.width += symbols[++i].count;
    }
    if (printed.width == 0 || printed.width > kWidest || !(text || wide || edits)) return {};
    if (!places || points > 1 || signs > 1) return {};
    printed.kind = wide ? Picture::Kind::WideText : text ? Picture::Kind::Text : Picture::Kind::Edited;
    return printed;
}

}  // namespace

std::string_view PictureWord(std::string_view stored) {
    return NextWord(stored);
}

Picture ReadPicture(std::string_view word) {
    std::string picture = UpperCase(Trim(word));
    // The end of a COBOL sentence is no part of the picture.
    if (picture.ends_with('.') || picture.ends_with(',')) picture.pop_back();
    const auto symbols = SymbolsOf(picture);
    if (!symbols) return {};
    const Picture number = NumberOf(*symbols);
    return number.kind == Picture::Kind::Invalid ? PrintedOf(*symbols) : number;
}

}  // namespace norvelis::cobol
