#include "browse/find_index.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "base/name_key.h"
#include "dictionary/names.h"
#include "dictionary/schemas.h"

namespace norvelis {

namespace {

constexpr char kEndOfName = '\n';

/// How good a hit is, the best first.
enum Rank : std::size_t { kWhole, kBeginsName, kBeginsWord, kInside, kRanks };

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
}

bool BeginsWord(std::string_view name, std::size_t at) {
    return at == 0 || !IsLetter(name[at - 1]);
}

/// Whether the text, which is not empty, is there. Both ends are looked at first: mostly one of them differs.
bool IsAt(const char* place, std::string_view text) {
    const std::size_t last = text.size() - 1;
    return place[0] == text[0] && place[last] == text[last] &&
           (last <= 1 || std::memcmp(place + 1, text.data() + 1, last - 1) == 0);
}

/// Of the text in a name that holds it, first at this place. Whether one of its words begins with the text is
/// looked for when that matters.
Rank RankOf(std::string_view name, std::size_t at, std::string_view text, bool wordsMatter) {
    if (at == 0) return name.size() == text.size() ? kWhole : kBeginsName;
    for (; wordsMatter && at != std::string_view::npos; at = name.find(text, at + 1)) {
        if (BeginsWord(name, at)) return kBeginsWord;
    }
    return kInside;
}

/// Of the text as the ending of a name.
Rank RankOfEnding(std::string_view name, std::string_view text) {
    if (name.size() == text.size()) return kWhole;
    return BeginsWord(name, name.size() - text.size()) ? kBeginsWord : kInside;
}

}  // namespace

void FindIndex::Names::Add(std::string_view name, std::uint32_t place) {
    begins.push_back(static_cast<std::uint32_t>(text.size()));
    places.push_back(place);
    text += name;
    text += kEndOfName;
}

void FindIndex::Names::Complete() {
    begins.push_back(static_cast<std::uint32_t>(text.size()));
    folded = UpperCase(text);
    for (const char c : folded) ++counts[static_cast<unsigned char>(c)];
}

std::string_view FindIndex::Names::In(const std::string& letters, Entry entry) const {
    return {letters.data() + begins[entry], begins[entry + 1] - begins[entry] - 1};
}

// The scan looks for the rarest byte of what is wanted, which the processor does for many bytes at once, and
// compares where there is one. Behind a hit it goes on with the next name.
template <typename Visit>
void FindIndex::Names::ForEachWith(std::string_view wanted, const Visit& visit) const {
    if (wanted.empty()) {
        for (Entry entry = 0; entry < Count(); ++entry) visit(entry, begins[entry]);
        return;
    }
    if (wanted.size() > folded.size()) return;
    const auto rarest = std::ranges::min_element(
        wanted, {}, [this](char c) { return counts[static_cast<unsigned char>(c)]; });
    const auto ahead = static_cast<std::size_t>(rarest - wanted.begin());
    const char* const first = folded.data();
    const char* const end = first + folded.size() - wanted.size() + ahead + 1;
    Entry entry = 0;
    for (const char* from = first + ahead; from < end;) {
        const void* found = std::memchr(from, *rarest, static_cast<std::size_t>(end - from));
        if (!found) return;
        const char* const hit = static_cast<const char*>(found) - ahead;
        if (!IsAt(hit, wanted)) {
            from = hit + ahead + 1;
            continue;
        }
        const auto at = static_cast<std::uint32_t>(hit - first);
        while (begins[entry + 1] <= at) ++entry;
        visit(entry, at);
        from = first + begins[++entry] + ahead;
    }
}

/// Reads the dictionary into an index.
class FindIndexReader {
  public:
    FindIndexReader(FindIndex& index, Connection& store) : index_(index), store_(store) {}

    void Read() {
        for (auto row = dictionary::SchemasOfRecords(store_); !row.Eof(); row.MoveNext()) {
            const std::string schema = row.Text("schemaname");
            Add(FindKind::Schema, schema, AddPlace({schema, {}, {}}));
        }
        ReadRecords();
        ReadFields();
        ReadSetsAndIndexes();
        for (auto& names : index_.names_) names.Complete();
    }

  private:
    void Add(FindKind kind, std::string_view name, std::uint32_t place) {
        index_.names_[static_cast<std::size_t>(kind)].Add(name, place);
    }
    std::uint32_t AddPlace(FindIndex::Place place) {
        index_.places_.push_back(std::move(place));
        return static_cast<std::uint32_t>(index_.places_.size() - 1);
    }
    std::uint32_t PlaceOfRecord(std::string_view schema, std::string_view record) {
        const auto [known, isNew] = records_.try_emplace(NameKey(schema) + kEndOfName + NameKey(record));
        if (isNew) known->second = AddPlace({std::string(schema), std::string(record), {}});
        return known->second;
    }

