#include "sqlconv/report/conversion_report.h"

#include <algorithm>
#include <map>
#include <vector>

#include "base/html_text.h"
#include "base/name_key.h"

namespace norvelis::tables {

namespace {

using Subject = Outcome::Subject;

void Add(Count& count, bool converted) {
    ++count.all;
    if (converted) ++count.converted;
}

std::string OfAll(const Count& count, const char* things, const char* became) {
    return std::to_string(count.converted) + " of " + std::to_string(count.all) + " " + things + " " + became;
}

// Plain enough for a viewer that knows little of style sheets, and for print.
constexpr std::string_view kStyle = R"(<style>
body { font-family: sans-serif; margin: 24px; color: #1c2733; background: #ffffff; }
h1 { font-size: 20px; } h2 { font-size: 16px; margin-top: 24px; }
table { border-collapse: collapse; }
th, td { text-align: left; vertical-align: top; padding: 3px 10px; border-bottom: 1px solid #d5dbe1; }
th { background: #eef2f6; }
.look { background: #fff3d6; } .out { color: #7a5c00; }
</style>
)";

class Page {
  public:
    Page(const SchemaModel& model, const Dialect& dialect) : model_(model), dialect_(dialect) {}

    std::string Write() {
        const std::string title =
            "Schema " + model_.schema + " as tables for " + std::string(dialect_.Title());
        html_ = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>" + HtmlText(title) +
                "</title>\n" + std::string(kStyle) + "</head><body>\n<h1>" + HtmlText(title) +
                "</h1>\n<ul>\n";
        for (const auto& words : TotalsInWords(TotalsOf(model_))) html_ += "<li>" + words + "</li>\n";
        html_ += "</ul>\n";
        WriteToLookAt();
        WriteRecords();
        return html_ + "</body></html>\n";
    }

  private:
    void BeginTable(const std::string& heading) {
        html_ += "<h2>" + HtmlText(heading) +
                 "</h2>\n<table>\n<tr><th>What</th><th>Name</th><th>Became</th><th>Type</th>"
                 "<th>Why</th></tr>\n";
    }
    void EndTable() { html_ += "</table>\n"; }

    void WriteRow(const Outcome& outcome, bool withRecord) {
        html_ += outcome.lookAt ? "<tr class=\"look\">" : "<tr>";
        Cell(std::string(SubjectName(outcome.subject)));
        const bool other = withRecord && !outcome.record.empty() && outcome.subject != Subject::Record;
        Cell(other ? outcome.name + " of " + outcome.record : outcome.name);
        html_ += outcome.became.empty() ? "<td class=\"out\">" : "<td>";
        html_ += outcome.became.empty() ? "nothing" : HtmlText(outcome.became);
        html_ += "</td>";
        Cell(outcome.became.empty() ? std::string() : dialect_.TypeText(outcome.type));
        Cell(outcome.why);
        html_ += "</tr>\n";
    }
    void Cell(const std::string& text) { html_ += "<td>" + HtmlText(text) + "</td>"; }

    void WriteToLookAt() {
        if (std::ranges::none_of(model_.outcomes, &Outcome::lookAt)) return;
        BeginTable("What a person should look at");
        for (const Outcome& outcome : model_.outcomes) {
            if (outcome.lookAt) WriteRow(outcome, true);
        }
        EndTable();
    }

    void WriteRecords() {
        std::map<std::string, std::vector<const Outcome*>> ofRecord;
        std::vector<const Outcome*> records;
        for (const Outcome& outcome : model_.outcomes) {
            if (outcome.subject == Subject::Record) {
                records.push_back(&outcome);
            } else {
                ofRecord[NameKey(outcome.record)].push_back(&outcome);
            }
        }
        for (const Outcome* record : records) {
            BeginTable("Record " + record->name);
            WriteRow(*record, false);
            const auto own = ofRecord.extract(NameKey(record->name));
            if (!own.empty()) {
                for (const Outcome* outcome : own.mapped()) WriteRow(*outcome, false);
            }
            EndTable();
        }
        if (ofRecord.empty()) return;
        BeginTable("Without a record of the schema");
        for (const auto& [record, outcomes] : ofRecord) {
            for (const Outcome* outcome : outcomes) WriteRow(*outcome, true);
        }
        EndTable();
    }

    const SchemaModel& model_;
    const Dialect& dialect_;
    std::string html_;
};

}  // namespace

std::string_view SubjectName(Subject subject) {
    switch (subject) {
        case Subject::Record:
            return "record";
        case Subject::Field:
            return "field";
        case Subject::Set:
            return "set";
        case Subject::Index:
            return "index";
        case Subject::Option:
            return "option";
    }
    return {};
}

Totals TotalsOf(const SchemaModel& model) {
    Totals totals;
    std::map<std::string, bool> sets;
    for (const Outcome& outcome : model.outcomes) {
        const bool converted = !outcome.became.empty();
        if (outcome.lookAt) ++totals.toLookAt;
        switch (outcome.subject) {
            case Subject::Record:
                Add(totals.records, converted);
                break;
            case Subject::Field:
                if (outcome.isValue) Add(totals.fields, converted);
                break;
            case Subject::Set: {
                bool& all = sets.try_emplace(NameKey(outcome.name), true).first->second;
                all = all && converted;
                if (converted) ++totals.foreignKeys;
                break;
            }
            case Subject::Index:
                Add(totals.indexes, converted);
                break;
            case Subject::Option:
                break;
        }
    }
    for (const auto& [name, converted] : sets) Add(totals.sets, converted);
    totals.tables = model.tables.size();
    return totals;
}

std::array<std::string, 5> TotalsInWords(const Totals& totals) {
    return {OfAll(totals.records, "records", "are tables") + ", " + std::to_string(totals.tables) +
                " tables in all",
            OfAll(totals.fields, "fields", "are columns; groups and fillers are none"),
            OfAll(totals.sets, "sets", "are foreign keys") + ", " + std::to_string(totals.foreignKeys) +
                " keys in all",
            OfAll(totals.indexes, "indexes", "are indexes of the server"),
            std::to_string(totals.toLookAt) + " things for a person to look at"};
}

std::string ReportHtml(const SchemaModel& model, const Dialect& dialect) {
    return Page(model, dialect).Write();
}

}  // namespace norvelis::tables
