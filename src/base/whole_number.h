#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace norvelis {

/// The number that the whole text is, in decimal figures, with a minus in front where the type has one;
/// nothing for any other text, blanks included, and for what the type cannot hold.
template <typename Number>
std::optional<Number> WholeNumber(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

}  // namespace norvelis
