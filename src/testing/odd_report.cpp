#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <random>
#include <string_view>
#include <vector>

#include "testing/report_generator.h"

namespace norvelis {

namespace {

// Names that begin one another, differ in case alone, are too long, too short, or hold what names do not
// hold.
const std::vector<std::string> kNames = {"A",
                                         "AB",
                                         "ABC",
                                         "AB-C",
                                         "ab",
                                         "Abc",
                                         "ORDER",
                                         "ORDER-LINE",
                                         "ORDER-LINES",
                                         "SIXTEEN-LETTERS-",
                                         "SIXTEEN-LETTERS-7",
                                         "SIXTEEN-LETTERS-78",
                                         "SIXTEEN-LETTERS",
                                         "O'BRIEN",
                                         "M\xDCLLER",
                                         "m\xFCller",
                                         "\x80\x81\x9D",
                                         "CALC",
                                         "INDX",
                                         "ASC-IX",
                                         "DSC-IX",
                                         "IX",
                                         "IX-1",
                                         "IX-2",
                                         "IX-10",
                                         "ix-1",
                                         "TWO WORDS",
                                         "SYSTEM",
                                         "",
                                         " LEAD",
                                         "LEAD",
                                         "%",
                                         "A_C",
                                         "\"Q\"",
                                         "DISPL",
                                         "MEMBER... A",
                                         "X,Y",
                                         "OWNER.... AB"};

class OddReport {
  public:
    explicit OddReport(std::uint64_t seed) : chance_(seed) {
        // Few names in one report, so that they meet again as records, sets, owners, members and indexes.
        const std::size_t count = 2 + Below(7);
        for (std::size_t i = 0; i < count; ++i) names_.push_back(Pick(kNames));
        oddness_ = 4 + Below(60);
    }

    std::string Generate() {
        Header();
        const std::size_t records = Below(8);
        for (std::size_t i = 0; i < records; ++i) RecordSection();
        if (Maybe(40)) SetSection();
        if (!Maybe(6)) CalcSet();
        const std::size_t sets = Below(9);
        for (std::size_t i = 0; i < sets; ++i) {
            SetSection();
            if (Maybe(15)) CalcSet();
            if (Maybe(25)) RecordSection();
        }
        if (!lines_.empty()) Disorder();
        return Join();
    }

  private:
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(chance_() % bound); }
    bool Maybe(std::size_t oneIn) { return Below(oneIn) == 0; }
    /// True as often as this report is odd.
    bool Odd() { return Maybe(oddness_); }

    template <class T>
    const T& Pick(const std::vector<T>& from) {
        return from[Below(from.size())];
    }
    std::string_view Pick(std::initializer_list<std::string_view> from) {
        return from.begin()[Below(from.size())];
    }
    std::string Name() { return Maybe(12) ? Pick(kNames) : Pick(names_); }

    struct Piece {
        std::size_t column;
        std::string text;
    };

    /// A line of pieces at their columns, now and then shifted, cut or left out.
    void Line(std::initializer_list<Piece> pieces) {
        std::string line;
        for (const Piece& piece : pieces) {
            if (Odd() && Maybe(3)) continue;
            std::size_t column = piece.column;
            if (Odd() && Maybe(2)) column += Below(4);
            if (Odd() && Maybe(3) && column > 1) --column;
            line.resize(std::max(line.size(), column - 1), ' ');
            line += piece.text;
        }
        if (Odd() && Maybe(4)) line.resize(Below(line.size() + 1));
        if (Odd() && Maybe(6)) line.append(1 + Below(30), ' ');
        lines_.push_back(std::move(line));
    }

    /// The piece in most lines, nothing in some.
    std::string Mostly(std::string_view text, std::size_t butOneIn = 8) {
        return Maybe(butOneIn) ? std::string() : std::string(text);
    }

    std::string Blanks() { return std::string(Below(5), ' '); }

