#include "testing/report_generator.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <random>
#include <string_view>
#include <vector>

namespace norvelis {

namespace {

constexpr int kLinesOnPage = 58;

/// A text that starts at a 1-based column of the line.
struct Piece {
    std::size_t column;
    std::string_view text;
};

/// Builds the listing line by line and starts a page, with its headings, when the one before is full.
class Listing {
  public:
    Listing() { StartPage(); }

    /// `carriage` is the printer's control in column 1. `keep` lines that follow must fit on the same page.
    void Add(char carriage, std::initializer_list<Piece> pieces, int keep = 0) {
        const int height = carriage == '0' ? 2 : 1;
        if (line_ + height + keep > kLinesOnPage) StartPage();
        line_ += height;
        Print(carriage, pieces);
    }

    std::string Take() { return std::move(text_); }

  private:
    void StartPage() {
        line_ = 3;
        const std::string page = fmt::format("PAGE{:5}", ++page_);
        Print('1', {{2, "IDMSRPTS RELEASE 19.0.04"},
                    {46, "SCHEMA DESCRIPTION LISTING"},
                    {89, "DATE 03/14/24"},
                    {107, "TIME 10:42:17"},
                    {124, page}});
        Print(' ', {{2, "SCHEMA=BULKSCHM VERSION=1"}});
        Print(' ', {});
    }

    void Print(char carriage, std::initializer_list<Piece> pieces) {
        const std::size_t start = text_.size();
        text_ += carriage;
        for (const Piece& piece : pieces) {
            text_.resize(std::max(text_.size(), start + piece.column - 1), ' ');
            text_ += piece.text;
        }
        text_ += '\n';
    }

    std::string text_;
    int page_ = 0;
    int line_ = 0;
};

struct Set {
    std::string name;
    int owner;  ///< kSystem for an index that belongs to no record.
    bool index;
    std::vector<int> members;
};
constexpr int kSystem = -1;

/// A sort key of an index: the field of the member record that carries it.
struct Key {
    int set;
    int field;
    bool descending;
};

struct Record {
    std::string name;
    int viaSet = -1;  ///< Below 0: CALC or DIRECT.
    std::vector<int> owns;
    std::vector<int> memberOf;
    std::vector<Key> keys;
};

constexpr std::array kWords = {"ORDER",  "CLIENT",  "PART",   "STOCK",  "TRUCK",  "ROUTE",
                               "DEPOT",  "PALLET",  "TARIFF", "CARGO",  "DRIVER", "PERMIT",
                               "LEDGER", "BOOKING", "FERRY",  "CUSTOMS"};
constexpr std::array kFieldWords = {"NUMBER", "NAME",   "DATE",  "AMOUNT", "STATUS", "CODE",
                                    "WEIGHT", "REMARK", "COUNT", "PRICE",  "ORIGIN", "TARGET",
                                    "LIMIT",  "REASON", "RATE",  "OWNER"};
struct FieldType {
    std::string_view usage, picture;
    int length;
};
constexpr std::array kFieldTypes = {FieldType{"DISPLAY", "X(8)", 8},
                                    FieldType{"DISPLAY", "X(30)", 30},
                                    FieldType{"DISPLAY", "9(6)", 6},
                                    FieldType{"COMP-3", "S9(7)V99", 5},
                                    FieldType{"COMP", "S9(4)", 2},
                                    FieldType{"COMP", "S9(9)", 4},
                                    FieldType{"DISPLAY     OCCURS 4", "X(12)", 48},
                                    FieldType{"DISPLAY", "X", 1}};

class Schema {
  public:
    Schema(int recordCount, int setCount, int fieldCount, std::uint64_t seed)
        : fieldCount_(fieldCount), chance_(seed), records_(static_cast<std::size_t>(recordCount)) {
        // Names have one width, so that none is the beginning of another.
        const int width =
            std::max(4, static_cast<int>(fmt::formatted_size("{}", std::max(recordCount, setCount))));
        for (int i = 0; i < recordCount; ++i) {
            RecordAt(i).name = fmt::format("{}-{:0{}}", kWords[Below(kWords.size())], i + 1, width);
        }
        for (int i = 0; i < setCount; ++i)
            AddSet(i, fmt::format("{}-S{:0{}}", kWords[Below(kWords.size())], i + 1, width));
    }

    std::string Print() {
        Listing listing;
        PrintAreas(listing);
        for (std::size_t i = 0; i < records_.size(); ++i) PrintRecord(listing, static_cast<int>(i));
        PrintCalcSet(listing);
        for (const Set& set : sets_) PrintSet(listing, set);
        listing.Add('0', {{2, "END OF SCHEMA DESCRIPTION LISTING"}});
        return listing.Take();
    }

