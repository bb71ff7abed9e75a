#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Extraction at its plainest, the yardstick for the real one: every record reads the whole report again from
// its first line, and every row is looked up by walking a list. It keeps no index of the report and shares
// nothing with src/extract but the text columns of core.
namespace norvelis::literal {

/// A row by column names in their classic spelling. Values are report bytes; a column never written is null.
class Row {
  public:
    std::string& operator[](const std::string& column) { return values_[column]; }
    bool IsNull(const std::string& column) const { return !values_.contains(column); }
    /// Report bytes, empty for null.
    std::string Bytes(const std::string& column) const;
    /// UTF-8 as the store holds it; nothing for null.
    std::optional<std::string> Value(const std::string& column) const;

    bool operator==(const Row&) const = default;

  private:
    std::map<std::string, std::string> values_;
};

using Table = std::deque<Row>;  ///< In order of insertion.

struct Dictionary {
    Table schema_details, Parents, Record_Details, Record_layout, Connection_Details, Index_Details;

    /// By name in its classic spelling.
    const Table& ByName(std::string_view name) const;

    bool operator==(const Dictionary&) const = default;
};

/// The lines of a report: LF or CRLF ends them, the last one may lack its end.
std::vector<std::string> SplitLines(std::string_view report);

/// Whether the lines are a report at all.
bool ValidateReport(const std::vector<std::string>& lines);

/// Both passes over the lines, without the driver's questions: the schema's rows in `dictionary` are
/// replaced, those of other schemas stay. Returns 0, or the number of the run-time failure that ended it (9
/// or 62); the rows written until then stay.
int ExtractReport(const std::vector<std::string>& lines, Dictionary& dictionary);

}  // namespace norvelis::literal
