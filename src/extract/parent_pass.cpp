#include "extract/parent_pass.h"

#include <fmt/format.h>

#include <optional>
#include <unordered_set>

#include "base/failure.h"
#include "base/text.h"
#include "dictionary/clearing.h"
#include "extract/format/keywords.h"
#include "extract/repair/sections.h"

namespace norvelis {

namespace {

using namespace keywords;

struct Header {
    std::string_view schema, release, version, date;
    std::optional<std::size_t> schemaLike;  ///< Where a line begins that names a schema in other words.
    std::size_t end;                        ///< Where the first line behind the header begins.
};

// The window is cut before it is looked into, so that a version behind it is cut as well.
void TakeSchemaWord(Header& header, std::string_view window) {
    if (const auto version = Column(window, kVersion); version != 0) {
        header.version = TextBehind(window, version, kBehindVersion);
        window = window.substr(0, version);
    }
    if (const auto comma = Column(window, ","); comma != 0) window = window.substr(0, comma - 1);
    if (const auto blank = Column(window, " "); blank != 0) window = window.substr(0, blank - 1);
    header.schema = Trim(window);
}

Header ReadHeader(const Report& report) {
    Header header{};
    bool release = false, date = false, schema = false;
    for (int count = 0; count < kHeaderLines; ++count) {
        const std::size_t begin = header.end;
        const auto line = report.NextLine(header.end);
        if (!line) break;
        if (const auto p = Column(*line, kRelease); p != 0 && !release) {
            release = true;
            header.release = TextBehind(*line, p, kBehindRelease);
        }
        if (const auto p = Column(*line, kDateMark); p != 0 && !date) {
            date = true;
            header.date = TextBehind(*line, p, kBehindDateMark);
        }
        if (const auto p = Column(*line, kSchema); p != 0 && !schema) {
            schema = true;
            TakeSchemaWord(header, TextBehind(*line, p, kBehindSchema));
        }
        if (!header.schemaLike && repair::WithSchemaKeyword(*line)) header.schemaLike = begin;
    }
    return header;
}

void ReplaceSchema(ExtractionState& state) {
    dictionary::ClearSchema(state.connection, ToUtf8(state.gSchemaName));
    state.writer = std::make_unique<dictionary::Writer>(state.connection, state.gSchemaName);
    state.writer->AddSchema(state.gSchemaRelease, state.gSchemaVersion, state.gSchemaDate);
}

/// A name line and what was found behind it.
struct NameLine {
    std::size_t begin, end;  ///< Of the lines that were read for it.
    std::string_view text;
    std::string_view name;     ///< Untrimmed.
    const LocationMode* mode;  ///< Null when none is in reach.
    bool noDuplicates;
    bool isCutOff;  ///< The report ends before the last line that should be read.
};

const LocationMode* LocationModeOf(std::string_view line) {
    if (Column(line, kLocationMode) == 0) return nullptr;
    for (const auto& location : kLocationModes) {
        if (Column(line, location.keyword) != 0) return &location;
    }
    return nullptr;
}

NameLine ReadNameLine(const Report& report, const ReportLine& line) {
    NameLine found{line.Begin(), line.Begin(), report.TextOf(line), {}, nullptr, false, false};
    found.name = TextBehind(found.text, kRecordName, kBehindRecordName);
    for (int count = 0; count <= kLinesToLocationMode; ++count) {
        const auto text = report.NextLine(found.end);
        if (!text) {
            found.isCutOff = true;
            break;
        }
        found.mode = LocationModeOf(*text);
        if (found.mode == nullptr) continue;
        found.noDuplicates = Column(*text, found.mode->noDuplicates) != 0;
        break;
    }
    return found;
}

// Calls `use` for each name line behind the header, `passed` for those that are not read as such. Lines that
// were read in search of a location mode are not looked at again.
template <typename Use, typename Passed>
void ForEachNameLine(const Report& report, std::size_t position, Use use, Passed passed) {
    for (const ReportLine& line : report.Lines()) {
        if (!line.Has(KeywordKind::RecordName)) continue;
        if (line.Begin() < position) {
            passed(line);
            continue;
        }
        const NameLine found = ReadNameLine(report, line);
        position = found.end;
        use(found);
    }
}

std::string_view NameOn(std::string_view line) {
    return TextBehind(line, kRecordName, kBehindRecordName);
}

void CheckHeader(ExtractionState& state, const Header& header) {
    if (!header.schema.empty()) return;
    constexpr std::string_view kReason = "the schema has no name: no SCHEMA= in the first ten lines";
    if (header.schemaLike) {
        state.Find(FindingKind::SchemaUnnamed, *header.schemaLike, {},
                   std::string(kReason) + ", but this line looks like it");
    } else {
        state.FindInReport(FindingKind::SchemaUnnamed, {}, kReason);
    }
}

void CheckName(ExtractionState& state, const NameLine& line) {
    const std::string_view next =
        TextBehind(line.text, kRecordName, {kBehindRecordName.distance + kBehindRecordName.count, 1});
    if (Trim(line.name).empty())
        state.Find(FindingKind::NameMissing, line.begin, {}, "a name line without a name");
    if (!Trim(next).empty()) {
        state.Find(FindingKind::NameTooLong, line.begin, line.name,
                   fmt::format("the record's name is longer than {} characters", kBehindRecordName.count));
    }
}

void AddRecord(ExtractionState& state, const NameLine& line) {
    if (line.mode->entry) state.writer->AddParent(line.name);
    const bool added = state.writer->AddRecord(line.name, line.mode->mode, line.noDuplicates ? "DN" : "");
    if (!added && !Trim(line.name).empty())
        state.Find(FindingKind::NameRepeated, line.begin, line.name,
                   "a record of this name was met before; this section is left out");
}

}  // namespace

void CollectParentandChildren(ExtractionState& state) {
    const Header header = ReadHeader(state.report);
    state.gSchemaName = header.schema.empty() ? state.schemaWhenUnnamed : std::string(header.schema);
    state.gSchemaRelease = header.release;
    state.gSchemaVersion = header.version;
    state.gSchemaDate = header.date;
    if (state.gSchemaName.empty()) CheckHeader(state, header);
    state.app.gSchemaName = ToUtf8(state.gSchemaName);
    ReplaceSchema(state);

    std::string_view before;
    const auto use = [&](const NameLine& line) {
        state.app.host.Yield();
        CheckName(state, line);
        before = Trim(line.name);
        if (line.mode != nullptr) {
            AddRecord(state, line);
            return;
        }
        if (line.isCutOff) {
            throw RuntimeFailure(
                FailureNumber::InputPastEnd,
                fmt::format("record {}, line {}, has no location mode before the report ends", ToUtf8(before),
                            state.report.NumberOfLine(line.begin)));
        }
        state.Find(
            FindingKind::LocationModeMissing, line.begin, line.name,
            fmt::format("no location mode on the name line or in the {} lines behind it; the record is "
                        "left out",
                        kLinesToLocationMode));
    };
    const auto passed = [&](const ReportLine& line) {
        const std::string_view name = NameOn(state.report.TextOf(line));
        if (line.Begin() < header.end) {
            state.Find(
                FindingKind::NameInHeader, line.Begin(), name,
                fmt::format("the record begins in the first {} lines, which are the header; it is left out",
                            kHeaderLines));
        } else {
            state.Find(
                FindingKind::NamePassedOver, line.Begin(), name,
                fmt::format("the name was passed over in search of the location mode of {}; the record "
                            "is left out",
                            before));
        }
    };
    ForEachNameLine(state.report, header.end, use, passed);
}

ReportContents ContentsOf(const Report& report) {
    const Header header = ReadHeader(report);
    std::unordered_set<std::string> names;
    ForEachNameLine(
        report, header.end,
        [&](const NameLine& line) {
            if (line.mode != nullptr && !Trim(line.name).empty()) names.insert(UpperCase(Trim(line.name)));
        },
        [](const ReportLine&) {});
    return {ToUtf8(header.schema), names.size()};
}

}  // namespace norvelis
