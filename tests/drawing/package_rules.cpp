#include <zip.h>

#include <algorithm>
#include <set>

#include "drawing/opened_package.h"
#include "drawing/package_rules.h"

namespace norvelis::drawing {

namespace {

constexpr const char* kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr const char* kMain = "http://schemas.microsoft.com/office/visio/2012/main";

/// What a relationship of a type must lead to: the start and end of the part's content type, its root
/// element.
struct Kind {
    std::string relationship, type, root;
};
const Kind kKinds[] = {
    {std::string(kVisioRelationships) + "document", "application/vnd.ms-visio.*.main+xml", "VisioDocument"},
    {std::string(kVisioRelationships) + "masters", "application/vnd.ms-visio.masters+xml", "Masters"},
    {std::string(kVisioRelationships) + "master", "application/vnd.ms-visio.master+xml", "MasterContents"},
    {std::string(kVisioRelationships) + "pages", "application/vnd.ms-visio.pages+xml", "Pages"},
    {std::string(kVisioRelationships) + "page", "application/vnd.ms-visio.page+xml", "PageContents"},
    {std::string(kVisioRelationships) + "windows", "application/vnd.ms-visio.windows+xml", "Windows"},
    {std::string(kOffice) + "image", "image/*", ""},
    {std::string(kOffice) + "extended-properties",
     "application/vnd.openxmlformats-officedocument.extended-properties+xml", "Properties"},
    {"http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
     "application/vnd.openxmlformats-package.core-properties+xml", "cp:coreProperties"},
};

bool Fits(const std::string& text, const std::string& pattern) {
    const auto star = pattern.find('*');
    if (star == std::string::npos) return text == pattern;
    return text.starts_with(pattern.substr(0, star)) && text.ends_with(pattern.substr(star + 1));
}

class PartsChecker {
  public:
    explicit PartsChecker(OpenedPackage& package) : package_(package) {}

    void Run(std::string_view bytes) {
        if (!Unpack(bytes)) return;
        CheckContentTypes();
        CheckRelationships();
    }

  private:
    bool Unpack(std::string_view bytes) {
        const std::vector<Part> all = PartsOf(bytes);
        if (all.empty()) package_.Fault("no archive");
        for (const Part& part : all) {
            if (&part == &all.front() && part.name != "[Content_Types].xml")
                package_.Fault("the archive begins with {}", part.name);
            if (!package_.parts.emplace(part.name, part.bytes).second)
                package_.Fault("{} is there twice", part.name);
            if (!part.name.ends_with(".xml") && !part.name.ends_with(".rels")) continue;
            const auto result = package_.trees[part.name].load_buffer(
                part.bytes.data(), part.bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata);
            if (!result) package_.Fault("{} is no XML: {}", part.name, result.description());
        }
        return !all.empty();
    }

    void CheckContentTypes() {
        std::map<std::string, std::string> byExtension;
        const auto types = package_.trees["[Content_Types].xml"].child("Types");
        for (const auto& node : types.children("Default"))
            byExtension[AttributeOf(node, "Extension")] = AttributeOf(node, "ContentType");
        for (const auto& node : types.children("Override")) {
            const std::string part = AttributeOf(node, "PartName");
            if (!part.starts_with('/') || !package_.parts.contains(part.substr(1)))
                package_.Fault("a content type for {}, which is not there", part);
            else if (!package_.types.emplace(part.substr(1), AttributeOf(node, "ContentType")).second)
                package_.Fault("two content types for {}", part);
        }
        for (const auto& [part, content] : package_.parts) {
            if (part == "[Content_Types].xml" || package_.types.contains(part)) continue;
            const auto known = byExtension.find(part.substr(part.rfind('.') + 1));
            if (known == byExtension.end())
                package_.Fault("{} has no content type", part);
            else
                package_.types[part] = known->second;
        }
    }

