#include "drawing/package/xml_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace norvelis::drawing {

namespace {

/// Length of the well-formed UTF-8 character at the start of `text` that XML allows; 0 when there is none.
std::size_t Character(std::string_view text) {
    const auto byte = [&text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    const auto follows = [&byte](std::size_t i) { return (byte(i) & 0xC0) == 0x80; };
    const unsigned first = byte(0);
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first < 0xF0) {
        if (!follows(1) || !follows(2)) return 0;
        const unsigned code = (first & 0xF) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
        return code < 0x800 || (code >= 0xD800 && code < 0xE000) || code >= 0xFFFE ? 0 : 3;
    }
    if (first >= 0xF0 && first < 0xF5) {
        if (!follows(1) || !follows(2) || !follows(3)) return 0;
        const unsigned code = (first & 7) << 18 | (byte(1) & 0x3F) << 12;
        return code < 0x10000 || code > 0x10FFFF ? 0 : 4;
    }
    return 0;
}

/// Length of the start of `text` that every place takes as it is.
std::size_t PlainLength(std::string_view text) {
    const auto special = [](char c) {
        return c < ' ' || c > '~' || c == '&' || c == '<' || c == '>' || c == '"';
    };
    return static_cast<std::size_t>(std::ranges::find_if(text, special) - text.begin());
}

}  // namespace

std::string NumberText(double value) {
    if (!std::isfinite(value) || value == 0) return "0";
    char digits[64];
    const double size = std::fabs(value);
    const auto format = size >= 1e-9 && size < 1e15 ? std::chars_format::fixed : std::chars_format::general;
    const auto end = std::to_chars(digits, digits + sizeof digits, value, format).ptr;
    return {digits, end};
}

XmlWriter::XmlWriter(std::size_t space) {
    xml_.reserve(space);
    xml_ = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
}

XmlWriter& XmlWriter::Open(std::string_view element) {
    EndTag();
    xml_ += '<';
    xml_ += element;
    open_.emplace_back(element);
    inTag_ = true;
    return *this;
}

XmlWriter& XmlWriter::Attribute(std::string_view name, std::string_view value) {
    xml_ += ' ';
    xml_ += name;
    xml_ += "=\"";
    Escape(value, true);
    xml_ += '"';
    return *this;
}

XmlWriter& XmlWriter::Attribute(std::string_view name, int value) {
    return Attribute(name, std::to_string(value));
}
XmlWriter& XmlWriter::Attribute(std::string_view name, double value) {
    return Attribute(name, NumberText(value));
}

XmlWriter& XmlWriter::Text(std::string_view text) {
    EndTag();
    Escape(text, false);
    return *this;
}

XmlWriter& XmlWriter::Close() {
    if (inTag_) {
        xml_ += "/>";
        inTag_ = false;
    } else {
        xml_ += "</";
        xml_ += open_.back();
        xml_ += '>';
    }
    open_.pop_back();
    return *this;
}

void XmlWriter::EndTag() {
    if (inTag_) xml_ += '>';
    inTag_ = false;
}

void XmlWriter::Escape(std::string_view text, bool attribute) {
    while (!text.empty()) {
        const std::size_t plain = PlainLength(text);
        xml_ += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) return;
        const std::size_t length = Character(text);
        const char c = text[0];
        if (length == 0) {
            xml_ += "\xEF\xBF\xBD";
        } else if (c == '&') {
            xml_ += "&amp;";
        } else if (c == '<') {
            xml_ += "&lt;";
        } else if (c == '>') {
            xml_ += "&gt;";
        } else if (attribute && c == '"') {
            xml_ += "&quot;";
        } else if (c == '\r' || (attribute && (c == '\n' || c == '\t'))) {
            xml_ += c == '\r' ? "&#13;" : c == '\n' ? "&#10;" : "&#9;";
        } else if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') {
            xml_ += ' ';
        } else {
            xml_ += text.substr(0, length);
        }
        text.remove_prefix(length ? length : 1);
    }
}

}  // namespace norvelis::drawing
