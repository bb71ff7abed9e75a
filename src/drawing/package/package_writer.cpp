#include <fmt/format.h>

#include <set>

#include "drawing/package/archive.h"
#include "drawing/package/package.h"
#include "drawing/package/parts.h"
#include "drawing/package/sheet_writer.h"

namespace norvelis::drawing {

namespace {

/// The relationships of one part.
class Relationships {
  public:
    /// The ID of the new relationship.
    std::string Add(std::string_view type, std::string target) {
        targets_.emplace_back(type, std::move(target));
        return fmt::format("rId{}", targets_.size());
    }
    bool Empty() const { return targets_.empty(); }
    std::string Xml() const {
        XmlWriter xml;
        xml.Open("Relationships").Attribute("xmlns", parts::kPackageRelationships);
        int number = 0;
        for (const auto& [type, target] : targets_) {
            xml.Open("Relationship").Attribute("Id", fmt::format("rId{}", ++number));
            xml.Attribute("Type", type).Attribute("Target", target).Close();
        }
        xml.Close();
        return xml.Take();
    }

  private:
    std::vector<std::pair<std::string, std::string>> targets_;
};

std::string PictureType(const std::string& extension) {
    if (extension == "jpg" || extension == "jpeg") return "image/jpeg";
    if (extension == "emf") return "image/x-emf";
    return "image/" + extension;
}

/// What a window shows of a page; one that fits the page into itself shows its middle.
struct View {
    explicit View(const Page& page) : scale(page.viewScale), x(page.viewCenterX), y(page.viewCenterY) {
        if (scale > 0) return;
        x = Number(page.sheet, Name::PageWidth) / 2;
        y = Number(page.sheet, Name::PageHeight) / 2;
    }
    void Attributes(XmlWriter& xml) const {
        xml.Attribute("ViewScale", scale).Attribute("ViewCenterX", x).Attribute("ViewCenterY", y);
    }
    double scale, x, y;
};

class PackageWriter {
  public:
    explicit PackageWriter(const Document& document) : document_(document) {}

    std::string Write() {
        Relationships package, documentRelations;
        package.Add(parts::kDocument, "visio/document.xml");
        package.Add(parts::kCoreProperties, "docProps/core.xml");
        package.Add(parts::kAppProperties, "docProps/app.xml");
        WriteProperties();
        WriteMasters(documentRelations);
        WritePages(documentRelations);
        if (document_.kind != DocumentKind::Stencil && !document_.pages.empty())
            WriteWindows(documentRelations);
        const char* kinds[] = {"drawing.main+xml", "stencil.main+xml", "template.main+xml"};
        Add("visio/document.xml", DocumentXml(), kinds[static_cast<int>(document_.kind)]);
        AddRelationships("visio/_rels/document.xml.rels", documentRelations);
        AddRelationships("_rels/.rels", package);

        // Readers that stream want the list of types first.
        std::vector<Part> all{{"[Content_Types].xml", ContentTypes()}};
        std::move(parts_.rbegin(), parts_.rend(), std::back_inserter(all));
        return Zip(all);
    }

  private:
    void Add(const std::string& name, std::string xml, std::string_view visioType) {
        types_.emplace_back(name, std::string(parts::kVisioType) + std::string(visioType));
        parts_.push_back({name, std::move(xml)});
    }
    void AddRelationships(const std::string& name, const Relationships& relations) {
        if (!relations.Empty()) parts_.push_back({name, relations.Xml()});
    }
    XmlWriter& Root(XmlWriter& xml, std::string_view element) {
        return xml.Open(element)
            .Attribute("xmlns", parts::kMainNamespace)
            .Attribute("xmlns:r", parts::kRelationshipNamespace)
            .Attribute("xml:space", "preserve");
    }

    std::string ContentTypes() const {
        XmlWriter xml;
        xml.Open("Types").Attribute("xmlns", parts::kContentTypes);
        const auto byExtension = [&xml](std::string_view extension, std::string_view type) {
            xml.Open("Default").Attribute("Extension", extension).Attribute("ContentType", type).Close();
        };
        byExtension("rels", "application/vnd.openxmlformats-package.relationships+xml");
        byExtension("xml", "application/xml");
        for (const auto& extension : pictureExtensions_) byExtension(extension, PictureType(extension));
        for (const auto& [part, type] : types_) {
            xml.Open("Override").Attribute("PartName", "/" + part).Attribute("ContentType", type).Close();
        }
        xml.Close();
        return xml.Take();
    }

    void WriteProperties() {
        XmlWriter core;
        core.Open("cp:coreProperties")
            .Attribute("xmlns:cp", "http://schemas.openxmlformats.org/package/2006/metadata/core-properties")
            .Attribute("xmlns:dc", "http://purl.org/dc/elements/1.1/");
        if (!document_.title.empty()) core.Element("dc:title", document_.title);
        if (!document_.creator.empty()) core.Element("dc:creator", document_.creator);
        core.Close();
        XmlWriter app;
        app.Open("Properties")
            .Attribute("xmlns", "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties")
            .Element("Application", "Norvelis")
            .Close();
        types_.emplace_back("docProps/core.xml",
                            "application/vnd.openxmlformats-package.core-properties+xml");
        types_.emplace_back("docProps/app.xml",
                            "application/vnd.openxmlformats-officedocument.extended-properties+xml");
        parts_.push_back({"docProps/app.xml", app.Take()});
        parts_.push_back({"docProps/core.xml", core.Take()});
    }

