#include "sqlconv/tables/picture.h"

#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "sqlconv/tables/words.h"

namespace norvelis::tables {

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

std::optional<long> NextNumber(std::string_view& text) {
    const std::string_view before = text, word = NextWord(text);
    long number = 0;
    const auto read = std::from_chars(word.data(), word.data() + word.size(), number);
    if (read.ec == std::errc() && read.ptr == word.data() + word.size()) return number;
    text = before;
    return std::nullopt;
}

Usage::Form FormOf(std::string_view word) {
    using enum Usage::Form;
    constexpr std::array<std::pair<std::string_view, Usage::Form>, 14> kForms = {{{"", Display},
                                                                                  {"DISPLAY", Display},
                                                                                  {"DISPLAY-1", Display},
                                                                                  {"GROUP", Group},
                                                                                  {"COMP", Binary},
                                                                                  {"COMP-4", Binary},
                                                                                  {"COMP-5", Binary},
                                                                                  {"BINARY", Binary},
                                                                                  {"COMP-3", Packed},
                                                                                  {"PACKED-DECIMAL", Packed},
                                                                                  {"COMP-1", SingleFloat},
                                                                                  {"COMP-2", DoubleFloat},
                                                                                  {"INDEX", Index},
                                                                                  {"OCCURS", Display}}};
    std::string name = UpperCase(word);
    constexpr std::string_view kLong = "COMPUTATIONAL";
    if (name.starts_with(kLong)) name.replace(0, kLong.size(), "COMP");
    for (const auto& [text, form] : kForms) {
        if (text == name) return form;
    }
    return Other;
}

ColumnType WholeNumber(long digits) {
    using enum ColumnType::Kind;
    if (digits <= 4) return {SmallInteger};
    if (digits <= 9) return {Integer};
    if (digits <= 18) return {BigInteger};
    return {Decimal, digits, 0};
}

/// The type that holds whatever the bytes of a binary number can.
ColumnType FullRange(const Picture& picture) {
    const bool two = picture.nines <= 4, four = picture.nines <= 9;
    if (picture.decimals > 0) return {ColumnType::Kind::Decimal, two ? 5 : four ? 10 : 20, picture.decimals};
    return WholeNumber(two ? 5 : four ? 10 : 20);
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

Usage ReadUsage(std::string_view stored) {
    std::string text = UpperCase(stored);
    std::string_view rest = text;
    Usage usage;
    usage.form = FormOf(NextWord(rest));
    const auto occurs = text.find("OCCURS");
    if (occurs == std::string::npos) return usage;
    usage.occurs = true;
    rest = std::string_view(text).substr(occurs + std::string_view("OCCURS").size());
    const auto least = NextNumber(rest);
    const auto next = NextWord(rest);
    const auto most = next == "TO" ? NextNumber(rest) : least;
    usage.least = least.value_or(0);
    usage.most = most.value_or(0);
    usage.never = most == 0 && next != "T";  // Of a TO that is cut.
    return usage;
}

ColumnType TypeFor(const Picture& picture, const Usage& usage, const TypeRules& rules) {
    using enum ColumnType::Kind;
    switch (usage.form) {
        case Usage::Form::Group:
            return {};
        case Usage::Form::SingleFloat:
            return {SingleFloat};
        case Usage::Form::DoubleFloat:
            return {DoubleFloat};
        case Usage::Form::Index:
            return {Integer};
        default:
            break;
    }
    if (picture.kind == Picture::Kind::Invalid) return {};
    if (picture.kind != Picture::Kind::Number)
        return {rules.fixedText || picture.width == 1 ? FixedText : Text,
                picture.width,
                0,
                {},
                picture.kind == Picture::Kind::WideText};
    if (rules.widenBinary && usage.form == Usage::Form::Binary && picture.digits == picture.nines)
        return FullRange(picture);
    if (picture.decimals > 0) return {Decimal, picture.digits, picture.decimals};
    return WholeNumber(picture.digits);
}

long StoredBytes(const Picture& picture, const Usage& usage) {
    switch (usage.form) {
        case Usage::Form::SingleFloat:
        case Usage::Form::Index:
            return 4;
        case Usage::Form::DoubleFloat:
            return 8;
        case Usage::Form::Packed:
            return picture.kind == Picture::Kind::Number ? picture.nines / 2 + 1 : 0;
        case Usage::Form::Binary:
            if (picture.kind != Picture::Kind::Number || picture.nines > 18) return 0;
            return picture.nines <= 4 ? 2 : picture.nines <= 9 ? 4 : 8;
        case Usage::Form::Display:
            if (picture.kind == Picture::Kind::WideText) return 2 * picture.width;
            return picture.kind == Picture::Kind::Number ? picture.nines : picture.width;
        default:
            return 0;
    }
}

}  // namespace norvelis::tables
