#include "testing/literal_extraction.h"

#include <array>
#include <stdexcept>

#include "base/failure.h"
#include "base/text.h"

namespace norvelis::literal {

namespace {

using Lines = std::vector<std::string>;

bool Holds(std::string_view line, std::string_view text) {
    return Column(line, text) != 0;
}

/// The n bytes `distance` behind the first byte of the keyword, which is at column p.
std::string Behind(std::string_view line, std::size_t p, long distance, long n) {
    return std::string(Text(line, static_cast<long>(p) + distance, n));
}

std::string TrimCopy(std::string_view text) {
    return std::string(Trim(text));
}

/// The condition of a statement: columns and the values that they must have.
using Where = std::vector<std::pair<std::string, std::string>>;

bool Matches(const Row& row, const Where& where) {
    for (const auto& [column, value] : where) {
        if (row.IsNull(column) || !SameName(row.Bytes(column), value)) return false;
    }
    return true;
}

Row* SelectFirst(Table& table, const Where& where) {
    for (Row& row : table) {
        if (Matches(row, where)) return &row;
    }
    return nullptr;
}

std::size_t Count(const Table& table, const Where& where) {
    std::size_t count = 0;
    for (const Row& row : table) count += Matches(row, where);
    return count;
}

Row& Add(Table& table) {
    return table.emplace_back();
}

/// One run over one report. The members are the state that the passes share.
class Extraction {
  public:
    Extraction(const Lines& lines, Dictionary& dictionary) : lines_(lines), store_(dictionary) {}

    void Run() {
        CollectParentandChildren();
        IdmsUpdateRecords(gSchemaName);
    }

  private:
    // First pass.
    void CollectParentandChildren();
    void ReadHeaderLine(const std::string& line);
    bool CheckLocationMode(const std::string& record, const std::string& line, const std::string& schema);
    void AddParent(const std::string& schema, const std::string& record);
    void AddRecordDetails(const std::string& schema, const std::string& record, const std::string& mode,
                          const std::string& dn);
    // Second pass.
    void IdmsUpdateRecords(const std::string& schema);
    void UpdateRecordLayout(const std::string& schema, std::string record, const std::string& dn);
    void CollectConnections(const std::string& schema, const std::string& record);
    void CollectSetMember(const std::string& owner, const std::string& member, const std::string& schema,
                          const std::string& set);
    void SaveConnection(const std::string& owner, const std::string& member, const std::string& connection,
                        const std::string& schema, const std::string& set);
    void CollectIndexes(const std::string& schema, const std::string& record);
    void CollectSortKeys(const std::string& index, const std::string& record, const std::string& schema);
    void SaveIndexDetails(const std::string& index, const std::string& record, const std::string& schema);

    const Lines& lines_;
    Dictionary& store_;

    std::string gSchemaName, gSchemaRelease, gSchemaVersion, gSchemaDate;
    bool releaseSeen_ = false, dateSeen_ = false, schemaSeen_ = false;

    std::string gNextStepList;
    std::array<std::string, 101> gIndexNames;  // arrays count from 1

