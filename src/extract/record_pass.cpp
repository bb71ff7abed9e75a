#include "extract/record_pass.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "extract/field_positions.h"
#include "extract/format/keywords.h"

namespace norvelis {

namespace {

using namespace keywords;
using dictionary::IndexRow;
using dictionary::RecordRow;

std::string_view KeyWords(std::string_view line) {
    const std::string_view words = TextBehind(line, kLocationMode, kLocationKey);
    const auto displacement = Column(words, kDisplacement);
    return displacement == 0 ? words : Trim(words.substr(0, displacement - 1));
}

// `line` is a number of Report::Lines.
void FindAt(ExtractionState& state, FindingKind kind, std::size_t line, std::string_view subject,
            std::string_view reason) {
    state.Find(kind, state.report.Lines()[line].Begin(), subject, reason);
}

/// A list of fields that is not met in so many lines is looked for in another manner.
constexpr std::size_t kNearLines = 64;

/// The record's section: its fields go to the store line by line, the rest of its row when the section has
/// ended. Reading begins at the name line and goes on past it as long as no list of fields was met, over
/// other records' lines as well.
class SectionReader {
  public:
    SectionReader(ExtractionState& state, std::string_view record)
        : state_(state), record_(record), nameWords_(std::string(kRecordName) + std::string(record)) {}

    /// False when the report ends first.
    bool Read(std::size_t start) {
        const auto& lines = state_.report.Lines();
        start_ = start;
        bool done = false;
        for (std::size_t i = ReadHead(start); i < lines.size() && !done; ++i)
            done = ReadLine(lines[i], state_.report.TextOf(lines[i]));
        CheckSection(done);
        return done;
    }

    void Complete(RecordRow& row) const {
        row.completed = true;
        row.name = record_;
        row.area = found_.area;
        row.tableId = found_.tableId;
        row.key = found_.key;
        row.lengthKind = found_.lengthKind;
        row.length = found_.length;
        row.modeWord = found_.modeWord;
    }

  private:
    // Reads the head and gives the line from which the rest must be read. The list of fields is nearly always
    // close; where it is missing, thousands of lines may lie before the next one.
    std::size_t ReadHead(std::size_t start) {
        const auto& lines = state_.report.Lines();
        const std::size_t near = std::min(start + kNearLines, lines.size());
        for (std::size_t i = start; i < near; ++i) {
            if (lines[i].Has(KeywordKind::DataItem)) return start;
        }
        const HeadLines& heads = state_.index->Heads();
        if (heads.HasEmptyLength()) return start;
        const std::size_t fields = heads.DataItemFrom(start).value_or(lines.size());
        std::vector<std::size_t> deciding = heads.LastOfEachKind(start, fields);
        if (const auto last = state_.index->LastSectionStart(record_, fields)) deciding.push_back(*last);
        deciding.push_back(start);
        std::sort(deciding.begin(), deciding.end());
        deciding.erase(std::unique(deciding.begin(), deciding.end()), deciding.end());
        for (const std::size_t i : deciding) ReadLine(lines[i], state_.report.TextOf(lines[i]));
        return fields;
    }

    // True when the section ends with this line.
    bool ReadLine(const ReportLine& line, std::string_view text) {
        if (line.Has(KeywordKind::RecordName)) {
            ++nameLines_;
            if (line.Has(KeywordKind::RecordLength) && Column(text, nameWords_) != 0)
                found_.length = TextBehind(text, kRecordLength, kBehindLength);
        }
        if (found_.length.empty()) return false;
        if (line.Has(KeywordKind::DataLength))
            found_.length = dataLength_ = TextBehind(text, kDataLength, kBehindLength);
        if (line.Has(KeywordKind::RecordId)) found_.tableId = TextBehind(text, kRecordId, kBehindRecordId);
        if (line.Has(KeywordKind::LengthKind))
            found_.lengthKind = TextBehind(text, kLengthKind, kBehindLengthKind);
        if (line.Has(KeywordKind::LocationMode)) {
            found_.modeWord = TextBehind(text, kLocationMode, kBehindLocationMode);
            found_.key = KeyWords(text);
        }
        if (line.Has(KeywordKind::Within)) found_.area = TextBehind(text, kWithin, kBehindWithin);
        if (line.Has(KeywordKind::DataItem) && !inFields_) {
            inFields_ = true;
            ownFields_ = nameLines_ == 1;
        }
        if (!inFields_) return false;
        if (line.Has(KeywordKind::Field)) {
            AddField(line, text);
            CheckFieldName(line, text);
        }
        if (line.Has(KeywordKind::OtherLevel)) ++otherLevels_;
        if (line.Has(KeywordKind::Field) || line.Has(KeywordKind::OtherLevel)) CheckPosition(line, text);
        return line.Has(KeywordKind::RecordName) || line.Has(KeywordKind::CalcSet);
    }

