#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvelis {

/// Which keywords a line of a report holds, as bits.
enum class Kind : std::uint16_t {
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

/// A line that holds at least one keyword or is a field line.
struct ReportLine {
    std::size_t begin, size;
    std::uint16_t kinds = 0;

    bool Has(Kind kind) const { return (kinds & static_cast<std::uint16_t>(kind)) != 0; }
};

/// A schema report in memory, read once: its bytes, and where its keywords stand. Lines end with LF or CRLF;
/// the last may lack its end, or half of it.
class Report {
  public:
    /// RuntimeFailure with the path when the file cannot be read.
    static Report Read(const std::string& path);
    explicit Report(std::string bytes);

    const std::vector<ReportLine>& Lines() const { return lines_; }
    std::string_view TextOf(const ReportLine& line) const {
        return std::string_view(bytes_).substr(line.begin, line.size);
    }

    /// The line that begins at `position`, which moves behind it; nothing at the end of the report.
    std::optional<std::string_view> NextLine(std::size_t& position) const;

    /// For a line with Kind::ControlItem: where the nearest line above it begins that has something in its
    /// first 20 columns.
    std::optional<std::size_t> TextAbove(std::size_t lineNumber) const;

  private:
    struct Above {
        std::size_t line, begin;
    };

    std::string bytes_;
    std::vector<ReportLine> lines_;
    std::vector<Above> above_;
};

/// True when the file is a schema report: it has a name line with a name behind the keyword. False too for a
/// file that does not exist; RuntimeFailure when it cannot be read.
bool ValidateReportFile(const std::string& path);

/// The same test on a report that is read already.
bool IsSchemaReport(const Report& report);

}  // namespace norvelis
