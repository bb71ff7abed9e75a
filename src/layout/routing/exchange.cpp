#include "layout/routing/exchange.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

#include "layout/geometry/crossings.h"
#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

constexpr double kFirstHair = 0.01;  // less than any distance of lines
constexpr int kMostRounds = 60;
constexpr int kMostRoundsOfHairs = 15;  // each half of the one before
// In drawings beyond that nobody follows a line, and each exchange costs it a bend.
constexpr std::size_t kMostCrossingsOfALine = 20;

using Path = std::vector<Point>;

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

class PieceExchanger {
  public:
    PieceExchanger(std::vector<Path>& paths, const std::vector<Line>& lines, const std::vector<Rect>& boxes,
                   double lineGap, Turns turns)
        : paths_(paths),
          lines_(lines),
          boxes_(boxes),
          lineGap_(lineGap),
          turns_(turns),
          crossings_(paths),
          isChanged_(paths.size(), 1) {}

    /// One exchange for each line at most. False when there is none.
    bool Round();

  private:
    bool MayTurnAt(const Crossing& crossing) const;
    double AlongSecond(const Crossing& crossing) const;
    bool ExchangeBetween(std::span<const Crossing> crossings);
    bool ExchangeToEnd(std::span<const Crossing> crossings);
    Path Joined(const Path& head, const Path& tail, Point at, int line, bool turnsFirst) const;

    std::vector<Path>& paths_;
    const std::vector<Line>& lines_;
    Obstacles boxes_;
    double lineGap_;
    Turns turns_;
    CrossingFinder crossings_;
    std::vector<char> isChanged_;  ///< In the round before; what was left between others is left again.
    double hair_ = kFirstHair;
};

/// Up to the crossing along one path, from there along another one.
Path PieceExchanger::Joined(const Path& head, const Path& tail, Point at, int line, bool turnsFirst) const {
    Path joined = head;
    const Point before = head.back(), after = tail.front();
    if (turns_ == Turns::RightAngled) {
        joined.push_back(at);
        joined.insert(joined.end(), tail.begin(), tail.end());
        if (!turnsFirst) return joined;
        // Both segments at the corner move towards where the line comes from and goes to.
        Point& corner = joined[head.size()];
        const auto towards = [this](double from, double to) { return from + (to > from ? hair_ : -hair_); };
        const Point moved = before.y == at.y ? Point{towards(at.x, before.x), towards(at.y, after.y)}
                                             : Point{towards(at.x, after.x), towards(at.y, before.y)};
        if (before.y == at.y) {
            joined[head.size() - 1].y = moved.y;
            joined[head.size() + 1].x = moved.x;
        } else {
            joined[head.size() - 1].x = moved.x;
            joined[head.size() + 1].y = moved.y;
        }
        corner = moved;
        return joined;
    }
    constexpr double kLeastCut = 1.0 / 64;
    const Line& ends = lines_[At(line)];
    const auto isFree = [&](Point a, Point b) {
        return !boxes_.Cover(a, at, b) && !boxes_.Bar(a, b, lineGap_ / 2, ends.from, ends.to);
    };
    double cut = 1;
    while (cut > kLeastCut && !isFree(Between(at, before, cut), Between(at, after, cut))) cut /= 2;
    if (cut <= kLeastCut) {
        joined.push_back(at);
    } else if (cut < 1) {
        joined.push_back(Between(at, before, cut));
        joined.push_back(Between(at, after, cut));
    }
    joined.insert(joined.end(), tail.begin(), tail.end());
    return joined;
}

/// Where boxes left nothing else, lines among those with right angles slant; they stay as they are.
bool PieceExchanger::MayTurnAt(const Crossing& crossing) const {
    if (turns_ == Turns::Slanting) return true;
    const auto isSlanting = [](const Path& path, std::size_t segment) {
        return path[segment].x != path[segment + 1].x && path[segment].y != path[segment + 1].y;
    };
    return !isSlanting(paths_[crossing.first], crossing.firstSegment) &&
           !isSlanting(paths_[crossing.second], crossing.secondSegment);
}

/// The points of a path from one to another, both included.
Path Slice(const Path& path, std::size_t from, std::size_t to) {
    return {path.begin() + static_cast<std::ptrdiff_t>(from),
            path.begin() + static_cast<std::ptrdiff_t>(to) + 1};
}

