#include "diagram/title_facts.h"

#include <fmt/format.h>

#include <set>

#include "base/name_key.h"
#include "base/text.h"
#include "dictionary/schemas.h"
#include "dictionary/sets.h"

namespace norvelis {

namespace {

std::string Counted(std::size_t drawn, long all, const char* one, const char* many) {
    const bool some = static_cast<long>(drawn) < all;
    return (some ? fmt::format("{} of ", drawn) : "") + fmt::format("{} {}", all, all == 1 ? one : many);
}

/// A release as reports write it has the word in front.
std::string WithoutWord(std::string_view word, std::string_view value) {
    const bool has = EqualIgnoringCase(value.substr(0, word.size()), word);
    return std::string(Trim(value.substr(has ? word.size() : 0)));
}

/// Those of the records on the page; their notes come after its layout.
std::size_t CountDrawnIndexes(const DrawingState& drawing) {
    std::set<std::string> indexes;
    for (auto row = dictionary::Indexes(drawing.store); !row.Eof(); row.MoveNext()) {
        const std::string member(Trim(row.Text("next_step")));
        const bool drawn = drawing.gShapeIds.Find(member) && !drawing.references.contains(NameKey(member));
        if (drawn && IsOfDrawnSchema(drawing, row)) indexes.insert(NameKey(Trim(row.Text("recordname"))));
    }
    return indexes.size();
}

}  // namespace

std::string TitleFacts(DrawingState& drawing) {
    std::string text = "Bachman diagram", date;
    const std::string_view schema = Trim(drawing.gDrawSchema);
    if (!schema.empty()) text += fmt::format(" of schema {}", schema);
    if (auto header = dictionary::SchemaHeader(drawing.store, schema); !header.Eof()) {
        for (const auto& [word, column] :
             {std::pair{"version", "schemaversion"}, std::pair{"release", "schemarelease"}}) {
            const std::string value = WithoutWord(word, Trim(header.Text(column)));
            if (!value.empty()) text += fmt::format(", {} {}", word, value);
        }
        date = Trim(header.Text("schemadate"));
    }
    text += "\n";
    if (!date.empty()) text += fmt::format("Report of {}", date);
    if (drawing.marks) return text;
    const dictionary::SchemaCounts all = dictionary::CountContents(drawing.store, schema);
    if (!date.empty()) text += ": ";
    text += Counted(drawing.drawnRecords, all.records, "record", "records") + ", " +
            Counted(drawing.drawnSets.size(), all.sets, "set", "sets");
    if (all.indexes > 0) text += ", " + Counted(CountDrawnIndexes(drawing), all.indexes, "index", "indexes");
    return text;
}

}  // namespace norvelis
