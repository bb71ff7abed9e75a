#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// Every keyword of a schema report, with the columns of what is behind it. A report has no grammar: a
// line means what the keywords in it say. Case counts, blanks count, the trailing one too.
namespace norvelis::keywords {

inline constexpr std::string_view kRecordName = "RECORD NAME........ ";
inline constexpr std::string_view kRecordNameAtStart = " RECORD NAME........ ";
inline constexpr std::string_view kRecordLength = "RLGTH=";
inline constexpr std::string_view kDataLength = "DLGTH=";
inline constexpr std::string_view kRecordId = "RECORD ID.......... ";
inline constexpr std::string_view kLengthKind = "RECORD LENGTH...... ";
inline constexpr std::string_view kLocationMode = "LOCATION MODE...... ";
inline constexpr std::string_view kWithin = "WITHIN............. ";
inline constexpr std::string_view kDataItem = "0DATA ITEM";
inline constexpr std::string_view kCalcSet = "SET...... CALC";
inline constexpr std::string_view kSetAtStart = " SET...... ";
inline constexpr std::string_view kOwner = "OWNER.... ";
inline constexpr std::string_view kMember = "MEMBER... ";
inline constexpr std::string_view kControlItem = "SET CONTROL ITEM FOR --------      ";
inline constexpr std::string_view kIndexMember = "INDEX MEMBER";
inline constexpr long kIndexMemberColumn = 39;

/// The header, in the first ten lines.
inline constexpr int kHeaderLines = 10;
inline constexpr std::string_view kRelease = "IDMSRPTS";
inline constexpr std::string_view kDateMark = "/";
inline constexpr std::string_view kSchema = "SCHEMA=";
inline constexpr std::string_view kVersion = "VERSION=";

/// No name is longer: set, record and index names are cut at this width.
inline constexpr std::size_t kNameWidth = 17;

/// What the three location modes look like, in the order in which they are tried. The duplicates words differ
/// in case from mode to mode: only a CALC line is looked at for the upper-case ones.
struct LocationMode {
    std::string_view keyword, noDuplicates, mode;
    bool entry;  ///< Can be reached without a set, so it has a row in Parents.
};
inline constexpr std::array<LocationMode, 3> kLocationModes = {{
    {"LOCATION MODE...... DIRECT", "DUPLICATES Not ALLOWED", "DIRECT", true},
    {"LOCATION MODE...... CALC USING", "DUPLICATES NOT ALLOWED", "CALC", true},
    {"LOCATION MODE...... VIA SET", "DUPLICATES Not ALLOWED", "VIA", false},
}};
/// The mode is looked for on the name line and on this many lines behind it.
inline constexpr int kLinesToLocationMode = 6;

/// Lines that start with one of the level numbers 02 to 10 in columns 2 and 3, a blank on either side.
constexpr bool IsFieldLine(std::string_view line) {
    if (line.size() < 4 || line[0] != ' ' || line[3] != ' ') return false;
    return line[1] == '0' ? line[2] >= '2' && line[2] <= '9' : line[1] == '1' && line[2] == '0';
}

/// A span of columns: from (1-based), how many.
struct Span {
    long column, count;
};
inline constexpr Span kFieldLevel{1, 4}, kFieldName{5, 30}, kFieldUsage{39, 35}, kFieldPicture{87, 35},
    kFieldStart{112, 5}, kFieldEnd{127, 5};
inline constexpr Span kSetOrOwnerOrMember{11, 17}, kIndexName{21, 17}, kKeyName{4, 30}, kSortOption{52, 30};

}  // namespace norvelis::keywords
