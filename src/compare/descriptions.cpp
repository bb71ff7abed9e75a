#include "compare/descriptions.h"

#include <initializer_list>

namespace norvelis::compare {

namespace {

std::string Joined(std::initializer_list<std::string> texts, const char* between) {
    std::string joined;
    for (const std::string& text : texts) {
        if (text.empty()) continue;
        if (!joined.empty()) joined += between;
        joined += text;
    }
    return joined;
}

}  // namespace

std::string Length(const dictionary::RecordContents& record) {
    return Plain(record.lengthKind + " " + record.length);
}

std::string KeyList(const IndexedRecord& member, const Renames& fields) {
    return List(member.keys, [&fields](const auto& key) {
        return Plain(std::string(fields.Present(key.first)) + " " + key.second);
    });
}

std::string Description(const dictionary::RecordContents& record) {
    return Joined({Plain(record.id), Plain(record.mode + " " + record.key), Plain(record.area),
                   Length(record), Counted(record.fields.size(), "field", "fields")},
                  ", ");
}

std::string Description(const dictionary::FieldContents& field) {
    const std::string position = Position(field);
    return Joined({Plain(field.level), Picture(field), Plain(field.usage),
                   position.empty() ? position : "at " + position},
                  " ");
}

std::string Description(const SetOfRecords& set) {
    const std::string members = List(set.members, [](const Membership& member) {
        const std::string connection = Joined({member.pointers, member.order}, ", ");
        return connection.empty() ? member.member : member.member + " (" + connection + ")";
    });
    return PlaceOf(set) + " to " + members;
}

std::string Description(const Index& index) {
    return List(index.members, [](const IndexedRecord& member) {
        return Joined({member.member, KeyList(member), member.sortOption}, ": ");
    });
}

std::string Description(const Area& area) {
    return Counted(area.records.size(), "record", "records");
}

std::string PlaceOf(const SetOfRecords& set) {
    return List(set.owners, [](const std::string& owner) { return owner; });
}

std::string PlaceOf(const Index& index) {
    return List(index.members, [](const IndexedRecord& member) { return member.member; });
}

std::string Counted(std::size_t count, const std::string& singular, const std::string& plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

}  // namespace norvelis::compare
