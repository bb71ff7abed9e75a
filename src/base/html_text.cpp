#include "base/html_text.h"

namespace norvelis {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

}  // namespace

std::string HtmlText(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\r':
                break;
            default:
                // A page may hold no other control characters.
                if (static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t') {
                    escaped += kReplacement;
                } else {
                    escaped += c;
                }
        }
    }
    return escaped;
}

}  // namespace norvelis
