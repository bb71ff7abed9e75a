#include "extract/repair/sections.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"
#include "extract/format/keywords.h"
#include "extract/repair/lines.h"

namespace norvelis::repair {

namespace {

using namespace keywords;

/// No page heading has more lines behind its first.
constexpr std::size_t kMostHeadingLines = 8;
/// A name line without a location mode in this many lines has none.
constexpr std::size_t kLongestHead = 60;

bool IsBlank(std::string_view line) {
    if (line.starts_with('0') || line.starts_with('-')) line.remove_prefix(1);
    return Trim(line).empty();
}

bool StartsPage(std::string_view line) {
    return line.starts_with('1') && (Column(line, kRelease) != 0 || Column(line, "PAGE ") != 0);
}

/// Knows the lines of a page heading by those of the first page: each later heading repeats them.
class Headings {
  public:
    /// True for a line of a heading behind the first page's. To be asked for each line in turn.
    bool Holds(std::string_view line) {
        if (StartsPage(line)) {
            next_ = 0;
            return std::exchange(seen_, true);
        }
        if (!learned_) return Learn(line);
        if (next_ >= repeated_.size() || TrimEnd(line) != repeated_[next_]) {
            next_ = repeated_.size();
            return false;
        }
        ++next_;
        return true;
    }

  private:
    bool Learn(std::string_view line) {
        learned_ = seen_ && (repeated_.size() == kMostHeadingLines || line.starts_with('0') ||
                             line.find("... ") != std::string_view::npos);
        if (seen_ && !learned_) repeated_.push_back(TrimEnd(line));
        next_ = repeated_.size();
        return false;
    }

