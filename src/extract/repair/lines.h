#pragma once

#include <algorithm>
#include <string_view>

namespace norvelis::repair {

/// A line of a report, with and without its LF or CRLF.
struct Line {
    std::string_view whole, text;

    std::string_view End() const { return whole.substr(text.size()); }
};

template <typename Use>
void ForEachLine(std::string_view bytes, Use use) {
    while (!bytes.empty()) {
        const std::size_t size = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
        const std::string_view whole = bytes.substr(0, size);
        std::string_view text = whole;
        if (text.ends_with('\n')) text.remove_suffix(1);
        if (text.ends_with('\r')) text.remove_suffix(1);
        use(Line{whole, text});
        bytes.remove_prefix(size);
    }
}

}  // namespace norvelis::repair