    std::size_t keyCount_ = 0;
    std::array<std::string, 501> keyNames_, keyOrders_;
    std::string sortCalcKey_, sortOption_;
};

void Extraction::ReadHeaderLine(const std::string& line) {
    if (const auto p = Column(line, "IDMSRPTS"); p != 0 && !releaseSeen_) {
        releaseSeen_ = true;
        gSchemaRelease = Behind(line, p, 9, 17);
    }
    if (const auto p = Column(line, "/"); p != 0 && !dateSeen_) {
        dateSeen_ = true;
        gSchemaDate = Behind(line, p, -3, 9);
    }
    if (const auto p = Column(line, "SCHEMA="); p != 0 && !schemaSeen_) {
        schemaSeen_ = true;
        std::string word = Behind(line, p, 7, 17);
        if (const auto q = Column(word, "VERSION="); q != 0) {
            gSchemaVersion = Behind(word, q, 8, 5);
            word = Text(word, 1, static_cast<long>(q));
        }
        if (const auto comma = Column(word, ","); comma != 0) word.resize(comma - 1);
        if (const auto blank = Column(word, " "); blank != 0) word.resize(blank - 1);
        gSchemaName = word;
    }
}

void Extraction::CollectParentandChildren() {
    std::size_t next = 0;
    int counter = 0;
    while (next < lines_.size() && counter <= 9) {
        ++counter;
        ReadHeaderLine(lines_[next++]);
    }
    gSchemaName = Trim(gSchemaName);

    const Where schema = {{"schemaname", gSchemaName}};
    const auto ofSchema = [&](const Row& row) { return Matches(row, schema); };
    std::erase_if(store_.schema_details, ofSchema);
    if (SelectFirst(store_.schema_details, schema) == nullptr) {
        Row& row = Add(store_.schema_details);
        row["schemaname"] = Trim(gSchemaName);
        row["schemarelease"] = Trim(gSchemaRelease);
        row["schemaversion"] = Trim(gSchemaVersion);
        row["schemadate"] = Trim(gSchemaDate);
    }
    std::erase_if(store_.Parents, ofSchema);
    std::erase_if(store_.Connection_Details, ofSchema);
    std::erase_if(store_.Record_layout, ofSchema);
    std::erase_if(store_.Index_Details, ofSchema);
    std::erase_if(store_.Record_Details, ofSchema);

    while (next < lines_.size()) {
        const std::string& line = lines_[next++];
        const auto p = Column(line, "RECORD NAME........ ");
        if (p == 0) continue;
        const std::string record = Behind(line, p, 20, 17);
        bool found = CheckLocationMode(record, line, gSchemaName);
        for (int i = 1; i <= 6 && !found; ++i) {
            if (next >= lines_.size()) throw RuntimeFailure(FailureNumber::InputPastEnd);
            found = CheckLocationMode(record, lines_[next++], gSchemaName);
        }
    }
}

bool Extraction::CheckLocationMode(const std::string& record, const std::string& line,
                                   const std::string& schema) {
    // Only the CALC line spells the words in capitals throughout.
    if (Holds(line, "LOCATION MODE...... DIRECT")) {
        AddParent(schema, record);
        AddRecordDetails(schema, record, "DIRECT", Holds(line, "DUPLICATES Not ALLOWED") ? "DN" : "");
        return true;
    }
    if (Holds(line, "LOCATION MODE...... CALC USING")) {
        AddParent(schema, record);
        AddRecordDetails(schema, record, "CALC", Holds(line, "DUPLICATES NOT ALLOWED") ? "DN" : "");
        return true;
    }
    if (Holds(line, "LOCATION MODE...... VIA SET")) {
        AddRecordDetails(schema, record, "VIA", Holds(line, "DUPLICATES Not ALLOWED") ? "DN" : "");
        return true;
    }
    return false;
}

void Extraction::AddParent(const std::string& schema, const std::string& record) {
    if (Trim(record).empty()) return;
    if (SelectFirst(store_.Parents, {{"schemaname", schema}, {"Recordname", record}}) != nullptr) return;
    Row& row = Add(store_.Parents);
    row["schemaname"] = Trim(schema);
    row["Recordname"] = Trim(record);
}

void Extraction::AddRecordDetails(const std::string& schema, const std::string& record,
                                  const std::string& mode, const std::string& dn) {
    if (Trim(record).empty()) return;
    if (SelectFirst(store_.Record_Details, {{"schemaname", schema}, {"Recordname", record}}) != nullptr)
        return;
    Row& row = Add(store_.Record_Details);
    row["schemaname"] = Trim(schema);
    row["Recordname"] = Trim(record);
    row["Recmode"] = Trim(mode);
    row["recordtype"] = "Record";
    row["dn"] = dn;
}

void Extraction::IdmsUpdateRecords(const std::string& schema) {
    std::vector<Row*> walk;
    for (Row& row : store_.Record_Details) {
        if (Matches(row, {{"schemaname", schema}})) walk.push_back(&row);
    }
    for (Row* row : walk) {
        gNextStepList.clear();
        const std::string rowSchema = row->Bytes("schemaname");
        const std::string record = row->Bytes("Recordname");
        UpdateRecordLayout(rowSchema, record, row->Bytes("dn"));
        CollectConnections(rowSchema, record);
        CollectIndexes(rowSchema, record);
        (*row)["next_step"] = gNextStepList;
        for (std::size_t i = 1; i <= 8; ++i) (*row)["Index" + std::to_string(i)] = gIndexNames[i];
    }
}

void Extraction::UpdateRecordLayout(const std::string& schema, std::string record, const std::string& dn) {
    std::string area, recordId, modeWord, keyWords, lengthKind, length, inFields = "NO", done;
    std::size_t fieldCount = 0;
    std::array<std::string, 601> levels, names, usages, pictures, starts, ends;

    record = TrimCopy(record);
    if (record.empty()) return;
    std::size_t next = 0;
    while (true) {
        if (next == lines_.size()) return;
        const std::string& line = lines_[next++];

        if (Holds(line, "RECORD NAME........ " + record)) {
            if (const auto p = Column(line, "RLGTH="); p != 0) length = Behind(line, p, 6, 10);
        }
        if (length.empty()) continue;
        if (const auto p = Column(line, "DLGTH="); p != 0) length = Behind(line, p, 6, 10);
        if (const auto p = Column(line, "RECORD ID.......... "); p != 0) recordId = Behind(line, p, 20, 15);
        if (const auto p = Column(line, "RECORD LENGTH...... "); p != 0) lengthKind = Behind(line, p, 20, 5);
        if (const auto p = Column(line, "LOCATION MODE...... "); p != 0) {
            modeWord = Behind(line, p, 20, 4);
            keyWords = Behind(line, p, 32, 30);
            if (const auto cut = Column(keyWords, "DISPL"); cut != 0) {
                keyWords = TrimCopy(Text(keyWords, 1, static_cast<long>(cut) - 1));
            }
        }
        if (const auto p = Column(line, "WITHIN............. "); p != 0)
            area = TrimCopy(Behind(line, p, 20, 15));
        if (Holds(line, "0DATA ITEM")) inFields = "YES";

        const std::string_view code = Text(line, 1, 4);
        const bool level = code == " 02 " || code == " 03 " || code == " 04 " || code == " 05 " ||
                           code == " 06 " || code == " 07 " || code == " 08 " || code == " 09 " ||
                           code == " 10 ";
        if (inFields == "YES" && level) {
            ++fieldCount;
            if (fieldCount > 600) throw RuntimeFailure(FailureNumber::SubscriptOutOfRange);
            levels[fieldCount] = Trim(code);
            names[fieldCount] = Text(line, 5, 30);
            usages[fieldCount] = Text(line, 39, 35);
            pictures[fieldCount] = Text(line, 87, 35);
            starts[fieldCount] = Text(line, 112, 5);
            ends[fieldCount] = Text(line, 127, 5);
            Row& row = Add(store_.Record_layout);
            row["schemaname"] = Trim(schema);
            row["Recordname"] = Trim(record);
            row["Fieldlevel"] = Trim(levels[fieldCount]);
            row["fieldname"] = Trim(names[fieldCount]);
            row["fieldusage"] = Trim(usages[fieldCount]);
            row["fieldpicture"] = Trim(pictures[fieldCount]);
            row["fieldstart"] = Trim(starts[fieldCount]);
            row["fieldend"] = Trim(ends[fieldCount]);
        }
        done.clear();
        if (inFields == "YES" && (Holds(line, "RECORD NAME........ ") || Holds(line, "SET...... CALC"))) {
            done = "YES";
        }
        if (done == "YES") break;
    }

    const std::string rule = std::string(32, '_') + "\r\n";
    const std::string information = record + "\r\n" + rule + TrimCopy(recordId) + " | " +
                                    TrimCopy(lengthKind) + " | " + TrimCopy(length) + " | " +
                                    TrimCopy(modeWord) + "\r\n" + rule + TrimCopy(keyWords) + " | " + dn +
                                    "\r\n" + rule + area;

    Row* row = SelectFirst(store_.Record_Details,
                           {{"schemaname", schema}, {"recordtype", "Record"}, {"Recordname", record}});
    if (row == nullptr) row = &Add(store_.Record_Details);
    (*row)["schemaname"] = Trim(schema);
    (*row)["Recordname"] = Trim(record);
    (*row)["areaname"] = Trim(area);
    (*row)["tableid"] = Trim(recordId);
    (*row)["reckey"] = Trim(keyWords);
    (*row)["recdup"] = "";
    (*row)["rectype"] = Trim(lengthKind);
    (*row)["reclen"] = Trim(length);
    (*row)["dn"] = dn;
    (*row)["color"] = "";
    (*row)["Information"] = Trim(information);
    (*row)["recordtype"] = "Record";
}

void Extraction::CollectConnections(const std::string& schema, const std::string& record) {
    gIndexNames.fill("");
    bool inSets = false, ownerMatches = false;
    std::string set, owner, member;
    for (const std::string& line : lines_) {
        if (Column(line, " SET...... ") == 1) {
            set = Trim(Text(line, 11, 17));
            if (set != "CALC") inSets = true;
            ownerMatches = false;
        }
        if (!inSets) continue;
        if (Column(line, "OWNER.... ", 2) != 0) {
            owner = Trim(Text(line, 11, 17));
            ownerMatches = owner == record;
        }
        if (owner.empty() || !ownerMatches) continue;
        if (Column(line, "MEMBER... ", 2) != 0) {
            member = Trim(Text(line, 11, 17));
            CollectSetMember(owner, member, schema, set);
        }
    }
}

void Extraction::CollectSetMember(const std::string& owner, const std::string& member,
                                  const std::string& schema, const std::string& set) {
    if (Trim(owner) == Trim(member)) return;
    bool inSet = false;
    for (const std::string& line : lines_) {
        if (Column(line, " SET...... ") == 1 && inSet) break;
        if (Column(line, " SET...... " + set) == 1) inSet = true;
        const auto q = Column(line, "MEMBER... " + member, 2);
        if (!inSet || q == 0) continue;
        std::string a = Behind(line, q, 32, 17);
        if (Trim(a) == "INDX") a.clear();
        const std::string b = Behind(line, q, 50, 30);
        SaveConnection(owner, member, Trim(a).empty() ? "\r\n" + b : a + "\r\n" + b, schema, set);
    }
}

void Extraction::SaveConnection(const std::string& owner, const std::string& member,
                                const std::string& connection, const std::string& schema,
                                const std::string& set) {
    Table& table = store_.Connection_Details;
    const Where key = {{"schemaname", TrimCopy(schema)},
                       {"set", TrimCopy(set)},
                       {"Recordname", TrimCopy(owner)},
                       {"next_step", TrimCopy(member)}};
    if (SelectFirst(table, key) == nullptr) {
        Row& row = Add(table);
        row["schemaname"] = Trim(schema);
        row["Recordname"] = Trim(owner);
        row["next_step"] = Trim(member);
        row["connection"] = Trim(connection);
        row["set"] = Trim(set);
    }
    if (Trim(member).empty()) return;
    if (Count(table, {{"schemaname", schema}, {"Recordname", owner}, {"next_step", member}}) == 1) {
        gNextStepList += gNextStepList.empty() ? member : "," + member;
    }
}

void Extraction::CollectIndexes(const std::string& schema, const std::string& record) {
    gIndexNames.fill("");
    bool inRecord = false;
    for (const std::string& line : lines_) {
        if (Column(line, " RECORD NAME........ ") == 1) {
            const bool before = inRecord;
            inRecord = Trim(Text(line, 21, 17)) == Trim(record);
            if (before && !inRecord) break;
        }
        if (inRecord && Column(line, "INDEX MEMBER") == 39) {
            CollectSortKeys(TrimCopy(Text(line, 21, 17)), TrimCopy(record), schema);
        }
    }
}

void Extraction::CollectSortKeys(const std::string& index, const std::string& record,
                                 const std::string& schema) {
    for (std::size_t i = 1; i <= 8; ++i) {
        if (gIndexNames[i] == Trim(index)) return;
    }
    for (std::size_t i = 1; i <= 8; ++i) {
        if (!gIndexNames[i].empty()) continue;
        gIndexNames[i] = Trim(index);
        break;
    }

    keyCount_ = 0;
    sortCalcKey_.clear();
    sortOption_.clear();
    for (std::size_t i = 1; i <= 16; ++i) {
        keyNames_[i].clear();
        keyOrders_[i].clear();
    }
    std::string previousLine;
    bool inSet = false, controlItemSeen = false;
    for (const std::string& line : lines_) {
        if (!Holds(line, "SET CONTROL ITEM FOR --------      " + index)) {
            if (!Trim(Text(line, 1, 20)).empty()) previousLine = line;
        } else {
            controlItemSeen = true;
            if (!Trim(previousLine).empty() && Text(previousLine, 1, 10) != "0DATA ITEM") {
                ++keyCount_;
                if (keyCount_ > 500) throw RuntimeFailure(FailureNumber::SubscriptOutOfRange);
                keyNames_[keyCount_] = Text(previousLine, 4, 30);
                if (const auto p = Column(line, " ASC"); p != 0)
                    keyOrders_[keyCount_] = Behind(line, p, 0, 5);
                if (const auto p = Column(line, " DSC"); p != 0)
                    keyOrders_[keyCount_] = Behind(line, p, 0, 5);
                SaveIndexDetails(index, record, schema);
            }
            previousLine.clear();
        }
        if (Column(line, " SET...... " + index) == 1) inSet = true;
        if (inSet && Holds(line, "MEMBER... " + record)) sortOption_ = Trim(Text(line, 52, 30));
    }
    if (controlItemSeen) SaveIndexDetails(index, record, schema);
}

void Extraction::SaveIndexDetails(const std::string& index, const std::string& record,
                                  const std::string& schema) {
    if (keyCount_ == 0) return;
    Row* row = SelectFirst(
        store_.Index_Details,
        {{"schemaname", TrimCopy(schema)}, {"Recordname", TrimCopy(index)}, {"next_step", TrimCopy(record)}});
    if (row == nullptr) row = &Add(store_.Index_Details);
    (*row)["schemaname"] = Trim(schema);
    (*row)["Recordname"] = Trim(index);
    (*row)["next_step"] = Trim(record);
    (*row)["sortcalckey"] = Trim(sortCalcKey_);
    for (std::size_t slot = 1; slot <= 16; ++slot) {
        if (Trim(keyNames_[slot]).empty()) continue;
        (*row)["Information"] += keyNames_[slot] + "  " + keyOrders_[slot] + "\r\n";
        const std::string number = std::to_string(slot);
        if (row->IsNull("sortkey" + number)) {
            (*row)["sortkey" + number] = Trim(keyNames_[slot]);
            (*row)["sortorder" + number] = Trim(keyOrders_[slot]);
        }
    }
    (*row)["sortoption"] = Trim(sortOption_);
    sortCalcKey_.clear();
    for (std::size_t slot = 1; slot <= 16; ++slot) {
        keyNames_[slot].clear();
        keyOrders_[slot].clear();
    }
}

}  // namespace

std::string Row::Bytes(const std::string& column) const {
    const auto found = values_.find(column);
    return found == values_.end() ? std::string() : found->second;
}

std::optional<std::string> Row::Value(const std::string& column) const {
    if (IsNull(column)) return std::nullopt;
    return ToUtf8(Bytes(column));
}

const Table& Dictionary::ByName(std::string_view name) const {
    if (name == "schema_details") return schema_details;
    if (name == "Parents") return Parents;
    if (name == "Record_Details") return Record_Details;
    if (name == "Record_layout") return Record_layout;
    if (name == "Connection_Details") return Connection_Details;
    if (name == "Index_Details") return Index_Details;
    throw std::invalid_argument("no dictionary table: " + std::string(name));
}

std::vector<std::string> SplitLines(std::string_view report) {
    Lines lines;
    while (!report.empty()) {
        const auto end = report.find('\n');
        std::string_view line = report.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.emplace_back(line);
        if (end == std::string_view::npos) break;
        report.remove_prefix(end + 1);
    }
    return lines;
}

bool ValidateReport(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const auto p = Column(line, "RECORD NAME........ ");
        if (p == 0) continue;
        const std::string name = TrimCopy(Behind(line, p, 20, 15));
        if (name.empty()) return false;
        for (const std::string& again : lines) {
            if (Holds(again, "RECORD NAME........ " + name)) return true;
        }
        return false;
    }
    return false;
}

int ExtractReport(const std::vector<std::string>& lines, Dictionary& dictionary) {
    try {
        Extraction(lines, dictionary).Run();
        return 0;
    } catch (const RuntimeFailure& failure) {
        return static_cast<int>(failure.Number());
    }
}

}  // namespace norvelis::literal
