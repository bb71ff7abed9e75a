#include "extract/repair/report_form.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>

#include "base/text.h"
#include "extract/format/keywords.h"

namespace norvelis::repair {

namespace {

using namespace keywords;

constexpr std::size_t kJudgedBytes = 1 << 20;
constexpr std::size_t kLongestFixedLine = 1000;
constexpr std::size_t kFarthestShift = 40;
/// The end position of a field starts in this column.
constexpr std::size_t kLastFieldColumn = 127;

// Lines follow each other at a constant distance, so keywords of one column lie multiples of it apart.
std::size_t FixedLineLength(std::string_view text) {
    std::size_t length = 0;
    for (const std::string_view keyword : {kRecordName, kRecordId, kLengthKind, kLocationMode, kWithin}) {
        const std::size_t first = text.find(keyword);
        if (first == std::string_view::npos) continue;
        for (std::size_t at = text.find(keyword, first + 1); at != std::string_view::npos;
             at = text.find(keyword, at + 1)) {
            length = std::gcd(length, at - first);
        }
    }
    // One record alone: its lines follow each other.
    if (length == 0) {
        const std::size_t name = text.find(kRecordName), id = text.find(kRecordId);
        if (name != std::string_view::npos && id != std::string_view::npos && id > name) length = id - name;
    }
    return length >= kRecordName.size() && length <= kLongestFixedLine ? length : 0;
}

// A few line ends of another kind at the very end of a file do not count.
LineEnds LineEndsOf(std::string_view text) {
    std::string_view before = text.substr(0, text.find('\n'));
    while (before.ends_with('\r')) before.remove_suffix(1);
    if (std::count(before.begin(), before.end(), '\r') > 1) return LineEnds::Return;
    return text.find('\n') == std::string_view::npos ? LineEnds::None : LineEnds::Newline;
}

/// Cuts lines off a text of some form.
class LineCutter {
  public:
    LineCutter(std::string_view text, const ReportForm& form) : rest_(text), form_(form) {}

    std::optional<std::string_view> Next() {
        if (rest_.empty()) return std::nullopt;
        std::size_t length = rest_.size(), next = length;
        if (form_.lineEnds == LineEnds::None && form_.lineLength > 0) {
            length = next = std::min(form_.lineLength, rest_.size());
        } else {
            length = std::min(rest_.find(form_.lineEnds == LineEnds::Return ? '\r' : '\n'), rest_.size());
            next = std::min(length + 1, rest_.size());
        }
        std::string_view line = rest_.substr(0, length);
        if (line.ends_with('\r')) line.remove_suffix(1);
        rest_.remove_prefix(next);
        return line;
    }

  private:
    std::string_view rest_;
    const ReportForm& form_;
};

void JudgeColumns(std::string_view text, ReportForm& form) {
    std::map<std::size_t, std::size_t> nameColumns;
    std::size_t nameLines = 0, longest = 0;
    bool fields = false;
    LineCutter cutter(text.substr(0, kJudgedBytes), form);
    while (const auto line = cutter.Next()) {
        longest = std::max(longest, TrimEnd(*line).size());
        if (const std::size_t column = Column(*line, kRecordName); column != 0) {
            ++nameLines;
            ++nameColumns[column];
        }
        fields = fields || (IsFieldLine(*line) && !TextIn(*line, kFieldUsage).starts_with("GROUP"));
    }
    for (const auto& [column, count] : nameColumns) {
        if (count * 2 > nameLines && column <= kFarthestShift) form.shift = static_cast<long>(column) - 2;
    }
    const bool tooShort = longest < kLastFieldColumn && form.firstTab == 0 && form.shift == 0;
    if (fields && tooShort) form.cutAt = longest;
}

}  // namespace

ReportForm FormOf(std::string_view bytes) {
    const Encoding encoding = DetectEncoding(bytes);
    if (encoding == Encoding::SingleByte) return FormOfDecoded(bytes, encoding);
    return FormOfDecoded(Decode(bytes, encoding), encoding);
}

ReportForm FormOfDecoded(std::string_view text, Encoding encoding) {
    ReportForm form;
    form.encoding = encoding;
    form.lineEnds = LineEndsOf(text);
    if (form.lineEnds == LineEnds::None) {
        form.lineLength = FixedLineLength(text);
        // A single line and nothing more is a report of one line.
        if (form.lineLength == 0) form.lineEnds = LineEnds::Newline;
    }
    if (const std::size_t tab = text.find('\t'); tab != std::string_view::npos) {
        const std::string_view before = text.substr(0, tab);
        const char end = form.lineEnds == LineEnds::Return ? '\r' : '\n';
        form.firstTab = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), end));
    }
    JudgeColumns(text, form);
    return form;
}

}  // namespace norvelis::repair
