#include "publish/record_part.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "copybook/item.h"
#include "publish/anchors.h"

namespace norvelis::publish {

using dictionary::IndexContents;
using dictionary::RecordContents;
using dictionary::SetContents;

namespace {

constexpr std::size_t kDeepestIndent = 4;

void AddFact(Html& html, std::string_view name, std::string_view value) {
    value = Trim(value);
    if (value.empty()) return;
    html.Markup("<div><dt>").Text(name).Markup("</dt><dd>").Text(value).Markup("</dd></div>");
}

void AddDetails(Html& html, const CrossReference& references, const RecordContents& record) {
    html.Markup("<dl>");
    AddFact(html, "Record ID", record.id);
    AddFact(html, "Length", std::string(Trim(record.length)) + " " + std::string(Trim(record.lengthKind)));
    const bool isVia = SameName(record.mode, "VIA");
    if (isVia) {
        html.Markup("<div><dt>Location mode</dt><dd class=\"s\">VIA ");
        html.Link(references.AnchorOfSet(record.key), Trim(record.key)).Markup("</dd></div>");
    } else {
        AddFact(html, "Location mode", std::string(Trim(record.mode)) + " " + std::string(Trim(record.key)));
    }
    AddFact(html, "Duplicates", SameName(record.dn, "DN") ? "not allowed" : std::string_view(record.dn));
    if (!Trim(record.area).empty()) {
        html.Markup("<div><dt>Area</dt><dd>");
        html.Link(AreaAnchor(Trim(record.area)), Trim(record.area)).Markup("</dd></div>");
    }
    html.Markup("</dl>\n");
    if (record.information.empty())
        html.Markup("<p class=\"warning\">The section of this record was not read to its end.</p>\n");
}

void AddSetCells(Html& html, std::string_view role, const std::string& setAnchor, const SetContents& set,
                 const std::string& recordAnchor, std::string_view record) {
    html.Markup("<tr class=\"s\">").Cell(role).Markup("<td>").Link(setAnchor, set.name).Markup("</td><td>");
    html.Link(recordAnchor, record)
        .Markup("</td>")
        .Cell(OrderOf(set))
        .Cell(PointersOf(set))
        .Markup("</tr>\n");
}

void AddSets(Html& html, const CrossReference& references, const RecordContents& record) {
    const auto owned = references.OwnedBy(record.name);
    const auto memberships = references.MembershipsOf(record.name);
    if (owned.empty() && memberships.empty()) return;
    html.Markup("<h4>Sets</h4>\n<div class=\"wide\"><table>");
    html.Headings({"This record is", "Set", "Record at the other end", "Membership and order", "Pointers"});
    html.Markup("<tbody>");
    for (const SetPart* part : owned)
        for (const SetContents* set : part->rows)
            AddSetCells(html, "owner of", part->anchor, *set, references.AnchorOfRecord(set->member),
                        set->member);
    for (const SetContents* set : memberships)
        AddSetCells(html, "member of", references.AnchorOfSet(set->name), *set,
                    references.AnchorOfRecord(set->owner), set->owner);
    html.Markup("</tbody></table></div>\n");
}

void AddIndexes(Html& html, const CrossReference& references, const RecordContents& record) {
    std::vector<std::string> named;  // In the record's own list, whether or not they have a row.
    for (const std::string& name : record.indexes)
        if (!Trim(name).empty()) named.emplace_back(Trim(name));
    const auto indexes = references.IndexesOf(record.name);
    for (const IndexContents* index : indexes)
        std::erase_if(named, [index](const std::string& name) { return SameName(name, index->name); });
    if (indexes.empty() && named.empty()) return;
    html.Markup("<h4>Indexes</h4>\n<ul>");
    for (const IndexContents* index : indexes) {
        html.Markup("<li class=\"s\">").Link(references.AnchorOfIndex(index->name), index->name);
        const char* before = ": ";
        for (const auto& [key, order] : index->keys) {
            html.Markup(before).Text(Trim(key)).Markup(" ").Text(Trim(order));
            before = ", ";
        }
        html.Markup("</li>\n");
    }
    for (const std::string& name : named)
        html.Markup("<li>").Text(name).Markup(": its keys are not in the dictionary</li>\n");
    html.Markup("</ul>\n");
}

std::string OccursOf(const copybook::Item& item) {
    if (item.usage.least < item.usage.most) return fmt::format("{} to {}", item.usage.least, item.usage.most);
    return item.occurs > 1 ? std::to_string(item.occurs) : std::string();
}

/// "5–8", "5" for one byte; empty for a group without positions.
std::string BytesOf(const dictionary::FieldContents& field) {
    const std::string start(Trim(field.start)), end(Trim(field.end));
    return start == end ? start : start + "–" + end;
}

void AddUses(Html& html, const CrossReference& references, const RecordContents& record,
             std::string_view field) {
    html.Markup("<td>");
    const char* before = "";
    for (const FieldUse& use : references.UsesOf(record, field)) {
        html.Markup(before).Text(use.words);
        if (!use.name.empty()) html.Markup(" ").Link(use.anchor, use.name);
        before = ", ";
    }
    if (const auto shared = references.SharedFields().find(UpperCase(Trim(field)));
        shared != references.SharedFields().end()) {
        html.Markup(before).Link(FieldAnchor(shared->first),
                                 fmt::format("in {} records", shared->second.size()));
    }
    html.Markup("</td>");
}

void AddFields(Html& html, const CrossReference& references, const RecordContents& record) {
    if (record.fields.empty()) {
        html.Markup("<p>The dictionary has no fields of this record.</p>\n");
        return;
    }
    html.Markup("<h4>Layout</h4>\n<div class=\"wide\"><table>");
    html.Headings({"Level", "Field", "Picture", "Usage", "Occurs", "Bytes", "Used as"}).Markup("<tbody>");
    std::vector<int> levels;  // Of the fields above the present one.
    for (const auto& field : record.fields) {
        const copybook::Item item = copybook::ReadItem(field);
        while (!levels.empty() && levels.back() >= item.level) levels.pop_back();
        const std::size_t depth = std::min(levels.size(), kDeepestIndent);
        levels.push_back(item.level);
        html.Markup("<tr>").Cell(Trim(field.level));
        html.Markup(depth == 0 ? "<td class=\"f\">" : fmt::format("<td class=\"f d{}\">", depth));
        html.Text(Trim(field.name)).Markup("</td><td class=\"p\">").Text(item.picture).Markup("</td>");
        html.Cell(item.usage.otherWords.empty() ? item.usage.word
                                                : item.usage.word + " " + item.usage.otherWords)
            .Cell(OccursOf(item));
        html.Markup("<td class=\"b\">").Text(BytesOf(field)).Markup("</td>");
        AddUses(html, references, record, field.name);
        html.Markup("</tr>\n");
    }
    html.Markup("</tbody></table></div>\n");
}

}  // namespace

void AddRecord(Html& html, const CrossReference& references, const RecordPart& part) {
    const RecordContents& record = part.record;
    html.Markup("<article class=\"part\" id=\"").Text(references.AnchorOfRecord(record)).Markup("\"><h3>");
    html.Text(record.name).Markup("</h3>\n");
    AddDetails(html, references, record);
    if (part.hasBox) {
        html.Markup("<p class=\"to-drawing\"><a href=\"#").Text(BoxAnchor(record.name)).Markup("\">");
        html.Text(record.name).Markup(" in the drawing</a></p>\n");
    }
    AddSets(html, references, record);
    AddIndexes(html, references, record);
    AddFields(html, references, record);
    html.Markup("<details><summary>COBOL copybook of ").Text(record.name).Markup("</summary><pre>");
    html.Text(part.copybook).Markup("</pre></details>\n</article>\n");
}

}  // namespace norvelis::publish