    void AddField(const ReportLine& line, std::string_view text) {
        if (++fieldCount_ > kMostFields) {
            throw RuntimeFailure(
                FailureNumber::SubscriptOutOfRange,
                fmt::format("record {}, line {}, field {} of at most {}", ToUtf8(record_),
                            state_.report.NumberOfLine(line.Begin()), fieldCount_, kMostFields));
        }
        state_.writer->AddField(
            record_, {TextIn(text, kFieldLevel), TextIn(text, kFieldName), TextIn(text, kFieldUsage),
                      TextIn(text, kFieldPicture), TextIn(text, kFieldStart), TextIn(text, kFieldEnd)});
    }

    void CheckFieldName(const ReportLine& line, std::string_view text) {
        const Span behind{kFieldName.column + kFieldName.count, 1};
        if (NameIn(text, behind).empty()) return;
        Find(FindingKind::NameTooLong, line,
             fmt::format("the name of field {} is longer than its columns", TextIn(text, kFieldName)));
    }

    void CheckPosition(const ReportLine& line, std::string_view text) {
        const long before = positions_.LastEnd();
        const auto fault = positions_.Take(text);
        if (fault == FieldPositions::Fault::None || !ownFields_) return;
        const std::string_view name = Trim(TextIn(text, kFieldName));
        if (fault == FieldPositions::Fault::Repeated) {
            Find(FindingKind::FieldRepeated, line, fmt::format("field {} is there twice", name));
        } else {
            Find(FindingKind::FieldGap, line,
                 fmt::format("fields before {} are missing: bytes {} to {}", name, before + 1,
                             Trim(TextIn(text, kFieldStart))));
        }
    }

    void CheckSection(bool done) {
        const ReportLine& line = state_.report.Lines()[start_];
        const std::string_view text = state_.report.TextOf(line);
        const std::string_view owner = Trim(TextBehind(text, kRecordName, kBehindRecordName));
        if (owner != record_) {
            Find(FindingKind::SectionOfAnother, line,
                 fmt::format("the section of {} is taken for it, whose name holds this one", owner));
        } else if (!ownFields_) {
            Find(FindingKind::DataItemsMissing, line,
                 done ? "no data item heading: its values are those of a later record"
                      : "no data item heading: the record is not completed");
        } else if (!done) {
            Find(FindingKind::SectionWithoutEnd, line, "no end of its section: the record is not completed");
        } else {
            CheckValues(line);
        }
        if (otherLevels_ > 0 && ownFields_)
            Find(FindingKind::LevelLeftOut, line,
                 fmt::format("{} fields of the levels 01, 11 and above", otherLevels_));
    }

    void CheckValues(const ReportLine& line) {
        const bool hasKey = !Trim(found_.modeWord).starts_with("DIR");
        const std::pair<const char*, std::string_view> values[] = {
            {"record id", found_.tableId},
            {"length kind", found_.lengthKind},
            {"area", found_.area},
            {"key or set of the location mode", hasKey ? found_.key : "none"}};
        for (const auto& [name, value] : values) {
            if (Trim(value).empty()) Find(FindingKind::ValueMissing, line, fmt::format("no {}", name));
        }
        if (positions_.EndsBefore(dataLength_))
            Find(FindingKind::FieldGap, line,
                 fmt::format("the last fields are missing: they end at byte {} of {}", positions_.LastEnd(),
                             Trim(dataLength_)));
    }

    void Find(FindingKind kind, const ReportLine& line, std::string_view reason) {
        state_.Find(kind, line.Begin(), record_, reason);
    }

