#include "drawing/layout/channels.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace norvelis::layout {

namespace {

/// Jogs that share a track for sure: one line, or one owner's lines to one side.
struct Piece {
    double left, right;
    bool rightwards;
    std::vector<int> jogs;
    std::vector<int> below;  ///< Pieces that must lie lower.
    int above = 0;           ///< How many must lie higher.
    int leastTrack = 0;
};

std::vector<Piece> PiecesOf(const std::vector<Jog>& jogs) {
    std::vector<Piece> pieces;
    std::map<std::pair<int, bool>, std::size_t> trunks;
    for (std::size_t i = 0; i < jogs.size(); ++i) {
        const Jog& jog = jogs[i];
        if (jog.from == jog.to) continue;
        const bool rightwards = jog.to > jog.from;
        std::size_t at = pieces.size();
        if (jog.trunk >= 0) at = trunks.try_emplace({jog.trunk, rightwards}, at).first->second;
        if (at == pieces.size()) pieces.push_back({jog.from, jog.from, rightwards, {}, {}, 0, 0});
        pieces[at].jogs.push_back(static_cast<int>(i));
        pieces[at].left = std::min(pieces[at].left, jog.to);
        pieces[at].right = std::max(pieces[at].right, jog.to);
    }
    return pieces;
}

/// Whether piece a must lie above piece b: for two lines that need not cross, the one that stands farther the way they
/// both go; and where a's line comes down right over the place where b's goes on, so that they do not run together.
bool MustLieAbove(const Piece& a, const Piece& b, const std::vector<Jog>& jogs, double gap) {
    for (const int i : a.jogs) {
        for (const int k : b.jogs) {
            const Jog &x = jogs[i], &y = jogs[k];
            if (std::abs(x.from - y.to) < gap * 0.99) return true;
            if (a.rightwards != b.rightwards) continue;
            if (a.rightwards ? x.from > y.from && x.to > y.to : x.from < y.from && x.to < y.to) return true;
        }
    }
    return false;
}

void Constrain(std::vector<Piece>& pieces, const std::vector<Jog>& jogs, double gap) {
    std::vector<int> byLeft(pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) byLeft[i] = static_cast<int>(i);
    std::sort(byLeft.begin(), byLeft.end(), [&](int a, int b) { return pieces[a].left < pieces[b].left; });
    for (std::size_t i = 0; i < byLeft.size(); ++i) {
        const int a = byLeft[i];
        for (std::size_t k = i + 1; k < byLeft.size(); ++k) {
            const int b = byLeft[k];
            if (pieces[b].left >= pieces[a].right + gap) break;
            const bool aAbove = MustLieAbove(pieces[a], pieces[b], jogs, gap);
            const bool bAbove = MustLieAbove(pieces[b], pieces[a], jogs, gap);
            if (aAbove == bAbove) continue;
            Piece& lower = pieces[aAbove ? b : a];
            pieces[aAbove ? a : b].below.push_back(aAbove ? b : a);
            ++lower.above;
        }
    }
}

}  // namespace

Tracks AssignTracks(const std::vector<Jog>& jogs, double gap) {
    std::vector<Piece> pieces = PiecesOf(jogs);
    Constrain(pieces, jogs, gap);

    Tracks tracks;
    tracks.track.assign(jogs.size(), -1);
    std::vector<std::vector<std::pair<double, double>>> used;  // for each track, what is taken
    std::set<std::pair<int, std::pair<double, int>>> waiting;  // those with nothing above first, then from the left
    const auto key = [&](int i) { return std::pair(pieces[i].above, std::pair(pieces[i].left, i)); };
    for (std::size_t i = 0; i < pieces.size(); ++i) waiting.insert(key(static_cast<int>(i)));
    while (!waiting.empty()) {
        const int at = waiting.begin()->second.second;
        waiting.erase(waiting.begin());
        Piece& piece = pieces[at];
        const auto isFree = [&](int track) {
            return std::none_of(used[track].begin(), used[track].end(), [&](const auto& taken) {
                return piece.left < taken.second + gap && taken.first < piece.right + gap;
            });
        };
        int track = piece.leastTrack;
        while (track < static_cast<int>(used.size()) && !isFree(track)) ++track;
        if (track >= static_cast<int>(used.size())) used.resize(track + 1);
        used[track].emplace_back(piece.left, piece.right);
        for (const int jog : piece.jogs) tracks.track[jog] = track;
        for (const int other : piece.below) {
            const bool isWaiting = waiting.erase(key(other)) > 0;
            --pieces[other].above;
            pieces[other].leastTrack = std::max(pieces[other].leastTrack, track + 1);
            if (isWaiting) waiting.insert(key(other));
        }
    }
    tracks.count = static_cast<int>(used.size());
    return tracks;
}

}  // namespace norvelis::layout
