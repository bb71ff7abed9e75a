#include "scheduler/well_formed.h"

#include <algorithm>
#include <set>
#include <string>

namespace norvelis {

namespace {

bool IsReferenceName(std::string_view name) {
    constexpr std::string_view known[] = {"amp", "lt", "gt", "quot", "apos"};
    if (!name.starts_with('#')) return std::find(std::begin(known), std::end(known), name) != std::end(known);
    name.remove_prefix(1);
    const bool hexadecimal = name.starts_with('x');
    if (hexadecimal) name.remove_prefix(1);
    const auto digits = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    return !name.empty() && name.find_first_not_of(digits) == std::string_view::npos;
}

/// `value` as it is in the file, its references unread.
bool IsCleanValue(std::string_view value) {
    if (value.find('<') != std::string_view::npos) return false;
    for (auto at = value.find('&'); at != std::string_view::npos; at = value.find('&', at + 1)) {
        const auto end = value.find(';', at);
        if (end == std::string_view::npos || !IsReferenceName(value.substr(at + 1, end - at - 1)))
            return false;
    }
    return true;
}

pugi::xml_parse_status StatusOfElement(const pugi::xml_node& element) {
    std::set<std::string_view> names;
    for (const auto attribute : element.attributes()) {
        if (!names.insert(attribute.name()).second || !IsCleanValue(attribute.value()))
            return pugi::status_bad_attribute;
    }
    return pugi::status_ok;
}

// The walk does not recurse, however deep the elements are nested.
struct Walker : pugi::xml_tree_walker {
    int roots = 0;
    pugi::xml_parse_status status = pugi::status_ok;

    bool for_each(pugi::xml_node& node) override {
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            const bool inElement = depth() > 0;
            if (!inElement || (node.type() == pugi::node_pcdata && !IsCleanValue(node.value())))
                status = pugi::status_bad_pcdata;
        } else if (node.type() == pugi::node_element) {
            if (depth() == 0 && ++roots > 1) status = pugi::status_bad_start_element;
            if (status == pugi::status_ok) status = StatusOfElement(node);
        }
        return status == pugi::status_ok;
    }
};

}  // namespace

pugi::xml_parse_result CheckWellFormed(std::string_view text) {
    pugi::xml_document document;
    pugi::xml_parse_result result =
        document.load_buffer(text.data(), text.size(), pugi::parse_cdata | pugi::parse_fragment);
    if (!result) return result;
    Walker walker;
    document.traverse(walker);
    if (walker.status != pugi::status_ok) {
        result.status = walker.status;
    } else if (walker.roots == 0) {
        result.status = pugi::status_no_document_element;
    }
    return result;
}

}  // namespace norvelis
