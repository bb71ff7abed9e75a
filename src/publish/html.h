#pragma once

#include <string>
#include <string_view>

namespace norvelis::publish {

/// Text as a browser shows it letter by letter, in an element or in an attribute.
std::string Escaped(std::string_view text);

/// Markup that grows.
class Html {
  public:
    Html& Markup(std::string_view markup) {
        text_ += markup;
        return *this;
    }
    Html& Text(std::string_view text) {
        text_ += Escaped(text);
        return *this;
    }
    /// A link within the page; the text alone where the anchor is empty.
    Html& Link(std::string_view anchor, std::string_view text);
    /// A cell of a table.
    Html& Cell(std::string_view text);
    /// <tr> of headings for the columns below.
    Html& Headings(std::initializer_list<std::string_view> headings);

    std::string Take() { return std::move(text_); }

  private:
    std::string text_;
};

}  // namespace norvelis::publish
