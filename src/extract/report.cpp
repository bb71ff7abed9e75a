#include "extract/report.h"

#include <algorithm>
#include <array>
#include <istream>

#include "base/text.h"
#include "extract/format/keywords.h"

namespace norvelis {

namespace {

using namespace keywords;

constexpr std::size_t kMilestoneDistance = 4096;

// By the first two bytes of what is sought, a block at a time: a loop that a compiler turns into a few wide
// instructions, several times as fast as a search that compares the whole at each place.
std::size_t Find(std::string_view bytes, std::string_view sought, std::size_t from) {
    if (sought.size() == 1) return bytes.find(sought.front(), from);
    constexpr std::size_t kBlock = 64;
    for (; from + kBlock < bytes.size(); from += kBlock) {
        const char* block = bytes.data() + from;
        int hits = 0;
        for (std::size_t i = 0; i < kBlock; ++i)
            hits |= static_cast<int>(block[i] == sought[0]) & static_cast<int>(block[i + 1] == sought[1]);
        if (hits == 0) continue;
        const std::size_t found = bytes.substr(from, kBlock + sought.size() - 1).find(sought);
        if (found != std::string_view::npos) return from + found;
    }
    return bytes.find(sought, from);
}

// Finds the next occurrence of a text in the whole report, remembering it from line to line, so that the
// report is searched once for each text and not once for each line.
class Occurrences {
  public:
    Occurrences(std::string_view report, std::string_view sought)
        : report_(report), sought_(sought), next_(Find(report, sought, 0)) {}

    bool IsIn(std::size_t begin, std::size_t end) {
        if (next_ < begin) next_ = Find(report_, sought_, begin);
        return next_ < end;
    }

