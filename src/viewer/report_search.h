#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "viewer/file_reader.h"

namespace norvelis::viewer {

/// A text (UTF-8) in the bytes of a report (Windows-1252); nothing when it has a letter that none can have.
std::optional<std::string> ReportBytes(std::string_view utf8);

/// Looks for a text (not empty) without regard to letter case (A to Z). Touches no state, so that a search
/// through a large file may run in the background; a search that is stopped has found nothing.
class TextSearch {
  public:
    explicit TextSearch(std::string_view text);

    std::size_t Length() const { return text_.size(); }

    /// All places in a line, for marking them.
    std::vector<std::size_t> In(std::string_view line) const;

    /// Offset of the first place that begins at or behind `from`, or of the last one before `before`.
    std::optional<std::uint64_t> FindNext(const FileReader& file, std::uint64_t from,
                                          const std::stop_token& stop = {}) const;
    std::optional<std::uint64_t> FindPrevious(const FileReader& file, std::uint64_t before,
                                              const std::stop_token& stop = {}) const;

  private:
    std::size_t Find(std::string_view bytes, std::size_t from) const;  ///< npos for none.

    std::string text_;                      ///< In upper case.
    std::array<std::size_t, 256> advance_;  ///< How far to go on when this byte is under the text's end.
};

}  // namespace norvelis::viewer
