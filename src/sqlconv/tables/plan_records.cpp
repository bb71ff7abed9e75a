#include <algorithm>
#include <utility>

#include "base/name_key.h"
#include "base/text.h"
#include "base/whole_number.h"
#include "base/words.h"
#include "sqlconv/tables/build.h"

namespace norvelis::tables {

namespace {

constexpr auto kRecordId = "record_id", kSequence = "seq";

std::string Positions(const Item& item) {
    if (item.start == 0) return {};
    return "; positions " + std::to_string(item.start) + " to " + std::to_string(item.last);
}

/// What the dictionary says of a field: name, picture, usage, positions.
std::string Described(const Item& item) {
    std::string text = item.name;
    const std::string_view word = cobol::PictureWord(item.field->picture);
    const bool isStart = word == Trim(item.field->start) && word == Trim(item.field->picture);
    if (!word.empty() && !isStart && item.state != Item::State::Group) text += "; " + std::string(word);
    std::string_view separator = "; ", usage = item.field->usage;
    for (auto part = NextWord(usage); !part.empty(); part = NextWord(usage))
        text.append(std::exchange(separator, " ")).append(part);
    return text + Positions(item);
}

std::string Described(const dictionary::RecordContents& record) {
    std::string text = "Record " + record.name + ": " + record.mode;
    if (!record.key.empty()) text += " " + record.key;
    if (!Trim(record.dn).empty()) text += " " + std::string(Trim(record.dn));
    if (!record.area.empty()) text += "; area " + record.area;
    if (!record.id.empty()) text += "; id " + record.id;
    if (!record.length.empty()) text += "; length " + record.lengthKind + " " + record.length;
    return text;
}

bool SameNumber(std::string_view a, std::string_view b) {
    const auto first = WholeNumber<long>(a), second = WholeNumber<long>(b);
    return first && second && *first == *second;
}

/// "-0415" when every named item of record 415 ends so; else empty.
std::string CommonSuffix(const std::vector<Item>& items, std::string_view recordId) {
    std::string suffix;
    for (const Item& item : items) {
        if (item.IsFiller()) continue;
        const auto hyphen = item.name.rfind('-');
        if (hyphen == std::string::npos || hyphen == 0) return {};
        const std::string own = item.name.substr(hyphen);
        if (!SameNumber(own.substr(1), Trim(recordId)) || (!suffix.empty() && own != suffix)) return {};
        suffix = own;
    }
    return suffix;
}

/// Makes the columns and the tables of repetitions of one record.
class Planner {
  public:
    Planner(Build& build, RecordPlan& plan) : build_(build), plan_(plan) {}

    /// Wishes for fields that cannot be fulfilled.
    void RefuseOptions() {
        for (const Item& item : plan_.items) {
            if (item.options == nullptr) continue;
            const auto refuse = [&](const std::string& why) {
                RefuseOption(item.options->line, item.name + " " + why);
            };
            const bool isGroup = item.state == Item::State::Group;
            if (isGroup && !item.options->type.empty()) refuse("is a group, which has no type of its own");
            if (!item.options->occursAsColumns) continue;
            if (isGroup) refuse("is a group: its occurrences stay a table");
            if (!isGroup && !item.usage.occurs) refuse("does not occur several times");
            if (!isGroup && item.usage.least != item.usage.most)
                refuse("occurs no fixed number of times: they stay a table");
        }
    }

    void AddOwnColumns() {
        AddItems(plan_.table, plan_.columns, 0, plan_.items.size());
        AddOverlapNotes();
        ChooseKey();
        plan_.table.keyName = PrimaryKeyName(build_, plan_.table.name);
    }
    void AddRepetitions() {
        // A table of repetitions may wait with further ones, which are then behind it.
        for (std::size_t i = 0; i < waiting_.size(); ++i) {
            const Repetition next = waiting_[i];
            AddRepetition(next.item, next.parent == Item::kNone ? plan_.table : plan_.children[next.parent]);
        }
    }

  private:
    struct Repetition {
        std::size_t item, parent;  ///< Parent: place among the children, or none for the record's table.
    };

    std::string NameOf(const Item& item) const {
        if (item.options != nullptr && !item.options->name.empty()) return item.options->name;
        std::string_view name = item.name;
        if (!plan_.suffix.empty() && name.ends_with(plan_.suffix)) name.remove_suffix(plan_.suffix.size());
        return build_.names.Of(name);
    }
    std::string GroupNameOf(const Item& item) const {
        return item.group == Item::kNone ? NameOf(item)
                                         : NameOf(plan_.items[item.group]) + "_" + NameOf(item);
    }

    void AddItems(Table& table, UsedNames& used, std::size_t from, std::size_t to,
                  std::size_t parent = Item::kNone) {
        for (std::size_t i = from; i < to; ++i) {
            const Item& item = plan_.items[i];
            const bool holds = item.state == Item::State::Group || item.state == Item::State::Column;
            if (holds && item.usage.occurs && !AsColumns(item)) {
                if (HoldsColumn(i)) waiting_.push_back({i, parent});
                i = item.end - 1;
            } else if (item.state == Item::State::Column) {
                AddColumns(table, used, i);
            }
        }
    }

