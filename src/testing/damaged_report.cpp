#include "testing/damaged_report.h"

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

namespace norvelis {

namespace {

constexpr std::size_t kFixedLength = 133;
constexpr std::size_t kTabStop = 8;
constexpr std::size_t kCardColumns = 80;

using Lines = std::vector<std::string>;

Lines Split(const std::string& report) {
    Lines lines;
    for (std::size_t begin = 0; begin < report.size();) {
        const std::size_t end = std::min(report.find('\n', begin), report.size());
        lines.push_back(report.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::string Join(const Lines& lines, std::string_view end = "\n") {
    std::string report;
    for (const std::string& line : lines) {
        report += line;
        report += end;
    }
    return report;
}

std::string Fixed(const Lines& lines) {
    std::string report;
    for (std::string line : lines) {
        line.resize(kFixedLength, ' ');
        report += line;
    }
    return report;
}

std::string Utf16(const std::string& report, bool bigEndian, bool mark) {
    std::string units = mark ? bigEndian ? "\xFE\xFF" : "\xFF\xFE" : "";
    for (const char c : report) {
        if (bigEndian) units += '\0';
        units += c;
        if (!bigEndian) units += '\0';
    }
    return units;
}

// The characters of a report have one place in both code pages but for the brackets. The table is written out
// here so that it does not come from the library that is under test.
std::string Ebcdic(const std::string& report, bool brackets1047, char lineEnd) {
    static constexpr std::string_view kCharacters =
        " .<(+|&!$*);-/,%_>?`:#@'=\"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    static constexpr std::string_view kPlaces =
        "\x40\x4B\x4C\x4D\x4E\x4F\x50\x5A\x5B\x5C\x5D\x5E\x60\x61\x6B\x6C\x6D\x6E\x6F\x79\x7A\x7B\x7C\x7D\x7E"
        "\x7F"
        "\x81\x82\x83\x84\x85\x86\x87\x88\x89\x91\x92\x93\x94\x95\x96\x97\x98\x99\xA2\xA3\xA4\xA5\xA6\xA7\xA8"
        "\xA9"
        "\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xD1\xD2\xD3\xD4\xD5\xD6\xD7\xD8\xD9\xE2\xE3\xE4\xE5\xE6\xE7\xE8"
        "\xE9"
        "\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF7\xF8\xF9";
    std::string bytes;
    for (const char c : report) {
        const std::size_t place = kCharacters.find(c);
        if (c == '\n') {
            bytes += lineEnd;
        } else if (c == '[' || c == ']') {
            bytes += brackets1047 ? c == '[' ? '\xAD' : '\xBD' : c == '[' ? '\xBA' : '\xBB';
        } else {
            bytes += place == std::string_view::npos ? '\x6F' : kPlaces[place];
        }
    }
    return bytes;
}

// Two blanks or more before a tab stop become a tab.
std::string Compressed(const std::string& line) {
    std::string out;
    for (std::size_t begin = 0; begin < line.size(); begin += kTabStop) {
        std::string cell = line.substr(begin, kTabStop);
        const std::size_t last = cell.find_last_not_of(' ');
        const std::size_t kept = last == std::string::npos ? 0 : last + 1;
        if (cell.size() == kTabStop && kTabStop - kept > 1) cell = cell.substr(0, kept) + '\t';
        out += cell;
    }
    return out;
}

class Damager {
  public:
    Damager(const std::string& report, std::uint64_t seed) : lines_(Split(report)), random_(seed) {}

    Lines& All() { return lines_; }
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(random_() % bound); }

    using Wanted = std::function<bool(const std::string& line)>;

    /// A random line of those wanted; the number of lines when there is none.
    std::size_t Pick(const Wanted& wanted) {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            if (wanted(lines_[i])) found.push_back(i);
        }
        return found.empty() ? lines_.size() : found[Below(found.size())];
    }

    void Lose(const Wanted& wanted) {
        const std::size_t at = Pick(wanted);
        if (at < lines_.size()) lines_.erase(Place(at));
    }
    void Double(const Wanted& wanted) {
        const std::size_t at = Pick(wanted);
        if (at < lines_.size()) lines_.insert(Place(at), std::string(lines_[at]));
    }
    void Change(const Wanted& wanted, const std::function<void(std::string& line)>& change) {
        const std::size_t at = Pick(wanted);
        if (at < lines_.size()) change(lines_[at]);
    }

    /// Lines behind a record's name or id, so many that its location mode is out of reach.
    void InsertInHeads(const Lines& inserted) {
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            if (!lines_[i].starts_with(" RECORD NAME") || Below(4) != 0) continue;
            i += 1 + Below(2);
            lines_.insert(Place(i), inserted.begin(), inserted.end());
            i += inserted.size();
        }
    }

  private:
    Lines::iterator Place(std::size_t at) { return lines_.begin() + static_cast<std::ptrdiff_t>(at); }

    Lines lines_;
    std::mt19937_64 random_;
};

Damager::Wanted StartsWith(std::string_view start) {
    return [start](const std::string& line) { return line.starts_with(start); };
}

bool IsElementaryField(const std::string& line) {
    return (line.starts_with(" 02 ") || line.starts_with(" 03 ")) && line.size() > 120;
}

// Behind the CALC set, members have rows of their own.
bool IsMember(const std::string& line) {
    return line.starts_with(" MEMBER... ") && line.size() > 105;
}

Lines HeadingOf(const Lines& lines, int pages) {
    Lines heading;
    for (int i = 0; i < pages; ++i) heading.insert(heading.end(), lines.begin(), lines.begin() + 3);
    return heading;
}

std::string DamageForm(const std::string& report, Damage damage, Damager& damager) {
    Lines& lines = damager.All();
    switch (damage) {
        case Damage::ReturnEnds:
            return Join(lines, "\r");
        case Damage::FixedLines:
            return Fixed(lines);
        case Damage::Utf16LittleEndian:
            return Utf16(report, false, true);
        case Damage::Utf16BigEndian:
            return Utf16(report, true, false);
        case Damage::Ebcdic037:
            return Ebcdic(report, false, damager.Below(2) == 0 ? '\x15' : '\x25');
        case Damage::Ebcdic1047:
            return Ebcdic(report, true, damager.Below(2) == 0 ? '\x15' : '\x25');
        case Damage::EbcdicFixedLines:
            return Ebcdic(Fixed(lines), false, '\x15');
        case Damage::ColumnStripped:
            for (std::string& line : lines) line.erase(0, 1);
            return Join(lines);
        case Damage::ColumnShifted:
            for (std::string& line : lines) line.insert(0, " ");
            return Join(lines);
        case Damage::Tabs:
            for (std::string& line : lines) line = Compressed(line);
            return Join(lines);
        default:  // CutAt80
            for (std::string& line : lines) line.resize(std::min(line.size(), kCardColumns));
            return Join(lines);
    }
}

void DamageLines(Damage damage, Damager& damager) {
    Lines& lines = damager.All();
    switch (damage) {
        case Damage::SchemaWithoutEquals:
            for (std::string& line : lines) {
                if (line.starts_with(" SCHEMA=")) line = " SCHEMA BULKSCHM  VERSION    1";
            }
            break;
        case Damage::HeadingsInHeads:
            damager.InsertInHeads(HeadingOf(lines, 2));
            break;
        case Damage::BlankLinesInHeads:
            damager.InsertInHeads(Lines(6, ""));
            break;
        case Damage::FieldLost:
            damager.Lose(IsElementaryField);
            break;
        case Damage::FieldDoubled:
            damager.Double(IsElementaryField);
            break;
        case Damage::MemberLost:
            damager.Lose(IsMember);
            break;
        case Damage::NameLineLost:
            damager.Lose(StartsWith(" RECORD NAME"));
            break;
        case Damage::LocationModeLost:
            damager.Lose(StartsWith(" LOCATION MODE"));
            break;
        case Damage::RecordLengthLost:
            damager.Change(StartsWith(" RECORD NAME"),
                           [](std::string& line) { line.resize(line.find("RLGTH=")); });
            break;
        case Damage::DataItemLost:
            damager.Lose(StartsWith("0DATA ITEM"));
            break;
        case Damage::SetLineLost:
            damager.Lose([](const std::string& line) {
                return line.starts_with(" SET...... ") && !line.starts_with(" SET...... CALC ");
            });
            break;
        case Damage::OwnerLost:
            damager.Lose([](const std::string& line) {
                return line.starts_with(" OWNER.... ") && !line.starts_with(" OWNER.... SR1");
            });
            break;
        case Damage::KeyLost:
            damager.Lose([](const std::string& line) { return line.find("SET CONTROL ITEM") != line.npos; });
            break;
        case Damage::AreaLost:
            damager.Lose(StartsWith(" WITHIN....."));
            break;
        default:  // PictureChanged
            damager.Change(IsElementaryField, [](std::string& line) { line.replace(86, 4, "A(3)"); });
    }
}

}  // namespace

std::string DamageReport(const std::string& report, Damage damage, std::uint64_t seed) {
    Damager damager(report, seed);
    if (damage == Damage::CutOff)
        return report.substr(0, report.size() / 8 + damager.Below(report.size() * 7 / 8));
    if (damage < Damage::CutOff) return DamageForm(report, damage, damager);
    DamageLines(damage, damager);
    return Join(damager.All());
}

}  // namespace norvelis
