#include "publish/page.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <unordered_map>

#include "base/name_key.h"
#include "base/text.h"
#include "copybook/copybook.h"
#include "publish/cross_reference.h"
#include "publish/html.h"
#include "publish/lists.h"
#include "publish/page_looks.h"
#include "publish/record_part.h"

namespace norvelis::publish {

using dictionary::RecordContents;
using dictionary::SchemaContents;

namespace {

std::string Counted(std::size_t count, std::string_view one, std::string_view many) {
    return fmt::format("{} {}", count, count == 1 ? one : many);
}

/// Width of an SVG as its element says, with its unit.
std::string WidthOf(std::string_view svg) {
    constexpr std::string_view kWidth = " width=\"";
    const std::size_t begin = svg.find(kWidth);
    if (begin == std::string_view::npos) return "100%";
    const std::string_view rest = svg.substr(begin + kWidth.size());
    return std::string(rest.substr(0, rest.find('"')));
}

class PageWriter {
  public:
    PageWriter(const Edition& edition, const std::optional<Changes>& changes)
        : edition_(edition), changes_(changes), references_(edition.schema) {}

    std::string Write() {
        const std::string name = edition_.schema.name.empty() ? "(no name)" : edition_.schema.name;
        html_.Markup("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n")
            .Markup("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>")
            .Text(name)
            .Markup(" - schema</title>\n<link rel=\"icon\" href=\"data:,\">\n<style>")
            .Markup(kStyle)
            .Markup(
                "</style>\n</head>\n<body>\n<a class=\"skip\" href=\"#content\">Skip to the content</a>\n");
        AddHeader(name);
        html_.Markup("<div class=\"columns\">\n");
        AddContents();
        html_.Markup("<main id=\"content\" tabindex=\"-1\">\n");
        AddSections();
        html_.Markup("</main>\n</div>\n<footer>Published by Norvelis from its dictionary.</footer>\n<style>");
        html_.Markup(kLastStyle)
            .Markup("</style>\n<script>")
            .Markup(kScript)
            .Markup("</script>\n</body>\n</html>\n");
        return html_.Take();
    }

  private:
    void AddHeader(const std::string& name) {
        const SchemaContents& schema = edition_.schema;
        html_.Markup("<header>\n<h1>Schema ").Text(name).Markup("</h1>\n<p>");
        std::string facts;
        const auto add = [&facts](const std::string& fact) { facts += (facts.empty() ? "" : ", ") + fact; };
        if (!Trim(schema.version).empty()) add("version " + std::string(Trim(schema.version)));
        if (!Trim(schema.date).empty()) add("report of " + std::string(Trim(schema.date)));
        if (!Trim(schema.release).empty()) add(std::string(Trim(schema.release)));
        if (!facts.empty()) html_.Text(facts).Markup("</p>\n<p>");
        html_.Text(Counted(schema.records.size(), "record", "records") + ", " +
                   Counted(references_.Sets().size(), "set", "sets") + ", " +
                   Counted(schema.indexes.size(), "index", "indexes") + ", " +
                   Counted(references_.Areas().size(), "area", "areas"));
        html_.Markup("</p>\n</header>\n");
    }

    struct Section {
        std::string_view anchor, heading;
        bool isThere;
    };
    std::array<Section, 8> Sections() const {
        return {{{"drawing", "Drawing", !edition_.drawing.svg.empty()},
                 {"changes", "Changes", changes_.has_value()},
                 {"areas", "Areas", !references_.Areas().empty()},
                 {"findings", "Findings", !edition_.findings.empty()},
                 {"records", "Records", true},
                 {"sets", "Sets", !references_.Sets().empty()},
                 {"indexes", "Indexes", !edition_.schema.indexes.empty()},
                 {"fields", "Fields of several records", !references_.SharedFields().empty()}}};
    }

    void AddContents() {
        html_.Markup("<nav aria-label=\"Contents\">\n<ul id=\"section-list\" aria-label=\"Sections\">\n");
        for (const Section& section : Sections())
            if (section.isThere) html_.Markup("<li>").Link(section.anchor, section.heading).Markup("</li>\n");
        html_.Markup("</ul>\n<form id=\"search-form\" role=\"search\" hidden>\n")
            .Markup("<label for=\"search\">Find a record, field, set or index</label>\n")
            .Markup("<input id=\"search\" type=\"search\" autocomplete=\"off\">\n")
            .Markup(
                "<p id=\"found\" role=\"status\"></p>\n</form>\n<ul id=\"record-list\" "
                "aria-label=\"Records\">\n");
        for (const RecordContents* record : references_.Records())
            html_.Markup("<li>").Link(references_.AnchorOfRecord(*record), record->name).Markup("</li>\n");
        html_.Markup("</ul>\n</nav>\n");
    }

    void AddSections() {
        for (const Section& section : Sections()) {
            if (!section.isThere) continue;
            if (section.anchor == "drawing") AddDrawing();
            if (section.anchor == "changes") AddChanges(html_, references_, *changes_);
            if (section.anchor == "areas") AddAreas(html_, references_);
            if (section.anchor == "findings") AddFindings(html_, references_, edition_.findings);
            if (section.anchor == "records") AddRecords();
            if (section.anchor == "sets") AddSets(html_, references_);
            if (section.anchor == "indexes") AddIndexes(html_, references_, edition_.schema.indexes);
            if (section.anchor == "fields") AddSharedFields(html_, references_);
        }
    }

    void AddDrawing() {
        std::string_view svg = edition_.drawing.svg;
        svg.remove_prefix(
            std::min(svg.find("<svg"), svg.size()));  // The declaration of XML is no part of a page.
        html_.Markup(
            "<section id=\"drawing\"><h2>Drawing</h2>\n<div "
            "class=\"figure\">\n<fieldset><legend>Zoom</legend>");
        AddZoom("fit", "Fit the width", true);
        for (const char* percent : {"25", "50", "100", "200"})
            AddZoom(percent, std::string(percent) + " %", false);
        html_
            .Markup(
                "</fieldset>\n<div class=\"canvas\" role=\"group\" aria-label=\"Bachman diagram\" "
                "style=\"--wide: ")
            .Text(WidthOf(svg))
            .Markup("\">")
            .Markup(svg)
            .Markup("</div>\n</div></section>\n");
    }

    void AddZoom(std::string_view zoom, std::string_view words, bool isChosen) {
        html_.Markup("<label><input type=\"radio\" name=\"zoom\" id=\"zoom-")
            .Markup(zoom)
            .Markup(isChosen ? "\" checked> " : "\"> ")
            .Text(words)
            .Markup("</label>\n");
    }

    void AddRecords() {
        std::unordered_map<const RecordContents*, std::string> copybooks;
        const std::vector<copybook::Copybook> texts = copybook::CopybooksOf(edition_.schema);
        for (std::size_t i = 0; i < texts.size(); ++i)
            copybooks.emplace(&edition_.schema.records[i], texts[i].text);
        html_.Markup("<section id=\"records\"><h2>Records</h2>\n");
        for (const RecordContents* record : references_.Records())
            AddRecord(html_, references_,
                      {*record, copybooks[record], edition_.drawing.records.contains(NameKey(record->name))});
        html_.Markup("</section>\n");
    }

    const Edition& edition_;
    const std::optional<Changes>& changes_;
    const CrossReference references_;
    Html html_;
};

}  // namespace

std::string PageText(const Edition& edition, const std::optional<Changes>& changes) {
    return PageWriter(edition, changes).Write();
}

}  // namespace norvelis::publish
