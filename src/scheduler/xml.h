#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace pugi {
struct xml_node_struct;
}

// The XML that schedules need: an element with attributes, made or read from text. Failures are
// RuntimeFailure 5 unless a function says that it has none.
namespace norvelis {

/// A document or an element of one. Copies are the same node; a document lives as long as any of its nodes.
class XmlNode {
  public:
    static XmlNode NewDocument();

    std::string Name() const;                      ///< Empty for a document.
    std::optional<XmlNode> OwnerDocument() const;  ///< Nothing for a document.

    /// The root; nothing while no element was appended to the document.
    std::optional<XmlNode> DocumentElement() const;
    /// A new element of this document. It stands nowhere in the tree until it is appended.
    XmlNode CreateElement(std::string_view name) const;
    /// `child` is an element of the same document, of which the root is the only one directly below the
    /// document.
    void AppendChild(const XmlNode& child) const;

    void SetAttribute(std::string_view name, std::string_view value) const;
    std::optional<std::string> Attribute(std::string_view name) const;

    std::string Text() const;  ///< The element as XML in one line.

  private:
    struct Tree;
    XmlNode(std::shared_ptr<Tree> tree, pugi::xml_node_struct* node);

    friend XmlNode LoadXML(std::string_view text);

    std::shared_ptr<Tree> tree_;
    pugi::xml_node_struct* node_;
};

/// A new element, of the document of `parent` (which may be that document), appended to it if `append` says
/// so. Without a parent the element gets a document of its own, of which it is not the root, and `append`
/// comes back false.
XmlNode CreateElement(const XmlNode* parent, std::string_view name, bool& append);

/// The attribute's text; `missing` where there is none or it reads "---". Never fails.
std::string GetAttribute(const XmlNode& element, std::string_view name, std::string_view missing);

/// The root of the document that `text` holds. Text that is not well-formed gives an element "error" with the
/// parser's reason as "msg" and its code as "id". Never fails.
XmlNode LoadXML(std::string_view text);

}  // namespace norvelis
