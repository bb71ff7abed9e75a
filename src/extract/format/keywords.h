#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "base/text.h"

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
inline constexpr std::string_view kMembershipAtStart = " SET MEMBERSHIP..... ";
inline constexpr std::string_view kOwnershipAtStart = " SET OWNERSHIP...... ";
inline constexpr std::string_view kControlItem = "SET CONTROL ITEM FOR --------      ";
inline constexpr std::string_view kIndexMember = "INDEX MEMBER";
inline constexpr long kIndexMemberColumn = 39;

/// Behind a control item: the order of its key. The later one wins on a line that has both.
inline constexpr std::array<std::string_view, 2> kSortOrders = {" ASC", " DSC"};
inline constexpr long kSortOrderWidth = 5;
/// First text of a member line of an index set.
inline constexpr std::string_view kIndexedMember = "INDX";
/// Name of the set that stands for the location mode CALC of its members, and of the owner of the indexes
/// that belong to no record.
inline constexpr std::string_view kCalcName = "CALC";
inline constexpr std::string_view kSystemOwner = "SYSTEM";

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

/// Behind the location mode: key or set, cut where the displacement begins.
inline constexpr std::string_view kDisplacement = "DISPL";

/// More fields of a record, or keys of an index, end the extraction.
inline constexpr int kMostFields = 600;
inline constexpr int kMostSortKeys = 500;

/// Lines that start with one of the level numbers 02 to 10 in columns 2 and 3, a blank on either side.
constexpr bool IsFieldLine(std::string_view line) {
    if (line.size() < 4 || line[0] != ' ' || line[3] != ' ') return false;
    return line[1] == '0' ? line[2] >= '2' && line[2] <= '9' : line[1] == '1' && line[2] == '0';
}

/// Lines that start with any other level number: 01, 11 to 49, 66, 77, 88.
constexpr bool IsOtherLevelLine(std::string_view line) {
    if (line.size() < 4 || line[0] != ' ' || line[3] != ' ') return false;
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    return digit(line[1]) && digit(line[2]) && !IsFieldLine(line);
}

/// A span of columns: from (1-based), how many.
struct Span {
    long column, count;
};
inline std::string_view TextIn(std::string_view line, Span span) {
    return Text(line, span.column, span.count);
}
inline std::string_view NameIn(std::string_view line, Span span) {
    return Trim(TextIn(line, span));
}

/// A span behind a keyword: how far from its first column, how many.
struct Behind {
    long distance, count;
};
/// Empty on a line without the keyword's text there.
inline std::string_view TextBehind(std::string_view line, std::size_t keywordColumn, Behind span) {
    return Text(line, static_cast<long>(keywordColumn) + span.distance, span.count);
}
inline std::string_view TextBehind(std::string_view line, std::string_view keyword, Behind span) {
    return TextBehind(line, Column(line, keyword), span);
}

inline constexpr Behind kBehindRelease{9, 17}, kBehindDateMark{-3, 9}, kBehindSchema{7, 17},
    kBehindVersion{8, 5};
inline constexpr Behind kBehindRecordName{20, 17}, kBehindLength{6, 10}, kBehindRecordId{20, 15},
    kBehindLengthKind{20, 5}, kBehindLocationMode{20, 4}, kLocationKey{32, 30}, kBehindWithin{20, 15};
inline constexpr Behind kMemberFirstText{32, 17}, kMemberSecondText{50, 30};
inline constexpr Span kFieldLevel{1, 4}, kFieldName{5, 30}, kFieldUsage{39, 35}, kFieldPicture{87, 35},
    kFieldStart{112, 5}, kFieldEnd{127, 5};
inline constexpr Span kSetOrOwnerOrMember{11, 17}, kIndexName{21, 17}, kKeyName{4, 30}, kSortOption{52, 30};

}  // namespace norvelis::keywords
