#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvelis {

/// Follows the positions of a record's elementary fields, which a report prints: each field begins behind the
/// one before it, unless it redefines one, so that a gap shows a lost line.
class FieldPositions {
  public:
    enum class Fault { None, Gap, Repeated };

    /// To be called for each line with a level number, in order.
    Fault Take(std::string_view line);

    /// For the record's data length, in bytes: true when the last fields are missing.
    bool EndsBefore(std::string_view dataLength) const;

    long LastEnd() const { return lastEnd_; }

  private:
    std::string_view lastName_;
    long lastStart_ = 0, lastEnd_ = 0;
    bool mayJump_ = false;  ///< A repeated group takes more bytes than its fields show.
};

}  // namespace norvelis
