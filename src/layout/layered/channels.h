#pragma once

#include <vector>

namespace norvelis::layout {

/// A line's change from one x to another between two rows.
struct Jog {
    double from = 0, to = 0;  ///< x above and below the channel.
    int trunk = -1;           ///< Jogs of one trunk start from the same x and may share a track.
};

/// A jog that steps aside from its track and comes back to its place on a lower one.
struct Detour {
    int jog = 0, track = 0;
    double x = 0;
};

struct Tracks {
    /// For each jog its track, 0 the highest; -1 for a line that runs straight through.
    std::vector<int> track;
    std::vector<Detour> detours;  ///< By jog.
    int count = 0;
};

/// Gives the horizontal segments of a channel's lines tracks, so that lines cross only when their order above
/// and below the channel differs, and then once, wherever that can be had; no two of them share a segment;
/// and there are few tracks. Segments on one track stay `gap` apart. Hashimoto, Stevens: Wire routing by
/// optimizing channel assignment within large apertures (1971), the left-edge algorithm; Deutsch: A dogleg
/// channel router (1976), for demands that run in a ring.
Tracks AssignTracks(const std::vector<Jog>& jogs, double gap);

}  // namespace norvelis::layout