    void WriteCanvas(const std::string& folder, const std::string& file, const Canvas& canvas,
                     std::string_view rootElement, std::string_view visioType, Relationships relations) {
        constexpr std::size_t kBytesOfAShape = 4000;  // A box with its text has 3,000 to 4,000, a line fewer.
        XmlWriter xml(canvas.shapes.size() * kBytesOfAShape);
        Root(xml, rootElement).Text("");
        SheetWriter sheets(document_, xml, [&](const ForeignPicture& picture) {
            const std::string name = fmt::format("image{}.{}", ++pictures_, picture.extension);
            pictureExtensions_.insert(picture.extension);
            parts_.push_back({"visio/media/" + name, picture.bytes});
            return relations.Add(parts::kImage, "../media/" + name);
        });
        if (!canvas.shapes.empty()) {
            xml.Open("Shapes");
            for (const auto& shape : canvas.shapes) sheets.ShapeElement(*shape);
            xml.Close();
        }
        if (!canvas.connects.empty()) {
            xml.Open("Connects");
            for (const auto& connect : canvas.connects) {
                xml.Open("Connect")
                    .Attribute("FromSheet", connect.fromSheet)
                    .Attribute("FromCell", connect.fromCell);
                xml.Attribute("FromPart", connect.fromPart).Attribute("ToSheet", connect.toSheet);
                xml.Attribute("ToCell", connect.toCell).Attribute("ToPart", connect.toPart).Close();
            }
            xml.Close();
        }
        xml.Close();
        Add(folder + file, xml.Take(), visioType);
        AddRelationships(folder + "_rels/" + file + ".rels", relations);
    }

    void PageSheet(XmlWriter& xml, const Shape& sheet) {
        SheetWriter sheets(document_, xml);
        xml.Open("PageSheet");
        sheets.StyleAttributes(sheet);
        sheets.SheetContent(sheet);
        xml.Close();
    }

    void WriteMasters(Relationships& documentRelations) {
        if (document_.masters.empty()) return;
        XmlWriter xml;
        Root(xml, "Masters");
        Relationships relations;
        for (const auto& master : document_.masters) {
            const std::string file = fmt::format("master{}.xml", master->id);
            xml.Open("Master").Attribute("ID", master->id);
            SheetWriter(document_, xml).NameAttributes(master->nameU, master->name, true);
            if (!master->prompt.empty()) xml.Attribute("Prompt", master->prompt);
            xml.Attribute("IconSize", 1)
                .Attribute("AlignName", 2)
                .Attribute("MatchByName", master->matchByName ? 1 : 0);
            xml.Attribute("IconUpdate", 1);
            if (!master->uniqueId.empty()) xml.Attribute("UniqueID", master->uniqueId);
            if (!master->baseId.empty()) xml.Attribute("BaseID", master->baseId);
            xml.Attribute("PatternFlags", 0)
                .Attribute("Hidden", master->hidden ? 1 : 0)
                .Attribute("MasterType", 2);
            PageSheet(xml, master->sheet);
            xml.Open("Rel").Attribute("r:id", relations.Add(parts::kMaster, file)).Close();
            xml.Close();
            WriteCanvas("visio/masters/", file, *master, "MasterContents", "master+xml",
                        UsedMasters(*master, ""));
        }
        xml.Close();
        Add("visio/masters/masters.xml", xml.Take(), "masters+xml");
        AddRelationships("visio/masters/_rels/masters.xml.rels", relations);
        documentRelations.Add(parts::kMasters, "masters/masters.xml");
    }

    Relationships UsedMasters(const Canvas& canvas, const std::string& folder) const {
        std::set<int> used;
        const auto collect = [&used](auto& self, const std::vector<std::unique_ptr<Shape>>& shapes) -> void {
            for (const auto& shape : shapes) {
                if (shape->master) used.insert(shape->master->id);
                self(self, shape->shapes);
            }
        };
        collect(collect, canvas.shapes);
        Relationships relations;
        for (const int id : used) relations.Add(parts::kMaster, fmt::format("{}master{}.xml", folder, id));
        return relations;
    }

