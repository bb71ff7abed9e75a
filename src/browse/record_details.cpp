#include "browse/record_details.h"

#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "dictionary/records.h"
#include "dictionary/schemas.h"
#include "dictionary/sets.h"

namespace norvelis {

namespace {

constexpr std::size_t kLayoutRows = 30;
constexpr std::size_t kUsageCharacters = 12;
constexpr int kSortKeys = 16;
constexpr int kShownIndexes = 4;  // The grids show the first four of a record's eight index sets.

struct DetailsWords {
    std::array<std::pair<std::string_view, std::string_view>, 6>
        items;  // item, column; an empty item has no row
    std::string_view emptySortHeading, indexHeading;
};

constexpr DetailsWords kIsolateWords{{{{"RECORD NAME", "Recordname"},
                                       {"TABLE ID", "tableid"},
                                       {"RECORD MODE", "recmode"},
                                       {"RECORD KEY", "reckey"},
                                       {"RECORD TYPE", "rectype"},
                                       {"RECORD LENGTH", "reclen"}}},
                                     "",
                                     "INDEX(S)"};
constexpr DetailsWords kListWords{{{{"ID", "tableid"},
                                    {"MODE", "recmode"},
                                    {"KEY", "reckey"},
                                    {"TYPE", "rectype"},
                                    {"LEN", "reclen"},
                                    {"", ""}}},
                                  "SORT",
                                  "IDX"};

std::string OrBlank(const Recordset& row, std::string_view column) {
    return row.Value(column).value_or(" ");
}

/// The first n characters of UTF-8 text.
std::string_view FirstCharacters(std::string_view text, std::size_t n) {
    std::size_t end = 0;
    for (; end < text.size(); ++end) {
        const bool startsCharacter = (static_cast<unsigned char>(text[end]) & 0xC0) != 0x80;
        if (startsCharacter && n-- == 0) break;
    }
    return text.substr(0, end);
}

/// Row numbers count from the heading of the group: the first value is on the heading's own row.
class ItemGroup {
  public:
    ItemGroup(RecordDetails& details, std::string heading) : items_(details.items), first_(items_.size()) {
        items_.push_back({std::move(heading), ""});
    }
    void Put(std::size_t row, std::string value) {
        if (first_ + row >= items_.size()) items_.resize(first_ + row + 1);
        items_[first_ + row][1] = std::move(value);
    }