    void ReadRecords() {
        for (RowReader row = dictionary::NamesOfRecords(store_); row.Next();) {
            const std::uint32_t place = PlaceOfRecord(row.Text(0), row.Text(1));
            Add(FindKind::Record, row.Text(1), place);
            if (!row.Text(2).empty()) Add(FindKind::Area, row.Text(2), place);
            if (!row.Text(3).empty()) Add(FindKind::Id, row.Text(3), place);
        }
    }
    // The fields of a record follow each other.
    void ReadFields() {
        std::string schema, record;
        std::uint32_t place = 0;
        bool isFirst = true;
        for (RowReader row = dictionary::NamesOfFields(store_); row.Next();) {
            if (isFirst || row.Text(1) != record || row.Text(0) != schema) {
                schema = row.Text(0);
                record = row.Text(1);
                place = PlaceOfRecord(schema, record);
                isFirst = false;
            }
            Add(FindKind::Field, row.Text(2), place);
        }
    }
    void ReadSetsAndIndexes() {
        for (RowReader row = dictionary::NamesOfSets(store_); row.Next();) {
            Add(FindKind::Set, row.Text(1),
                AddPlace({std::string(row.Text(0)), std::string(row.Text(2)), std::string(row.Text(3))}));
        }
        for (RowReader row = dictionary::NamesOfIndexes(store_); row.Next();)
            Add(FindKind::Index, row.Text(1), PlaceOfRecord(row.Text(0), row.Text(2)));
    }

    FindIndex& index_;
    Connection& store_;
    std::unordered_map<std::string, std::uint32_t> records_;
};

FindIndex::FindIndex(Connection& store) {
    FindIndexReader(*this, store).Read();
}

/// Hits by how good they are and by kind, of each as many as are to be listed.
class FindIndex::Hits {
  public:
    Hits(const FindIndex& index, std::size_t most) : index_(index), most_(most) {}

    void Add(Rank rank, FindKind kind, Entry entry) {
        auto& equallyGood = entries_[rank][static_cast<std::size_t>(kind)];
        if (!equallyGood.empty() && kind == FindKind::Field && IsSameField(equallyGood.back(), entry)) return;
        ++counts_[rank];
        if (equallyGood.size() < most_) equallyGood.push_back(entry);
    }

    /// Whether enough are better than this, so that none of these will be listed.
    bool AreEnough(Rank rank) const {
        std::size_t better = 0;
        for (std::size_t i = 0; i < rank; ++i) better += counts_[i];
        return better >= most_;
    }

    /// `before(kind, a, b)` orders equally good entries of one kind.
    template <typename Before>
    Answer Best(const Before& before) {
        Answer answer;
        for (const std::size_t count : counts_) answer.count += count;
        for (auto& kinds : entries_) {
            for (std::size_t i = 0; i < kFindKinds; ++i) {
                const auto kind = static_cast<FindKind>(i);
                std::ranges::stable_sort(kinds[i], [&](Entry a, Entry b) { return before(kind, a, b); });
                for (const Entry entry : kinds[i]) {
                    if (answer.best.size() == most_) return answer;
                    answer.best.push_back(index_.Found(kind, entry));
                }
            }
        }
        return answer;
    }

  private:
    bool IsSameField(Entry a, Entry b) const {
        const Names& fields = index_.Of(FindKind::Field);
        return fields.places[a] == fields.places[b] &&
               fields.In(fields.folded, a) == fields.In(fields.folded, b);
    }

    const FindIndex& index_;
    const std::size_t most_;
    std::array<std::size_t, kRanks> counts_{};
    std::array<std::array<std::vector<Entry>, kFindKinds>, kRanks> entries_;
};

FoundName FindIndex::Found(FindKind kind, Entry entry) const {
    const Names& names = Of(kind);
    const Place& place = places_[names.places[entry]];
    return {kind, std::string(names.In(names.text, entry)), place.schema, place.record, place.member};
}

FindIndex::Answer FindIndex::Find(const FindText& wanted, std::size_t most) const {
    const std::string_view text = wanted.text;
    Hits hits(*this, most);
    if (text.find(kEndOfName) != std::string_view::npos) return {};
    const bool isWord = !text.empty() && IsLetter(text.front());
    for (std::size_t i = 0; i < kFindKinds; ++i) {
        const auto kind = static_cast<FindKind>(i);
        const Names& names = names_[i];
        if (!Has(wanted.kinds, kind)) continue;
        names.ForEachWith(wanted.isPattern ? LongestLiteral(text) : text, [&](Entry entry, std::size_t at) {
            const std::string_view name = names.In(names.folded, entry);
            if (!wanted.isPattern) {
                const bool wordsMatter = isWord && !hits.AreEnough(kBeginsWord);
                hits.Add(RankOf(name, at - names.begins[entry], text, wordsMatter), kind, entry);
            } else if (MatchesPattern(name, text)) {
                hits.Add(kWhole, kind, entry);
            }
        });
    }
    return hits.Best([this](FindKind kind, Entry a, Entry b) {
        const Names& names = Of(kind);
        return names.In(names.folded, a) < names.In(names.folded, b);
    });
}

FindIndex::Answer FindIndex::WhereUsed(const FindText& wanted, std::size_t most) const {
    const std::string_view text = wanted.text;
    const Names& fields = Of(FindKind::Field);
    Hits hits(*this, most);
    if (text.empty() || text.find(kEndOfName) != std::string_view::npos) return {};
    if (!Has(wanted.kinds, FindKind::Field)) return {};
    if (wanted.isPattern) {
        fields.ForEachWith(LongestLiteral(text), [&](Entry entry, std::size_t) {
            if (MatchesPattern(fields.In(fields.folded, entry), text))
                hits.Add(kWhole, FindKind::Field, entry);
        });
    } else {
        fields.ForEachWith(wanted.text + kEndOfName, [&](Entry entry, std::size_t) {
            hits.Add(RankOfEnding(fields.In(fields.folded, entry), text), FindKind::Field, entry);
        });
    }
    return hits.Best([&](FindKind, Entry a, Entry b) {
        return places_[fields.places[a]].record < places_[fields.places[b]].record;
    });
}

}  // namespace norvelis
