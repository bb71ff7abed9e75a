#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// Reports damaged in the ways that listings are known to be when they arrive.
namespace norvelis {

enum class Damage {
    ReturnEnds,
    FixedLines,
    Utf16LittleEndian,
    Utf16BigEndian,
    Ebcdic037,
    Ebcdic1047,
    EbcdicFixedLines,
    ColumnStripped,
    ColumnShifted,
    Tabs,
    CutAt80,
    CutOff,
    SchemaWithoutEquals,
    HeadingsInHeads,
    BlankLinesInHeads,
    FieldLost,
    FieldDoubled,
    MemberLost,
    NameLineLost,
    LocationModeLost,
    RecordLengthLost,
    DataItemLost,
    SetLineLost,
    OwnerLost,
    KeyLost,
    AreaLost,
    PictureChanged
};

/// What is known of a kind of damage. A share of 100 in 100 that is reported or made good is 1.
struct DamageKind {
    Damage damage;
    std::string_view name;
    double reported;  ///< At least this share is reported; 0: it leaves no trace.
    double repaired;  ///< At least this share is made good by repair; 0: what is lost is lost.
};

inline constexpr std::array<DamageKind, 27> kDamageKinds = {{
    {Damage::ReturnEnds, "CR line ends", 1, 1},
    {Damage::FixedLines, "133-byte lines without ends", 1, 1},
    {Damage::Utf16LittleEndian, "UTF-16 with byte order mark", 1, 1},
    {Damage::Utf16BigEndian, "UTF-16 without byte order mark", 1, 1},
    {Damage::Ebcdic037, "EBCDIC 037", 1, 1},
    {Damage::Ebcdic1047, "EBCDIC 1047", 1, 1},
    {Damage::EbcdicFixedLines, "EBCDIC in 133-byte lines", 1, 1},
    {Damage::ColumnStripped, "carriage control stripped", 1, 0.99},
    {Damage::ColumnShifted, "shifted by a column", 1, 0.99},
    {Damage::Tabs, "blanks compressed to tabs", 1, 0.99},
    {Damage::CutAt80, "cut at 80 columns", 1, 0},
    {Damage::CutOff, "end cut off", 1, 0},
    {Damage::SchemaWithoutEquals, "SCHEMA without =", 1, 1},
    {Damage::HeadingsInHeads, "page headings in heads", 1, 0.99},
    {Damage::BlankLinesInHeads, "blank lines in heads", 1, 0.99},
    {Damage::FieldLost, "elementary field lost", 0.95, 0},
    {Damage::FieldDoubled, "elementary field doubled", 0.95, 0},
    {Damage::MemberLost, "member line lost", 0.95, 0},
    {Damage::NameLineLost, "name line lost", 0.95, 0},
    {Damage::LocationModeLost, "location mode lost", 0.95, 0},
    {Damage::RecordLengthLost, "RLGTH= lost", 0.95, 0},
    {Damage::DataItemLost, "data item heading lost", 0.95, 0},
    {Damage::SetLineLost, "set line lost", 0.95, 0},
    {Damage::OwnerLost, "owner line lost", 0.95, 0},
    {Damage::KeyLost, "control item line lost", 0, 0},
    {Damage::AreaLost, "area line lost", 0.95, 0},
    {Damage::PictureChanged, "picture changed", 0, 0},
}};

/// A generated report (GenerateSchemaReport) with one kind of damage. Equal arguments give equal bytes. The
/// report as it was where it holds nothing that could be damaged so.
std::string DamageReport(const std::string& report, Damage damage, std::uint64_t seed);

}  // namespace norvelis
