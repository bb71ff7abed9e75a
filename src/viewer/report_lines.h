#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "viewer/file_reader.h"

namespace norvelis::viewer {

/// One line as it is shown. Bytes are as stored, each one column; the end of the line is left out.
struct Line {
    std::string text;  ///< Its first bytes, as many as were asked for.
    bool isWhole;      ///< There is no more of it.
    bool startsPage;   ///< A form feed in it, or "1" in its first column.
};

/// A byte of the report by its line and, within that, its column, both from 0.
struct Place {
    std::uint64_t line = 0, column = 0;
    friend auto operator<=>(const Place&, const Place&) = default;
};

/// A record name of the report and the line on which its section begins.
struct Section {
    std::string record;
    std::uint64_t line;
};

/// The lines of a report file, counted from 0. The index is built by Step, a piece at a time, so that a
/// window stays alive; lines near the top are there at once, and those already passed at any time. It keeps
/// one place for many lines and never a line itself.
class ReportLines {
  public:
    /// RuntimeFailure as FileReader.
    explicit ReportLines(const std::string& path);

    /// Indexes about a megabyte more; false when the whole file is indexed.
    bool Step();
    void IndexTo(std::uint64_t offset);    ///< Until the line of this byte is known.
    bool IndexToLine(std::uint64_t line);  ///< False when the report ends before it.
    bool IsComplete() const { return next_ >= file_.Size(); }
    double Progress() const;  ///< 0 to 1.

    /// Lines known so far.
    std::uint64_t Count() const { return lines_; }
    /// Of these: `count` lines from `first`, each cut behind `mostBytes`. Fewer at the end.
    std::vector<Line> Read(std::uint64_t first, std::size_t count, std::size_t mostBytes = 4096) const;
    /// A part of one line, for one that is too long to be shown whole.
    std::string ReadPart(std::uint64_t line, std::uint64_t column, std::size_t count) const;

    /// What is from one place to the other, ends of lines included; at most `count` bytes. A place behind the
    /// end of its line is that end.
    std::string ReadBetween(Place from, Place to, std::size_t count) const;
    /// Of a known line, without its end.
    std::uint64_t LengthOf(std::uint64_t line) const;

    /// The first byte of a known line, and the line that holds a byte of the indexed part.
    std::uint64_t OffsetOf(std::uint64_t line) const;
    std::uint64_t LineAt(std::uint64_t offset) const;
    Place PlaceAt(std::uint64_t offset) const;

    /// In the order of the report; a name that comes again keeps its first place.
    const std::vector<Section>& Sections() const { return sections_; }

    const FileReader& File() const { return file_; }
    FileChange Compare() const { return file_.Compare(); }
    /// Goes on with a file that has grown; its last line may have.
    void GoOn();

  private:
    struct Mark {
        std::uint64_t line, offset;
    };
    std::uint64_t EndOf(std::uint64_t line) const;  ///< Behind its end of line.
    std::uint64_t OffsetOfPlace(Place place) const;
    void AddLine(std::uint64_t offset);
    void AddLines(std::string_view bytes);
    void AddSections(std::string_view bytes);

    FileReader file_;
    std::vector<Mark>
        marks_;  ///< Starts of lines, so dense that little is read from one to any line behind it.
    std::uint64_t next_ = 0;   ///< Up to here the file is indexed: the start of a line,
    bool inLongLine_ = false;  ///< or a place in the last one.
    std::uint64_t lines_ = 0;
    std::vector<Section> sections_;
    std::unordered_set<std::string> records_;
};

}  // namespace norvelis::viewer
