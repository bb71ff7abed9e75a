#include "golden/picture_difference.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <pugixml.hpp>
#include <sstream>
#include <stdexcept>

namespace norvelis {

namespace {

constexpr double kAlike = 0.02;  ///< In points.

/// A shape's markup with its numbers apart, so that those can be compared as lengths.
struct Markup {
    std::string words;
    std::vector<double> numbers;
};

/// A color's figures are no number.
bool StartsNumber(const std::string& text, std::size_t at) {
    if (at > 0 && (text[at - 1] == '#' || std::isxdigit(static_cast<unsigned char>(text[at - 1])) != 0))
        return false;
    const auto isDigit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    return isDigit(at) || (text[at] == '-' && isDigit(at + 1));
}

Markup Split(const std::string& text) {
    Markup markup;
    for (std::size_t at = 0; at < text.size();) {
        if (!StartsNumber(text, at)) {
            markup.words += text[at++];
            continue;
        }
        char* end = nullptr;
        markup.numbers.push_back(std::strtod(text.c_str() + at, &end));
        markup.words += '#';
        at = static_cast<std::size_t>(end - text.c_str());
    }
    return markup;
}

struct Picture {
    pugi::xml_document document;
    std::vector<std::string> order;  ///< Ids of the shapes as they are painted.
    std::map<std::string, pugi::xml_node> shapes;

    explicit Picture(const std::string& svg) {
        if (!document.load_string(svg.c_str(), pugi::parse_default | pugi::parse_ws_pcdata))
            throw std::runtime_error("the picture is no SVG file");
        Collect(document.document_element());
    }

    /// What is painted outside of shapes counts as one: the size of the page and its color.
    std::string Page() const {
        const pugi::xml_node root = document.document_element();
        std::ostringstream text;
        text << root.attribute("viewBox").value() << ' ';
        root.child("rect").print(text, "", pugi::format_raw);
        return text.str();
    }

  private:
    void Collect(pugi::xml_node parent) {
        for (pugi::xml_node node : parent.children()) {
            const std::string id = node.attribute("id").value();
            if (!id.starts_with("shape")) {
                Collect(node);
                continue;
            }
            order.push_back(id);
            shapes[id] = node;
        }
    }
};

std::string MarkupOf(pugi::xml_node shape) {
    std::ostringstream text;
    shape.print(text, "", pugi::format_raw);
    return text.str();
}

std::string TextOf(pugi::xml_node shape) {
    std::string text;
    for (const auto& line : shape.select_nodes(".//tspan")) {
        if (!text.empty()) text += ' ';
        text += line.node().text().get();
    }
    return text;
}

/// Empty when they are alike.
std::string DifferenceOf(const std::string& reference, const std::string& drawn) {
    const Markup before = Split(reference), after = Split(drawn);
    if (before.words != after.words) return "is drawn otherwise";
    double farthest = 0;
    for (std::size_t i = 0; i < before.numbers.size(); ++i)
        farthest = std::max(farthest, std::abs(after.numbers[i] - before.numbers[i]));
    return farthest < kAlike ? "" : fmt::format("differs by up to {:.2f} points", farthest);
}

std::string ShapeDifference(pugi::xml_node reference, pugi::xml_node drawn) {
    const std::string before = TextOf(reference), after = TextOf(drawn);
    if (before != after) return fmt::format("says \"{}\" in place of \"{}\"", after, before);
    return DifferenceOf(MarkupOf(reference), MarkupOf(drawn));
}

std::string Escaped(const std::string& text) {
    std::string html;
    for (const char c : text) html += c == '<' ? "&lt;" : c == '&' ? "&amp;" : std::string(1, c);
    return html;
}

std::string Figure(const Picture& picture, const char* caption) {
    return fmt::format("<figure><figcaption>{}</figcaption>{}</figure>\n", caption,
                       MarkupOf(picture.document.document_element()));
}

std::string Report(const Picture& reference, const Picture& drawn, const std::vector<std::string>& lines) {
    std::string items;
    for (const std::string& line : lines) items += "<li>" + Escaped(line) + "</li>\n";
    return "<!DOCTYPE html><meta charset=\"utf-8\"><title>Pictures that differ</title>\n"
           "<style>body{font-family:sans-serif} main{display:flex;gap:1em} "
           "figure{flex:1;margin:0;min-width:0}"
           "figure>svg{width:100%;height:auto;border:1px solid #888}"
           ".differs path{stroke:#d00000;stroke-width:2.5} .differs tspan{fill:#d00000}</style>\n<main>\n" +
           Figure(reference, "Reference") + Figure(drawn, "Drawn now") + "</main>\n<ol>\n" + items +
           "</ol>\n";
}

}  // namespace

PictureDifference ComparePictures(const std::string& reference, const std::string& drawn) {
    Picture before(reference), after(drawn);
    PictureDifference difference;
    const auto tell = [&](const std::string& id, pugi::xml_node shape, const std::string& what) {
        difference.lines.push_back(fmt::format("{} ({}): {}", id, TextOf(shape), what));
        shape.append_attribute("class") = "differs";
    };
    if (const std::string page = DifferenceOf(before.Page(), after.Page()); !page.empty())
        difference.lines.push_back("the page " + page);
    const auto sameId = [](const auto& a, const auto& b) { return a.first == b.first; };
    if (std::ranges::equal(before.shapes, after.shapes, sameId) && before.order != after.order)
        difference.lines.push_back("the shapes are painted in another order");
    for (const std::string& id : before.order) {
        const auto found = after.shapes.find(id);
        if (found == after.shapes.end()) {
            tell(id, before.shapes[id], "is missing");
        } else if (const std::string what = ShapeDifference(before.shapes[id], found->second);
                   !what.empty()) {
            tell(id, before.shapes[id], what);
            found->second.append_attribute("class") = "differs";
        }
    }
    for (const std::string& id : after.order)
        if (!before.shapes.contains(id)) tell(id, after.shapes[id], "is new");
    if (!difference.lines.empty()) difference.report = Report(before, after, difference.lines);
    return difference;
}

}  // namespace norvelis