  private:
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(chance_() % bound); }
    Record& RecordAt(int i) { return records_[static_cast<std::size_t>(i)]; }

    /// Schemas fall into subject areas: a few records at the head of each own the others, and the heads of
    /// areas hang together.
    int OwnerFor(int member) {
        constexpr int kAreaSize = 16, kHeads = 5;
        const auto below = [this](int bound) {
            return static_cast<int>(Below(static_cast<std::size_t>(bound)));
        };
        const int inArea = member % kAreaSize, area = member / kAreaSize;
        if (inArea == 0 || (area > 0 && below(12) == 0)) return below(area) * kAreaSize + below(2);
        return area * kAreaSize + below(std::min(inArea, kHeads));
    }

    // The first sets tie every record to one before it; the others join records that are there.
    void AddSet(int number, std::string name) {
        const int count = static_cast<int>(records_.size());
        const bool tree = number + 1 < count;
        Set set{std::move(name), kSystem, !tree && Below(3) == 0, {}};
        const int member = tree ? number + 1 : static_cast<int>(Below(records_.size()));
        if (!set.index || Below(2) == 0) set.owner = member == 0 ? count - 1 : OwnerFor(member);
        set.members.push_back(member);
        if (!set.index && !tree && Below(8) == 0 && member + 2 < count) set.members.push_back(member + 2);
        if (set.owner != kSystem) RecordAt(set.owner).owns.push_back(number);
        for (const int each : set.members) {
            RecordAt(each).memberOf.push_back(number);
            if (tree && Below(5) < 3) RecordAt(each).viaSet = number;
        }
        if (set.index && fieldCount_ > 0) AddKeys(RecordAt(member), number);
        sets_.push_back(std::move(set));
    }

    void AddKeys(Record& record, int set) {
        const std::size_t count = 1 + Below(3);
        int field = static_cast<int>(Below(static_cast<std::size_t>(fieldCount_)));
        for (std::size_t i = 0; i < count && field < fieldCount_; ++i, ++field) {
            record.keys.push_back({set, field, Below(4) == 0});
        }
    }

    std::string Area(int record) const { return fmt::format("FREIGHT-AREA-{}", record % 5 + 1); }

    void PrintAreas(Listing& listing) const {
        listing.Add('0', {{2, "REPORT OPTIONS...."}, {22, "RECORDS, SETS, DATA ITEMS"}});
        for (int i = 0; i < 5; ++i) {
            const std::string area = Area(i);
            listing.Add(' ', {{2, "AREA NAME........."}, {22, area}});
        }
        const std::string totals = fmt::format("TOTALS: {} RECORDS, {} SETS", records_.size(), sets_.size());
        listing.Add('0', {{2, totals}});
    }

    void PrintRecord(Listing& listing, int number) {
        const Record& record = RecordAt(number);
        const std::vector<FieldType> types = PickTypes();
        const int length = DataLength(types);
        const std::string recordLength = fmt::format("RLGTH={:5}", length + 20);
        const std::string dataLength = fmt::format("DLGTH={:5}", length);
        const std::string id = fmt::format("{:04}", number + 100);
        const std::string area = Area(number);
        listing.Add('0', {{2, "* * * * *"}}, 10);
        listing.Add(
            ' ', {{2, "RECORD NAME........ "}, {22, record.name}, {46, "VERSION 0001"}, {66, recordLength}});
        listing.Add(' ', {{2, "RECORD ID.......... "}, {22, id}});
        listing.Add(' ', {{2, "RECORD LENGTH...... FIXED"}, {66, dataLength}});
        if (record.viaSet >= 0) {
            listing.Add(' ', {{2, "LOCATION MODE...... VIA SET"},
                              {34, SetAt(record.viaSet).name},
                              {51, "DISPLACEMENT  0 PAGES"}});
        } else if (number % 10 == 7) {
            listing.Add(' ', {{2, "LOCATION MODE...... DIRECT"}});
        } else {
            const std::string key = FieldName(number, 0);
            listing.Add(' ',
                        {{2, "LOCATION MODE...... CALC USING"}, {34, key}, {66, "DUPLICATES NOT ALLOWED"}});
        }
        listing.Add(' ', {{2, "WITHIN............. "}, {22, area}, {46, "OFFSET    0 PAGES FOR 4000 PAGES"}});
        for (const int set : record.owns) {
            listing.Add(' ', {{2, "SET OWNERSHIP...... "},
                              {22, SetAt(set).name},
                              {39, SetAt(set).index ? "INDEX OWNER" : "CHAIN OWNER"}});
        }
        for (const int set : record.memberOf) {
            listing.Add(' ', {{2, "SET MEMBERSHIP..... "},
                              {22, SetAt(set).name},
                              {39, SetAt(set).index ? "INDEX MEMBER" : "CHAIN MEMBER"}});
        }
        listing.Add(
            '0',
            {{2, "DATA ITEM"}, {39, "USAGE"}, {87, "PICTURE"}, {112, " STRT"}, {121, " LGTH"}, {128, " END"}},
            4);
        PrintFields(listing, number, types);
    }