    static std::string Recased(std::string name) {
        for (char& c : name) {
            if (c >= 'a' && c <= 'z') {
                c = static_cast<char>(c - 'a' + 'A');
            } else if (c >= 'A' && c <= 'Z') {
                c = static_cast<char>(c - 'A' + 'a');
            }
        }
        return name;
    }

    void PageHeading() {
        lines_.emplace_back("1IDMSRPTS RELEASE 19.0.04        DATE 03/14/24    PAGE    2");
        if (Maybe(2))
            lines_.emplace_back(Pick({"", " ", "0", " ----------------------------", " SCHEMA=OTHER"}));
    }

    void Header() {
        const std::size_t lines = Maybe(3) ? Below(15) : 10;
        const std::size_t release = Below(4), date = Below(5), schema = Below(5);
        for (std::size_t i = 0; i < lines; ++i) {
            if (i == release || Odd()) {
                Line({{1, "1"}, {1 + Below(8), "IDMSRPTS" + Mostly(" RELEASE 19.0 AND MORE")}});
            } else if (i == date || Odd()) {
                Line({{1 + Below(8),
                       std::string(Pick({"03/14/24", "3/4/2024 X", "/", "1/2/3", " 03/14/24 10:00"}))}});
            } else if (i == schema || Odd()) {
                Line({{1 + Below(3), "SCHEMA=" + SchemaWord()}});
            } else if (Maybe(60)) {
                Line({{2, "RECORD NAME........ " + Name()}, {60, "RLGTH=  10"}});
            } else {
                lines_.emplace_back(Pick({"", "0", " AREA SUMMARY"}));
            }
        }
    }

    std::string SchemaWord() {
        return std::string(
            Pick({"EMPSCHM VERSION=100", "EMPSCHM  VERSION=1", "EMPSCHM,VERSION=22", "S VERSION=12345678", "",
                  " LATE", "VERSION=1", "ABCDEFGHIJKLMNOPQRS", "A,B C", "O'NEIL VERSION=7", "empschm",
                  "M\xDCNCHEN VERSION=3", "ABVERSION=9", "A VERSION=   1"}));
    }

    void RecordSection() {
        std::string name = Name();
        if (!records_.empty() && Maybe(9)) name = " " + Recased(Pick(records_));
        records_.push_back(name);
        if (Maybe(10)) PageHeading();
        Line({{1, std::string(Pick({" ", " ", " ", "0", "1"}))},
              {2, "RECORD NAME........ " + (Maybe(20) ? " " + name : name)},
              {46, Mostly("VERSION 0001")},
              {60, Maybe(12) ? "DLGTH= 77" : ""},
              {66, Mostly(Maybe(12)   ? "RLGTH="
                          : Maybe(12) ? "RLGTH=          X"
                                      : "RLGTH=  120",
                          14)}});
        RecordHead();
        Memberships();
        if (!Maybe(9)) Fields();
        if (Maybe(10)) Memberships();
        if (Maybe(40)) lines_.emplace_back(" RECORD NAME........ " + name + "   RLGTH=   5");
    }

    void RecordHead() {
        const std::size_t before = Maybe(5) ? Below(8) : Below(4);
        for (std::size_t i = 0; i < before; ++i) {
            switch (Below(5)) {
                case 0:
                    Line({{2, "RECORD ID.......... " + Mostly("0415")}});
                    break;
                case 1:
                    Line({{2, "RECORD LENGTH...... " + std::string(Pick({"FIXED", "VARIABLE", "", " F"}))}});
                    break;
                case 2:
                    Line({{2, "RECORD ID.......... 7"}, {60, "DLGTH=" + Mostly(" 1 2  ")}});
                    break;
                case 3:
                    PageHeading();
                    break;
                default:
                    Line({{2, "WITHIN............. " + Mostly("SALES-AREA WITH MORE")}});
            }
        }
        LocationMode();
        if (!Maybe(6)) Line({{2, "WITHIN............. " + Blanks() + "STOCK-AREA"}, {46, "OFFSET 0"}});
    }

