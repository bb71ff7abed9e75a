#include <cstdio>

#include "base/text.h"
#include "browse/record_list.h"
#include "cli/command.h"
#include "cli/json_output.h"
#include "dictionary/schemas.h"

namespace norvelis::cli {

namespace {

using Json = nlohmann::ordered_json;

int PrintNames(const std::vector<std::string>& names, bool json) {
    if (json) {
        PrintJson(names);
    } else {
        for (const auto& name : names) std::printf("%s\n", name.c_str());
    }
    return kDone;
}

std::vector<std::string> NamesOf(const std::vector<Neighbor>& neighbors) {
    std::vector<std::string> names;
    for (const auto& neighbor : neighbors) names.push_back(neighbor.name);
    return names;
}

Json LabelsOf(const std::optional<RecordLabels>& record) {
    const RecordLabels labels = record.value_or(RecordLabels{});
    return {{"lblRecordname", labels.lblRecordname},
            {"lblareaname", labels.lblareaname},
            {"lbltableid", labels.lbltableid},
            {"lblrecmode", labels.lblrecmode},
            {"lblreckey", labels.lblreckey},
            {"lblreclen", labels.lblreclen},
            {"lbldn", labels.lbldn},
            {"lblDN2", labels.lblDN2}};
}

Json RecordJson(Connection& store, const std::string& name) {
    const ChosenRecord chosen = ShowRecord(store, name);
    const RecordDetails isolated = getinfo(store, name);
    return {{"owners", NamesOf(chosen.owners)},
            {"members", NamesOf(chosen.members)},
            {"labels", LabelsOf(chosen.record.labels)},
            {"details", chosen.record.details.items},
            {"layout", chosen.record.details.layout},
            {"getinfo",
             {{"Label1", isolated.currentRecord}, {"details", isolated.items}, {"layout", isolated.layout}}}};
}

/// A line for each neighbor: its name, and behind two blanks the sets that join it to the record.
void PrintNeighbors(const char* heading, const std::vector<Neighbor>& neighbors) {
    if (neighbors.empty()) return;
    std::printf("\n%s\n", heading);
    for (const auto& neighbor : neighbors) {
        std::printf("  %s", neighbor.name.c_str());
        const char* before = "  (";
        for (const auto& set : neighbor.sets) {
            std::printf("%s%s", before, set.c_str());
            before = ", ";
        }
        std::printf("%s\n", neighbor.sets.empty() ? "" : ")");
    }
}

/// Cells side by side, each column as wide as its longest cell; rows that are all blank at the end are left
/// out.
template <std::size_t N>
void PrintGrid(std::string_view heading, std::vector<std::array<std::string, N>> rows) {
    std::array<std::string, N> headings;
    for (auto& cell : headings) {
        const auto bar = heading.find('|');
        cell = heading.substr(0, bar);
        heading.remove_prefix(bar == std::string_view::npos ? heading.size() : bar + 1);
    }
    rows.insert(rows.begin(), headings);
    const auto isBlank = [](const std::string& cell) { return Trim(cell).empty(); };
    while (std::ranges::all_of(rows.back(), isBlank)) rows.pop_back();
    std::array<std::size_t, N> widths{};
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < N; ++i) widths[i] = std::max(widths[i], Trim(row[i]).size());
    }
    std::printf("\n");
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < N; ++i) {
            const std::string cell(Trim(row[i]));
            line += "  " + cell + std::string(widths[i] - cell.size(), ' ');
        }
        std::printf("%s\n", std::string(TrimEnd(line)).c_str());
    }
}

void PrintRecord(const ChosenRecord& chosen) {
    if (const auto& labels = chosen.record.labels) {
        std::printf("%s\n%s  %s  %s  %s\n%s  %s\n%s\n", labels->lblRecordname.c_str(),
                    labels->lbltableid.c_str(), labels->lbldn.c_str(), labels->lblreclen.c_str(),
                    labels->lblrecmode.c_str(), labels->lblreckey.c_str(), labels->lblDN2.c_str(),
                    labels->lblareaname.c_str());
    }
    PrintNeighbors("OWNERS", chosen.owners);
    PrintNeighbors("MEMBERS", chosen.members);
    PrintGrid(kListDetailsHeading, chosen.record.details.items);
    PrintGrid(kLayoutHeading, chosen.record.details.layout);
}

struct Options {
    std::string schema, record;
    bool json = false, ofSchema = false, ofRecord = false;
};

int List(CommandContext& context, const Options& options) {
    context.OpenStore();
    Connection& store = *context.app->gConnection;
    if (options.ofRecord) {
        if (options.json) {
            PrintJson(RecordJson(store, options.record));
        } else {
            PrintRecord(ShowRecord(store, options.record));
        }
        return kDone;
    }
    if (!options.ofSchema) return PrintNames(LoadSchemaList(*context.app), options.json);
    if (!dictionary::StoredSchemaName(store, options.schema))
        return Refuse("there is no schema " + options.schema + " in the dictionary");
    return PrintNames(LoadRecordsList(store, options.schema), options.json);
}

}  // namespace

void AddRecordList(CLI::App& program, CommandContext& context) {
    auto* list =
        program.add_subcommand("list", "Print the schemas, the records of one, or a record with its sets");
    auto options = std::make_shared<Options>();
    auto* schema = list->add_option("--schema", options->schema, "The records of this schema");
    auto* record =
        list->add_option("--record", options->record, "This record: its owners, members, details and fields");
    record->excludes(schema);
    list->add_flag("--json", options->json, "As a JSON array, a record as a JSON object");
    list->callback([&context, options, schema, record] {
        options->ofSchema = schema->count() > 0;
        options->ofRecord = record->count() > 0;
        context.run = [&context, options] { return List(context, *options); };
    });
}

}  // namespace norvelis::cli