  private:
    std::vector<std::array<std::string, 2>>& items_;
    std::size_t first_;
};

void ReadSortRows(Connection& store, std::string_view name, const DetailsWords& words,
                  RecordDetails& details) {
    auto index = dictionary::IndexesOf(store, Trim(name));
    std::string heading = index.Eof() ? std::string() : index.Text("sortcalckey");
    if (heading.empty()) heading = words.emptySortHeading;
    ItemGroup group(details, std::move(heading));
    if (index.Eof()) return;
    for (int i = 1; i <= kSortKeys; ++i) {
        const std::string key = index.Text("sortkey" + std::to_string(i));
        if (key.empty()) continue;
        group.Put(static_cast<std::size_t>(i - 1),
                  " " + key + " " + index.Text("sortorder" + std::to_string(i)));
    }
}

void ReadIndexRows(const Recordset& record, const DetailsWords& words, RecordDetails& details) {
    ItemGroup group(details, std::string(words.indexHeading));
    std::size_t row = 0;
    for (int i = 1; i <= kShownIndexes; ++i) {
        const std::string index = record.Text("index" + std::to_string(i));
        if (!Trim(index).empty()) group.Put(row++, " " + index);
    }
}

RecordLabels LabelsOf(const Recordset& record) {
    return {UpperCase(OrBlank(record, "Recordname")),
            OrBlank(record, "areaname"),
            OrBlank(record, "tableid"),
            OrBlank(record, "recmode"),
            OrBlank(record, "reckey"),
            OrBlank(record, "reclen"),
            OrBlank(record, "rectype"),
            OrBlank(record, "dn")};
}

void ReadItems(Connection& store, const Recordset& record, std::string_view name, const DetailsWords& words,
               RecordDetails& details) {
    details.currentRecord = "CURRENT RECORD: " + OrBlank(record, "Recordname");
    for (const auto& [item, column] : words.items) {
        if (!item.empty()) details.items.push_back({std::string(item), " " + OrBlank(record, column)});
    }
    ReadSortRows(store, name, words, details);
    ReadIndexRows(record, words, details);
}

void ReadLayout(Connection& store, std::string_view name, RecordDetails& details) {
    auto field = dictionary::FieldsOf(store, name);
    for (; !field.Eof(); field.MoveNext()) {
        constexpr std::string_view kOccurs = "OCCURS";
        const std::string usage = field.Text("fieldusage");
        const auto occurs = usage.find(kOccurs);
        const bool repeats = occurs != std::string::npos;
        details.layout.push_back(
            {" " + field.Text("Fieldlevel"), " " + field.Text("fieldname"), " " + field.Text("fieldpicture"),
             " " + std::string(Trim(FirstCharacters(usage, kUsageCharacters))), repeats ? " YES" : "",
             repeats ? " " + std::string(Trim(std::string_view(usage).substr(occurs + kOccurs.size())))
                     : ""});
    }
}

template <typename Step>
void IgnoringFailures(const Step& step) {
    try {
        step();
    } catch (const RuntimeFailure&) {
    }
}

RecordDetails ReadDetails(Connection& store, std::string_view name, const DetailsWords& words,
                          std::optional<RecordLabels>* labels = nullptr) {
    RecordDetails details;
    IgnoringFailures([&] {
        const auto record = dictionary::RecordsNamed(store, name);
        if (record.Eof()) return;
        if (labels != nullptr) *labels = LabelsOf(record);
        ReadItems(store, record, name, words, details);
    });
    IgnoringFailures([&] { ReadLayout(store, name, details); });
    while (details.layout.size() < kLayoutRows) details.layout.push_back({" ", " ", " ", " ", " ", " "});
    return details;
}

}  // namespace

RecordDetails getinfo(Connection& store, std::string_view recordName) {
    return ReadDetails(store, recordName, kIsolateWords);
}

RecordDetails getinfo2(Connection& store, std::string_view recordName) {
    return ReadDetails(store, recordName, kListWords);
}

ListedRecord ReadListedRecord(Connection& store, std::string_view recordName) {
    ListedRecord listed;
    listed.details = ReadDetails(store, recordName, kListWords, &listed.labels);
    // The labels are looked for without the blanks before a name, the details with them.
    if (recordName.starts_with(' ')) listed.labels = ReadRecordLabels(store, "", recordName);
    return listed;
}

std::optional<RecordLabels> ReadRecordLabels(Connection& store, std::string_view schema,
                                             std::string_view recordName) {
    std::optional<RecordLabels> labels;
    IgnoringFailures([&] {
        const std::string name = UpperCase(Trim(recordName));
        auto record = schema.empty() ? dictionary::RecordsNamed(store, name)
                                     : dictionary::RecordIn(store, Trim(schema), name);
        if (record.Eof()) return;
        labels = LabelsOf(record);
    });
    return labels;
}

std::optional<SchemaLabels> ReadSchemaLabels(Connection& store, std::string_view schema) {
    std::optional<SchemaLabels> labels;
    IgnoringFailures([&] {
        auto row = dictionary::SchemaHeader(store, schema);
        if (row.Eof()) return;
        const auto text = [&row](std::string_view literal, std::string_view column) {
            return std::string(literal) + std::string(Trim(row.Text(column)));
        };
        labels = SchemaLabels{text("Schema Name: ", "schemaname"), text("Release: ", "schemarelease"),
                              text("Schema Version: ", "schemaversion"), text("Schema date: ", "schemadate")};
    });
    return labels;
}

}  // namespace norvelis
