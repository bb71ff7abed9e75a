#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace norvelis::drawing {

/// Writes one XML part without line breaks between its elements. Whatever a text holds, the result is well
/// formed: characters that XML does not know become blanks, broken UTF-8 becomes U+FFFD.
class XmlWriter {
  public:
    /// With space for so many bytes, where growing to them would cost more than writing them.
    explicit XmlWriter(std::size_t space = 0);
    XmlWriter& Open(std::string_view element);
    XmlWriter& Attribute(std::string_view name, std::string_view value);
    XmlWriter& Attribute(std::string_view name, const char* value) {
        return Attribute(name, std::string_view(value));
    }
    XmlWriter& Attribute(std::string_view name, int value);
    /// The shortest text that reads back as the same number.
    XmlWriter& Attribute(std::string_view name, double value);
    /// Even an empty text gives the element an end tag of its own.
    XmlWriter& Text(std::string_view text);
    XmlWriter& Close();
    /// An element of one text.
    XmlWriter& Element(std::string_view element, std::string_view text) {
        return Open(element).Text(text).Close();
    }
    std::string Take() { return std::move(xml_); }

  private:
    void EndTag();
    void Escape(std::string_view text, bool attribute);

    std::string xml_;
    std::vector<std::string> open_;
    bool inTag_ = false;
};

/// Shortest text of a number that reads back as the same; no exponent for the sizes that drawings have.
std::string NumberText(double value);

}  // namespace norvelis::drawing