    void LocationMode() {
        if (Maybe(14)) return;
        const std::string duplicates(
            Pick({"", "DUPLICATES NOT ALLOWED", "DUPLICATES Not ALLOWED", "DUPLICATES LAST"}));
        switch (Below(5)) {
            case 0:
            case 1:
                Line({{2, "LOCATION MODE...... CALC USING"},
                      {34, "KEY-OF-IT" + Mostly(" DISPLACED", 2)},
                      {66, duplicates}});
                break;
            case 2:
                Line({{2, "LOCATION MODE...... DIRECT"}, {66, duplicates}});
                break;
            case 3:
                Line({{2, "LOCATION MODE...... VIA SET"},
                      {34, Name()},
                      {51, Mostly("DISPLACEMENT 8", 3)},
                      {70, duplicates}});
                break;
            default:
                Line({{2, "LOCATION MODE...... " + std::string(Pick({"VIA", "CALC", "", "PHYSICAL SEQ"}))}});
        }
    }

    void Memberships() {
        const std::size_t count = Maybe(9) ? 7 + Below(5) : Below(4);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string name = count > 6 && !Maybe(4) ? fmt::format("IX-{}", i + 1) : Name();
            indexes_.push_back(name);
            Line({{2, "SET MEMBERSHIP..... " + (Maybe(20)   ? " " + name
                                                : Maybe(20) ? "INDEX MEMBER"
                                                            : name)},
                  {39, std::string(Pick(
                           {"INDEX MEMBER", "INDEX MEMBER", "INDEX MEMBER", "CHAIN MEMBER", "INDEX OWNER"}))},
                  {60, Maybe(20) ? "INDEX MEMBER" : ""}});
        }
    }

    void Fields() {
        if (!Maybe(12)) Line({{1, "0DATA ITEM"}, {39, "USAGE"}});
        if (Maybe(12)) ControlItem();
        std::size_t count = Below(9);
        if (Maybe(250)) count = 599 + Below(4);
        for (std::size_t i = 0; i < count; ++i) {
            Line({{1, std::string(Pick(
                          {" 02 ", " 02 ", " 03 ", " 05 ", " 10 ", " 01 ", " 11 ", " 88 ", "002 ", " 2  "}))},
                  {5, fmt::format("FIELD-{}", i + 1) + (Maybe(20) ? "-WITH-A-NAME-OF-MORE-THAN-THIRTY" : "")},
                  {39, std::string(Pick({"DISPLAY", "COMP-3", "DISPLAY     OCCURS 3", ""}))},
                  {87, std::string(Pick({"X(8)", "S9(7)V99", "", "X(8)  VALUE 'RUNNING INTO START'"}))},
                  {112, "    1"},
                  {127, Maybe(9) ? "1234567" : "    8"}});
            if (count > 20) continue;
            if (Maybe(12)) PageHeading();
            if (Maybe(16)) lines_.push_back(std::string(21, ' ') + "REMARK");
            if (Maybe(30)) lines_.emplace_back(Pick({"0", " 02", "0DATA ITEM", "   X"}));
            while (Maybe(2)) ControlItem();
        }
        if (Maybe(30)) {
            const std::size_t keys = Maybe(6) ? 498 + Below(5) : 14 + Below(8);
            const std::string index = indexes_.empty() ? Name() : indexes_.back();
            for (std::size_t i = 0; i < keys; ++i) {
                lines_.push_back(fmt::format(" 02 KEY-{}", i + 1));
                lines_.push_back(std::string(38, ' ') + "SET CONTROL ITEM FOR --------      " + index +
                                 "   ASC");
            }
        }
    }

    void ControlItem() {
        Line({{Maybe(15) ? 1 + Below(20) : 39, "SET CONTROL ITEM FOR --------      " + Name()},
              {91, std::string(Pick({"ASC", "DSC", "ASC DSC", "", "ASCENDING", "DSC ASC"}))}});
    }