    bool HoldsColumn(std::size_t from) const {
        for (std::size_t i = from; i < plan_.items[from].end; ++i) {
            if (plan_.items[i].state == Item::State::Column) return true;
        }
        return false;
    }

    bool AsColumns(const Item& item) const {
        const cobol::Usage& usage = item.usage;
        const bool asked = (item.options != nullptr && item.options->occursAsColumns) ||
                           usage.most <= build_.options.occursColumns;
        return asked && item.state == Item::State::Column && usage.most > 0 && usage.least == usage.most;
    }

    static void AddReason(Item& item, const std::string& words) {
        item.why += item.why.empty() ? words : "; " + words;
    }

    void AddColumns(Table& table, UsedNames& used, std::size_t place) {
        Item& item = plan_.items[place];
        Column column;
        column.type = item.type;
        column.item = place;
        column.comment = Described(item);
        column.notNegative = build_.options.checkUnsigned && !item.picture.isSigned &&
                             item.picture.kind == cobol::Picture::Kind::Number;
        const long times = item.usage.occurs && AsColumns(item) ? item.usage.most : 0;
        for (long n = times == 0 ? 0 : 1; n <= times; ++n) {
            const std::string number = n == 0 ? "" : "_" + std::to_string(n);
            column.name = used.Take(build_.names, {NameOf(item) + number, GroupNameOf(item) + number});
            if (n <= 1 && !SameName(column.name, build_.names.Fitting(NameOf(item) + number)))
                AddReason(item, "its name is taken in the table");
            table.columns.push_back(column);
        }
        if (!item.why.empty()) table.notes.push_back(Described(item) + ": " + item.why);
    }

    void AddOverlapNotes() {
        for (const Item& item : plan_.items) {
            if (item.state == Item::State::Overlaps || item.state == Item::State::Unmapped)
                plan_.table.notes.push_back(Described(item) + ": no column, " + item.why);
        }
    }

    /// The fields of a unique CALC key or of the person's choice; else a number that the server gives.
    void ChooseKey() {
        const auto& record = *plan_.record;
        if (plan_.wishes != nullptr && plan_.wishes->key) {
            if (plan_.wishes->key->empty()) return UseRecordId("the options ask for it");
            if (UseKey(*plan_.wishes->key, "the options")) return;
            RefuseOption(plan_.wishes->keyLine, "the key: " + refusal_);
        }
        if (record.mode != "CALC")
            return UseRecordId(record.mode.empty() ? "the location mode is not known"
                                                   : "records of mode " + record.mode + " have no key");
        if (Trim(record.dn) != "DN") return UseRecordId("the CALC key allows duplicates");
        const auto words = KeyWords(record);
        // The dictionary holds 30 characters of the key: what fills them may go on.
        constexpr std::size_t kMayBeCut = 29;
        if (Trim(record.key).size() >= kMayBeCut) {
            refusal_ = "it may be cut at 30 characters";
        } else if (UseKey(words, "the CALC key")) {
            return;
        }
        plan_.lookAt = true;
        UseRecordId("the CALC key " + record.key + " cannot be used: " + refusal_);
    }

    void RefuseOption(std::size_t line, const std::string& why) {
        build_.outcomes.push_back({Outcome::Subject::Option,
                                   plan_.record->name,
                                   "line " + std::to_string(line),
                                   {},
                                   why,
                                   true,
                                   {}});
    }

    bool UseKey(const std::vector<std::string>& words, const std::string& whose) {
        Table& table = plan_.table;
        std::vector<std::string> key;
        refusal_ = words.empty() ? "it is empty" : "";
        for (const auto& word : words) {
            const KeyColumns found = ColumnsOfKey(plan_, word);
            if (!found.why.empty()) refusal_ = found.why;
            for (const auto& column : found.columns) {
                if (std::ranges::find(key, column) == key.end()) key.push_back(column);
            }
        }
        if (refusal_.empty() && (key.size() > build_.limits.keyColumns ||
                                 KeyBytes(table, key, build_.limits) > build_.limits.primaryKey))
            refusal_ = "it is longer than a key of the server";
        if (!refusal_.empty()) return false;
        for (Column& column : table.columns) {
            if (std::ranges::find(key, column.name) != key.end()) column.required = true;
        }
        table.primaryKey = std::move(key);
        plan_.keyReason = whose;
        return true;
    }

    void UseRecordId(const std::string& reason) {
        Column id;
        id.name = plan_.columns.Take(build_.names, {kRecordId});
        id.type = {ColumnType::Kind::BigInteger};
        id.comment = "Number of the row, given by the server";
        id.required = id.identity = true;
        plan_.table.primaryKey = {id.name};
        plan_.table.columns.insert(plan_.table.columns.begin(), std::move(id));
        plan_.keyReason = reason;
    }

