#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvelis {

/// Which keywords a line of a report holds, as bits.
enum class KeywordKind : std::uint16_t {
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
};

/// A line that holds at least one keyword or is a field line: where it begins and what it holds. One word,
/// for a report has nearly as many of them as it has lines.
class ReportLine {
  public:
    ReportLine(std::uint64_t begin, std::uint16_t kinds) : word_(begin << 16 | kinds) {}

    std::size_t Begin() const { return word_ >> 16; }
    bool Has(KeywordKind kind) const { return (word_ & static_cast<std::uint16_t>(kind)) != 0; }

  private:
    std::uint64_t word_;
};

/// A schema report in memory, read once: its bytes, and where its keywords stand. Lines end with LF or CRLF;
/// the last may lack its end, or half of it.
class Report {
  public:
    explicit Report(std::string bytes);

    const std::vector<ReportLine>& Lines() const { return lines_; }
    /// The line without its end.
    std::string_view TextOf(const ReportLine& line) const;

    /// The line that begins at `position`, which moves behind it; nothing at the end of the report.
    std::optional<std::string_view> NextLine(std::size_t& position) const;

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
};

/// True when the bytes are a schema report: they have a name line with a name behind the keyword.
bool IsSchemaReport(std::string_view bytes);

}  // namespace norvelis
