#include "compare/edited_schema.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <random>
#include <utility>

namespace norvelis::compare {

namespace {

using dictionary::FieldContents;
using dictionary::RecordContents;
using dictionary::SetContents;

constexpr std::array kWords = {"ORDER", "CLIENT", "PART", "STOCK", "TRUCK", "ROUTE", "DEPOT", "PALLET"};
struct FieldType {
    const char *usage, *picture;
    int length;
};
constexpr std::array kTypes = {FieldType{"DISPLAY", "X(8)", 8}, FieldType{"DISPLAY", "9(6)", 6},
                               FieldType{"COMP-3", "S9(7)V99", 5}, FieldType{"COMP", "S9(4)", 2}};

/// Makes a schema and then edits it.
class Maker {
  public:
    explicit Maker(std::uint64_t seed) : random_(seed) {}

    EditedSchema Make() {
        auto& schema = result_.former;
        schema.name = "EDITED";
        for (int i = 0; i < 12; ++i) schema.records.push_back(MakeRecord(fmt::format("AREA-{}", i % 3)));
        for (std::size_t i = 1; i < schema.records.size(); ++i)
            schema.sets.push_back(MakeSet(schema.records[Below(i)].name, schema.records[i].name));
        for (std::size_t i = 0; i < schema.records.size(); i += 4) {
            const auto& record = schema.records[i];
            schema.indexes.push_back(
                {Name(), record.name, {}, "MA SORTED DN", {{record.fields[1].name, "ASC"}}});
        }
        result_.present = schema;
        for (std::size_t i = 0, count = 1 + Below(8); i < count; ++i) Edit();
        for (RecordContents& record : result_.present.records) Place(record);
        NoteEmptyAreas();
        return std::move(result_);
    }

  private:
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(random_() % bound); }
    std::string Name() { return fmt::format("{}-{}", kWords[Below(kWords.size())], ++lastNumber_); }
    FieldContents MakeField(const std::string& id) {
        const FieldType& type = kTypes[Below(kTypes.size())];
        return {"02", Name() + "-" + id, type.usage, type.picture, {}, {}};
    }

    RecordContents MakeRecord(const std::string& area) {
        RecordContents record;
        record.name = Name();
        record.mode = "CALC";
        record.area = area;
        record.id = fmt::format("{:04}", ++lastId_);
        for (std::size_t i = 0, count = 4 + Below(8); i < count; ++i)
            record.fields.push_back(MakeField(record.id));
        record.key = record.fields.front().name;
        record.fields.insert(record.fields.begin() + 2, {"02", "FILLER", "DISPLAY", "X(8)", {}, {}});
        record.fields.push_back({"02", "FILLER", "DISPLAY", "X(8)", {}, {}});
        Place(record);
        return record;
    }
    SetContents MakeSet(const std::string& owner, const std::string& member) {
        return {Name(), owner, member, Below(2) == 0 ? "NPO\r\nMA LAST" : "NP\r\nOM NEXT"};
    }

    static void Place(RecordContents& record) {
        int start = 1;
        for (FieldContents& field : record.fields) {
            const auto type = std::ranges::find_if(
                kTypes, [&field](const FieldType& each) { return field.picture == each.picture; });
            field.start = std::to_string(start);
            field.end = std::to_string(start + type->length - 1);
            start += type->length;
        }
        record.length = std::to_string(start - 1);
    }

    bool Touch(const std::string& name) { return touched_.insert(name).second; }
    void Note(const std::string& edit) { result_.edits.insert(edit); }
    void NoteRename(const std::string& edit) {
        Note(edit);
        ++result_.renames;
    }

    void Edit() {
        switch (Below(10)) {
            case 0:
                return AddRecord();
            case 1:
                return RemoveRecord();
            case 2:
                return RenameRecord();
            case 3:
            case 4:
            case 5:
                return EditField();
            case 6:
            case 7:
                return EditSet();
            case 8:
                return EditIndex();
            case 9:
                return EditArea();
        }
    }

    void AddRecord() {
        auto& schema = result_.present;
        schema.records.push_back(MakeRecord(schema.records.front().area));
        const std::string name = schema.records.back().name;
        schema.sets.push_back(MakeSet(schema.records.front().name, name));
        Touch(name);
        Touch(schema.sets.back().name);
        Note("record added " + name);
        Note("set added " + schema.sets.back().name);
    }

