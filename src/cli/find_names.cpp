#include "cli/find_names.h"

#include <cstdio>
#include <limits>

#include "base/text.h"
#include "browse/found_name.h"
#include "cli/json_output.h"

namespace norvelis::cli {

namespace {

FindKinds KindsIn(const FindOptions& options) {
    FindKinds kinds;
    for (const auto& name : options.in) {
        if (const auto kind = FindKindNamed(name)) kinds |= Only(*kind);
    }
    return options.in.empty() ? kinds.set() : kinds;
}

void PrintFound(const std::vector<FoundName>& found) {
    for (const auto& each : found) {
        std::printf("%s\t%s\t%s\t%s\n", std::string(NameOf(each.kind)).c_str(), each.name.c_str(),
                    WhereOf(each).c_str(), each.schema.c_str());
    }
}

void PrintFoundJson(const std::vector<FoundName>& found) {
    auto list = nlohmann::ordered_json::array();
    for (const auto& each : found) {
        nlohmann::ordered_json object{
            {"kind", NameOf(each.kind)}, {"name", each.name}, {"schema", each.schema}};
        if (each.kind == FindKind::Set) {
            object["owner"] = each.record;
            object["member"] = each.member;
        } else if (each.kind != FindKind::Schema) {
            object["record"] = each.record;
        }
        list.push_back(std::move(object));
    }
    PrintJson(list);
}

}  // namespace

bool FindOptions::IsForNames() const {
    return !in.empty() || whereUsed || ReadFindText(text).kinds != FindKinds().set();
}

std::string CheckFindKind(const std::string& name) {
    return FindKindNamed(name) ? std::string() : "there are no " + name + " to look for";
}

int FindNames(CommandContext& context, const FindOptions& options) {
    const FindText wanted = ReadFindText(options.text, KindsIn(options));
    if (wanted.kinds.none()) return Refuse("the kind in front of the text is not among those of --in");
    if (options.whereUsed && wanted.text.empty()) return Refuse("Please type the field to locate");
    if (options.whereUsed && !Has(wanted.kinds, FindKind::Field))
        return Refuse("--where-used is about fields: no other kind has records in which it is used");
    context.OpenStore();
    const FindIndex index(*context.app->gConnection);
    constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();
    const auto found = options.whereUsed ? index.WhereUsed(wanted, kAll).best : index.Find(wanted, kAll).best;
    if (options.json) {
        PrintFoundJson(found);
    } else {
        PrintFound(found);
    }
    return found.empty() ? Refuse("nothing has the name " + options.text) : kDone;
}

}  // namespace norvelis::cli
