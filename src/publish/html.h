#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "base/html_text.h"

namespace norvelis::publish {

/// Markup that grows.
class Html {
  public:
    Html& Markup(std::string_view markup) {
        text_ += markup;
        return *this;
    }
    Html& Text(std::string_view text) {
        text_ += HtmlText(text);
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
