#pragma once

#include <cstddef>
#include <string_view>

#include "extract/repair/encodings.h"

namespace norvelis::repair {

enum class LineEnds {
    Newline,  ///< LF or CRLF, as the reader takes them.
    Return,   ///< CR alone.
    None      ///< Lines of one length follow each other.
};

/// The form in which a report was printed or sent: what every line of it has in common.
struct ReportForm {
    Encoding encoding = Encoding::SingleByte;
    LineEnds lineEnds = LineEnds::Newline;
    std::size_t lineLength = 0;  ///< In bytes, without line ends only.
    long shift = 0;              ///< By how many columns everything is too far right; -1: the column of
                                 ///< carriage control is missing.
    std::size_t firstTab = 0;    ///< Line with the first tab, 0 when there is none.
    std::size_t cutAt = 0;       ///< Columns of the longest line when the ends of the field lines are lost.

    /// The form that the reader takes.
    bool IsPlain() const {
        return encoding == Encoding::SingleByte && lineEnds == LineEnds::Newline && shift == 0 &&
               firstTab == 0 && cutAt == 0;
    }
};

/// The form of a report in the encoding that it seems to have. Columns are judged by its first megabyte.
ReportForm FormOf(std::string_view bytes);

/// The form of a report that was decoded from `encoding`.
ReportForm FormOfDecoded(std::string_view text, Encoding encoding);

}  // namespace norvelis::repair
