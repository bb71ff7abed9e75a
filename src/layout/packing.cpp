#include "layout/packing.h"

#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>

#include "layout/geometry/obstacles.h"
#include "layout/graph/style.h"

namespace norvelis::layout {

namespace {

/// A set of cells of the page, in rows from above, 64 cells to a word.
class Cells {
  public:
    Cells(int width, int height)
        : width_(width),
          words_(static_cast<std::size_t>(width) / 64 + 2),
          bits_(words_ * static_cast<std::size_t>(height)) {}

    int Width() const { return width_; }
    int Height() const { return static_cast<int>(bits_.size() / words_); }
    bool Has(int x, int y) const { return (Word(x, y) >> (x % 64) & 1) != 0; }
    void Set(int x, int y) { bits_[IndexOf(x, y)] |= std::uint64_t{1} << (x % 64); }
    bool operator==(const Cells&) const = default;

    /// Whether the part, moved to x, y, has a cell in common with this.
    bool Meets(const Cells& part, int x, int y) const {
        return part.AnyWord(x, [&](int row, std::size_t word, std::uint64_t bits) {
            const std::size_t at =
                (static_cast<std::size_t>(y) + static_cast<std::size_t>(row)) * words_ + word;
            return at < bits_.size() && (bits_[at] & bits) != 0;
        });
    }

    /// Takes the part in, growing downwards where it must.
    void Add(const Cells& part, int x, int y) {
        const auto rows = static_cast<std::size_t>(y + part.Height());
        bits_.resize(std::max(bits_.size(), rows * words_));
        part.AnyWord(x, [&](int row, std::size_t word, std::uint64_t bits) {
            bits_[(static_cast<std::size_t>(y) + static_cast<std::size_t>(row)) * words_ + word] |= bits;
            return false;
        });
    }

  private:
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y) * words_ + static_cast<std::size_t>(x) / 64;
    }
    std::uint64_t Word(int x, int y) const { return bits_[IndexOf(x, y)]; }

    /// Calls found(row, word, bits) for all words with cells, moved x to the right, until one call is true.
    template <typename F>
    bool AnyWord(int x, F&& found) const {
        const auto skipped = static_cast<std::size_t>(x) / 64;
        const int shift = x % 64;
        for (int row = 0; row < Height(); ++row) {
            for (std::size_t word = 0; word < words_; ++word) {
                const std::uint64_t bits = bits_[static_cast<std::size_t>(row) * words_ + word];
                if (bits == 0) continue;
                if (found(row, skipped + word, bits << shift)) return true;
                if (shift > 0 && bits >> (64 - shift) != 0 &&
                    found(row, skipped + word + 1, bits >> (64 - shift)))
                    return true;
            }
        }
        return false;
    }

    int width_;
    std::size_t words_;
    std::vector<std::uint64_t> bits_;
};

/// Cells that have others of the part on all four sides belong to it.
void FillInside(Cells& cells) {
    const int width = cells.Width(), height = cells.Height();
    std::vector<int> lowest(static_cast<std::size_t>(width), height),
        highest(static_cast<std::size_t>(width), -1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (!cells.Has(x, y)) continue;
            auto &low = lowest[static_cast<std::size_t>(x)], &high = highest[static_cast<std::size_t>(x)];
            low = std::min(low, y);
            high = std::max(high, y);
        }
    }
    for (int y = 0; y < height; ++y) {
        int first = width, last = -1;
        for (int x = 0; x < width; ++x) {
            if (!cells.Has(x, y)) continue;
            first = std::min(first, x);
            last = x;
        }
        for (int x = first; x < last; ++x)
            if (lowest[static_cast<std::size_t>(x)] < y && y < highest[static_cast<std::size_t>(x)])
                cells.Set(x, y);
    }
}

struct Part {
    Rect bounds;
    Cells cells;
};

