#include "publish/lists.h"

#include <unordered_set>

#include "base/text.h"
#include "publish/anchors.h"

namespace norvelis::publish {

using dictionary::FindingRow;
using dictionary::IndexContents;
using dictionary::RecordContents;
using dictionary::SetContents;

namespace {

void AddRecordLinks(Html& html, const CrossReference& references,
                    const std::vector<const RecordContents*>& records) {
    const char* before = "";
    for (const RecordContents* record : records) {
        html.Markup(before).Link(references.AnchorOfRecord(*record), record->name);
        before = ", ";
    }
}

/// Of whatever has the name; empty when nothing has.
std::string AnchorOf(const CrossReference& references, std::string_view name) {
    if (std::string record = references.AnchorOfRecord(name); !record.empty()) return record;
    if (std::string index = references.AnchorOfIndex(name); !index.empty()) return index;
    return references.AnchorOfSet(name);
}

}  // namespace

void AddChanges(Html& html, const CrossReference& references, const Changes& changes) {
    html.Markup("<section id=\"changes\"><h2>Changes</h2>\n<p>Since ").Text(changes.former).Markup(": ");
    html.Text(changes.summary).Markup("</p>\n");
    if (!changes.rows.empty()) {
        html.Markup("<div class=\"wide\"><table>");
        html.Headings({"Kind", "Change", "Name", "In", "What", "Former", "Present"}).Markup("<tbody>");
        for (const auto& row : changes.rows) {
            const auto& [kind, change, name, place, what, former, present] = row;
            const bool isPart = kind == "record" || kind == "set" || kind == "index";
            html.Markup("<tr>").Cell(kind).Cell(change).Markup("<td>");
            html.Link(isPart ? AnchorOf(references, name) : "", name).Markup("</td><td>");
            html.Link(AnchorOf(references, place), place).Markup("</td>");
            html.Cell(what).Cell(former).Cell(present).Markup("</tr>\n");
        }
        html.Markup("</tbody></table></div>\n");
    }
    html.Markup("</section>\n");
}

void AddAreas(Html& html, const CrossReference& references) {
    html.Markup("<section id=\"areas\"><h2>Areas</h2>\n<div class=\"wide\"><table>");
    html.Headings({"Area", "Records"}).Markup("<tbody>");
    for (const auto& [area, records] : references.Areas()) {
        html.Markup("<tr");
        if (!area.empty()) html.Markup(" id=\"").Text(AreaAnchor(area)).Markup("\"");
        html.Markup("><th scope=\"row\">").Text(area.empty() ? "(none)" : area).Markup("</th><td>");
        AddRecordLinks(html, references, records);
        html.Markup("</td></tr>\n");
    }
    html.Markup("</tbody></table></div></section>\n");
}

void AddFindings(Html& html, const CrossReference& references, const std::vector<FindingRow>& findings) {
    html.Markup("<section id=\"findings\"><h2>Findings</h2>\n");
    html.Markup("<p>What reading the report of this schema lost.</p>\n<div class=\"wide\"><table>");
    html.Headings({"Severity", "Line", "About", "What is lost", "What to do"}).Markup("<tbody>");
    for (const FindingRow& finding : findings) {
        html.Markup("<tr><td class=\"").Text(finding.severity).Markup("\">").Text(finding.severity);
        html.Markup("</td>").Cell(finding.line == 0 ? std::string() : std::to_string(finding.line));
        html.Markup("<td>").Link(AnchorOf(references, finding.subject), finding.subject).Markup("</td>");
        html.Cell(finding.reason).Cell(finding.remedy).Markup("</tr>\n");
    }
    html.Markup("</tbody></table></div></section>\n");
}

void AddSets(Html& html, const CrossReference& references) {
    html.Markup("<section id=\"sets\"><h2>Sets</h2>\n<div class=\"wide\"><table>");
    html.Headings({"Set", "Owner", "Members, with membership and order"}).Markup("<tbody>");
    for (const SetPart& part : references.Sets()) {
        const SetContents& first = *part.rows.front();
        html.Markup("<tr id=\"").Text(part.anchor).Markup("\"><th scope=\"row\">").Text(first.name);
        html.Markup("</th><td>")
            .Link(references.AnchorOfRecord(first.owner), first.owner)
            .Markup("</td><td>");
        const char* before = "";
        for (const SetContents* set : part.rows) {
            html.Markup(before).Link(references.AnchorOfRecord(set->member), set->member);
            html.Markup(" ").Text(OrderOf(*set));
            before = "<br>";
        }
        html.Markup("</td></tr>\n");
    }
    html.Markup("</tbody></table></div></section>\n");
}

void AddIndexes(Html& html, const CrossReference& references, const std::vector<IndexContents>& indexes) {
    html.Markup("<section id=\"indexes\"><h2>Indexes</h2>\n<div class=\"wide\"><table>");
    html.Headings({"Index", "Record", "Keys", "Membership and order"}).Markup("<tbody>");
    std::unordered_set<std::string> shown;
    for (const IndexContents& index : indexes) {
        const std::string anchor = references.AnchorOfIndex(index.name);
        html.Markup("<tr");
        if (shown.insert(anchor).second) html.Markup(" id=\"").Text(anchor).Markup("\"");
        html.Markup("><th scope=\"row\">").Link(references.AnchorOfSet(index.name), index.name);
        html.Markup("</th><td>")
            .Link(references.AnchorOfRecord(index.member), index.member)
            .Markup("</td><td>");
        const char* before = "";
        for (const auto& [key, order] : index.keys) {
            html.Markup(before).Text(Trim(key)).Markup(" ").Text(Trim(order));
            before = ", ";
        }
        html.Markup("</td>").Cell(index.sortOption).Markup("</tr>\n");
    }
    html.Markup("</tbody></table></div></section>\n");
}

void AddSharedFields(Html& html, const CrossReference& references) {
    html.Markup("<section id=\"fields\"><h2>Fields of several records</h2>\n<div class=\"wide\"><table>");
    html.Headings({"Field", "Records"}).Markup("<tbody>");
    for (const auto& [field, records] : references.SharedFields()) {
        html.Markup("<tr id=\"").Text(FieldAnchor(field)).Markup("\"><th scope=\"row\" class=\"f\">");
        html.Text(field).Markup("</th><td>");
        AddRecordLinks(html, references, records);
        html.Markup("</td></tr>\n");
    }
    html.Markup("</tbody></table></div></section>\n");
}

}  // namespace norvelis::publish
