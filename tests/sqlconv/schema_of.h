#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dictionary/schema_contents.h"

// Schemas for tests, as the dictionary holds them.
namespace norvelis {

/// "02 NAME" and what else its line of the report says.
inline dictionary::FieldContents FieldOf(const std::string& levelAndName, const std::string& picture = {},
                                         const std::string& usage = "DISPLAY", const std::string& start = {},
                                         const std::string& end = {}) {
    return {levelAndName.substr(0, 2), levelAndName.substr(3), usage, picture, start, end};
}

/// A VIA record, unless it has a CALC key.
inline dictionary::RecordContents RecordOf(const std::string& name,
                                           std::vector<dictionary::FieldContents> fields,
                                           const std::string& calcKey = {}, const std::string& dn = "DN") {
    dictionary::RecordContents record;
    record.name = name;
    record.mode = calcKey.empty() ? "VIA" : "CALC";
    record.dn = calcKey.empty() ? "" : dn;
    record.key = calcKey;
    record.id = "0415";
    record.fields = std::move(fields);
    return record;
}

inline dictionary::SetContents SetOf(const std::string& name, const std::string& owner,
                                     const std::string& member, const std::string& membership) {
    return {name, owner, member, "NPO\r\n" + membership};
}

inline dictionary::SchemaContents SchemaOf(std::vector<dictionary::RecordContents> records,
                                           std::vector<dictionary::SetContents> sets = {},
                                           std::vector<dictionary::IndexContents> indexes = {}) {
    dictionary::SchemaContents contents;
    contents.name = "TESTSCHM";
    contents.records = std::move(records);
    contents.sets = std::move(sets);
    contents.indexes = std::move(indexes);
    return contents;
}

}  // namespace norvelis
