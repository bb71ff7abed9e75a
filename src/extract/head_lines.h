#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "extract/report.h"

namespace norvelis {

/// Where the lines of records' heads are, so that a section whose list of fields is far away need not be read
/// line by line. Numbers are those of Report::Lines.
class HeadLines {
  public:
    explicit HeadLines(const Report& report);

    /// The first line with a data item heading from `line` on.
    std::optional<std::size_t> DataItemFrom(std::size_t line) const;

    /// From `first` on and before `limit`: the last line of each kind, in order. Reading these alone gives
    /// the values that reading all of them gives, unless one has an empty length.
    std::vector<std::size_t> LastOfEachKind(std::size_t first, std::size_t limit) const;

    bool HasEmptyLength() const { return hasEmptyLength_; }

  private:
    static constexpr std::array kKinds = {KeywordKind::RecordName,   KeywordKind::DataLength,
                                          KeywordKind::RecordId,     KeywordKind::LengthKind,
                                          KeywordKind::LocationMode, KeywordKind::Within};

    std::array<std::vector<std::size_t>, kKinds.size()> linesOfKind_;
    std::vector<std::size_t> dataItems_;
    bool hasEmptyLength_ = false;
};

}  // namespace norvelis
