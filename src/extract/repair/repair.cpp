#include "extract/repair/repair.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "base/text.h"
#include "extract/format/keywords.h"
#include "extract/repair/lines.h"
#include "extract/repair/report_form.h"
#include "extract/repair/sections.h"

namespace norvelis::repair {

namespace {

using namespace keywords;

constexpr std::size_t kTabStop = 8;

// A CR before LF belongs to it.
void RepairReturns(RepairedReport& report) {
    std::size_t count = 0;
    std::string& bytes = report.bytes;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' || (i + 1 < bytes.size() && bytes[i + 1] == '\n')) continue;
        bytes[i] = '\n';
        ++count;
    }
    report.changes.push_back(
        {ChangeKind::LineEnds, 1, count, fmt::format("{} CR line ends were read as line ends", count)});
}

// The blanks that fill a line are not the report's own.
void CutFixedLines(RepairedReport& report, std::size_t length) {
    std::string lines;
    lines.reserve(report.bytes.size());
    std::size_t count = 0;
    for (std::size_t begin = 0; begin < report.bytes.size(); begin += length, ++count) {
        lines += TrimEnd(std::string_view(report.bytes).substr(begin, length));
        lines += '\n';
    }
    report.bytes = std::move(lines);
    report.changes.push_back({ChangeKind::FixedLines, 1, count,
                              fmt::format("{} lines of {} bytes without line ends were cut", count, length)});
}

std::string WithoutTabs(std::string_view line) {
    std::string expanded;
    for (const char c : line) {
        if (c == '\t') {
            expanded.append(kTabStop - expanded.size() % kTabStop, ' ');
        } else {
            expanded += c;
        }
    }
    return expanded;
}

// What a printer would have been sent in column 1: a new page, a blank line before, or nothing.
char CarriageControl(std::string_view line) {
    constexpr std::string_view dataItem = kDataItem.substr(1);
    if (line.find(kRelease) != std::string_view::npos) return '1';
    return line.starts_with(dataItem) ? kDataItem.front() : ' ';
}

// Rewrites each line; the line ends stay.
template <typename Rewrite>
void RewriteLines(RepairedReport& report, Rewrite rewrite) {
    std::string rewritten;
    rewritten.reserve(report.bytes.size() + report.bytes.size() / 64);
    std::size_t number = 0;
    ForEachLine(report.bytes, [&](const Line& line) { rewrite(line, ++number, rewritten); });
    report.bytes = std::move(rewritten);
}

void ExpandTabs(RepairedReport& report) {
    Change change{ChangeKind::Tabs, 0, 0, {}};
    RewriteLines(report, [&](const Line& line, std::size_t number, std::string& out) {
        if (line.text.find('\t') == std::string_view::npos) {
            out += line.whole;
            return;
        }
        if (++change.count == 1) change.firstLine = number;
        out += WithoutTabs(line.text);
        out += line.End();
    });
    change.words = fmt::format("tabs became blanks in {} lines", change.count);
    report.changes.push_back(std::move(change));
}

void ShiftColumns(RepairedReport& report, long shift) {
    std::size_t count = 0;
    RewriteLines(report, [&](const Line& line, std::size_t, std::string& out) {
        std::string_view text = line.text;
        if (shift < 0) {
            const bool formFeed = text.starts_with('\f');
            if (formFeed) text.remove_prefix(1);
            out += formFeed ? '1' : CarriageControl(text);
        } else {
            text.remove_prefix(std::min(static_cast<std::size_t>(shift), text.size()));
        }
        out += text;
        out += line.End();
        ++count;
    });
    if (shift < 0) {
        report.changes.push_back(
            {ChangeKind::CarriageControl, 1, count,
             fmt::format("the column of carriage control was put back in {} lines", count)});
    } else {
        report.changes.push_back({ChangeKind::ColumnsRemoved, 1, count,
                                  fmt::format("{} lines were read from column {} on", count, shift + 1)});
    }
}

}  // namespace

RepairedReport RepairReport(std::string bytes, std::optional<Encoding> encoding) {
    RepairedReport report;
    const Encoding written = encoding.value_or(DetectEncoding(bytes));
    if (written == Encoding::SingleByte) {
        report.bytes = std::move(bytes);
    } else {
        report.bytes = Decode(bytes, written);
        report.changes.push_back({ChangeKind::Encoding, 1, 1,
                                  fmt::format("the file was read as {}{}", NameOf(written),
                                              encoding ? "" : ", which it seems to be")});
    }
    const ReportForm form = FormOfDecoded(report.bytes, written);
    if (form.lineEnds == LineEnds::Return) RepairReturns(report);
    if (form.lineEnds == LineEnds::None) CutFixedLines(report, form.lineLength);
    if (form.firstTab != 0) ExpandTabs(report);
    // One column to the left is the one of carriage control; more of them are lost with what they held.
    if (form.shift >= -1 && form.shift != 0) ShiftColumns(report, form.shift);
    RepairSections(report);
    return report;
}

}  // namespace norvelis::repair