Part MakePart(const std::vector<Rect>& rects, double gap, double cell) {
    const Rect bounds = BoundsOf(rects);
    const auto cellOf = [&](double distance) { return static_cast<int>(distance / cell); };
    Cells cells(cellOf(bounds.Width() + gap) + 1, cellOf(bounds.Height() + gap) + 1);
    for (const Rect& rect : rects) {
        for (int y = cellOf(bounds.y1 - rect.y1); y <= cellOf(bounds.y1 - rect.y0 + gap); ++y)
            for (int x = cellOf(rect.x0 - bounds.x0); x <= cellOf(rect.x1 - bounds.x0 + gap); ++x)
                cells.Set(x, y);
    }
    FillInside(cells);
    return {bounds, std::move(cells)};
}

struct Packed {
    std::vector<std::pair<int, int>> corners;
    int width = 0, height = 0;
};

/// Each part in turn goes to the first place from above, then from the left, where it fits.
Packed PackWithin(int pageWidth, const std::vector<Part>& parts, const std::vector<int>& order) {
    Packed packed;
    packed.corners.resize(parts.size());
    Cells page(pageWidth, 0);
    std::pair<int, int> at;
    const Cells* last = nullptr;
    for (const int i : order) {
        const Cells& part = parts[static_cast<std::size_t>(i)].cells;
        if (last == nullptr || part != *last) at = {0, 0};  // one like the last does not fit before it
        auto& [x, y] = at;
        while (x + part.Width() > pageWidth || page.Meets(part, x, y)) {
            if (x + part.Width() > pageWidth) {
                x = 0;
                ++y;
            } else {
                ++x;
            }
        }
        page.Add(part, x, y);
        packed.corners[static_cast<std::size_t>(i)] = at;
        packed.width = std::max(packed.width, x + part.Width());
        packed.height = std::max(packed.height, y + part.Height());
        last = &part;
    }
    return packed;
}

/// How long paper must be that the page fits on; it rather lies on its long side.
double LengthOfPaper(double width, double height) {
    constexpr double kUpright = 1.1;
    return std::min(std::max(width, height * kPaperRatio), kUpright * std::max(width * kPaperRatio, height));
}

/// On pages of several widths around that of a square one, `side`; the best of them.
Packed PackTightly(const std::vector<Part>& shapes, const std::vector<int>& order, int widest, double side) {
    constexpr int kTrials = 12;
    Packed best;
    double bestCost = std::numeric_limits<double>::infinity();
    for (int trial = 0; trial < kTrials; ++trial) {
        const int pageWidth = std::max(widest, static_cast<int>(side * (0.7 + 0.1 * trial)));
        Packed packed = PackWithin(pageWidth, shapes, order);
        const double cost = LengthOfPaper(packed.width, packed.height);
        if (cost >= bestCost) continue;
        bestCost = cost;
        best = std::move(packed);
    }
    return best;
}

/// The wished places as cells, from the upper left corner of all.
std::vector<std::optional<std::pair<int, int>>> CornersOf(const std::vector<std::optional<Point>>& wishes,
                                                          const std::vector<Part>& parts, double cell) {
    double left = std::numeric_limits<double>::infinity(), top = -left;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!wishes[i]) continue;
        left = std::min(left, parts[i].bounds.x0 + wishes[i]->x);
        top = std::max(top, parts[i].bounds.y1 + wishes[i]->y);
    }
    std::vector<std::optional<std::pair<int, int>>> corners(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!wishes[i]) continue;
        corners[i] = {static_cast<int>(std::lround((parts[i].bounds.x0 + wishes[i]->x - left) / cell)),
                      static_cast<int>(std::lround((top - parts[i].bounds.y1 - wishes[i]->y) / cell))};
    }
    return corners;
}

/// Places at this many steps from the corner, along rows and columns.
template <typename F>
bool AnyAtDistance(std::pair<int, int> corner, int steps, F&& isRight) {
    for (int along = -steps; along <= steps; ++along) {
        const std::pair<int, int> sides[] = {
            {along, -steps}, {along, steps}, {-steps, along}, {steps, along}};
        for (const auto& [dx, dy] : sides)
            if (isRight(corner.first + dx, corner.second + dy)) return true;
    }
    return false;
}

