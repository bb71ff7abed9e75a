#include "base/name_pattern.h"

#include "base/name_key.h"

namespace norvelis {

bool FitsPattern(std::string_view name, std::string_view pattern) {
    const std::string text = NameKey(name), wanted = NameKey(pattern);
    // The last star takes more and more until the rest fits; what a star before it took need not change.
    std::size_t at = 0, next = 0, afterStar = std::string::npos, takenTo = 0;
    while (at < text.size()) {
        if (next < wanted.size() && wanted[next] == '*') {
            afterStar = ++next;
            takenTo = at;
        } else if (next < wanted.size() && (wanted[next] == '?' || wanted[next] == text[at])) {
            ++next;
            ++at;
        } else if (afterStar != std::string::npos) {
            next = afterStar;
            at = ++takenTo;
        } else {
            return false;
        }
    }
    return wanted.find_first_not_of('*', next) == std::string::npos;
}

}  // namespace norvelis
