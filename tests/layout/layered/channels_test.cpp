#include "layout/layered/channels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/geometry.h"

namespace norvelis::layout {
namespace {

constexpr double kGap = 0.125;

/// The lines of a channel as drawn, tracks one unit apart, y downwards.
std::vector<std::vector<Point>> Draw(const std::vector<Jog>& jogs, const Tracks& tracks) {
    std::vector<std::vector<Point>> lines;
    for (std::size_t i = 0; i < jogs.size(); ++i) {
        const double y = tracks.track[i], end = tracks.count;
        std::vector<Point> line{{jogs[i].from, -1}};
        if (tracks.track[i] >= 0) {
            const auto detour = std::find_if(tracks.detours.begin(), tracks.detours.end(),
                                             [&](const Detour& d) { return d.jog == static_cast<int>(i); });
            line.push_back({jogs[i].from, y});
            if (detour != tracks.detours.end()) {
                line.push_back({detour->x, y});
                line.push_back({detour->x, static_cast<double>(detour->track)});
                line.push_back({jogs[i].to, static_cast<double>(detour->track)});
            } else {
                line.push_back({jogs[i].to, y});
            }
        }
        line.push_back({jogs[i].to, end});
        lines.push_back(line);
    }
    return lines;
}

bool RunTogether(Point a, Point b, Point c, Point d) {
    const auto share = [](double a0, double a1, double b0, double b1) {
        return std::min(std::max(a0, a1), std::max(b0, b1)) - std::max(std::min(a0, a1), std::min(b0, b1)) >
               1e-9;
    };
    if (a.x == b.x && c.x == d.x && std::abs(a.x - c.x) < 1e-9) return share(a.y, b.y, c.y, d.y);
    if (a.y == b.y && c.y == d.y && std::abs(a.y - c.y) < 1e-9) return share(a.x, b.x, c.x, d.x);
    return false;
}

struct Meetings {
    int crossings = 0, together = 0;
};

Meetings MeetingsOf(const std::vector<std::vector<Point>>& lines) {
    Meetings meetings;
    for (std::size_t i = 0; i < lines.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            for (std::size_t p = 1; p < lines[i].size(); ++p)
                for (std::size_t q = 1; q < lines[k].size(); ++q) {
                    meetings.crossings +=
                        SegmentsCross(lines[i][p - 1], lines[i][p], lines[k][q - 1], lines[k][q]);
                    meetings.together +=
                        RunTogether(lines[i][p - 1], lines[i][p], lines[k][q - 1], lines[k][q]);
                }
    return meetings;
}

/// Pairs of lines whose order changes.
int MustCross(const std::vector<Jog>& jogs) {
    int pairs = 0;
    for (std::size_t i = 0; i < jogs.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            pairs += (jogs[i].from < jogs[k].from) != (jogs[i].to < jogs[k].to);
    return pairs;
}

TEST(Channels, LinesCrossOnlyWhereTheirOrderChanges) {
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        // Columns above and below never meet: no demands contradict each other.
        const int count = 2 + static_cast<int>(random() % 20);
        std::vector<double> from, to;
        for (int i = 0; i < 40; ++i) {
            from.push_back(i);
            to.push_back(i + 0.5);
        }
        std::shuffle(from.begin(), from.end(), random);
        std::shuffle(to.begin(), to.end(), random);
        std::vector<Jog> jogs;
        for (int i = 0; i < count; ++i)
            jogs.push_back({from[static_cast<std::size_t>(i)], to[static_cast<std::size_t>(i)], -1});
        const Tracks tracks = AssignTracks(jogs, kGap);
        const Meetings meetings = MeetingsOf(Draw(jogs, tracks));
        EXPECT_EQ(meetings.crossings, MustCross(jogs));
        EXPECT_EQ(meetings.together, 0);
        EXPECT_TRUE(tracks.detours.empty());
    }
}

TEST(Channels, LinesNeitherRunTogetherNorCrossTwiceWhereDemandsRunInARing) {
    std::mt19937 random(2);
    int detours = 0, needless = 0;
    for (int round = 0; round < 200; ++round) {
        const std::size_t count = 2 + random() % 12;
        std::vector<double> from, to;
        for (std::size_t i = 0; i < count; ++i) from.push_back(static_cast<double>(i));
        to = from;
        std::shuffle(to.begin(), to.end(), random);
        std::vector<Jog> jogs;
        for (std::size_t i = 0; i < count; ++i) jogs.push_back({from[i], to[i], -1});
        const Tracks tracks = AssignTracks(jogs, kGap);
        detours += static_cast<int>(tracks.detours.size());
        const Meetings meetings = MeetingsOf(Draw(jogs, tracks));
        needless += meetings.crossings - MustCross(jogs);
        EXPECT_EQ(meetings.together, 0);
    }
    EXPECT_GT(detours, 0) << "rings of demands came up";
    EXPECT_EQ(needless, 0);
}

TEST(Channels, UsesFewTracks) {
    EXPECT_EQ(AssignTracks({{1, 1, -1}, {2, 2, -1}}, kGap).count, 0) << "straight through";
    EXPECT_EQ(AssignTracks({{0, 2, -1}, {3, 5, -1}, {6, 8, -1}}, kGap).count, 1) << "side by side";
    EXPECT_EQ(AssignTracks({{4, 1, -1}, {4.2, 2, -1}, {4.4, 6, -1}, {4.6, 7, -1}}, kGap).count, 2) << "a fan";
}

TEST(Channels, TrunksShareABarAndDivideItOnlyWhenTheyMust) {
    const Tracks tracks = AssignTracks({{4, 1, 7}, {4, 6, 7}, {4, 8, 7}}, kGap);
    EXPECT_EQ(tracks.track, (std::vector<int>{0, 0, 0}));
    // The line from 5 to 2 must pass under the left half and the one from 3 to 0 over it.
    const std::vector<Jog> jogs{{4, 1, 7}, {4, 6, 7}, {5, 2, -1}, {3, 0.5, -1}};
    const Tracks divided = AssignTracks(jogs, kGap);
    EXPECT_EQ(divided.count, 3);
}

}  // namespace
}  // namespace norvelis::layout