    std::vector<std::string_view> repeated_;  ///< Without the first line, which holds the number of the page.
    std::size_t next_ = 0;
    bool seen_ = false, learned_ = false;
};

/// A change of one line: removed, replaced, or preceded by blank lines.
struct Edit {
    std::size_t line;
    ChangeKind kind;
    std::string text;        ///< Of the line, for SchemaWord.
    std::size_t before = 0;  ///< How many lines, for HeaderFilled.
};

/// The names of the indexes that records are members of. What the keys of others are taken from does no harm.
std::vector<std::string_view> UsedIndexes(std::string_view bytes) {
    std::vector<std::string_view> names;
    ForEachLine(bytes, [&](const Line& line) {
        if (Column(line.text, kIndexMember) == kIndexMemberColumn)
            names.push_back(NameIn(line.text, kIndexName));
    });
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

/// Reads a report line by line and notes what must be edited.
class SectionReader {
  public:
    explicit SectionReader(std::string_view bytes) : usedIndexes_(UsedIndexes(bytes)) {
        ForEachLine(bytes, [&](const Line& line) { Read(line.text); });
    }

    std::vector<Edit> TakeEdits() {
        if (!schemaFound_ && schemaLike_) edits_.push_back(*std::move(schemaLike_));
        std::stable_sort(edits_.begin(), edits_.end(),
                         [](const Edit& a, const Edit& b) { return a.line < b.line; });
        return std::move(edits_);
    }

  private:
    void Read(std::string_view line) {
        ++number_;
        if (number_ <= kHeaderLines) ReadHeaderLine(line);
        const bool heading = headings_.Holds(line);
        if (heading || IsBlank(line)) {
            passed_.push_back(
                {number_, heading ? ChangeKind::HeadingsRemoved : ChangeKind::BlankLinesRemoved, {}});
            return;
        }
        if (Column(line, kRecordName) != 0) {
            passed_.clear();
            nameLine_ = number_;
        }
        if (nameLine_ != 0) {
            ReadHeadLine(line);
        } else {
            if (PassedHeading() && IsKeyOfUsedIndex(line)) Remove();
            passed_.clear();
        }
    }

    void ReadHeaderLine(std::string_view line) {
        if (Column(line, kSchema) != 0) schemaFound_ = true;
        if (auto text = WithSchemaKeyword(line); text && !schemaLike_)
            schemaLike_ = Edit{number_, ChangeKind::SchemaWord, *std::move(text)};
        if (!headerFilled_ && Column(line, kRecordName) != 0) {
            headerFilled_ = true;
            edits_.push_back({number_, ChangeKind::HeaderFilled, {}, kHeaderLines + 1 - number_});
        }
    }

    // Between name line and location mode all lines count.
    void ReadHeadLine(std::string_view line) {
        const std::size_t distance = number_ - nameLine_;
        if (Column(line, kLocationMode) != 0) {
            if (distance > kLinesToLocationMode && distance - passed_.size() <= kLinesToLocationMode)
                Remove();
        } else if (distance <= kLongestHead && Column(line, kDataItem) == 0) {
            return;
        }
        passed_.clear();
        nameLine_ = 0;
    }

    bool PassedHeading() const {
        return std::any_of(passed_.begin(), passed_.end(),
                           [](const Edit& edit) { return edit.kind == ChangeKind::HeadingsRemoved; });
    }

    bool IsKeyOfUsedIndex(std::string_view line) const {
        const std::string_view name =
            TextBehind(line, kControlItem, {static_cast<long>(kControlItem.size()), kNameWidth});
        return Column(line, kControlItem) != 0 &&
               std::any_of(usedIndexes_.begin(), usedIndexes_.end(),
                           [&](std::string_view used) { return name.starts_with(used); });
    }

    void Remove() {
        edits_.insert(edits_.end(), passed_.begin(), passed_.end());
        passed_.clear();
    }

    const std::vector<std::string_view> usedIndexes_;
    std::size_t number_ = 0, nameLine_ = 0;
    Headings headings_;
    std::vector<Edit> passed_, edits_;
    std::optional<Edit> schemaLike_;
    bool schemaFound_ = false, headerFilled_ = false;
};

std::string WordsOf(const Change& change) {
    switch (change.kind) {
        case ChangeKind::SchemaWord:
            return "SCHEMA name VERSION n was read as SCHEMA=";
        case ChangeKind::HeaderFilled:
            return "blank lines were added to the header, in which the first record would be lost";
        case ChangeKind::HeadingsRemoved:
            return fmt::format("{} lines of page headings inside a section were left out", change.count);
        default:
            return fmt::format("{} blank lines inside a section were left out", change.count);
    }
}

void CountChange(std::vector<Change>& changes, const Edit& edit) {
    const auto known = std::find_if(changes.begin(), changes.end(),
                                    [&](const Change& change) { return change.kind == edit.kind; });
    if (known == changes.end()) {
        changes.push_back({edit.kind, edit.line, 1, {}});
    } else {
        ++known->count;
    }
}

// Gives the numbers of lines of the result as it goes: `repaired` is that of the line to be written next.
class Editor {
  public:
    Editor(RepairedReport& report, const std::vector<Edit>& edits)
        : report_(report), next_(edits.begin()), end_(edits.end()) {}

    std::string Apply() {
        edited_.reserve(report_.bytes.size());
        ForEachLine(report_.bytes, [&](const Line& line) { Write(line); });
        return std::move(edited_);
    }

  private:
    void Write(const Line& line) {
        ++onDisk_;
        bool removed = false, replaced = false;
        for (; next_ != end_ && next_->line == onDisk_; ++next_) {
            for (std::size_t i = 0; i < next_->before; ++i) edited_ += line.End();
            repaired_ += next_->before;
            removed =
                next_->kind == ChangeKind::HeadingsRemoved || next_->kind == ChangeKind::BlankLinesRemoved;
            if (next_->kind == ChangeKind::SchemaWord) {
                replaced = true;
                edited_ += next_->text;
                edited_ += line.End();
            }
        }
        if (removed) return;
        report_.lines.ContinueAt(++repaired_, onDisk_);
        if (!replaced) edited_ += line.whole;
    }

    RepairedReport& report_;
    std::vector<Edit>::const_iterator next_, end_;
    std::string edited_;
    std::size_t onDisk_ = 0, repaired_ = 0;
};

}  // namespace

std::optional<std::string> WithSchemaKeyword(std::string_view line) {
    constexpr std::string_view kWord = "SCHEMA ", kVersionWord = "VERSION";
    const auto nextWord = [](std::string_view& rest) {
        rest = rest.substr(std::min(rest.find_first_not_of(' '), rest.size()));
        const std::string_view word = rest.substr(0, rest.find(' '));
        rest.remove_prefix(word.size());
        return word;
    };
    const std::size_t column = Column(line, kWord);
    if (column == 0) return std::nullopt;
    std::string_view rest = line.substr(column - 1 + kWord.size());
    const std::string_view name = nextWord(rest), version = nextWord(rest), number = nextWord(rest);
    if (version != kVersionWord || number.empty() || !IsNumeric(number)) return std::nullopt;
    return fmt::format("{}{}{} {}{}{}", line.substr(0, column - 1), kSchema, name, kVersion, number, rest);
}

void RepairSections(RepairedReport& report) {
    const std::vector<Edit> edits = SectionReader(report.bytes).TakeEdits();
    if (edits.empty()) return;
    std::vector<Change> changes;
    for (const Edit& edit : edits) CountChange(changes, edit);
    for (Change& change : changes) {
        change.words = WordsOf(change);
        report.changes.push_back(std::move(change));
    }
    report.bytes = Editor(report, edits).Apply();
}

}  // namespace norvelis::repair
