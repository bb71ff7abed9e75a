#pragma once

#include <string>
#include <vector>

#include "copybook/item.h"
#include "dictionary/schema_contents.h"

// The fields of a record as the entries of a copybook, each at the byte where the report has it. What the
// dictionary does not hold shows in the positions: an entry that begins where an earlier one does redefines
// it, and bytes that no field covers become a FILLER.
namespace norvelis::copybook {

/// One entry, with the entries below it.
struct Entry {
    Item item;
    int level = 2;  ///< Of the report, unless that is no level below the entry above.
    std::vector<Entry> children;
    long start = 1;          ///< Byte of the record, of the first time.
    long bytes = 0;          ///< Of one time.
    bool isUnknown = false;  ///< Nothing is known but its bytes, if those: it is shown as PIC X(bytes).
    bool signIsSeparate = false;
    std::string redefines;   ///< Name of the entry beside it, as in the dictionary.
    bool isLeftOut = false;  ///< It overlaps others in a way that COBOL cannot say: shown as a comment.
    std::vector<std::string> remarks;  ///< What a reader must know about it, a sentence each.

    long TotalBytes() const;
};

struct RecordLayout {
    std::vector<Entry> entries;
    long bytes = 0;  ///< What a compiler gives the record.
};

RecordLayout LayOut(const dictionary::RecordContents& record);

/// The record's length of the dictionary; 0 when it has none.
long LengthOf(const dictionary::RecordContents& record);

}  // namespace norvelis::copybook
