#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/geometry.h"
#include "layout/geometry/spatial_index.h"

// The shapes of a page and how lines tie them together, for a person who walks over it. Places are in the
// units of whoever made the page; y grows downwards. Texts are UTF-8.
namespace norvelis::drawing::walk {

inline constexpr int kNone = -1;

/// A border or a line as straight segments.
struct Outline {
    std::vector<Point> points;
    double width = 0;  ///< Of the line along it; 0 for none.
    bool filled = false;
};

/// Where a link within a drawing leads: names of a page and of a shape there.
struct LinkTarget {
    std::string page, shape;
};

/// A box, a line or a note with all parts that it is made of.
struct PageShape {
    std::string name;
    std::string text;                ///< Lines end with LF or CR LF.
    std::string tip, address;        ///< Its comment; where its link leads.
    bool locked = false;             ///< It is seen, not met.
    int begin = kNone, end = kNone;  ///< The shapes that its ends are glued to; a note has one.
    Rect bounds;                     ///< Of all that is painted.
    std::optional<Rect> label;       ///< Of its text.
    std::vector<Outline> outlines;

    bool IsLine() const { return begin != kNone && end != kNone; }
    /// Of a shape that stands for one on another page.
    std::optional<LinkTarget> LinkWithin() const;
};

/// What a line between two boxes says.
struct SetLine {
    std::string set, owner, member;
};

/// A shape with what belongs to it: the lines of a box, the boxes at their other ends, its notes; the boxes
/// at both ends of a line.
struct Surroundings {
    std::vector<int> lines, others;
};

/// Where a text is: boxes and notes first, then lines, each as one reads a page.
struct Hits {
    std::vector<int> shapes;
    std::size_t best = 0;  ///< The one whose first line is most like the text.
};

/// Shapes are numbered from back to front, from 0.
class PageWalk {
  public:
    PageWalk() : PageWalk({}, {}) {}
    PageWalk(std::vector<PageShape> shapes, const Rect& page);

    const PageShape& operator[](int shape) const { return shapes_[static_cast<std::size_t>(shape)]; }
    int Count() const { return static_cast<int>(shapes_.size()); }

    /// The frontmost shape at a place, lines within `slack` of it too; kNone when there is none.
    int At(Point place, double slack) const;
    /// The box of that name or, when there is none, the first line whose text begins with that name; letter
    /// case does not count.
    int Named(std::string_view name) const;
    /// The line of the set between these two records; kNone when the page has none.
    int LineOf(const SetLine& set) const;
    /// Letter case (A to Z) and blanks around the text do not count; an empty text is nowhere.
    Hits Find(std::string_view text) const;

    /// The first line of its text or, when it has none, its name.
    std::string Title(int shape) const;
    /// What a person looks at when a shape is pointed out: the label of a line that has one, else the whole.
    const Rect& Sight(int shape) const;

    /// The lines that are glued to a box at both their ends, in the order of the page.
    std::vector<int> LinesOf(int box) const;
    Surroundings Around(int shape) const;
    /// The end of a line that is farther from a place; kNone for what is no line.
    int FarEnd(int line, Point from) const;
    /// Nothing for what is no line.
    std::optional<SetLine> SetOf(int line) const;

  private:
    void Index(int shape);
    const std::vector<int>& GluedTo(int shape) const { return glued_[static_cast<std::size_t>(shape)]; }

    std::vector<PageShape> shapes_;
    std::vector<std::string> searched_;    ///< The text of each in capitals.
    std::vector<std::vector<int>> glued_;  ///< What is glued to each.
    layout::SpatialIndex near_;
    double longest_;  ///< A segment that is longer leaves the page.
};

}  // namespace norvelis::drawing::walk
