#include "publish/html.h"

namespace norvelis::publish {

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