    void CalcSet() {
        Line({{2, "SET...... CALC"}, {34, "MODE... CHAIN"}});
        Line({{2, "OWNER.... " + (Maybe(3) ? Name() : "SR1")}});
        for (std::size_t i = Below(4); i > 0; --i) Member(Name());
    }

    void SetSection() {
        const std::string name = indexes_.empty() || Maybe(2) ? Name() : Pick(indexes_);
        const std::string owner = records_.empty() || Maybe(3) ? Name() : Pick(records_);
        const std::string member = records_.empty() || Maybe(3) ? Name() : Pick(records_);
        // Owner and member on the set's own line are read from there as well.
        Line({{2, "SET...... " + (Maybe(20) ? " " + name : name)},
              {34, Maybe(20) ? "OWNER.... " : "MODE... CHAIN"},
              {52, Maybe(20) ? "MEMBER... " + member : ""}});
        if (Maybe(12)) PageHeading();
        if (!Maybe(12)) Line({{2, "OWNER.... " + owner}, {34, "NP"}});
        for (std::size_t i = Maybe(3) ? Below(5) : 1; i > 0; --i) {
            Member(Maybe(10) ? owner : Maybe(2) ? member : Name());
        }
        if (Maybe(20)) Line({{2, "OWNER.... " + Name()}});
    }

    void Member(const std::string& name) {
        Line({{2, "MEMBER... " + name},
              {34, std::string(Pick({"NPO", "INDX", " INDX ", "", "NEXT PRIOR OWNER AND", "INDXX"}))},
              {52,
               std::string(Pick({"MA LAST", "MA ASC KEY DN", "", "  OM NEXT AND WHAT FOLLOWS BEHIND IT"}))},
              {106, Mostly("AREA", 2)}});
        if (Maybe(6)) Line({{34, "STORED"}, {61, " IN AREA SALES-AREA"}});
    }

    /// Faults of the whole listing: lines lost, doubled, out of order, and bytes that do not belong.
    void Disorder() {
        const auto line = [this] {
            return lines_.begin() + static_cast<std::ptrdiff_t>(Below(lines_.size()));
        };
        if (Maybe(5)) lines_.erase(line());
        if (lines_.empty()) return;
        if (Maybe(5)) {
            const std::string copy = *line();
            lines_.insert(line(), copy);
        }
        if (Maybe(8)) std::iter_swap(line(), line());
        if (Maybe(12)) std::rotate(lines_.begin(), line(), lines_.end());
        if (Maybe(12)) {
            const std::string tail = *line();
            *line() += tail;
        }
        if (Maybe(8)) {
            std::string& target = *line();
            for (std::size_t i = 1 + Below(3); i > 0 && !target.empty(); --i) {
                target[Below(target.size())] = static_cast<char>(Pick(bytes_));
            }
        }
        if (Maybe(10)) {
            std::string& target = *line();
            std::transform(target.begin(), target.end(), target.begin(), [](char c) {
                return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
            });
        }
    }

    std::string Join() {
        const std::size_t style = Below(4);  // 0 and 1: LF, 2: CRLF, 3: both at random
        std::string report;
        for (const std::string& line : lines_) {
            report += line;
            report += style == 2 || (style == 3 && Maybe(2)) ? "\r\n" : "\n";
        }
        if (Maybe(6) && !report.empty()) report.pop_back();
        if (Maybe(6)) report.resize(Below(report.size() + 1));
        return report;
    }

    std::mt19937_64 chance_;
    std::vector<std::string> names_;
    std::vector<std::string> records_, indexes_;  ///< What the report has named so far.
    std::size_t oddness_;
    std::vector<std::string> lines_;
    const std::vector<int> bytes_ = {0,    '\t', '\r', ' ',  '\'', '"', ';',
                                     0x7F, 0x80, 0xA0, 0xDC, 0xFF, '0', '.'};
};

}  // namespace

std::string GenerateOddReport(std::uint64_t seed) {
    return OddReport(seed).Generate();
}

}  // namespace norvelis
