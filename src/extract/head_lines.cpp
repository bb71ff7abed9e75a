#include "extract/head_lines.h"

#include <algorithm>

#include "extract/format/keywords.h"

namespace norvelis {

using namespace keywords;

HeadLines::HeadLines(const Report& report) {
    const auto& lines = report.Lines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
            if (lines[i].Has(kKinds[kind])) linesOfKind_[kind].push_back(i);
        }
        if (lines[i].Has(KeywordKind::DataItem)) dataItems_.push_back(i);
        for (const auto& [kind, keyword] : {std::pair{KeywordKind::RecordLength, kRecordLength},
                                            std::pair{KeywordKind::DataLength, kDataLength}}) {
            if (lines[i].Has(kind) && TextBehind(report.TextOf(lines[i]), keyword, kBehindLength).empty())
                hasEmptyLength_ = true;
        }
    }
}

std::optional<std::size_t> HeadLines::DataItemFrom(std::size_t line) const {
    const auto found = std::lower_bound(dataItems_.begin(), dataItems_.end(), line);
    return found == dataItems_.end() ? std::nullopt : std::optional(*found);
}

std::vector<std::size_t> HeadLines::LastOfEachKind(std::size_t first, std::size_t limit) const {
    std::vector<std::size_t> last;
    for (const auto& lines : linesOfKind_) {
        const auto behind = std::lower_bound(lines.begin(), lines.end(), limit);
        if (behind != lines.begin() && *std::prev(behind) >= first) last.push_back(*std::prev(behind));
    }
    std::sort(last.begin(), last.end());
    last.erase(std::unique(last.begin(), last.end()), last.end());
    return last;
}

}  // namespace norvelis
