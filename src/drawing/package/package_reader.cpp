#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <unordered_map>

#include "base/paths.h"
#include "base/text.h"
#include "drawing/package/archive.h"
#include "drawing/package/limits.h"
#include "drawing/package/package.h"
#include "drawing/package/parts.h"
#include "drawing/package/sheet_reader.h"

namespace norvelis::drawing {

namespace {

constexpr unsigned kParse = pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_doctype;

struct Relationship {
    std::string type, target;  ///< Target as a part's name, "visio/pages/page1.xml".
};
using Relationships = std::unordered_map<std::string, Relationship>;

/// A relationship's target as a part's name, seen from the part that holds it.
std::string PartName(std::string_view from, std::string_view target) {
    std::string path;
    if (!target.starts_with('/'))
        path = from.substr(0, from.rfind('/') == std::string_view::npos ? 0 : from.rfind('/') + 1);
    path += target;
    std::vector<std::string_view> steps;
    for (std::string_view rest = path; !rest.empty();) {
        const auto slash = rest.find('/');
        const auto step = rest.substr(0, slash);
        if (step == ".." && !steps.empty()) {
            steps.pop_back();
        } else if (!step.empty() && step != "." && step != "..") {
            steps.push_back(step);
        }
        rest = slash == std::string_view::npos ? std::string_view() : rest.substr(slash + 1);
    }
    return fmt::format("{}", fmt::join(steps, "/"));
}

/// Of a part's name; what is no plain word becomes "bin".
std::string Extension(const std::string& name) {
    const std::string extension = LowerCase(name.substr(std::min(name.size(), name.rfind('.') + 1)));
    const bool plain = !extension.empty() && extension.size() <= 5 &&
                       std::all_of(extension.begin(), extension.end(),
                                   [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'); });
    return plain ? extension : "bin";
}

class PackageReader {
  public:
    explicit PackageReader(std::string_view bytes)
        : archive_(bytes), document_(std::make_unique<Document>()), sheets_(*document_) {}

    std::unique_ptr<Document> Read() {
        if (!archive_.Has("[Content_Types].xml")) Refuse("the list of content types is missing");
        const auto package = ReadRelationships("");
        const std::string main = TargetOf(package, parts::kDocument);
        if (main.empty()) Refuse("no drawing is inside");
        ReadKind(main);
        if (const auto core = TargetOf(package, parts::kCoreProperties); archive_.Has(core))
            ReadProperties(core);
        ReadDocument(main);
        const auto relations = ReadRelationships(main);
        if (const auto masters = TargetOf(relations, parts::kMasters); !masters.empty()) ReadMasters(masters);
        if (const auto pages = TargetOf(relations, parts::kPages); !pages.empty()) ReadPages(pages);
        sheets_.TieToMasters();
        const std::string writtenByUs[] = {TargetOf(package, parts::kAppProperties),
                                           TargetOf(relations, parts::kWindows)};
        for (const std::string& part : archive_.Unread()) {
            const bool known =
                part.ends_with(".rels") || std::count(std::begin(writtenByUs), std::end(writtenByUs), part);
            document_->leftPartsOut |= !known;
        }
        return std::move(document_);
    }

  private:
    /// Keeps the text that the tree points into.
    struct Xml {
        std::string bytes;
        pugi::xml_document tree;
        pugi::xml_node root;
    };

    std::unique_ptr<Xml> ReadXml(const std::string& part, const char* rootElement) {
        auto xml = std::make_unique<Xml>();
        xml->bytes = archive_.Read(part);
        Count(xml->bytes);
        const auto result = xml->tree.load_buffer_inplace(xml->bytes.data(), xml->bytes.size(), kParse);
        if (!result) Refuse(fmt::format("the part {} is no XML: {}", part, result.description()));
        for (const auto& node : xml->tree) {
            if (node.type() == pugi::node_doctype) Refuse(fmt::format("the part {} declares entities", part));
        }
        xml->root = xml->tree.child(rootElement);
        if (!xml->root) Refuse(fmt::format("the part {} holds no {}", part, rootElement));
        return xml;
    }

    /// The tree of a part is many times as large as its text, so what it will hold is counted first.
    void Count(const std::string& xml) {
        elements_ += static_cast<std::size_t>(std::count(xml.begin(), xml.end(), '<'));
        attributes_ += static_cast<std::size_t>(std::count(xml.begin(), xml.end(), '='));
        if (elements_ > limits::kElements || attributes_ > limits::kAttributes)
            Refuse("it holds more than any drawing");
    }

    Relationships ReadRelationships(const std::string& part) {
        const auto slash = part.rfind('/');
        const std::string folder = slash == std::string::npos ? "" : part.substr(0, slash + 1);
        const std::string file = slash == std::string::npos ? part : part.substr(slash + 1);
        const std::string name = folder + "_rels/" + file + ".rels";
        Relationships relations;
        if (!archive_.Has(name)) return relations;
        const auto xml = ReadXml(name, "Relationships");
        for (const auto& node : xml->root.children("Relationship")) {
            if (std::string_view(node.attribute("TargetMode").value()) == "External") continue;
            relations[node.attribute("Id").value()] = {node.attribute("Type").value(),
                                                       PartName(part, node.attribute("Target").value())};
        }
        return relations;
    }

    static std::string TargetOf(const Relationships& relations, std::string_view type) {
        for (const auto& [id, relation] : relations) {
            if (relation.type == type) return relation.target;
        }
        return {};
    }

    void ReadKind(const std::string& main) {
        const auto xml = ReadXml("[Content_Types].xml", "Types");
        for (const auto& node : xml->root.children("Override")) {
            if (PartName("", node.attribute("PartName").value()) != main) continue;
            const std::string_view type = node.attribute("ContentType").value();
            if (type.find(".stencil.") != std::string_view::npos) document_->kind = DocumentKind::Stencil;
            if (type.find(".template.") != std::string_view::npos) document_->kind = DocumentKind::Template;
        }
    }

    void ReadProperties(const std::string& part) {
        const auto xml = ReadXml(part, "cp:coreProperties");
        document_->title = xml->root.child("dc:title").text().get();
        document_->creator = xml->root.child("dc:creator").text().get();
    }

    void ReadDocument(const std::string& part) {
        const auto xml = ReadXml(part, "VisioDocument");
        for (const auto& node : xml->root.child("Colors").children("ColorEntry")) {
            const std::string_view rgb = node.attribute("RGB").value();
            unsigned value = 0;
            if (rgb.size() != 7 ||
                std::from_chars(rgb.data() + 1, rgb.data() + 7, value, 16).ec != std::errc())
                continue;
            document_->colors[node.attribute("IX").as_int()] = {static_cast<std::uint8_t>(value >> 16),
                                                                static_cast<std::uint8_t>(value >> 8),
                                                                static_cast<std::uint8_t>(value)};
        }
        for (const auto& node : xml->root.child("FaceNames").children("FaceName")) {
            if (document_->fonts.size() >= limits::kFonts) Refuse("more fonts than any drawing has");
            const auto nameU = node.attribute("NameU");
            document_->fonts.emplace_back(nameU ? nameU.value() : node.attribute("Name").value());
        }
        const auto styles = xml->root.child("StyleSheets");
        for (const auto& node : styles.children("StyleSheet")) {
            if (document_->styles.size() >= limits::kStyles) Refuse("more styles than any drawing has");
            auto& style = document_->styles.emplace_back(std::make_unique<StyleSheet>());
            style->id = node.attribute("ID").as_int();
            const auto nameU = node.attribute("NameU");
            style->name = nameU ? nameU.value() : node.attribute("Name").value();
            sheets_.SheetContent(node, *style);
        }
        std::size_t index = 0;
        for (const auto& node : styles.children("StyleSheet"))
            sheets_.Styles(node, *document_->styles[index++]);
        const auto sheet = xml->root.child("DocumentSheet");
        sheets_.Styles(sheet, document_->sheet);
        sheets_.SheetContent(sheet, document_->sheet);
        const auto texts = xml->root.child("HeaderFooter");
        auto& fields = document_->headerFooter;
        fields.headerLeft = texts.child("HeaderLeft").text().get();
        fields.headerCenter = texts.child("HeaderCenter").text().get();
        fields.headerRight = texts.child("HeaderRight").text().get();
        fields.footerLeft = texts.child("FooterLeft").text().get();
        fields.footerCenter = texts.child("FooterCenter").text().get();
        fields.footerRight = texts.child("FooterRight").text().get();
    }

    void ReadPageSheet(const pugi::xml_node& element, Canvas& canvas) {
        const auto sheet = element.child("PageSheet");
        sheets_.Styles(sheet, canvas.sheet);
        sheets_.SheetContent(sheet, canvas.sheet);
    }

    void ReadCanvas(const std::string& part, const char* rootElement, Canvas& canvas) {
        const auto relations = ReadRelationships(part);
        const auto xml = ReadXml(part, rootElement);
        sheets_.Shapes(xml->root, canvas, [&](const std::string& id) -> std::unique_ptr<ForeignPicture> {
            const auto found = relations.find(id);
            if (found == relations.end() || !archive_.Has(found->second.target)) return nullptr;
            auto picture = std::make_unique<ForeignPicture>();
            const std::string& name = found->second.target;
            picture->extension = Extension(name);
            picture->bytes = archive_.Read(name);
            return picture;
        });
    }

    template <class List>
    void ReadNames(const pugi::xml_node& node, Canvas& canvas, const List& siblings) {
        canvas.id = node.attribute("ID").as_int();
        canvas.nameU = node.attribute("NameU").value();
        canvas.name = node.attribute("Name").value();
        if (canvas.nameU.empty()) canvas.nameU = canvas.name;
        if (canvas.name.empty()) canvas.name = canvas.nameU;
        if (canvas.name.size() > limits::kNameBytes)
            Refuse("a page or master has a name beyond every measure");
        if (canvas.id < 0) Refuse("a page or master has no ID");
        for (const auto& other : siblings) {
            if (other.get() != &canvas && other->id == canvas.id)
                Refuse("two pages or masters have the same ID");
        }
    }

    std::string ContentsOf(const pugi::xml_node& node, const Relationships& relations,
                           std::string_view name) {
        const auto found = relations.find(node.child("Rel").attribute("r:id").value());
        if (found == relations.end()) Refuse(fmt::format("the contents of \"{}\" are missing", name));
        return found->second.target;
    }

    void ReadMasters(const std::string& part) {
        const auto relations = ReadRelationships(part);
        const auto xml = ReadXml(part, "Masters");
        for (const auto& node : xml->root.children("Master")) {
            if (document_->masters.size() >= limits::kMasters) Refuse("more masters than any drawing has");
            auto& master = *document_->masters.emplace_back(std::make_unique<Master>());
            ReadNames(node, master, document_->masters);
            master.prompt = node.attribute("Prompt").value();
            master.uniqueId = node.attribute("UniqueID").value();
            master.baseId = node.attribute("BaseID").value();
            master.hidden = node.attribute("Hidden").as_bool();
            master.matchByName = node.attribute("MatchByName").as_bool();
            ReadPageSheet(node, master);
            ReadCanvas(ContentsOf(node, relations, master.name), "MasterContents", master);
        }
    }

    void ReadPages(const std::string& part) {
        const auto relations = ReadRelationships(part);
        const auto xml = ReadXml(part, "Pages");
        for (const auto& node : xml->root.children("Page")) {
            if (document_->pages.size() >= limits::kPages) Refuse("more pages than any drawing has");
            auto& page = *document_->pages.emplace_back(std::make_unique<Page>());
            ReadNames(node, page, document_->pages);
            page.background = node.attribute("Background").as_bool();
            page.backPage = node.attribute("BackPage").as_int(-1);
            page.viewScale = node.attribute("ViewScale").as_double(-1);
            page.viewCenterX = node.attribute("ViewCenterX").as_double();
            page.viewCenterY = node.attribute("ViewCenterY").as_double();
            ReadPageSheet(node, page);
            ReadCanvas(ContentsOf(node, relations, page.name), "PageContents", page);
        }
    }

    Archive archive_;
    std::unique_ptr<Document> document_;
    SheetReader sheets_;
    std::size_t elements_ = 0, attributes_ = 0;
};

}  // namespace

std::unique_ptr<Document> ReadPackage(std::string_view bytes) {
    return PackageReader(bytes).Read();
}

std::unique_ptr<Document> ReadPackageFile(const std::string& path) {
    return ReadPackage(ReadFile(path));
}

}  // namespace norvelis::drawing
