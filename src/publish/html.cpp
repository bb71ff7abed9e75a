#include "publish/html.h"

namespace norvelis::publish {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

}  // namespace

std::string Escaped(std::string_view text) {
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

Html& Html::Link(std::string_view anchor, std::string_view text) {
    if (anchor.empty()) return Text(text);
    return Markup("<a href=\"#").Text(anchor).Markup("\">").Text(text).Markup("</a>");
}

Html& Html::Cell(std::string_view text) {
    return Markup("<td>").Text(text).Markup("</td>");
}

Html& Html::Headings(std::initializer_list<std::string_view> headings) {
    Markup("<thead><tr>");
    for (const auto heading : headings) Markup("<th scope=\"col\">").Text(heading).Markup("</th>");
    return Markup("</tr></thead>\n");
}

}  // namespace norvelis::publish
