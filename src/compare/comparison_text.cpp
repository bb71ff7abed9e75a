#include "compare/comparison_text.h"

#include <algorithm>

#include "compare/descriptions.h"

namespace norvelis::compare {

namespace {

struct KindWords {
    Kind kind;
    const char *singular, *plural;
};
constexpr KindWords kSummarized[] = {{Kind::Record, "record", "records"},
                                     {Kind::Set, "set", "sets"},
                                     {Kind::Field, "field", "fields"},
                                     {Kind::Index, "index", "indexes"},
                                     {Kind::Area, "area", "areas"}};
constexpr Change kChanges[] = {Change::Added, Change::Removed, Change::Renamed, Change::Changed,
                               Change::Moved};

std::string Part(const KindWords& words, Change change, std::size_t count) {
    const std::string things = Counted(count, words.singular, words.plural);
    if (change == Change::Added) return "+" + things;
    if (change == Change::Removed) return "-" + things;
    return things + " " + std::string(NameOf(change));
}

}  // namespace

std::string_view NameOf(Kind kind) {
    switch (kind) {
        case Kind::Schema:
            return "schema";
        case Kind::Record:
            return "record";
        case Kind::Field:
            return "field";
        case Kind::Set:
            return "set";
        case Kind::Index:
            return "index";
        case Kind::Area:
            return "area";
    }
    return "";
}

std::string_view NameOf(Change change) {
    switch (change) {
        case Change::Added:
            return "added";
        case Change::Removed:
            return "removed";
        case Change::Renamed:
            return "renamed";
        case Change::Changed:
            return "changed";
        case Change::Moved:
            return "moved";
    }
    return "";
}

std::string Summary(const Comparison& comparison) {
    std::string summary;
    for (const KindWords& words : kSummarized) {
        for (const Change change : kChanges) {
            const auto count = std::ranges::count_if(comparison, [&](const Difference& each) {
                return each.kind == words.kind && each.change == change;
            });
            if (count == 0) continue;
            if (!summary.empty()) summary += ", ";
            summary += Part(words, change, static_cast<std::size_t>(count));
        }
    }
    return summary.empty() ? "no differences" : summary;
}

std::vector<Row> Rows(const Comparison& comparison) {
    std::vector<Row> rows;
    for (const Difference& each : comparison) {
        for (const ChangedValue& value : each.values) {
            rows.push_back({std::string(NameOf(each.kind)), std::string(NameOf(each.change)), each.name,
                            each.where, value.what, value.former, value.present});
        }
    }
    return rows;
}

}  // namespace norvelis::compare
