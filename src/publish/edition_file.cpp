#include "publish/edition_file.h"

#include <nlohmann/json.hpp>

#include "base/failure.h"

namespace norvelis::publish {

using Json = nlohmann::ordered_json;
using dictionary::FieldContents;
using dictionary::IndexContents;
using dictionary::RecordContents;
using dictionary::SchemaContents;
using dictionary::SetContents;

namespace {

constexpr const char* kKind = "Norvelis edition";
constexpr int kForm = 1;

/// The column of the picture runs into the start position, with many blanks between: these need not be kept.
std::string WithoutRuns(const std::string& text) {
    std::string shorter;
    for (const char c : text)
        if (c != ' ' || shorter.empty() || shorter.back() != ' ') shorter += c;
    return shorter;
}

Json ToJson(const FieldContents& field) {
    return {field.level, field.name, field.usage, WithoutRuns(field.picture), field.start, field.end};
}

Json ToJson(const RecordContents& record) {
    Json fields = Json::array();
    for (const auto& field : record.fields) fields.push_back(ToJson(field));
    return {{"name", record.name},
            {"mode", record.mode},
            {"dn", record.dn},
            {"area", record.area},
            {"id", record.id},
            {"key", record.key},
            {"lengthKind", record.lengthKind},
            {"length", record.length},
            {"information", record.information},
            {"indexes", record.indexes},
            {"fields", std::move(fields)}};
}

Json ToJson(const IndexContents& index) {
    Json keys = Json::array();
    for (const auto& [name, order] : index.keys) keys.push_back(Json::array({name, order}));
    return {{"name", index.name},
            {"member", index.member},
            {"information", index.information},
            {"sortOption", index.sortOption},
            {"keys", std::move(keys)}};
}

Json ToJson(const SchemaContents& schema) {
    Json json = {{"name", schema.name},
                 {"release", schema.release},
                 {"version", schema.version},
                 {"date", schema.date},
                 {"entryRecords", schema.entryRecords}};
    for (const auto& record : schema.records) json["records"].push_back(ToJson(record));
    for (const auto& set : schema.sets)
        json["sets"].push_back(Json::array({set.name, set.owner, set.member, set.connection}));
    for (const auto& index : schema.indexes) json["indexes"].push_back(ToJson(index));
    return json;
}

RecordContents RecordOf(const Json& json) {
    RecordContents record;
    record.name = json.at("name");
    record.mode = json.at("mode");
    record.dn = json.at("dn");
    record.area = json.at("area");
    record.id = json.at("id");
    record.key = json.at("key");
    record.lengthKind = json.at("lengthKind");
    record.length = json.at("length");
    record.information = json.at("information");
    record.indexes = json.at("indexes");
    for (const Json& field : json.at("fields"))
        record.fields.push_back(
            {field.at(0), field.at(1), field.at(2), field.at(3), field.at(4), field.at(5)});
    return record;
}

IndexContents IndexOf(const Json& json) {
    IndexContents index{
        json.at("name"), json.at("member"), json.at("information"), json.at("sortOption"), {}};
    for (const Json& key : json.at("keys")) index.keys.emplace_back(key.at(0), key.at(1));
    return index;
}

SchemaContents SchemaOf(const Json& json) {
    SchemaContents schema;
    schema.name = json.at("name");
    schema.release = json.at("release");
    schema.version = json.at("version");
    schema.date = json.at("date");
    schema.entryRecords = json.at("entryRecords");
    const Json none = Json::array();
    const auto list = [&](const char* name) -> const Json& {
        return json.contains(name) ? json.at(name) : none;
    };
    for (const Json& record : list("records")) schema.records.push_back(RecordOf(record));
    for (const Json& set : list("sets")) schema.sets.push_back({set.at(0), set.at(1), set.at(2), set.at(3)});
    for (const Json& index : list("indexes")) schema.indexes.push_back(IndexOf(index));
    return schema;
}

std::string Dump(const Json& json) {
    return json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

std::string EditionText(const KeptEdition& edition) {
    Json json = {{"kind", kKind}, {"form", kForm}, {"schema", ToJson(edition.schema)}};
    if (edition.changes)
        json["changes"] = {{"former", edition.changes->former},
                           {"summary", edition.changes->summary},
                           {"rows", edition.changes->rows}};
    return Dump(json) + "\n";
}

KeptEdition ReadEdition(const std::string& text) {
    try {
        const Json json = Json::parse(text);
        if (json.at("kind") != kKind) throw RuntimeFailure(FailureNumber::DeviceIoError, "it is no edition");
        if (json.at("form") != kForm)
            throw RuntimeFailure(FailureNumber::DeviceIoError, "a newer program wrote it");
        KeptEdition edition{SchemaOf(json.at("schema")), std::nullopt};
        if (json.contains("changes")) {
            const Json& changes = json["changes"];
            edition.changes = Changes{changes.at("former"), changes.at("summary"), changes.at("rows")};
        }
        return edition;
    } catch (const Json::exception&) {
        throw RuntimeFailure(FailureNumber::DeviceIoError, "it is damaged");
    }
}

bool SameContents(const SchemaContents& a, const SchemaContents& b) {
    return Dump(ToJson(a)) == Dump(ToJson(b));
}

}  // namespace norvelis::publish
