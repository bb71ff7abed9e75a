#include "extract/report_index.h"

#include <algorithm>

#include "base/text.h"
#include "extract/format/keywords.h"

namespace norvelis {

namespace {

using namespace keywords;

// Calls `use` for every place of the keyword in the line, from column `from` on.
template <typename Use>
void ForEachOccurrence(std::string_view text, std::string_view keyword, std::size_t line, std::size_t from,
                       Use use) {
    for (std::size_t column = Column(text, keyword, from); column != 0;
         column = Column(text, keyword, column + 1)) {
        use(Occurrence{text.substr(column - 1 + keyword.size(), kNameWidth), line, column});
    }
}

}  // namespace

void PrefixIndex::Sort() {
    std::sort(occurrences_.begin(), occurrences_.end(), [](const Occurrence& a, const Occurrence& b) {
        if (const int order = a.tail.compare(b.tail); order != 0) return order < 0;
        return a.line != b.line ? a.line < b.line : a.column < b.column;
    });
}

std::pair<std::size_t, std::size_t> PrefixIndex::Range(std::string_view name) const {
    const auto first =
        std::lower_bound(occurrences_.begin(), occurrences_.end(), name,
                         [](const Occurrence& o, std::string_view n) { return o.tail.compare(n) < 0; });
    const auto last = std::partition_point(first, occurrences_.end(),
                                           [&](const Occurrence& o) { return o.tail.starts_with(name); });
    return {static_cast<std::size_t>(first - occurrences_.begin()),
            static_cast<std::size_t>(last - occurrences_.begin())};
}

std::vector<Occurrence> PrefixIndex::Matches(std::string_view name) const {
    const auto [first, last] = Range(name);
    std::vector<Occurrence> matches(occurrences_.begin() + static_cast<std::ptrdiff_t>(first),
                                    occurrences_.begin() + static_cast<std::ptrdiff_t>(last));
    std::sort(matches.begin(), matches.end(), [](const Occurrence& a, const Occurrence& b) {
        return a.line != b.line ? a.line < b.line : a.column < b.column;
    });
    matches.erase(std::unique(matches.begin(), matches.end(),
                              [](const auto& a, const auto& b) { return a.line == b.line; }),
                  matches.end());
    return matches;
}

std::optional<std::size_t> PrefixIndex::FirstLine(std::string_view name) const {
    const auto [first, last] = Range(name);
    std::optional<std::size_t> line;
    for (std::size_t i = first; i < last; ++i) {
        if (!line || occurrences_[i].line < *line) line = occurrences_[i].line;
    }
    return line;
}

std::optional<std::size_t> PrefixIndex::LastLineBefore(std::string_view name, std::size_t limit) const {
    const auto [first, last] = Range(name);
    std::optional<std::size_t> line;
    for (std::size_t i = first; i < last; ++i) {
        if (occurrences_[i].line < limit && (!line || occurrences_[i].line > *line))
            line = occurrences_[i].line;
    }
    return line;
}

ReportIndex::ReportIndex(const Report& report) : report_(report) {
    const auto& lines = report_.Lines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view text = report_.TextOf(lines[i]);
        if (lines[i].Has(KeywordKind::RecordName) && lines[i].Has(KeywordKind::RecordLength)) {
            ForEachOccurrence(text, kRecordName, i, 1, [&](const Occurrence& o) { sections_.Add(o); });
        }
        if (lines[i].Has(KeywordKind::SetAtStart))
            sets_.Add({text.substr(kSetAtStart.size(), kNameWidth), i, 1});
        if (lines[i].Has(KeywordKind::Member)) {
            ForEachOccurrence(text, kMember, i, 1, [&](const Occurrence& o) { members_.Add(o); });
        }
        if (lines[i].Has(KeywordKind::ControlItem)) {
            ForEachOccurrence(text, kControlItem, i, 1, [&](const Occurrence& o) { controlItems_.Add(o); });
        }
    }
    sections_.Sort();
    sets_.Sort();
    members_.Sort();
    controlItems_.Sort();
    ReadSets();
    ReadBlocks();
}

