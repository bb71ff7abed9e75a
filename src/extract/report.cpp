#include "extract/report.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "core/paths.h"
#include "core/text.h"
#include "extract/keywords.h"

namespace norvelis {

namespace {

using namespace keywords;

// Finds the next occurrence of a text in the whole report, remembering it from line to line, so that the
// report is searched once for each text and not once for each line.
class Occurrences {
  public:
    Occurrences(std::string_view report, std::string_view sought) : report_(report), sought_(sought) {
        Seek(0);
    }

    bool IsIn(std::size_t begin, std::size_t end) {
        if (next_ < begin) Seek(begin);
        return next_ < end;
    }

  private:
    void Seek(std::size_t from) {
        const void* found =
            memmem(report_.data() + from, report_.size() - from, sought_.data(), sought_.size());
        next_ = found == nullptr ? std::string_view::npos
                                 : static_cast<std::size_t>(static_cast<const char*>(found) - report_.data());
    }

    std::string_view report_, sought_;
    std::size_t next_ = 0;
};

constexpr std::uint16_t Bit(Kind kind) {
    return static_cast<std::uint16_t>(kind);
}

struct KeywordKind {
    std::string_view keyword;
    Kind kind;
};
// All of these end in dots and a blank.
constexpr std::array<KeywordKind, 7> kDotted = {{{kRecordName, Kind::RecordName},
                                                 {kRecordId, Kind::RecordId},
                                                 {kLengthKind, Kind::LengthKind},
                                                 {kLocationMode, Kind::LocationMode},
                                                 {kWithin, Kind::Within},
                                                 {kCalcSet, Kind::CalcSet},
                                                 {kMember, Kind::Member}}};

std::uint16_t DottedKinds(std::string_view line) {
    std::uint16_t kinds = 0;
    for (const auto& dotted : kDotted) {
        if (Column(line, dotted.keyword) != 0) kinds |= Bit(dotted.kind);
    }
    if (line.starts_with(kRecordNameAtStart)) kinds |= Bit(Kind::RecordNameAtStart);
    if (line.starts_with(kSetAtStart)) kinds |= Bit(Kind::SetAtStart);
    if (Column(line, kOwner, 2) != 0) kinds |= Bit(Kind::Owner);
    return kinds;
}

// The line that begins at `begin` without its end, and where the next begins. A report that was cut off
// between CR and LF has no CR in its last value.
std::pair<std::string_view, std::size_t> LineAt(std::string_view bytes, std::size_t begin) {
    const std::size_t newline = std::min(bytes.find('\n', begin), bytes.size());
    std::string_view line = bytes.substr(begin, newline - begin);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return {line, std::min(newline + 1, bytes.size())};
}

}  // namespace

Report Report::Read(const std::string& path) {
    return Report(ReadFile(path));
}

Report::Report(std::string bytes) : bytes_(std::move(bytes)) {
    const std::string_view all = bytes_;
    Occurrences dots(all, ". ");
    Occurrences equals(all, "LGTH=");
    Occurrences dataItems(all, kDataItem);
    Occurrences controlItems(all, kControlItem);
    Occurrences indexMembers(all, kIndexMember);
    std::optional<std::size_t> lastText;

    for (std::size_t begin = 0; begin < all.size();) {
        const auto [line, next] = LineAt(all, begin);
        const std::size_t end = begin + line.size();
        std::uint16_t kinds = 0;
        if (dots.IsIn(begin, end)) kinds |= DottedKinds(line);
        if (equals.IsIn(begin, end)) {
            if (Column(line, kRecordLength) != 0) kinds |= Bit(Kind::RecordLength);
            if (Column(line, kDataLength) != 0) kinds |= Bit(Kind::DataLength);
        }
        if (dataItems.IsIn(begin, end)) kinds |= Bit(Kind::DataItem);
        if (indexMembers.IsIn(begin, end) && Column(line, kIndexMember) == kIndexMemberColumn) {
            kinds |= Bit(Kind::IndexMember);
        }
        if (IsFieldLine(line)) kinds |= Bit(Kind::Field);
        if (controlItems.IsIn(begin, end)) {
            kinds |= Bit(Kind::ControlItem);
            if (lastText) above_.push_back({lines_.size(), *lastText});
        }
        if (kinds != 0) lines_.push_back({begin, line.size(), kinds});
        if (!Trim(Text(line, 1, 20)).empty()) lastText = begin;
        begin = next;
    }
}

std::optional<std::string_view> Report::NextLine(std::size_t& position) const {
    if (position >= bytes_.size()) return std::nullopt;
    const auto [line, next] = LineAt(bytes_, position);
    position = next;
    return line;
}

std::optional<std::size_t> Report::TextAbove(std::size_t lineNumber) const {
    const auto found =
        std::lower_bound(above_.begin(), above_.end(), lineNumber,
                         [](const Above& above, std::size_t number) { return above.line < number; });
    if (found == above_.end() || found->line != lineNumber) return std::nullopt;
    return found->begin;
}

bool ValidateReportFile(const std::string& path) {
    return FileExists(path) && IsSchemaReport(Report::Read(path));
}

// The name is cut shorter than in the dictionary, and then looked for from the top again: a report whose
// first name line has a name passes.
bool IsSchemaReport(const Report& report) {
    for (const auto& line : report.Lines()) {
        if (!line.Has(Kind::RecordName)) continue;
        const std::string_view text = report.TextOf(line);
        const auto behind = static_cast<long>(Column(text, kRecordName) + kRecordName.size());
        const std::string_view name = Trim(Text(text, behind, 15));
        if (name.empty()) return false;
        const std::string sought = std::string(kRecordName) + std::string(name);
        return std::any_of(report.Lines().begin(), report.Lines().end(), [&](const ReportLine& other) {
            return other.Has(Kind::RecordName) && Column(report.TextOf(other), sought) != 0;
        });
    }
    return false;
}

}  // namespace norvelis
