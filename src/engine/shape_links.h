#pragma once

#include <map>
#include <string>

namespace norvelis::engine {

/// Where a shape leads in a form of the drawing that a browser shows.
struct ShapeLink {
    std::string address;  ///< "#record-EMPLOYEE"
    std::string name;     ///< What is read out for it.
    std::string id;       ///< Of its element; empty for "shape" and its number.
};

/// By the ID of the shape on its page.
using ShapeLinks = std::map<int, ShapeLink>;

}  // namespace norvelis::engine