bool PieceExchanger::ExchangeToEnd(std::span<const Crossing> crossings) {
    const Crossing& any = crossings.front();
    const Line &p = lines_[any.first], &q = lines_[any.second];
    for (const bool pLeaves : {true, false}) {
        for (const bool qLeaves : {true, false}) {
            if ((pLeaves ? p.from : p.to) != (qLeaves ? q.from : q.to)) continue;
            Path first = paths_[any.first], second = paths_[any.second];
            // Seen with the common end last.
            std::size_t i = any.firstSegment, k = any.secondSegment;
            if (pLeaves) std::reverse(first.begin(), first.end());
            if (qLeaves) std::reverse(second.begin(), second.end());
            if (pLeaves) i = first.size() - 2 - i;
            if (qLeaves) k = second.size() - 2 - k;
            const Path firstHead = Slice(first, 0, i), firstTail = Slice(first, i + 1, first.size() - 1);
            const Path secondHead = Slice(second, 0, k), secondTail = Slice(second, k + 1, second.size() - 1);
            first = Joined(firstHead, secondTail, any.at, static_cast<int>(any.first), true);
            second = Joined(secondHead, firstTail, any.at, static_cast<int>(any.second), false);
            if (pLeaves) std::reverse(first.begin(), first.end());
            if (qLeaves) std::reverse(second.begin(), second.end());
            paths_[any.first] = std::move(first);
            paths_[any.second] = std::move(second);
            return true;
        }
    }
    return false;
}

/// How far along the second path the crossing is, counted in segments.
double PieceExchanger::AlongSecond(const Crossing& crossing) const {
    const Path& path = paths_[crossing.second];
    const Point from = path[crossing.secondSegment], to = path[crossing.secondSegment + 1];
    constexpr double kBeforeNext = 1 - 1e-9;
    return static_cast<double>(crossing.secondSegment) +
           std::min(kBeforeNext, Length(crossing.at - from) / Length(to - from));
}

bool PieceExchanger::ExchangeBetween(std::span<const Crossing> crossings) {
    for (std::size_t c = 1; c < crossings.size(); ++c) {
        const Crossing &x = crossings[c - 1], &y = crossings[c];
        const double toX = AlongSecond(x), toY = AlongSecond(y);
        const bool isReversed = toX > toY;
        const bool isAlone = std::none_of(crossings.begin(), crossings.end(), [&](const Crossing& z) {
            const double toZ = AlongSecond(z);
            return toZ > std::min(toX, toY) && toZ < std::max(toX, toY);
        });
        if (!isAlone) continue;
        const Path& first = paths_[x.first];
        Path second = paths_[x.second];
        std::size_t atX = x.secondSegment, atY = y.secondSegment;
        if (isReversed) {
            std::reverse(second.begin(), second.end());
            atX = second.size() - 2 - atX;
            atY = second.size() - 2 - atY;
        }
        const int p = static_cast<int>(x.first), q = static_cast<int>(x.second);
        const auto exchanged = [&](const Path& outer, std::size_t from, std::size_t to, const Path& inner,
                                   std::size_t innerFrom, std::size_t innerTo, int line, bool turnsFirst) {
            Path between = Slice(inner, innerFrom + 1, innerTo);
            between.push_back(y.at);
            Path start = Joined(Slice(outer, 0, from), between, x.at, line, turnsFirst);
            const Point at = start.back();
            start.pop_back();
            return Joined(start, Slice(outer, to + 1, outer.size() - 1), at, line, turnsFirst);
        };
        Path newFirst = exchanged(first, x.firstSegment, y.firstSegment, second, atX, atY, p, true);
        Path newSecond = exchanged(second, atX, atY, first, x.firstSegment, y.firstSegment, q, false);
        if (isReversed) std::reverse(newSecond.begin(), newSecond.end());
        paths_[x.first] = std::move(newFirst);
        paths_[x.second] = std::move(newSecond);
        return true;
    }
    return false;
}

bool PieceExchanger::Round() {
    const std::vector<Crossing> crossings = crossings_.Find(isChanged_);
    if (crossings.size() > kMostCrossingsOfALine * paths_.size()) return false;
    std::vector<char> isChanged(paths_.size());
    bool changed = false;
    hair_ /= 2;
    for (std::size_t from = 0, to; from < crossings.size(); from = to) {
        const std::size_t p = crossings[from].first, q = crossings[from].second;
        for (to = from; to < crossings.size() && crossings[to].first == p && crossings[to].second == q;) ++to;
        const std::span<const Crossing> ofPair(crossings.data() + from, to - from);
        if (isChanged[p] || isChanged[q]) continue;
        if (!std::all_of(ofPair.begin(), ofPair.end(), [&](const Crossing& each) { return MayTurnAt(each); }))
            continue;
        if (!(ofPair.size() > 1 ? ExchangeBetween(ofPair) : ExchangeToEnd(ofPair))) continue;
        isChanged[p] = isChanged[q] = 1;
        crossings_.Update(p);
        crossings_.Update(q);
        changed = true;
    }
    isChanged_ = std::move(isChanged);
    return changed;
}

}  // namespace

Exchanged ExchangePieces(std::vector<Path>& paths, const std::vector<Line>& lines,
                         const std::vector<Rect>& boxes, double lineGap, Turns turns) {
    const int mostRounds = turns == Turns::Slanting ? kMostRounds : kMostRoundsOfHairs;
    PieceExchanger exchanger(paths, lines, boxes, lineGap, turns);
    int rounds = 0;
    while (rounds < mostRounds && exchanger.Round()) ++rounds;
    return rounds == 0 ? Exchanged::None : rounds < mostRounds ? Exchanged::All : Exchanged::Some;
}

}  // namespace norvelis::layout
