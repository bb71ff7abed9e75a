#pragma once

#include <fmt/format.h>

#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/package/archive.h"

namespace norvelis::drawing {

/// The parts of a package in the order of its archive; empty when it is none.
std::vector<Part> PartsOf(std::string_view bytes);

/// A package taken apart for the rules, with what was found wrong so far.
struct OpenedPackage {
    struct Relation {
        std::string type, target;  ///< The target as a part's name.
    };

    std::map<std::string, std::string> parts, types;
    std::map<std::string, pugi::xml_document> trees;
    std::map<std::string, std::map<std::string, Relation>> relations;  ///< By part, "" for the package.
    std::vector<std::string> faults;

    template <class... Values>
    void Fault(fmt::format_string<Values...> text, Values&&... values) {
        faults.push_back(fmt::format(text, std::forward<Values>(values)...));
    }
    /// The first target of a part's relationships of one of Visio's own types.
    std::string Target(const std::string& part, const std::string& type) const;
};

inline constexpr const char* kVisioRelationships = "http://schemas.microsoft.com/visio/2010/relationships/";

inline std::string AttributeOf(const pugi::xml_node& node, const char* name) {
    return node.attribute(name).value();
}

/// Archive, content types and relationships.
void CheckParts(std::string_view bytes, OpenedPackage& package);
/// Elements, attributes, sections and values, each for itself.
void CheckSchema(OpenedPackage& package);
/// What the parts say of the drawing.
void CheckDrawing(OpenedPackage& package);

}  // namespace norvelis::drawing
