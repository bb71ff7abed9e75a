#include "layout/layered/ranking.h"

#include <algorithm>

#include "layout/layered/difference_program.h"

namespace norvelis::layout {

namespace {

/// Boxes that are pulled up as much as down may move between their neighbours' ranks without making lines
/// longer.
void Balance(const Graph& graph, const std::vector<Span>& spans, std::vector<int>& ranks) {
    const int count = static_cast<int>(ranks.size());
    std::vector<std::vector<int>> above(count), below(count);
    std::vector<int> pull(count);
    for (const Span& span : spans) {
        below[span.upper].push_back(span.lower);
        above[span.lower].push_back(span.upper);
        pull[span.upper] += span.weight;
        pull[span.lower] -= span.weight;
    }
    std::vector<double> widths(*std::max_element(ranks.begin(), ranks.end()) + 1);
    for (int i = 0; i < count; ++i) widths[ranks[i]] += graph.boxes[i].width;
    for (int i = 0; i < count; ++i) {
        if (above[i].empty() || below[i].empty() || pull[i] != 0) continue;
        int first = 0, last = static_cast<int>(widths.size()) - 1;
        for (const int other : above[i]) first = std::max(first, ranks[other] + 1);
        for (const int other : below[i]) last = std::min(last, ranks[other] - 1);
        widths[ranks[i]] -= graph.boxes[i].width;
        for (int rank = first; rank <= last; ++rank)
            if (widths[rank] < widths[ranks[i]]) ranks[i] = rank;
        widths[ranks[i]] += graph.boxes[i].width;
    }
}

}  // namespace

std::vector<Span> SpansOf(const Graph& graph, const std::vector<bool>& reversed) {
    std::vector<Span> spans;
    for (std::size_t k = 0; k < graph.lines.size(); ++k) {
        const Line& line = graph.lines[k];
        if (line.from == line.to) continue;
        spans.push_back(reversed[k] ? Span{line.to, line.from} : Span{line.from, line.to});
    }
    return spans;
}

std::vector<int> RanksOf(const Graph& graph, const std::vector<Span>& spans) {
    DifferenceProgram program(static_cast<int>(graph.boxes.size()));
    for (const Span& span : spans) {
        program.Keep(span.upper, span.lower, 1);
        program.Shorten(span.upper, span.lower, span.weight);
    }
    std::vector<int> ranks;
    for (const std::int64_t rank : program.Solve()) ranks.push_back(static_cast<int>(rank));
    if (!ranks.empty()) Balance(graph, spans, ranks);
    return ranks;
}

}  // namespace norvelis::layout
