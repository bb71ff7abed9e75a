#include "publish/cross_reference.h"

#include <algorithm>
#include <unordered_set>

#include "base/name_key.h"
#include "base/text.h"
#include "publish/anchors.h"

namespace norvelis::publish {

using dictionary::FieldContents;
using dictionary::IndexContents;
using dictionary::RecordContents;
using dictionary::SchemaContents;
using dictionary::SetContents;

namespace {

std::vector<std::string> WordsOf(std::string_view text) {
    constexpr std::string_view kBetween = " ,\r\n";
    std::vector<std::string> words;
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(kBetween), text.size()));
        if (text.empty()) return words;
        const std::size_t end = std::min(text.find_first_of(kBetween), text.size());
        words.push_back(UpperCase(text.substr(0, end)));
        text.remove_prefix(end);
    }
}

std::string_view OrderInWords(std::string_view order) {
    return SameName(order, "DSC") || SameName(order, "DESC") ? "descending key of" : "ascending key of";
}

/// The sort key of a set's row with its order before it; both empty when it has none. The name may be cut.
std::pair<std::string, std::string> SortKeyOf(const SetContents& set) {
    const auto words = WordsOf(OrderOf(set));
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        if (words[i] == "ASC" || words[i] == "DSC" || words[i] == "DESC") return {words[i], words[i + 1]};
    return {};
}

/// The one field of the record whose name is the word or begins with it; empty when there are several.
std::string FieldNamed(const RecordContents& record, const std::string& word) {
    std::string found;
    for (const FieldContents& field : record.fields) {
        const std::string key = NameKey(field.name);
        if (key == word) return key;
        if (!key.starts_with(word)) continue;
        if (!found.empty() && found != key) return {};
        found = key;
    }
    return found;
}

template <typename Value>
std::vector<Value> Found(const std::unordered_map<std::string, std::vector<Value>>& table,
                         std::string_view name) {
    const auto entry = table.find(NameKey(name));
    return entry == table.end() ? std::vector<Value>() : entry->second;
}

}  // namespace

std::string_view OrderOf(const SetContents& set) {
    const std::string_view text = set.connection;
    const std::size_t lineEnd = text.find('\n');
    return lineEnd == std::string_view::npos ? Trim(text) : Trim(text.substr(lineEnd + 1));
}

std::string_view PointersOf(const SetContents& set) {
    const std::string_view text = set.connection;
    const std::size_t lineEnd = text.find_first_of("\r\n");
    return lineEnd == std::string_view::npos ? std::string_view() : Trim(text.substr(0, lineEnd));
}

CrossReference::CrossReference(const SchemaContents& schema) : schema_(schema) {
    IndexRecords();
    IndexSets();
    IndexFields();
}

void CrossReference::IndexRecords() {
    for (const RecordContents& record : schema_.records) records_.push_back(&record);
    std::ranges::stable_sort(records_, {},
                             [](const RecordContents* record) { return NameKey(record->name); });
    std::unordered_map<std::string, int> times;
    for (const RecordContents* record : records_) {
        const std::string key = NameKey(record->name);
        std::string anchor = RecordAnchor(key);
        if (const int before = times[key]++; before > 0) anchor += "__" + std::to_string(before + 1);
        anchors_.emplace(record, std::move(anchor));
        byName_.try_emplace(key, record);
        areas_[std::string(Trim(record->area))].push_back(record);
    }
}

void CrossReference::IndexSets() {
    for (const SetContents& set : schema_.sets) {
        const std::string owner = NameKey(set.owner);
        const auto [entry, isNew] = setNames_.try_emplace(NameKey(set.name) + '\n' + owner, sets_.size());
        if (isNew) {
            std::string anchor = SetAnchor(set.name);
            // The name leads to the first set; one of the same name with another owner stands for itself.
            if (!setNames_.try_emplace(NameKey(set.name), sets_.size()).second)
                anchor += "__" + RecordAnchor(set.owner);
            owned_[owner].push_back(sets_.size());
            sets_.push_back({std::move(anchor), {}});
        }
        sets_[entry->second].rows.push_back(&set);
        memberships_[NameKey(set.member)].push_back(&set);
    }
    for (const IndexContents& index : schema_.indexes) {
        indexNames_.try_emplace(NameKey(index.name), indexNames_.size());
        indexes_[NameKey(index.member)].push_back(&index);
    }
}

void CrossReference::IndexFields() {
    std::unordered_map<std::string, std::vector<const RecordContents*>> owners;
    for (const RecordContents* record : records_) {
        std::unordered_set<std::string> seen;
        for (const FieldContents& field : record->fields) {
            const std::string key = NameKey(Trim(field.name));
            if (key.empty() || key == "FILLER" || !seen.insert(key).second) continue;
            owners[key].push_back(record);
        }
    }
    for (auto& [name, records] : owners)
        if (records.size() > 1) sharedFields_.emplace(name, std::move(records));
}

std::string CrossReference::AnchorOfRecord(std::string_view name) const {
    const auto entry = byName_.find(NameKey(name));
    return entry == byName_.end() ? std::string() : AnchorOfRecord(*entry->second);
}

std::string CrossReference::AnchorOfRecord(const RecordContents& record) const {
    return anchors_.at(&record);
}

std::string CrossReference::AnchorOfSet(std::string_view name) const {
    return setNames_.contains(NameKey(name)) ? SetAnchor(name) : std::string();
}

std::string CrossReference::AnchorOfIndex(std::string_view name) const {
    return indexNames_.contains(NameKey(name)) ? IndexAnchor(name) : std::string();
}

std::vector<const SetPart*> CrossReference::OwnedBy(std::string_view record) const {
    std::vector<const SetPart*> parts;
    for (const std::size_t part : Found(owned_, record)) parts.push_back(&sets_[part]);
    return parts;
}

std::vector<const SetContents*> CrossReference::MembershipsOf(std::string_view record) const {
    return Found(memberships_, record);
}

std::vector<const IndexContents*> CrossReference::IndexesOf(std::string_view record) const {
    return Found(indexes_, record);
}

std::vector<FieldUse> CrossReference::UsesOf(const RecordContents& record, std::string_view field) const {
    const std::string key = NameKey(Trim(field));
    std::vector<FieldUse> uses;
    if (key.empty() || key == "FILLER") return uses;
    if (SameName(record.mode, "CALC") && std::ranges::count(WordsOf(record.key), key) > 0)
        uses.push_back({"CALC key", "", ""});
    for (const IndexContents* index : IndexesOf(record.name)) {
        for (const auto& [name, order] : index->keys)
            if (SameName(Trim(name), key))
                uses.push_back({std::string(OrderInWords(order)), AnchorOfIndex(index->name), index->name});
    }
    for (const SetContents* set : MembershipsOf(record.name)) {
        const auto& [order, word] = SortKeyOf(*set);
        if (!word.empty() && FieldNamed(record, word) == key)
            uses.push_back({std::string(OrderInWords(order)), AnchorOfSet(set->name), set->name});
    }
    return uses;
}

}  // namespace norvelis::publish
