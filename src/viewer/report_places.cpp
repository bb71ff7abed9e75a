#include "viewer/report_places.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "extract/format/keywords.h"
#include "extract/parent_pass.h"
#include "viewer/report_search.h"

namespace norvelis::viewer {

namespace {

using namespace keywords;

/// The line behind the section that begins on `section`.
std::uint64_t EndOfSection(const ReportLines& report, std::uint64_t section) {
    const auto next = std::ranges::upper_bound(report.Sections(), section, {}, &Section::line);
    return next == report.Sections().end() ? report.Count() : next->line;
}

}  // namespace

std::string SchemaOf(const ReportLines& report) {
    std::string header;
    for (const Line& line : report.Read(0, kHeaderLines)) header += line.text + "\n";
    return ContentsOf(Report(std::move(header))).schema;
}

std::optional<std::uint64_t> LineOfField(const ReportLines& report, std::uint64_t section,
                                         std::string_view field) {
    constexpr std::uint64_t kAtOnce = 200;
    const std::uint64_t end = EndOfSection(report, section);
    for (std::uint64_t line = section; line < end; line += kAtOnce) {
        const auto lines = report.Read(line, static_cast<std::size_t>(std::min(kAtOnce, end - line)));
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const std::string& text = lines[i].text;
            if (IsFieldLine(text) && SameName(ToUtf8(NameIn(text, kFieldName)), field)) return line + i;
        }
    }
    return std::nullopt;
}

std::optional<std::uint64_t> LineOfSet(ReportLines& report, std::string_view set) {
    const auto bytes = ReportBytes(set);
    if (!bytes) return std::nullopt;
    const TextSearch search(std::string(kSetAtStart) + *bytes);
    std::uint64_t from = 0;
    while (const auto found = search.FindNext(report.File(), from)) {
        report.IndexTo(*found);
        const Place place = report.PlaceAt(*found);
        const auto lines = report.Read(place.line, 1);
        if (place.column == 0 && !lines.empty() &&
            SameName(ToUtf8(NameIn(lines.front().text, kSetOrOwnerOrMember)), set))
            return place.line;
        from = *found + 1;
    }
    return std::nullopt;
}

}  // namespace norvelis::viewer
