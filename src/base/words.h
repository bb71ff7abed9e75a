#pragma once

#include <string_view>

#include "base/text.h"

namespace norvelis {

/// The word at the beginning of the text, which then begins behind it; empty at its end.
inline std::string_view NextWord(std::string_view& text) {
    text = Trim(text);
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size());
    return word;
}

}  // namespace norvelis
