#pragma once

#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "extract/head_lines.h"
#include "extract/report.h"

namespace norvelis {

/// A keyword with the text behind it, somewhere in a report.
struct Occurrence {
    std::string_view tail;  ///< Behind the keyword, cut at the width of a name.
    std::size_t line;       ///< Number in Report::Lines.
    std::size_t column;     ///< Of the keyword, 1-based.
};

/// Answers "which lines hold KEYWORD + name", a search by substring, so that a name also finds every longer
/// one that it begins.
class PrefixIndex {
  public:
    void Add(const Occurrence& occurrence) { occurrences_.push_back(occurrence); }
    void Sort();

    /// In order of lines, the first place of each line.
    std::vector<Occurrence> Matches(std::string_view name) const;
    std::optional<std::size_t> FirstLine(std::string_view name) const;
    std::optional<std::size_t> LastLineBefore(std::string_view name, std::size_t limit) const;

  private:
    std::pair<std::size_t, std::size_t> Range(std::string_view name) const;

    std::vector<Occurrence> occurrences_;
};

/// What the second pass asks of a report, worked out once instead of by reading the report again for each
/// record. Each answer is the one that a reading from the top gives. The report must outlive the index.
class ReportIndex {
  public:
    explicit ReportIndex(const Report& report);

    /// Where reading of the record's section begins: the first line with "RECORD NAME........ " + name and
    /// "RLGTH=".
    std::optional<std::size_t> SectionStart(std::string_view record) const {
        return sections_.FirstLine(record);
    }

    /// The last such line before line `limit`.
    std::optional<std::size_t> LastSectionStart(std::string_view record, std::size_t limit) const {
        return sections_.LastLineBefore(record, limit);
    }

    /// The set line that counts for this name: the first of a set whose name begins with it.
    std::optional<std::size_t> SetLine(std::string_view set) const { return sets_.FirstLine(set); }

    /// Worked out when first asked for.
    const HeadLines& Heads();

    struct Membership {
        std::string_view member, set;
    };
    /// The members behind each owner line of this record, with the name of the set they are in.
    const std::vector<Membership>& MembersOf(std::string_view owner) const;

    /// Member lines for this member in the first set whose name begins with `set`.
    std::vector<Occurrence> MemberLines(std::string_view set, std::string_view member);

    /// The record's first name line at column 1, where its block begins.
    std::optional<std::size_t> BlockStart(std::string_view record) const;

    struct IndexLine {
        std::string_view index;
        std::size_t line;
    };
    /// The index lines of the record's first block, in order; the report may repeat a name.
    std::vector<IndexLine> IndexLines(std::string_view record) const;

    /// Lines with "SET CONTROL ITEM FOR" this index.
    std::vector<Occurrence> ControlItems(std::string_view index) const {
        return controlItems_.Matches(index);
    }

    /// The last line below the first set line of `index`, and before line `limit`, that names the record as a
    /// member.
    std::optional<std::size_t> LastMemberLine(std::string_view index, std::string_view record,
                                              std::size_t limit) const;

  private:
    struct SetRegion {
        std::size_t start;
        PrefixIndex members;
    };

    void ReadSets();
    void ReadBlocks();
    SetRegion ReadRegion(std::size_t start) const;

    const Report& report_;
    PrefixIndex sections_, sets_, members_, controlItems_;
    std::optional<HeadLines> heads_;
    std::optional<SetRegion> region_;  // of the set last asked for: its members follow one another
    std::unordered_map<std::string_view, std::vector<Membership>> ownerships_;
    std::unordered_map<std::string_view, std::size_t> blocks_;  // record to its first name line at column 1
};

}  // namespace norvelis
