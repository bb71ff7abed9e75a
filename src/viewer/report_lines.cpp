#include "viewer/report_lines.h"

#include <algorithm>

#include "base/text.h"
#include "extract/format/keywords.h"

namespace norvelis::viewer {

namespace {

constexpr std::size_t kPiece = 1 << 20, kSmallPiece = 1 << 16;
constexpr std::uint64_t kLinesToMark = 64, kBytesToMark = kSmallPiece;
constexpr std::size_t kMostSections = 100'000;  // No report has as many; a file that is none may.

std::string_view WithoutReturn(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

bool StartsPage(std::string_view line) {
    return line.starts_with('1') || line.find('\f') != std::string_view::npos;
}

}  // namespace

ReportLines::ReportLines(const std::string& path) : file_(path) {
    Step();
}

double ReportLines::Progress() const {
    return IsComplete() ? 1 : static_cast<double>(next_) / static_cast<double>(file_.Size());
}

void ReportLines::AddLine(std::uint64_t offset) {
    if (marks_.empty() || lines_ - marks_.back().line >= kLinesToMark ||
        offset - marks_.back().offset >= kBytesToMark)
        marks_.push_back({lines_, offset});
    ++lines_;
}

bool ReportLines::Step() {
    if (IsComplete()) return false;
    const std::string bytes = file_.Read(next_, kPiece);
    if (bytes.empty()) {  // The file has shrunk: its lines end here, whatever size it had.
        next_ = file_.Size();
    } else if (inLongLine_) {
        const auto end = bytes.find('\n');
        inLongLine_ = end == std::string::npos;
        next_ += inLongLine_ ? bytes.size() : end + 1;
    } else {
        AddLines(bytes);
    }
    return !IsComplete();
}

/// What is behind the last whole line is read again with what follows it, unless it is all there is.
void ReportLines::AddLines(std::string_view bytes) {
    const bool isLast = next_ + bytes.size() >= file_.Size();
    const auto lastEnd = bytes.rfind('\n');
    inLongLine_ = lastEnd == std::string_view::npos && !isLast;
    if (!isLast && !inLongLine_) bytes = bytes.substr(0, lastEnd + 1);
    for (std::size_t begin = 0; begin < bytes.size();) {
        AddLine(next_ + begin);
        begin = std::min(bytes.find('\n', begin), bytes.size() - 1) + 1;
    }
    AddSections(bytes);
    next_ += bytes.size();
}

// The section of a record begins on the line that has its name and its length.
void ReportLines::AddSections(std::string_view bytes) {
    for (auto at = bytes.find(keywords::kRecordName); at != std::string_view::npos;
         at = bytes.find(keywords::kRecordName, at + 1)) {
        const auto begin = bytes.rfind('\n', at) + 1;
        const std::string_view line = bytes.substr(begin, bytes.find('\n', at) - begin);
        if (line.find(keywords::kRecordLength) == std::string_view::npos || sections_.size() >= kMostSections)
            continue;
        const std::string_view behind = line.substr(at - begin + keywords::kRecordName.size());
        std::string record(Trim(behind.substr(0, keywords::kNameWidth)));
        if (!record.empty() && records_.insert(record).second)
            sections_.push_back({std::move(record), LineAt(next_ + begin)});
    }
}

void ReportLines::IndexTo(std::uint64_t offset) {
    while (next_ <= offset && Step()) {
    }
}

bool ReportLines::IndexToLine(std::uint64_t line) {
    while (lines_ <= line && Step()) {
    }
    return line < lines_;
}

std::uint64_t ReportLines::OffsetOf(std::uint64_t line) const {
    const auto behind = std::ranges::upper_bound(marks_, line, {}, &Mark::line);
    if (behind == marks_.begin()) return 0;
    Mark place = *std::prev(behind);
    while (place.line < line) {
        const std::string bytes = file_.Read(place.offset, kSmallPiece);
        std::size_t begin = 0;
        while (place.line < line) {
            const auto end = bytes.find('\n', begin);
            if (end == std::string::npos) break;
            begin = end + 1;
            ++place.line;
        }
        if (bytes.empty()) break;
        place.offset += place.line < line ? bytes.size() : begin;
    }
    return place.offset;
}

std::uint64_t ReportLines::LineAt(std::uint64_t offset) const {
    const auto behind = std::ranges::upper_bound(marks_, offset, {}, &Mark::offset);
    if (behind == marks_.begin()) return 0;
    const Mark& mark = *std::prev(behind);
    std::uint64_t line = mark.line;
    // All lines of a mark begin within its first bytes; the rest is the last one.
    const auto count = std::min<std::uint64_t>(offset - mark.offset, 2 * kBytesToMark);
    const std::string bytes = file_.Read(mark.offset, static_cast<std::size_t>(count));
    line += static_cast<std::uint64_t>(std::ranges::count(bytes, '\n'));
    return line;
}

std::vector<Line> ReportLines::Read(std::uint64_t first, std::size_t count, std::size_t mostBytes) const {
    std::vector<Line> lines;
    std::uint64_t offset = OffsetOf(first);
    std::string bytes;
    std::size_t at = 0;
    for (; first < lines_ && lines.size() < count; ++first) {
        std::string text;
        for (bool ended = false; !ended;) {
            if (at == bytes.size()) {
                bytes = file_.Read(offset, kSmallPiece);
                offset += bytes.size();
                at = 0;
                if (bytes.empty()) break;
            }
            const auto end = bytes.find('\n', at);
            ended = end != std::string::npos;
            if (text.size() <= mostBytes) text.append(bytes, at, (ended ? end : bytes.size()) - at);
            at = ended ? end + 1 : bytes.size();
        }
        const std::string_view whole = WithoutReturn(text), shown = whole.substr(0, mostBytes);
        lines.push_back({std::string(shown), shown.size() == whole.size(), StartsPage(shown)});
    }
    return lines;
}

std::uint64_t ReportLines::EndOf(std::uint64_t line) const {
    return line + 1 < lines_ ? OffsetOf(line + 1) : next_;
}

std::string ReportLines::ReadPart(std::uint64_t line, std::uint64_t column, std::size_t count) const {
    const std::uint64_t begin = OffsetOf(line), end = EndOf(line);
    if (begin + column >= end) return {};
    std::string part = file_.Read(
        begin + column, static_cast<std::size_t>(std::min<std::uint64_t>(count, end - begin - column)));
    if (part.ends_with('\n')) part.pop_back();
    if (part.ends_with('\r')) part.pop_back();
    return part;
}

std::uint64_t ReportLines::LengthOf(std::uint64_t line) const {
    const std::uint64_t begin = OffsetOf(line), end = EndOf(line);
    const std::uint64_t last = std::min<std::uint64_t>(end - begin, 2);
    const std::string bytes = file_.Read(end - last, static_cast<std::size_t>(last));
    std::string_view tail = bytes;
    if (tail.ends_with('\n')) tail.remove_suffix(1);
    tail = WithoutReturn(tail);
    return end - begin - (bytes.size() - tail.size());
}

Place ReportLines::PlaceAt(std::uint64_t offset) const {
    const std::uint64_t line = LineAt(offset);
    return {line, offset - OffsetOf(line)};
}

std::uint64_t ReportLines::OffsetOfPlace(Place place) const {
    if (place.line >= lines_) return next_;
    return OffsetOf(place.line) + std::min(place.column, LengthOf(place.line));
}

std::string ReportLines::ReadBetween(Place from, Place to, std::size_t count) const {
    const std::uint64_t begin = OffsetOfPlace(from), end = OffsetOfPlace(to);
    if (end <= begin) return {};
    return file_.Read(begin, static_cast<std::size_t>(std::min<std::uint64_t>(count, end - begin)));
}

void ReportLines::GoOn() {
    const bool lastMayGrow = lines_ > 0 && file_.Size() > 0 && file_.Read(file_.Size() - 1, 1) != "\n";
    if (lastMayGrow && IsComplete()) {
        next_ = OffsetOf(--lines_);
        inLongLine_ = false;
        while (!marks_.empty() && marks_.back().line >= lines_) marks_.pop_back();
    }
    file_.TakeSize();
}

}  // namespace norvelis::viewer