    // Never the first, to which others are hung; with it go its sets and indexes.
    void RemoveRecord() {
        auto& schema = result_.present;
        const std::size_t at = 1 + Below(schema.records.size() - 1);
        const std::string name = schema.records[at].name;
        if (!Touch(name)) return;
        const auto hangsOn = [&](const std::string& record) { return record == name; };
        for (const auto& set : schema.sets) {
            if ((hangsOn(set.owner) || hangsOn(set.member)) && !Touch(set.name)) return;
        }
        for (const auto& index : schema.indexes) {
            if (hangsOn(index.member) && !Touch(index.name)) return;
        }
        std::erase_if(schema.sets, [&](const auto& set) {
            const bool goes = hangsOn(set.owner) || hangsOn(set.member);
            if (goes) Note("set removed " + set.name);
            return goes;
        });
        std::erase_if(schema.indexes, [&](const auto& index) {
            if (hangsOn(index.member)) Note("index removed " + index.name);
            return hangsOn(index.member);
        });
        Note("record removed " + name);
        schema.records.erase(schema.records.begin() + static_cast<std::ptrdiff_t>(at));
    }

    void RenameRecord() {
        auto& schema = result_.present;
        RecordContents& record = schema.records[Below(schema.records.size())];
        if (!Touch(record.name)) return;
        const std::string former = std::exchange(record.name, Name());
        Touch(record.name);
        for (auto& set : schema.sets) {
            if (set.owner == former) set.owner = record.name;
            if (set.member == former) set.member = record.name;
        }
        for (auto& index : schema.indexes) {
            if (index.member == former) index.member = record.name;
        }
        NoteRename("record renamed " + record.name);
    }

    void EditField() {
        RecordContents& record = result_.present.records[Below(result_.present.records.size())];
        const std::size_t at = 3 + Below(record.fields.size() - 4);  // Neither key nor filler.
        FieldContents& field = record.fields[at];
        if (!Touch(record.name)) return;
        const std::string where = " in " + record.name;
        switch (Below(4)) {
            case 0:
                record.fields.insert(record.fields.begin() + static_cast<std::ptrdiff_t>(at),
                                     MakeField(record.id));
                Note("field added " + record.fields[at].name + where);
                Note("record changed " + record.name);
                break;
            case 1:
                Note("field removed " + field.name + where);
                Note("record changed " + record.name);
                record.fields.erase(record.fields.begin() + static_cast<std::ptrdiff_t>(at));
                break;
            case 2:
                field.name = Name() + "-" + record.id;
                NoteRename("field renamed " + field.name + where);
                break;
            case 3:
                field.usage += " OCCURS 2";
                Note("field changed " + field.name + where);
                break;
        }
    }

    void EditSet() {
        auto& schema = result_.present;
        SetContents& set = schema.sets[Below(schema.sets.size())];
        if (!Touch(set.name)) return;
        switch (Below(3)) {
            case 0:
                Note("set removed " + set.name);
                std::erase_if(schema.sets, [name = set.name](const auto& each) { return each.name == name; });
                break;
            case 1:
                set.name = Name();
                Touch(set.name);
                NoteRename("set renamed " + set.name);
                break;
            case 2:
                set.connection = "NPO\r\nMM FIRST";
                Note("set changed " + set.name);
                break;
        }
    }

    void EditIndex() {
        auto& schema = result_.present;
        if (schema.indexes.empty()) return;
        auto& index = schema.indexes[Below(schema.indexes.size())];
        if (!Touch(index.name)) return;
        if (Below(2) == 0) {
            index.keys[0].second = "DSC";
            Note("index changed " + index.name);
        } else {
            index.name = Name();
            Touch(index.name);
            NoteRename("index renamed " + index.name);
        }
    }

    void EditArea() {
        if (!Touch("areas")) return;
        const std::string former = result_.present.records.front().area, present = Name();
        for (RecordContents& record : result_.present.records) {
            if (record.area == former) record.area = present;
        }
        NoteRename("area renamed " + present);
    }

    void NoteEmptyAreas() {
        for (const char* area : {"AREA-1", "AREA-2"}) {
            const bool empty = std::ranges::none_of(
                result_.present.records, [area](const RecordContents& each) { return each.area == area; });
            if (empty) Note(std::string("area removed ") + area);
        }
    }

    std::mt19937_64 random_;
    EditedSchema result_;
    std::set<std::string> touched_;
    int lastNumber_ = 0, lastId_ = 100;
};

}  // namespace

EditedSchema MakeEditedSchema(std::uint64_t seed) {
    return Maker(seed).Make();
}

}  // namespace norvelis::compare