/// Each part with a wish in turn goes to the free place that is nearest to it, then the others to the first
/// free places.
Packed PackAsWished(const std::vector<Part>& parts, const std::vector<int>& order,
                    const std::vector<std::optional<std::pair<int, int>>>& wishes) {
    int pageWidth = 0, reach = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        reach += parts[i].cells.Width() + parts[i].cells.Height();
        if (wishes[i]) pageWidth = std::max(pageWidth, wishes[i]->first + parts[i].cells.Width());
    }
    Packed packed;
    packed.corners.resize(parts.size());
    Cells page(pageWidth + reach, 0);
    const auto isFree = [&](int i, int x, int y) {
        const Cells& part = parts[static_cast<std::size_t>(i)].cells;
        return x >= 0 && y >= 0 && x + part.Width() <= page.Width() && !page.Meets(part, x, y);
    };
    const auto add = [&](int i, int x, int y) {
        const Cells& part = parts[static_cast<std::size_t>(i)].cells;
        page.Add(part, x, y);
        packed.corners[static_cast<std::size_t>(i)] = {x, y};
        packed.width = std::max(packed.width, x + part.Width());
        packed.height = std::max(packed.height, y + part.Height());
    };
    for (const int i : order) {
        const auto& wish = wishes[static_cast<std::size_t>(i)];
        const auto tryAt = [&](int x, int y) {
            if (!isFree(i, x, y)) return false;
            add(i, x, y);
            return true;
        };
        for (int steps = 0; wish && !AnyAtDistance(*wish, steps, tryAt);) ++steps;
    }
    for (const int i : order) {
        if (wishes[static_cast<std::size_t>(i)]) continue;
        const int width = std::max(packed.width, parts[static_cast<std::size_t>(i)].cells.Width());
        int x = 0, y = 0;
        while (!isFree(i, x, y))
            if (++x + parts[static_cast<std::size_t>(i)].cells.Width() > width) x = 0, ++y;
        add(i, x, y);
    }
    return packed;
}

}  // namespace

std::vector<Point> PackParts(const std::vector<std::vector<Rect>>& parts, double gap,
                             const std::vector<std::optional<Point>>& wishes) {
    constexpr double kFinest = 0.25, kMostCells = 300;
    double area = 0;
    for (const auto& rects : parts) {
        const Rect bounds = BoundsOf(rects);
        area += (bounds.Width() + gap) * (bounds.Height() + gap);
    }
    const double cell = std::max(kFinest, std::sqrt(area) / kMostCells);
    std::vector<Part> shapes;
    int widest = 0;
    for (const auto& rects : parts) {
        shapes.push_back(MakePart(rects, gap, cell));
        widest = std::max(widest, shapes.back().cells.Width());
    }
    std::vector<int> order(parts.size());
    std::iota(order.begin(), order.end(), 0);
    const auto sizeOf = [&](int i) {
        const Cells& cells = shapes[static_cast<std::size_t>(i)].cells;
        return static_cast<std::int64_t>(cells.Width()) * cells.Height();
    };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return sizeOf(a) > sizeOf(b); });

    const bool hasWish =
        std::any_of(wishes.begin(), wishes.end(), [](const auto& wish) { return wish.has_value(); });
    const Packed best = hasWish ? PackAsWished(shapes, order, CornersOf(wishes, shapes, cell))
                                : PackTightly(shapes, order, widest, std::sqrt(area) / cell);
    double height = 0;
    for (std::size_t i = 0; i < parts.size(); ++i)
        height = std::max(height, best.corners[i].second * cell + shapes[i].bounds.Height());
    std::vector<Point> moves;
    for (std::size_t i = 0; i < parts.size(); ++i)
        moves.push_back({best.corners[i].first * cell - shapes[i].bounds.x0,
                         height - best.corners[i].second * cell - shapes[i].bounds.y1});
    return moves;
}

}  // namespace norvelis::layout
