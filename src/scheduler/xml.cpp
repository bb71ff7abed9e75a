#include "scheduler/xml.h"

#include <pugixml.hpp>
#include <sstream>

#include "base/failure.h"
#include "scheduler/well_formed.h"

namespace norvelis {

namespace {

bool IsName(std::string_view name) {
    const std::string text = "<" + std::string(name) + "/>";
    pugi::xml_document document;
    return document.load_buffer(text.data(), text.size()) && document.first_child().name() == name;
}

RuntimeFailure Refused(std::string_view what, std::string_view name) {
    return {FailureNumber::InvalidCall, std::string(what) + " \"" + std::string(name) + "\""};
}

}  // namespace

// The parser's nodes always hang somewhere: those that are not yet appended, below `detached`, which the tree
// hides.
struct XmlNode::Tree {
    pugi::xml_document document;
    pugi::xml_node detached = document.append_child("detached");
};

XmlNode::XmlNode(std::shared_ptr<Tree> tree, pugi::xml_node_struct* node)
    : tree_(std::move(tree)), node_(node) {}

XmlNode XmlNode::NewDocument() {
    auto tree = std::make_shared<Tree>();
    pugi::xml_node_struct* document = tree->document.internal_object();
    return {std::move(tree), document};
}

std::string XmlNode::Name() const {
    return OwnerDocument() ? pugi::xml_node(node_).name() : "";
}

std::optional<XmlNode> XmlNode::OwnerDocument() const {
    pugi::xml_node_struct* document = tree_->document.internal_object();
    if (node_ == document) return std::nullopt;
    return XmlNode(tree_, document);
}

std::optional<XmlNode> XmlNode::DocumentElement() const {
    for (const auto child : tree_->document.children()) {
        if (child.type() == pugi::node_element && child != tree_->detached)
            return XmlNode(tree_, child.internal_object());
    }
    return std::nullopt;
}

XmlNode XmlNode::CreateElement(std::string_view name) const {
    if (!IsName(name)) throw Refused("no name of an element:", name);
    return {tree_, tree_->detached.append_child(std::string(name).c_str()).internal_object()};
}

void XmlNode::AppendChild(const XmlNode& child) const {
    const bool secondRoot = !OwnerDocument() && DocumentElement();
    if (secondRoot || child.tree_ != tree_ || !pugi::xml_node(node_).append_move(pugi::xml_node(child.node_)))
        throw Refused("cannot be appended here: element", child.Name());
}

void XmlNode::SetAttribute(std::string_view name, std::string_view value) const {
    if (!OwnerDocument() || !IsName(name)) throw Refused("cannot be set: attribute", name);
    const std::string key(name);
    pugi::xml_node element(node_);
    pugi::xml_attribute attribute = element.attribute(key.c_str());
    if (!attribute) attribute = element.append_attribute(key.c_str());
    attribute.set_value(std::string(value).c_str());
}

std::optional<std::string> XmlNode::Attribute(std::string_view name) const {
    const pugi::xml_attribute attribute = pugi::xml_node(node_).attribute(std::string(name).c_str());
    if (!attribute) return std::nullopt;
    return attribute.value();
}

std::string XmlNode::Text() const {
    std::ostringstream text;
    pugi::xml_node(node_).print(text, "", pugi::format_raw);
    return text.str();
}

XmlNode CreateElement(const XmlNode* parent, std::string_view name, bool& append) {
    if (parent == nullptr) append = false;
    const XmlNode document =
        parent == nullptr ? XmlNode::NewDocument() : parent->OwnerDocument().value_or(*parent);
    XmlNode element = document.CreateElement(name);
    if (append) parent->AppendChild(element);
    return element;
}

std::string GetAttribute(const XmlNode& element, std::string_view name, std::string_view missing) {
    const std::string absent = "---";
    const std::string text = element.Attribute(name).value_or(absent);
    return text == absent ? std::string(missing) : text;
}

XmlNode LoadXML(std::string_view text) {
    const pugi::xml_parse_result result = CheckWellFormed(text);
    if (result) {
        const XmlNode document = XmlNode::NewDocument();
        document.tree_->document.load_buffer(text.data(), text.size());
        document.tree_->detached = document.tree_->document.append_child("detached");
        return *document.DocumentElement();  // There is one, for the text is well-formed.
    }
    bool append = false;
    XmlNode error = CreateElement(nullptr, "error", append);
    error.SetAttribute("msg", result.description());
    error.SetAttribute("id", std::to_string(result.status));
    return error;
}

}  // namespace norvelis
