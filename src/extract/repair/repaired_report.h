#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "extract/repair/line_map.h"

// What repair makes of a report.
namespace norvelis::repair {

enum class ChangeKind {
    Encoding,          ///< Another encoding was decoded.
    LineEnds,          ///< CR became a line end.
    FixedLines,        ///< Lines of one length were cut.
    Tabs,              ///< Tabs became blanks.
    CarriageControl,   ///< The missing first column was put back.
    ColumnsRemoved,    ///< Columns before the report's own were removed.
    SchemaWord,        ///< "SCHEMA name VERSION n" became "SCHEMA=name VERSION=n".
    HeaderFilled,      ///< Blank lines keep the first record out of the header.
    HeadingsRemoved,   ///< Page headings inside a section were removed.
    BlankLinesRemoved  ///< So were blank lines.
};

/// One kind of change: how often it was made and where first, in lines on disk.
struct Change {
    ChangeKind kind;
    std::size_t firstLine, count;
    std::string words;  ///< What was done, for a person.
};

struct RepairedReport {
    std::string bytes;
    LineMap lines;
    std::vector<Change> changes;  ///< In the order in which they were made; empty: `bytes` are as they were.
};

}  // namespace norvelis::repair
