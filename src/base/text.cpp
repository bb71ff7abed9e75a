#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/failure.h"

namespace norvelis {

namespace {

char ToUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

void AppendUtf8(std::string& out, unsigned codePoint) {
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0 | (codePoint >> 6));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (codePoint >> 12));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

// Windows-1252 differs from Latin-1 in these 32 places only.
constexpr unsigned kWindows1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                       0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

}  // namespace

std::string_view Text(std::string_view line, long c, long n) {
    const long size = static_cast<long>(line.size());
    const long begin = std::max(c, 1L) - 1;
    const long end = std::min(c - 1 + n, size);
    if (begin >= end) return {};
    return line.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

std::size_t Column(std::string_view line, std::string_view keyword, std::size_t from) {
    const auto at = line.find(keyword, from - 1);
    return at == std::string_view::npos ? 0 : at + 1;
}

std::string_view TrimEnd(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{} : TrimEnd(text.substr(first));
}

std::string UpperCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), ToUpper);
    return result;
}

std::string LowerCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), ToLower);
    return result;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToUpper(x) == ToUpper(y); });
}

bool SameName(std::string_view a, std::string_view b) {
    return EqualIgnoringCase(TrimEnd(a), TrimEnd(b));
}

std::string ToUtf8(std::string_view windows1252) {
    std::string out;
    out.reserve(windows1252.size());
    for (const char c : windows1252) {
        const unsigned byte = static_cast<unsigned char>(c);
        AppendUtf8(out, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte);
    }
    return out;
}

double Val(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc{} && std::isfinite(value) ? value : 0;
}

bool IsNumeric(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return !text.empty() && result.ec == std::errc{} && result.ptr == text.data() + text.size() &&
           std::isfinite(value);
}

bool ToBoolean(std::string_view text) {
    text = Trim(text);
    if (EqualIgnoringCase(text, "true")) return true;
    if (EqualIgnoringCase(text, "false")) return false;
    if (IsNumeric(text)) return Val(text) != 0;
    throw RuntimeFailure(FailureNumber::TypeMismatch);
}

std::string HexText(const unsigned char (&bytes)[16]) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    for (const unsigned char byte : bytes) {
        result += kDigits[byte >> 4];
        result += kDigits[byte & 15];
    }
    return result;
}

}  // namespace norvelis