  private:
    std::string_view report_, sought_;
    std::size_t next_;
};

constexpr std::uint32_t Bit(KeywordKind kind) {
    return static_cast<std::uint32_t>(kind);
}

struct DottedKeyword {
    std::string_view keyword;
    KeywordKind kind;
};
// All of these end in dots and a blank.
constexpr std::array<DottedKeyword, 7> kDotted = {{{kRecordName, KeywordKind::RecordName},
                                                   {kRecordId, KeywordKind::RecordId},
                                                   {kLengthKind, KeywordKind::LengthKind},
                                                   {kLocationMode, KeywordKind::LocationMode},
                                                   {kWithin, KeywordKind::Within},
                                                   {kCalcSet, KeywordKind::CalcSet},
                                                   {kMember, KeywordKind::Member}}};

std::uint32_t DottedKinds(std::string_view line) {
    std::uint32_t kinds = 0;
    for (const auto& dotted : kDotted) {
        if (Column(line, dotted.keyword) != 0) kinds |= Bit(dotted.kind);
    }
    if (line.starts_with(kRecordNameAtStart)) kinds |= Bit(KeywordKind::RecordNameAtStart);
    if (line.starts_with(kSetAtStart)) kinds |= Bit(KeywordKind::SetAtStart);
    if (line.starts_with(kMembershipAtStart)) kinds |= Bit(KeywordKind::Membership);
    if (line.starts_with(kOwnershipAtStart)) kinds |= Bit(KeywordKind::Ownership);
    if (Column(line, kOwner, 2) != 0) kinds |= Bit(KeywordKind::Owner);
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

Report::Report(std::string bytes) : bytes_(std::move(bytes)) {
    const std::string_view all = bytes_;
    lines_.reserve(static_cast<std::size_t>(std::count(all.begin(), all.end(), '\n')) + 1);
    Occurrences dots(all, ".");
    Occurrences equals(all, "=");
    Occurrences dataItems(all, kDataItem);
    Occurrences controlItems(all, kControlItem);
    std::optional<std::size_t> lastText;
    std::size_t number = 0, nextMilestone = 0;

    for (std::size_t begin = 0; begin < all.size();) {
        ++number;
        if (begin >= nextMilestone) {
            milestones_.push_back({begin, number});
            nextMilestone = begin + kMilestoneDistance;
        }
        const auto [line, next] = LineAt(all, begin);
        const std::size_t end = begin + line.size();
        std::uint32_t kinds = 0;
        if (dots.IsIn(begin, end)) kinds |= DottedKinds(line);
        if (equals.IsIn(begin, end)) {
            if (Column(line, kRecordLength) != 0) kinds |= Bit(KeywordKind::RecordLength);
            if (Column(line, kDataLength) != 0) kinds |= Bit(KeywordKind::DataLength);
        }
        if (dataItems.IsIn(begin, end)) kinds |= Bit(KeywordKind::DataItem);
        if (Text(line, kIndexMemberColumn, kIndexMember.size()) == kIndexMember &&
            Column(line, kIndexMember) == kIndexMemberColumn) {
            kinds |= Bit(KeywordKind::IndexMember);
        }
        if (IsFieldLine(line)) {
            kinds |= Bit(KeywordKind::Field);
        } else if (IsOtherLevelLine(line)) {
            kinds |= Bit(KeywordKind::OtherLevel);
        }
        if (controlItems.IsIn(begin, end)) {
            kinds |= Bit(KeywordKind::ControlItem);
            if (lastText) above_.push_back({lines_.size(), *lastText});
        }
        if (kinds != 0) lines_.emplace_back(begin, kinds);
        if (!Trim(Text(line, 1, 20)).empty()) lastText = begin;
        begin = next;
    }
}

std::string_view Report::TextOf(const ReportLine& line) const {
    return LineAt(bytes_, line.Begin()).first;
}

std::optional<std::string_view> Report::NextLine(std::size_t& position) const {
    if (position >= bytes_.size()) return std::nullopt;
    const auto [line, next] = LineAt(bytes_, position);
    position = next;
    return line;
}

std::size_t Report::NumberOfLine(std::size_t begin) const {
    const auto behind = std::upper_bound(milestones_.begin(), milestones_.end(), begin,
                                         [](std::size_t b, const Milestone& m) { return b < m.begin; });
    if (behind == milestones_.begin()) return 1;
    const Milestone& milestone = *std::prev(behind);
    const std::string_view between =
        std::string_view(bytes_).substr(milestone.begin, begin - milestone.begin);
    return milestone.number + static_cast<std::size_t>(std::count(between.begin(), between.end(), '\n'));
}

std::optional<std::size_t> Report::TextAbove(std::size_t lineNumber) const {
    const auto found =
        std::lower_bound(above_.begin(), above_.end(), lineNumber,
                         [](const Above& above, std::size_t number) { return above.line < number; });
    if (found == above_.end() || found->line != lineNumber) return std::nullopt;
    return found->begin;
}

namespace {

constexpr std::size_t kCheckedName = 15;

// `behindFirst` gives what is behind the first occurrence of a text, a line end behind the name included. The
// name is cut shorter than in the dictionary, and then looked for from the top again: a name with blanks
// before it is not found that way.
template <typename BehindFirst>
bool NamesARecord(const BehindFirst& behindFirst) {
    const std::optional<std::string> behind = behindFirst(kRecordName);
    if (!behind) return false;
    const std::string_view name = Trim(Text(LineAt(*behind, 0).first, 1, kCheckedName));
    return !name.empty() && behindFirst(std::string(kRecordName) + std::string(name));
}

constexpr std::size_t kNameAndLineEnd = kCheckedName + 2;

}  // namespace

bool IsSchemaReport(std::string_view bytes) {
    return NamesARecord([bytes](std::string_view sought) -> std::optional<std::string> {
        const std::size_t found = Find(bytes, sought, 0);
        if (found == std::string_view::npos) return std::nullopt;
        return std::string(bytes.substr(found + sought.size(), kNameAndLineEnd));
    });
}

bool IsSchemaReport(std::istream& file) {
    return NamesARecord([&file](std::string_view sought) -> std::optional<std::string> {
        constexpr std::size_t kPiece = 1 << 20;
        const std::size_t kept = sought.size() + kNameAndLineEnd - 1;  // May be cut by the end of a piece.
        file.clear();
        file.seekg(0);
        for (std::string piece; file;) {
            if (piece.size() > kept) piece.erase(0, piece.size() - kept);
            const std::size_t before = piece.size();
            piece.resize(before + kPiece);
            file.read(piece.data() + before, kPiece);
            piece.resize(before + static_cast<std::size_t>(file.gcount()));
            const std::size_t found = Find(piece, sought, 0);
            if (found == std::string::npos) continue;
            const std::size_t behind = found + sought.size();
            if (behind + kNameAndLineEnd <= piece.size() || !file)
                return piece.substr(behind, kNameAndLineEnd);
        }
        return std::nullopt;
    });
}

}  // namespace norvelis
