#include "publish/anchors.h"

#include "base/name_key.h"

namespace norvelis::publish {

namespace {

bool IsPlain(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

std::string AnchorOf(std::string_view kind, std::string_view name) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string anchor = std::string(kind) + "-";
    for (const char c : NameKey(name)) {
        const auto byte = static_cast<unsigned char>(c);
        if (IsPlain(byte)) {
            anchor += c;
        } else {
            anchor += {'_', kDigits[byte >> 4], kDigits[byte & 15]};
        }
    }
    return anchor;
}

}  // namespace

std::string RecordAnchor(std::string_view name) {
    return AnchorOf("record", name);
}
std::string SetAnchor(std::string_view name) {
    return AnchorOf("set", name);
}
std::string IndexAnchor(std::string_view name) {
    return AnchorOf("index", name);
}
std::string AreaAnchor(std::string_view name) {
    return AnchorOf("area", name);
}
std::string FieldAnchor(std::string_view name) {
    return AnchorOf("field", name);
}
std::string BoxAnchor(std::string_view record) {
    return AnchorOf("box", record);
}

}  // namespace norvelis::publish