    static std::string Absolute(const std::string& from, const std::string& target) {
        if (target.starts_with('/')) return target.substr(1);
        std::string folder = from.substr(0, from.rfind('/') + 1), rest = target;
        if (from.find('/') == std::string::npos) folder.clear();
        while (rest.starts_with("../")) {
            rest = rest.substr(3);
            folder.pop_back();
            folder = folder.substr(0, folder.rfind('/') == std::string::npos ? 0 : folder.rfind('/') + 1);
        }
        return folder + rest;
    }

    void CheckRelationships() {
        std::set<std::string> reached;
        for (const auto& [name, content] : package_.parts) {
            if (!name.ends_with(".rels")) continue;
            std::string source = name.substr(0, name.size() - 5);
            source.erase(source.find("_rels/"), 6);
            if (!source.empty() && !package_.parts.contains(source))
                package_.Fault("{} belongs to no part", name);
            auto& relations = package_.relations[source];
            for (const auto& node : package_.trees[name].child("Relationships").children("Relationship")) {
                const std::string target = Absolute(source, AttributeOf(node, "Target"));
                const std::string type = AttributeOf(node, "Type");
                if (!relations.emplace(AttributeOf(node, "Id"), OpenedPackage::Relation{type, target}).second)
                    package_.Fault("{}: {} is there twice", name, AttributeOf(node, "Id"));
                if (!package_.parts.contains(target))
                    package_.Fault("{} leads to {}, which is not there", name, target);
                reached.insert(target);
                const auto kind =
                    std::find_if(std::begin(kKinds), std::end(kKinds),
                                 [&type](const Kind& each) { return each.relationship == type; });
                if (kind == std::end(kKinds))
                    package_.Fault("{} has a relationship of the unknown type {}", name, type);
                else
                    CheckKind(target, *kind);
            }
        }
        for (const auto& [name, content] : package_.parts) {
            if (!name.ends_with(".rels") && name != "[Content_Types].xml" && !reached.contains(name))
                package_.Fault("nothing leads to {}", name);
        }
    }

    void CheckKind(const std::string& part, const Kind& kind) {
        if (!Fits(package_.types[part], kind.type))
            package_.Fault("{} has the content type {}", part, package_.types[part]);
        if (kind.root.empty()) return;
        const auto root = package_.trees[part].document_element();
        if (kind.root != root.name()) package_.Fault("{} holds a {}", part, root.name());
        if (!kind.relationship.starts_with(kVisioRelationships)) return;
        if (AttributeOf(root, "xmlns") != kMain)
            package_.Fault("{} is of the namespace {}", part, AttributeOf(root, "xmlns"));
        if (AttributeOf(root, "xml:space") != "preserve") package_.Fault("{} does not preserve blanks", part);
    }

    OpenedPackage& package_;
};

}  // namespace

std::vector<Part> PartsOf(std::string_view bytes) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    zip_t* archive = source ? zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error) : nullptr;
    zip_error_fini(&error);
    if (!archive) {
        zip_source_free(source);
        return {};
    }
    std::vector<Part> parts;
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        zip_stat_t stat;
        zip_stat_index(archive, index, 0, &stat);
        parts.push_back({stat.name, std::string(stat.size, '\0')});
        zip_file_t* file = zip_fopen_index(archive, index, 0);
        if (file) zip_fread(file, parts.back().bytes.data(), stat.size);
        if (file) zip_fclose(file);
    }
    zip_discard(archive);
    return parts;
}

std::string OpenedPackage::Target(const std::string& part, const std::string& type) const {
    const auto found = relations.find(part);
    if (found == relations.end()) return {};
    for (const auto& [id, relation] : found->second) {
        if (relation.type == kVisioRelationships + type) return relation.target;
    }
    return {};
}

void CheckParts(std::string_view bytes, OpenedPackage& package) {
    PartsChecker(package).Run(bytes);
}

std::vector<std::string> PackageFaults(std::string_view bytes) {
    OpenedPackage package;
    CheckParts(bytes, package);
    if (package.faults.empty()) {
        CheckSchema(package);
        CheckDrawing(package);
    }
    return package.faults;
}

}  // namespace norvelis::drawing