void ReportIndex::ReadSets() {
    const auto& lines = report_.Lines();
    bool inSets = false;
    std::string_view set;
    std::vector<Membership>* owned = nullptr;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view text = report_.TextOf(lines[i]);
        if (lines[i].Has(KeywordKind::SetAtStart)) {
            set = NameIn(text, kSetOrOwnerOrMember);
            // The pseudo-set comes before the real ones; behind them its name no longer means anything.
            if (set != kCalcName) inSets = true;
            owned = nullptr;
        }
        if (!inSets) continue;
        if (lines[i].Has(KeywordKind::Owner)) {
            const std::string_view owner = NameIn(text, kSetOrOwnerOrMember);
            owned = owner.empty() ? nullptr : &ownerships_[owner];
        }
        if (owned != nullptr && lines[i].Has(KeywordKind::Member) && Column(text, kMember, 2) != 0) {
            owned->push_back({NameIn(text, kSetOrOwnerOrMember), set});
        }
    }
}

void ReportIndex::ReadBlocks() {
    const auto& lines = report_.Lines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].Has(KeywordKind::RecordNameAtStart))
            blocks_.try_emplace(NameIn(report_.TextOf(lines[i]), kIndexName), i);
    }
}

ReportIndex::SetRegion ReportIndex::ReadRegion(std::size_t start) const {
    const auto& lines = report_.Lines();
    SetRegion region{start, {}};
    for (std::size_t i = start; i < lines.size(); ++i) {
        if (i > start && lines[i].Has(KeywordKind::SetAtStart)) break;
        if (!lines[i].Has(KeywordKind::Member)) continue;
        ForEachOccurrence(report_.TextOf(lines[i]), kMember, i, 2,
                          [&](const Occurrence& o) { region.members.Add(o); });
    }
    region.members.Sort();
    return region;
}

const HeadLines& ReportIndex::Heads() {
    if (!heads_) heads_.emplace(report_);
    return *heads_;
}

const std::vector<ReportIndex::Membership>& ReportIndex::MembersOf(std::string_view owner) const {
    static const std::vector<Membership> none;
    const auto found = ownerships_.find(owner);
    return found == ownerships_.end() ? none : found->second;
}

std::vector<Occurrence> ReportIndex::MemberLines(std::string_view set, std::string_view member) {
    const auto start = sets_.FirstLine(set);
    if (!start) return {};
    if (!region_ || region_->start != *start) region_ = ReadRegion(*start);
    return region_->members.Matches(member);
}

std::optional<std::size_t> ReportIndex::BlockStart(std::string_view record) const {
    const auto block = blocks_.find(record);
    return block == blocks_.end() ? std::nullopt : std::optional(block->second);
}

std::vector<ReportIndex::IndexLine> ReportIndex::IndexLines(std::string_view record) const {
    std::vector<IndexLine> indexes;
    const auto& lines = report_.Lines();
    for (std::size_t i = BlockStart(record).value_or(lines.size()); i < lines.size(); ++i) {
        const std::string_view text = report_.TextOf(lines[i]);
        if (lines[i].Has(KeywordKind::RecordNameAtStart) && NameIn(text, kIndexName) != record) break;
        if (lines[i].Has(KeywordKind::IndexMember)) indexes.push_back({NameIn(text, kIndexName), i});
    }
    return indexes;
}

std::optional<std::size_t> ReportIndex::LastMemberLine(std::string_view index, std::string_view record,
                                                       std::size_t limit) const {
    const auto start = sets_.FirstLine(index);
    if (!start) return std::nullopt;
    std::optional<std::size_t> last;
    for (const Occurrence& o : members_.Matches(record)) {
        if (o.line >= *start && o.line < limit) last = o.line;
    }
    return last;
}

}  // namespace norvelis
