#include "browse/next_step.h"

#include "base/text.h"

namespace norvelis {

std::vector<std::string> SplitNextStep(std::string_view list) {
    list = Trim(list);
    std::vector<std::string> items;
    if (list.empty()) return items;
    std::size_t comma;
    while ((comma = list.find(',')) != std::string_view::npos) {
        items.emplace_back(list.substr(0, comma));
        list.remove_prefix(comma + 1);
    }
    items.emplace_back(list);
    return items;
}

}  // namespace norvelis