    void AddRepetition(std::size_t place, const Table& parent) {
        Item& item = plan_.items[place];
        Table child;
        child.record = plan_.record->name;
        child.name = build_.objects.Take(build_.names, {plan_.table.name + "_" + NameOf(item),
                                                        plan_.table.name + "_" + GroupNameOf(item)});
        child.comment = "Record " + plan_.record->name + ": occurrences of " + Described(item);
        UsedNames used(build_.limits.takenColumns);
        std::vector<Column> key = ParentKey(parent, used, item);
        const std::size_t own = plan_.children.size();
        if (item.state == Item::State::Group) {
            AddItems(child, used, place + 1, item.end, own);
        } else {
            AddColumns(child, used, place);
        }
        for (const Column& column : key) child.primaryKey.push_back(column.name);
        child.columns.insert(child.columns.begin(), key.begin(), key.end());
        child.keyName = PrimaryKeyName(build_, child.name);
        ForeignKey owner;
        owner.name = build_.objects.Take(build_.names, {"fk_" + child.name});
        owner.columns.assign(child.primaryKey.begin(), child.primaryKey.end() - 1);
        owner.owner = parent.name;
        owner.ownerColumns = parent.primaryKey;
        owner.cascade = true;
        child.foreignKeys.push_back(std::move(owner));
        if (item.usage.most == 0) {
            const std::string why =
                item.usage.never ? "it occurs no times" : "the number of occurrences is cut off";
            child.notes.push_back(item.name + ": " + why);
            AddReason(item, why);
        }
        plan_.children.push_back(std::move(child));
    }

    std::string RepeatedAround(const Item& item) const {
        std::size_t group = item.group;
        while (!plan_.items[group].usage.occurs) group = plan_.items[group].group;
        return NameOf(plan_.items[group]);
    }

    /// The columns of the parent's key, and the number of the occurrence. A number that the parent itself has
    /// is named after what it counts there.
    std::vector<Column> ParentKey(const Table& parent, UsedNames& used, const Item& item) {
        std::vector<Column> key;
        for (const auto& name : parent.primaryKey) {
            Column column = *parent.Find(name);
            const bool counts = &parent != &plan_.table && name == parent.primaryKey.back();
            column.name = used.Take(build_.names, {counts ? RepeatedAround(item) + "_" + kSequence : name});
            column.item = Column::kAdded;
            column.identity = column.notNegative = false;
            column.comment = "Of the row in " + parent.name;
            key.push_back(std::move(column));
        }
        Column sequence;
        sequence.name = used.Take(build_.names, {kSequence});
        sequence.type = {item.usage.most <= 9999 ? ColumnType::Kind::SmallInteger
                                                 : ColumnType::Kind::Integer};
        sequence.required = true;
        sequence.most = item.usage.most;
        sequence.comment = "Number of the occurrence, from 1";
        key.push_back(std::move(sequence));
        return key;
    }

    Build& build_;
    RecordPlan& plan_;
    std::vector<Repetition> waiting_;
    std::string refusal_;
};

RecordPlan PlanOf(Build& build, const dictionary::RecordContents& record) {
    RecordPlan plan;
    plan.columns = UsedNames(build.limits.takenColumns);
    plan.record = &record;
    plan.wishes = build.options.Record(record.name);
    plan.items = ReadItems(record, plan.wishes, build.options.types);
    if (build.options.dropSuffix) plan.suffix = CommonSuffix(plan.items, record.id);
    plan.table.record = record.name;
    plan.table.comment = Described(record);
    const bool named = plan.wishes != nullptr && !plan.wishes->name.empty();
    plan.table.name =
        build.objects.Take(build.names, {named ? plan.wishes->name : build.names.Of(record.name)});
    return plan;
}

void AddLeftOut(Build& build, const dictionary::RecordContents& record, const RecordOptions& wishes) {
    constexpr auto kWhy = "the options leave it out";
    build.outcomes.push_back({Outcome::Subject::Record, record.name, record.name, {}, kWhy, false, {}});
    for (const Item& item : ReadItems(record, &wishes, build.options.types)) {
        if (item.IsFiller()) continue;
        Outcome field{Outcome::Subject::Field, record.name, item.name, {}, kWhy, false, {}};
        field.isValue = item.isValue;
        build.outcomes.push_back(std::move(field));
    }
}

}  // namespace

void PlanRecords(Build& build) {
    for (const auto& record : build.contents.records) {
        const RecordOptions* wishes = build.options.Record(record.name);
        if (wishes != nullptr && wishes->leaveOut) {
            AddLeftOut(build, record, *wishes);
            continue;
        }
        RecordPlan plan = PlanOf(build, record);
        if (!build.planOf.try_emplace(NameKey(record.name), build.plans.size()).second) {
            plan.lookAt = true;
            plan.table.notes.push_back("the dictionary has the record " + record.name + " twice");
        }
        build.plans.push_back(std::move(plan));
    }
    // Records have their names before what is named after them.
    for (RecordPlan& plan : build.plans) {
        Planner planner(build, plan);
        planner.RefuseOptions();
        planner.AddOwnColumns();
        planner.AddRepetitions();
    }
}

}  // namespace norvelis::tables
