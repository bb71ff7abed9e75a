#include "compare/comparison_page.h"

#include <algorithm>
#include <string_view>

#include "base/html_text.h"

namespace norvelis::compare {

namespace {

// Changes are told apart by words; the bar at the left is a help for the eye, dashed where something is gone.
constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>)";
constexpr std::string_view kStyle = R"(</title>
<style>
body { font: 15px/1.45 "Liberation Sans", Arial, sans-serif; margin: 2em; color: #1d2730; background: #fff; }
h1 { font-size: 1.5em; } h2 { font-size: 1.15em; margin-top: 1.8em; }
dl { display: grid; grid-template-columns: max-content auto; gap: .2em 1em; }
dt { font-weight: bold; } dd { margin: 0; overflow-wrap: anywhere; }
.summary { font-size: 1.1em; font-weight: bold; }
.wide { overflow-x: auto; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .3em .7em; border-bottom: 1px solid #c8d0d6; }
thead th { border-bottom: 2px solid #1d2730; font-size: .85em; }
td { white-space: nowrap; }
td:nth-child(n + 6) { white-space: pre-wrap; overflow-wrap: break-word; min-width: 10em; }
tr.added td:first-child { border-left: 4px solid #0072b2; }
tr.removed td:first-child { border-left: 4px dashed #b34700; }
tr.renamed td:first-child, tr.changed td:first-child { border-left: 4px double #8a6d00; }
tr.moved td:first-child { border-left: 4px dotted #68747d; }
@page { size: landscape; }
@media print { body { margin: 0; font-size: 9pt; } thead { display: table-header-group; } tr { break-inside: avoid; } }
</style>
</head>
<body>
<main>
)";

void AppendElement(std::string& html, std::string_view tag, std::string_view text) {
    html.append("<").append(tag).append(">");
    html += HtmlText(text);
    html.append("</").append(tag).append(">\n");
}

/// "EMPSCHM, version 100, 11/24/26 (report /reports/empschm.text)".
std::string TitleOf(const Edition& edition) {
    const auto& schema = edition.contents;
    std::string words = schema.name.empty() ? "schema without a name" : schema.name;
    if (!schema.version.empty()) words += ", version " + schema.version;
    if (!schema.date.empty()) words += ", " + schema.date;
    return words + (edition.isReport ? " (report " + edition.source + ")" : " (dictionary)");
}

void AppendFindings(std::string& html, std::string_view title, const Edition& edition) {
    const auto isWarning = [](const auto& finding) { return finding.severity == dictionary::kWarning; };
    if (std::ranges::none_of(edition.findings, isWarning)) return;
    AppendElement(html, "h2", title);
    html += "<ul>\n";
    for (const auto& finding : edition.findings) {
        if (isWarning(finding)) AppendElement(html, "li", WordsOf(finding));
    }
    html += "</ul>\n";
}

void AppendTable(std::string& html, const std::vector<Row>& rows) {
    html += "<div class=\"wide\">\n<table>\n<thead><tr>\n";
    for (const std::string_view heading : kRowHeadings)
        html.append("<th scope=\"col\">").append(heading).append("</th>\n");
    html += "</tr></thead>\n<tbody>\n";
    for (const Row& row : rows) {
        html.append("<tr class=\"").append(row[1]).append("\">\n");
        for (const std::string& cell : row) AppendElement(html, "td", cell);
        html += "</tr>\n";
    }
    html += "</tbody>\n</table>\n</div>\n";
}

}  // namespace

std::vector<Row> WarningRows(const ComparedEditions& editions) {
    std::vector<Row> rows;
    for (const Edition* edition : {&editions.former, &editions.present}) {
        const bool isFormer = edition == &editions.former;
        for (const auto& finding : edition->findings) {
            if (finding.severity != dictionary::kWarning) continue;
            const std::string words = WordsOf(finding);
            rows.push_back({"report",
                            "warning",
                            finding.subject,
                            {},
                            finding.kind,
                            isFormer ? words : std::string(),
                            isFormer ? std::string() : words});
        }
    }
    return rows;
}

std::string WordsOf(const dictionary::FindingRow& finding) {
    std::string words;
    if (finding.line != 0) words += "line " + std::to_string(finding.line);
    if (!finding.subject.empty()) words += (words.empty() ? "" : ", ") + finding.subject;
    if (!words.empty()) words += ": ";
    words += finding.reason;
    if (!finding.remedy.empty()) words += " (" + finding.remedy + ")";
    return words;
}

std::string HtmlPage(const ComparedEditions& editions) {
    const std::string title =
        "What changed in " +
        (editions.present.contents.name.empty() ? std::string("the schema") : editions.present.contents.name);
    std::string html(kHead);
    html += HtmlText(title);
    html += kStyle;
    AppendElement(html, "h1", title);
    html += "<dl>\n<dt>Former</dt>";
    AppendElement(html, "dd", TitleOf(editions.former));
    html += "<dt>Present</dt>";
    AppendElement(html, "dd", TitleOf(editions.present));
    html += "</dl>\n<p class=\"summary\">";
    html += HtmlText(Summary(editions.differences));
    html += "</p>\n";
    AppendFindings(html, "What reading the former report lost", editions.former);
    AppendFindings(html, "What reading the present report lost", editions.present);
    if (const auto rows = Rows(editions.differences); !rows.empty()) {
        AppendElement(html, "h2", "Differences");
        AppendTable(html, rows);
    }
    return html + "</main>\n</body>\n</html>\n";
}

}  // namespace norvelis::compare