    ExtractionState& state_;
    const std::string_view record_;
    const std::string nameWords_;
    RecordRow found_;
    std::string_view dataLength_;  ///< Without the record's prefix, which its length may include.
    FieldPositions positions_;
    std::size_t start_ = 0;
    int nameLines_ = 0, fieldCount_ = 0, otherLevels_ = 0;
    bool inFields_ = false;
    bool ownFields_ = false;  ///< The list of fields follows the record's own name line.
};

void UpdateRecordLayout(ExtractionState& state, std::string_view record, std::string_view dn) {
    if (state.reportsRecords) state.app.host.Status("Extracting Record: " + ToUtf8(record));
    const auto start = state.index->SectionStart(record);
    if (!start) {
        constexpr std::string_view kReason = "no RLGTH= on its name line: the record is not completed";
        if (const auto block = state.index->BlockStart(record)) {
            FindAt(state, FindingKind::LengthMissing, *block, record, kReason);
        } else {
            state.FindInReport(FindingKind::LengthMissing, record, kReason);
        }
        return;
    }
    SectionReader section(state, record);
    if (!section.Read(*start)) return;
    RecordRow& row = state.writer->RecordNamed(record);
    section.Complete(row);
    row.dn = dn;
}

// Each matching member line extends the list as long as one set alone joins the two records.
void SaveConnection(ExtractionState& state, std::string_view owner, std::string_view member,
                    std::string_view set, std::string_view connection) {
    const std::size_t sets = state.writer->AddConnection(owner, member, set, connection);
    if (member.empty() || sets != 1) return;
    if (!state.gNextStepList.empty()) state.gNextStepList += ',';
    state.gNextStepList += member;
}

// The first line decides what is stored; it may be that of a longer name.
void CheckMemberLine(ExtractionState& state, const Occurrence& place, std::string_view member,
                     std::string_view set) {
    const std::string_view found = Trim(place.tail);
    if (found == member || member.empty()) return;
    FindAt(state, FindingKind::MemberOfAnother, place.line, member,
           fmt::format("its texts in set {} are those of {}, whose name begins with this one", set, found));
}

void CollectSetMember(ExtractionState& state, std::string_view owner, std::string_view member,
                      std::string_view set) {
    if (owner == member) return;
    bool isFirst = true;
    for (const Occurrence& place : state.index->MemberLines(set, member)) {
        const std::string_view text = state.report.TextOf(state.report.Lines()[place.line]);
        std::string_view first = TextBehind(text, place.column, kMemberFirstText);
        if (Trim(first) == kIndexedMember) first = {};
        std::string connection(Trim(first).empty() ? std::string_view() : first);
        connection += kLineBreak;
        connection += TextBehind(text, place.column, kMemberSecondText);
        SaveConnection(state, owner, member, set, connection);
        if (std::exchange(isFirst, false)) CheckMemberLine(state, place, member, set);
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

void CheckKeyLine(ExtractionState& state, const Occurrence& place, std::string_view index,
                  std::string_view field) {
    const std::string_view found = place.tail.substr(0, place.tail.find(' '));
    if (found != index) {
        FindAt(state, FindingKind::KeyOfAnother, place.line, index,
               fmt::format("a key of index {} is taken for one of its own", found));
    } else if (!IsFieldLine(field)) {
        FindAt(state, FindingKind::KeyWithoutField, place.line, index,
               fmt::format("the key is taken from \"{}\", which is no field", Trim(field)));
    }
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

void CheckIndexName(ExtractionState& state, const ReportIndex::IndexLine& place) {
    const Span behind{kIndexName.column + kIndexName.count, 1};
    if (NameIn(state.report.TextOf(state.report.Lines()[place.line]), behind).empty()) return;
    FindAt(state, FindingKind::NameTooLong, place.line, place.index,
           "the name of this index is longer than its columns");
}

void CollectSortKeys(ExtractionState& state, const ReportIndex::IndexLine& place, std::string_view record) {
    const std::string_view index = place.index;
    auto& names = state.gIndexNames;
    if (std::find(names.begin(), names.end(), index) != names.end()) return;
    // A ninth index finds no space in the list and is read all the same.
    if (const auto free = std::find(names.begin(), names.end(), std::string_view()); free != names.end()) {
        *free = index;
    } else {
        FindAt(state, FindingKind::NinthIndex, place.line, record,
               fmt::format("index {} is beyond the eight that a record has", index));
    }
    CheckIndexName(state, place);

    const auto& lines = state.report.Lines();
    IndexRow* row = nullptr;
    int keyCount = 0;
    std::size_t lastKeyLine = 0;
    std::optional<std::size_t> used;  // where the control line begins that took the line above it
    for (const Occurrence& item : state.index->ControlItems(index)) {
        const ReportLine& line = lines[item.line];
        const auto above = state.report.TextAbove(item.line);
        const bool fresh = above && (!used || *above > *used);
        used = line.Begin();
        if (!fresh) continue;
        std::size_t position = *above;
        const std::string_view field = *state.report.NextLine(position);
        if (field.starts_with(kDataItem)) continue;

        if (++keyCount > kMostSortKeys) {
            row->sortOption = SortOption(state, index, record, lastKeyLine);
            throw RuntimeFailure(
                FailureNumber::SubscriptOutOfRange,
                fmt::format("record {}, line {}, key {} of at most {} of index {}", ToUtf8(record),
                            state.report.NumberOfLine(line.Begin()), keyCount, kMostSortKeys, ToUtf8(index)));
        }
        lastKeyLine = item.line;
        const std::string_view text = state.report.TextOf(line);
        std::string_view order;
        for (const std::string_view word : kSortOrders) {
            if (const auto p = Column(text, word); p != 0)
                order = Text(text, static_cast<long>(p), kSortOrderWidth);
        }
        CheckKeyLine(state, item, index, field);
        if (row == nullptr) row = &state.writer->IndexOf(index, record);
        SaveIndexDetails(*row, static_cast<std::size_t>(keyCount), TextIn(field, kKeyName), order);
    }
    if (row != nullptr) {
        row->sortOption = SortOption(state, index, record, lines.size());
    } else {
        FindAt(state, FindingKind::IndexWithoutKeys, place.line, index,
               fmt::format("no sort key is found for record {}", record));
    }
    if (keyCount > static_cast<int>(IndexRow::kSlots)) {
        FindAt(state, FindingKind::SeventeenthKey, place.line, index,
               fmt::format("{} keys are beyond the sixteen that an index has",
                           keyCount - static_cast<int>(IndexRow::kSlots)));
    }
}

void CollectIndexes(ExtractionState& state, std::string_view record) {
    state.gIndexNames = {};
    for (const auto& place : state.index->IndexLines(record)) CollectSortKeys(state, place, record);
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
