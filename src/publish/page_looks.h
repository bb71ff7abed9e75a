#pragma once

#include <string_view>

namespace norvelis::publish {

extern const std::string_view kStyle;  ///< CSS of the page.

/// The rule that shows the drawing, to come behind the whole page: a browser lays out what it has read again
/// and again until it has read the rest, which takes seconds with a large drawing in it.
extern const std::string_view kLastStyle;

extern const std::string_view kScript;  ///< What the page can do beyond reading; it is whole without.

}  // namespace norvelis::publish
