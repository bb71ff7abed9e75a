#include "drawing/layout/ranking.h"

#include <algorithm>

#include "drawing/layout/difference_program.h"

namespace norvelis::layout {

namespace {

/// Boxes with as many lines up as down may move between their neighbours' ranks without making lines longer.
void Balance(const Graph& graph, const std::vector<Span>& spans, std::vector<int>& ranks) {
    const int count = static_cast<int>(ranks.size());
    std::vector<std::vector<const Span*>> above(count), below(count);
    for (const Span& span : spans) {
        below[span.upper].push_back(&span);
        above[span.lower].push_back(&span);
    }
    std::vector<double> widths(*std::max_element(ranks.begin(), ranks.end()) + 1);
    for (int i = 0; i < count; ++i) widths[ranks[i]] += graph.boxes[i].width;
    for (int i = 0; i < count; ++i) {
        if (above[i].empty() || above[i].size() != below[i].size()) continue;
        int first = 0, last = static_cast<int>(widths.size()) - 1;
        for (const Span* span : above[i]) first = std::max(first, ranks[span->upper] + span->least);
        for (const Span* span : below[i]) last = std::min(last, ranks[span->lower] - span->least);
        widths[ranks[i]] -= graph.boxes[i].width;
        for (int rank = first; rank <= last; ++rank)
            if (widths[rank] < widths[ranks[i]]) ranks[i] = rank;
        widths[ranks[i]] += graph.boxes[i].width;
    }
}

}  // namespace

std::vector<Span> SpansOf(const Graph& graph, const std::vector<bool>& against) {
    std::vector<Span> spans;
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        if (line.from == line.to) continue;
        spans.push_back(against[k] ? Span{line.to, line.from} : Span{line.from, line.to});
    }
    return spans;
}

std::vector<int> RanksOf(const Graph& graph, const std::vector<Span>& spans) {
    DifferenceProgram program(static_cast<int>(graph.boxes.size()));
    for (const Span& span : spans) {
        program.Keep(span.upper, span.lower, span.least);
        program.Shorten(span.upper, span.lower, 1);
    }
    std::vector<int> ranks;
    for (const std::int64_t rank : program.Solve()) ranks.push_back(static_cast<int>(rank));
    if (!ranks.empty()) Balance(graph, spans, ranks);
    return ranks;
}

}  // namespace norvelis::layout
