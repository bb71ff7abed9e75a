#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvelis {

/// Which keywords a line of a report holds, as bits.
enum class KeywordKind : std::uint32_t {
    RecordName = 1 << 0,
    RecordNameAtStart = 1 << 1,
    RecordLength = 1 << 2,
    DataLength = 1 << 3,
    RecordId = 1 << 4,
    LengthKind = 1 << 5,
    LocationMode = 1 << 6,
    Within = 1 << 7,
    DataItem = 1 << 8,
    CalcSet = 1 << 9,
    SetAtStart = 1 << 10,
    Owner = 1 << 11,   ///< From column 2 on.
    Member = 1 << 12,  ///< Anywhere.
    ControlItem = 1 << 13,
    IndexMember = 1 << 14,  ///< First occurrence exactly at column 39.
    Field = 1 << 15,
    OtherLevel = 1 << 16,  ///< A field line of a level that the dictionary leaves out.
    Membership = 1 << 17,  ///< At column 1, as Ownership.
    Ownership = 1 << 18,
};

/// A line that holds at least one keyword or is a field line: where it begins and what it holds. One word,
/// for a report has nearly as many of them as it has lines.
class ReportLine {
  public:
    ReportLine(std::uint64_t begin, std::uint32_t kinds) : word_(begin << kKindBits | kinds) {}

    std::size_t Begin() const { return word_ >> kKindBits; }
    bool Has(KeywordKind kind) const { return (word_ & static_cast<std::uint32_t>(kind)) != 0; }

  private:
    static constexpr int kKindBits = 20;

    std::uint64_t word_;
};

/// A schema report in memory, read once: its bytes, and where its keywords are. Lines end with LF or CRLF;
/// the last may lack its end, or half of it.
class Report {
  public:
    explicit Report(std::string bytes);

    std::string_view Bytes() const { return bytes_; }
    const std::vector<ReportLine>& Lines() const { return lines_; }
    /// The line without its end.
    std::string_view TextOf(const ReportLine& line) const;

    /// The line that begins at `position`, which moves behind it; nothing at the end of the report.
    std::optional<std::string_view> NextLine(std::size_t& position) const;

    /// The number, from 1, of the line that begins at `begin`.
    std::size_t NumberOfLine(std::size_t begin) const;

    /// For a line with KeywordKind::ControlItem: where the nearest line above it begins that has something in
    /// its first 20 columns.
    std::optional<std::size_t> TextAbove(std::size_t lineNumber) const;

  private:
    struct Above {
        std::size_t line, begin;
    };

    std::string bytes_;
    std::vector<ReportLine> lines_;
    std::vector<Above> above_;
    struct Milestone {
        std::size_t begin, number;
    };
    std::vector<Milestone> milestones_;  ///< A line every few kilobytes.
};

/// True when the bytes are a schema report: they have a name line with a name behind the keyword.
bool IsSchemaReport(std::string_view bytes);
/// The same of a file's bytes, of which it holds a piece at a time and reads no more than it must.
bool IsSchemaReport(std::istream& file);

}  // namespace norvelis