    void WritePages(Relationships& documentRelations) {
        if (document_.pages.empty()) return;
        XmlWriter xml;
        Root(xml, "Pages");
        Relationships relations;
        for (const auto& page : document_.pages) {
            const std::string file = fmt::format("page{}.xml", page->id + 1);
            xml.Open("Page")
                .Attribute("ID", page->id)
                .Attribute("NameU", page->nameU)
                .Attribute("Name", page->name);
            if (page->background) xml.Attribute("Background", 1);
            if (page->backPage >= 0) xml.Attribute("BackPage", page->backPage);
            View(*page).Attributes(xml);
            PageSheet(xml, page->sheet);
            xml.Open("Rel").Attribute("r:id", relations.Add(parts::kPage, file)).Close();
            xml.Close();
            WriteCanvas("visio/pages/", file, *page, "PageContents", "page+xml",
                        UsedMasters(*page, "../masters/"));
        }
        xml.Close();
        Add("visio/pages/pages.xml", xml.Take(), "pages+xml");
        AddRelationships("visio/pages/_rels/pages.xml.rels", relations);
        documentRelations.Add(parts::kPages, "pages/pages.xml");
    }

    void WriteWindows(Relationships& documentRelations) {
        const Page& page = *document_.pages.front();
        XmlWriter xml;
        Root(xml, "Windows").Attribute("ClientWidth", 1200).Attribute("ClientHeight", 800);
        xml.Open("Window").Attribute("ID", 0).Attribute("WindowType", "Drawing");
        xml.Attribute("WindowState", 1073741824).Attribute("WindowLeft", 0).Attribute("WindowTop", 0);
        xml.Attribute("WindowWidth", 1200).Attribute("WindowHeight", 800).Attribute("ContainerType", "Page");
        xml.Attribute("Page", page.id);
        View(page).Attributes(xml);
        xml.Element("ShowRulers", "1").Element("ShowGrid", "0").Element("ShowPageBreaks", "0");
        xml.Element("ShowGuides", "1").Element("ShowConnectionPoints", "1").Element("GlueSettings", "9");
        xml.Element("SnapSettings", "65847")
            .Element("SnapExtensions", "34")
            .Element("DynamicGridEnabled", "1");
        xml.Element("TabSplitterPos", "0.5").Close().Close();
        Add("visio/windows.xml", xml.Take(), "windows+xml");
        documentRelations.Add(parts::kWindows, "windows.xml");
    }

    std::string DocumentXml() {
        XmlWriter xml;
        Root(xml, "VisioDocument");
        SheetWriter sheets(document_, xml);
        const StyleSheet* normal = document_.FindStyle("Normal");
        const int style = normal ? normal->id : 0;
        xml.Open("DocumentSettings")
            .Attribute("TopPage", document_.pages.empty() ? 0 : document_.pages.front()->id);
        xml.Attribute("DefaultTextStyle", style).Attribute("DefaultLineStyle", style);
        xml.Attribute("DefaultFillStyle", style);
        xml.Element("GlueSettings", "9").Element("SnapSettings", "65847").Element("SnapExtensions", "34");
        xml.Element("DynamicGridEnabled", "1").Close();

        // A list without entries is left out, and sheets have end tags: some readers run past an empty
        // element.
        if (!document_.colors.empty()) xml.Open("Colors");
        for (const auto& [index, color] : document_.colors) {
            xml.Open("ColorEntry").Attribute("IX", index);
            xml.Attribute("RGB", fmt::format("#{:02X}{:02X}{:02X}", color.red, color.green, color.blue))
                .Close();
        }
        if (!document_.colors.empty()) xml.Close();

        if (!document_.fonts.empty()) xml.Open("FaceNames");
        for (const auto& font : document_.fonts) xml.Open("FaceName").Attribute("NameU", font).Close();
        if (!document_.fonts.empty()) xml.Close();

        xml.Open("StyleSheets");
        for (const auto& each : document_.styles) {
            xml.Open("StyleSheet").Attribute("ID", each->id);
            sheets.NameAttributes(each->name, each->name, true);
            sheets.StyleAttributes(*each);
            sheets.SheetContent(*each);
            xml.Close();
        }
        xml.Close();

        xml.Open("DocumentSheet").Attribute("NameU", "TheDoc").Attribute("Name", "TheDoc");
        sheets.StyleAttributes(document_.sheet);
        sheets.SheetContent(document_.sheet);
        xml.Close();
        WriteHeaderFooter(xml);
        xml.Close();
        return xml.Take();
    }

    void WriteHeaderFooter(XmlWriter& xml) {
        const HeaderFooter& texts = document_.headerFooter;
        if (texts == HeaderFooter()) return;
        xml.Open("HeaderFooter");
        const auto field = [&xml](const char* element, const std::string& text) {
            if (!text.empty()) xml.Element(element, text);
        };
        field("HeaderLeft", texts.headerLeft);
        field("HeaderCenter", texts.headerCenter);
        field("HeaderRight", texts.headerRight);
        field("FooterLeft", texts.footerLeft);
        field("FooterCenter", texts.footerCenter);
        field("FooterRight", texts.footerRight);
        xml.Close();
    }

    const Document& document_;
    std::vector<Part> parts_;  // Those that lead to others come last here and first in the file.
    std::vector<std::pair<std::string, std::string>> types_;
    std::set<std::string> pictureExtensions_;
    int pictures_ = 0;
};

}  // namespace

std::string WritePackage(const Document& document) {
    return PackageWriter(document).Write();
}

}  // namespace norvelis::drawing