    static bool IsGroup(int field, int fieldCount) { return field % 9 == 4 && field + 1 < fieldCount; }

    std::vector<FieldType> PickTypes() {
        std::vector<FieldType> types;
        for (int field = 0; field < fieldCount_; ++field)
            types.push_back(kFieldTypes[Below(kFieldTypes.size())]);
        return types;
    }

    int DataLength(const std::vector<FieldType>& types) const {
        int length = 0;
        for (int field = 0; field < fieldCount_; ++field) {
            if (!IsGroup(field, fieldCount_)) length += types[static_cast<std::size_t>(field)].length;
        }
        return length;
    }

    std::string FieldName(int record, int field) const {
        const auto word = static_cast<std::size_t>(record * 7 + field) % kFieldWords.size();
        return fmt::format("{}-{:02}-{:04}", kFieldWords[word], field + 1, record + 100);
    }

    void PrintFields(Listing& listing, int number, const std::vector<FieldType>& types) {
        const Record& record = RecordAt(number);
        int start = 1;
        for (int field = 0; field < fieldCount_; ++field) {
            const bool group = IsGroup(field, fieldCount_);
            const char* level = field % 9 == 5 || field % 9 == 6 ? "03" : "02";
            const std::string name = FieldName(number, field);
            const FieldType& type = types[static_cast<std::size_t>(field)];
            const std::string startText = fmt::format("{:5}", start);
            const std::string lengthText = fmt::format("{:4}", type.length);
            const std::string endText = fmt::format("{:5}", start + type.length - 1);
            if (group) {
                listing.Add(' ', {{2, level}, {5, name}, {39, "GROUP"}}, 3);
            } else {
                listing.Add(' ',
                            {{2, level},
                             {5, name},
                             {39, type.usage},
                             {87, type.picture},
                             {112, startText},
                             {122, lengthText},
                             {127, endText}},
                            3);
                start += type.length;
            }
            for (const Key& key : record.keys) {
                if (key.field != field) continue;
                listing.Add(' ', {{39, "SET CONTROL ITEM FOR --------      "},
                                  {74, SetAt(key.set).name},
                                  {91, key.descending ? "DSC" : "ASC"}});
            }
        }
    }

    const Set& SetAt(int i) const { return sets_[static_cast<std::size_t>(i)]; }

    void PrintCalcSet(Listing& listing) {
        listing.Add('0', {{2, "- - - - -"}}, 3);
        listing.Add(' ', {{2, "SET...... CALC"}, {34, "MODE... CHAIN"}, {52, "ORDER... SORTED"}});
        listing.Add(' ', {{2, "OWNER.... SR1"}});
        for (const Record& record : records_) {
            if (record.viaSet < 0)
                listing.Add(' ', {{2, "MEMBER... "}, {12, record.name}, {34, "NP"}, {52, "MA SORTED DN"}});
        }
    }

    void PrintSet(Listing& listing, const Set& set) {
        listing.Add(' ',
                    {{2, "SET...... "},
                     {12, set.name},
                     {34, set.index ? "MODE... INDEX" : "MODE... CHAIN"},
                     {52, "ORDER... LAST"}},
                    2);
        const std::string owner = set.owner == kSystem ? "SYSTEM" : RecordAt(set.owner).name;
        listing.Add(' ', {{2, "OWNER.... "}, {12, owner}, {34, "NP"}});
        for (const int member : set.members) {
            const std::string area = Area(member);
            listing.Add(' ', {{2, "MEMBER... "},
                              {12, RecordAt(member).name},
                              {34, set.index ? "INDX" : "NPO"},
                              {52, set.index ? "MA SORTED DL" : "MA LAST"},
                              {106, "AREA"},
                              {111, area}});
        }
        const std::string area = "IN AREA " + Area(set.members.front());
        listing.Add(' ', {{34, "STORED"}, {62, area}, {103, "ALL PAGES"}});
    }

    int fieldCount_;
    std::mt19937_64 chance_;
    std::vector<Record> records_;
    std::vector<Set> sets_;
};

}  // namespace

std::string GenerateSchemaReport(int records, int sets, int fieldsPerRecord, std::uint64_t seed) {
    return Schema(records, sets, fieldsPerRecord, seed).Print();
}

}  // namespace norvelis
