#include "extract/record_pass.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text.h"
#include "extract/keywords.h"

namespace norvelis {

namespace {

using namespace keywords;
using dictionary::IndexRow;
using dictionary::RecordRow;

constexpr int kMostFields = 600;
constexpr int kMostSortKeys = 500;

std::string_view TextBehind(std::string_view line, std::string_view keyword, long count) {
    return Text(line, static_cast<long>(Column(line, keyword) + keyword.size()), count);
}

std::string_view TextIn(std::string_view line, Span span) {
    return Text(line, span.column, span.count);
}

std::string_view KeyWords(std::string_view line) {
    const std::string_view words = Text(line, static_cast<long>(Column(line, kLocationMode)) + 32, 30);
    const auto displacement = Column(words, "DISPL");
    return displacement == 0 ? words : Trim(words.substr(0, displacement - 1));
}

// The record's section: its fields go to the store line by line, the rest of its row when the section has
// ended. Reading begins at the name line and goes on past it as long as no list of fields was met, over other
// records' lines as well.
void UpdateRecordLayout(ExtractionState& state, std::string_view record, std::string_view dn) {
    if (state.reportsRecords) state.app.host.Status("Extracting Record: " + ToUtf8(record));
    const auto start = state.index->SectionStart(record);
    if (!start) return;

    const std::string nameWords = std::string(kRecordName) + std::string(record);
    const auto& lines = state.report.Lines();
    RecordRow found;
    bool inFields = false, done = false;
    int fieldCount = 0;
    for (std::size_t i = *start; i < lines.size() && !done; ++i) {
        const ReportLine& line = lines[i];
        const std::string_view text = state.report.TextOf(line);
        if (line.Has(KeywordKind::RecordName) && line.Has(KeywordKind::RecordLength) &&
            Column(text, nameWords) != 0) {
            found.length = TextBehind(text, kRecordLength, 10);
        }
        if (found.length.empty()) continue;
        if (line.Has(KeywordKind::DataLength)) found.length = TextBehind(text, kDataLength, 10);
        if (line.Has(KeywordKind::RecordId)) found.tableId = TextBehind(text, kRecordId, 15);
        if (line.Has(KeywordKind::LengthKind)) found.lengthKind = TextBehind(text, kLengthKind, 5);
        if (line.Has(KeywordKind::LocationMode)) {
            found.modeWord = TextBehind(text, kLocationMode, 4);
            found.key = KeyWords(text);
        }
        if (line.Has(KeywordKind::Within)) found.area = TextBehind(text, kWithin, 15);
        if (line.Has(KeywordKind::DataItem)) inFields = true;
        if (inFields && line.Has(KeywordKind::Field)) {
            if (++fieldCount > kMostFields) throw RuntimeFailure(FailureNumber::SubscriptOutOfRange);
            state.writer->AddField(
                record, {TextIn(text, kFieldLevel), TextIn(text, kFieldName), TextIn(text, kFieldUsage),
                         TextIn(text, kFieldPicture), TextIn(text, kFieldStart), TextIn(text, kFieldEnd)});
        }
        done = inFields && (line.Has(KeywordKind::RecordName) || line.Has(KeywordKind::CalcSet));
    }
    if (!done) return;

    RecordRow& row = state.writer->RecordNamed(record);
    row.completed = true;
    row.name = record;
    row.dn = dn;
    row.area = found.area;
    row.tableId = found.tableId;
    row.key = found.key;
    row.lengthKind = found.lengthKind;
    row.length = found.length;
    row.modeWord = found.modeWord;
}

// Each matching member line extends the list as long as one set alone joins the two records.
void SaveConnection(ExtractionState& state, std::string_view owner, std::string_view member,
                    std::string_view set, std::string_view connection) {
    const std::size_t sets = state.writer->AddConnection(owner, member, set, connection);
    if (member.empty() || sets != 1) return;
    if (!state.gNextStepList.empty()) state.gNextStepList += ',';
    state.gNextStepList += member;
}

void CollectSetMember(ExtractionState& state, std::string_view owner, std::string_view member,
                      std::string_view set) {
    if (owner == member) return;
    for (const Occurrence& place : state.index->MemberLines(set, member)) {
        const std::string_view text = state.report.TextOf(state.report.Lines()[place.line]);
        const auto q = static_cast<long>(place.column);
        std::string_view first = Text(text, q + 32, 17);
        if (Trim(first) == "INDX") first = {};
        std::string connection(Trim(first).empty() ? std::string_view() : first);
        connection += kLineBreak;
        connection += Text(text, q + 50, 30);
        SaveConnection(state, owner, member, set, connection);
    }
}

void CollectConnections(ExtractionState& state, std::string_view record) {
    for (const auto& membership : state.index->MembersOf(record)) {
        CollectSetMember(state, record, membership.member, membership.set);
    }
}

std::string_view SortOption(const ExtractionState& state, std::string_view index, std::string_view record,
                            std::size_t limit) {
    const auto line = state.index->LastMemberLine(index, record, limit);
    return line ? Trim(TextIn(state.report.TextOf(state.report.Lines()[*line]), kSortOption))
                : std::string_view();
}

// One key of an index: its line among the row's words, and its slot unless an earlier reading filled it.
void SaveIndexDetails(IndexRow& row, std::size_t slot, std::string_view key, std::string_view order) {
    if (slot > IndexRow::kSlots || Trim(key).empty()) return;
    if (!row.information) row.information.emplace();
    *row.information += std::string(key) + "  " + std::string(order) + std::string(kLineBreak);
    const bool filled =
        std::any_of(row.keys.begin(), row.keys.end(), [&](auto& k) { return k.slot == slot; });
    if (!filled) row.keys.push_back({slot, Trim(key), Trim(order)});
}

void CollectSortKeys(ExtractionState& state, std::string_view index, std::string_view record) {
    auto& names = state.gIndexNames;
    if (std::find(names.begin(), names.end(), index) != names.end()) return;
    // A ninth index finds no space in the list and is read all the same.
    if (const auto free = std::find(names.begin(), names.end(), std::string_view()); free != names.end())
        *free = index;

    const auto& lines = state.report.Lines();
    IndexRow* row = nullptr;
    std::size_t keyCount = 0;
    std::size_t lastKeyLine = 0;
    std::optional<std::size_t> used;  // where the control line begins that took the line above it
    for (const Occurrence& place : state.index->ControlItems(index)) {
        const ReportLine& line = lines[place.line];
        const auto above = state.report.TextAbove(place.line);
        const bool fresh = above && (!used || *above > *used);
        used = line.Begin();
        if (!fresh) continue;
        std::size_t position = *above;
        const std::string_view field = *state.report.NextLine(position);
        if (field.starts_with(kDataItem)) continue;

        if (++keyCount > kMostSortKeys) {
            row->sortOption = SortOption(state, index, record, lastKeyLine);
            throw RuntimeFailure(FailureNumber::SubscriptOutOfRange);
        }
        lastKeyLine = place.line;
        const std::string_view text = state.report.TextOf(line);
        std::string_view order;
        for (const std::string_view word : {" ASC", " DSC"}) {
            if (const auto p = Column(text, word); p != 0) order = Text(text, static_cast<long>(p), 5);
        }
        if (row == nullptr) row = &state.writer->IndexOf(index, record);
        SaveIndexDetails(*row, keyCount, TextIn(field, kKeyName), order);
    }
    if (row != nullptr) row->sortOption = SortOption(state, index, record, lines.size());
}

void CollectIndexes(ExtractionState& state, std::string_view record) {
    state.gIndexNames = {};
    for (const std::string_view index : state.index->IndexNames(record))
        CollectSortKeys(state, index, record);
}

}  // namespace

void IdmsUpdateRecords(ExtractionState& state) {
    auto& records = state.writer->Records();
    Progress& progress = state.app.progress;
    if (state.reportsRecords)
        progress.BResetprogressbar(Bar::TreeviewValue, static_cast<int>(records.size()));
    state.index = std::make_unique<ReportIndex>(state.report);
    for (RecordRow& row : records) {
        if (state.reportsRecords) progress.BStepprogressbar(Bar::TreeviewValue, 1, ToUtf8(row.name));
        state.app.host.Yield();
        state.gNextStepList.clear();
        UpdateRecordLayout(state, row.name, row.dn);
        CollectConnections(state, row.name);
        CollectIndexes(state, row.name);
        row.walked = true;
        row.nextStep = state.gNextStepList;
        row.indexes = state.gIndexNames;
    }
}

}  // namespace norvelis
