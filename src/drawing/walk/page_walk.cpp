#include "drawing/walk/page_walk.h"

#include <algorithm>
#include <tuple>

#include "base/name_key.h"

namespace norvelis::drawing::walk {

namespace {

constexpr double kSquares = 128;  // Of the index along the longer side of the page.

bool Contains(const std::vector<Point>& outline, Point at) {
    bool inside = false;
    for (std::size_t i = 0, before = outline.size() - 1; i < outline.size(); before = i++) {
        const Point a = outline[before], b = outline[i];
        if ((a.y > at.y) != (b.y > at.y) && at.x < a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y))
            inside = !inside;
    }
    return inside;
}

double DistanceToSegment(Point a, Point b, Point at) {
    const Point along = b - a, to = at - a;
    const double square = along.x * along.x + along.y * along.y;
    const double part = square > 0 ? std::clamp((to.x * along.x + to.y * along.y) / square, 0.0, 1.0) : 0;
    return Length(at - Between(a, b, part));
}

double DistanceToRect(const Rect& rect, Point at) {
    return Length(at - Point{std::clamp(at.x, rect.x0, rect.x1), std::clamp(at.y, rect.y0, rect.y1)});
}

bool Meets(const Outline& outline, Point at, double slack) {
    if (outline.points.empty()) return false;
    if (outline.filled && Contains(outline.points, at)) return true;
    if (outline.width <= 0) return false;
    for (std::size_t i = 1; i < outline.points.size(); ++i) {
        if (DistanceToSegment(outline.points[i - 1], outline.points[i], at) <= outline.width / 2 + slack)
            return true;
    }
    return false;
}

bool Meets(const PageShape& shape, Point at, double slack) {
    return (shape.label && shape.label->Holds(at)) ||
           std::ranges::any_of(shape.outlines,
                               [&](const Outline& outline) { return Meets(outline, at, slack); });
}

std::string_view FirstLine(std::string_view text) {
    return Trim(text.substr(0, text.find_first_of("\r\n")));
}

/// How well a title answers what is searched for, best first; both in capitals.
int RankOf(std::string_view title, std::string_view text) {
    if (title == text) return 0;
    const std::size_t at = title.find(text);
    if (at == 0) return 1;
    return at == std::string_view::npos ? 3 : 2;
}

}  // namespace

std::optional<LinkTarget> PageShape::LinkWithin() const {
    if (!address.starts_with('#')) return std::nullopt;
    const std::size_t slash = std::min(address.rfind('/'), address.size());
    return LinkTarget{address.substr(1, slash - 1), address.substr(std::min(slash + 1, address.size()))};
}

PageWalk::PageWalk(std::vector<PageShape> shapes, const Rect& page)
    : shapes_(std::move(shapes)),
      glued_(shapes_.size()),
      near_(page, std::max(std::max(page.Width(), page.Height()) / kSquares, 1e-9)),
      longest_(page.Width() + page.Height()) {
    searched_.reserve(shapes_.size());
    for (int shape = 0; shape < Count(); ++shape) {
        const PageShape& own = (*this)[shape];
        searched_.push_back(UpperCase(own.text));
        for (const int end : {own.begin, own.end}) {
            if (end == kNone || (end == own.begin && !GluedTo(end).empty() && GluedTo(end).back() == shape))
                continue;  // A loop is glued to its box once.
            glued_[static_cast<std::size_t>(end)].push_back(shape);
        }
        if (!own.locked) Index(shape);
    }
}

void PageWalk::Index(int shape) {
    const PageShape& own = (*this)[shape];
    if (own.label) near_.Add(*own.label, shape);
    for (const Outline& outline : own.outlines) {
        if (outline.points.empty()) continue;
        if (outline.filled) {
            Rect bounds = RectOf(outline.points.front(), outline.points.front());
            for (const Point at : outline.points)
                bounds = {std::min(bounds.x0, at.x), std::min(bounds.y0, at.y), std::max(bounds.x1, at.x),
                          std::max(bounds.y1, at.y)};
            near_.Add(bounds, shape);
        }
        if (outline.width <= 0) continue;
        for (std::size_t i = 1; i < outline.points.size(); ++i) {
            const Point a = outline.points[i - 1], b = outline.points[i];
            if (Length(b - a) <= longest_) {
                near_.AddSegment(a, b, shape);
            } else {
                near_.Add(RectOf(a, b), shape);  // Of a damaged file; it would have parts without end.
            }
        }
    }
}

int PageWalk::At(Point place, double slack) const {
    int front = kNone;
    near_.Near(RectAround(place, 2 * slack, 2 * slack), [&](int shape) {
        if (shape > front && Meets((*this)[shape], place, slack)) front = shape;
        return true;
    });
    return front;
}

int PageWalk::Named(std::string_view name) const {
    const std::string key = NameKey(Trim(name));
    int found = kNone;
    for (int shape = 0; shape < Count() && !key.empty(); ++shape) {
        const PageShape& own = (*this)[shape];
        if (own.locked) continue;
        if (NameKey(Trim(own.name)) == key) return shape;
        if (NameKey(FirstLine(own.text)) != key) continue;
        if (found == kNone || ((*this)[found].IsLine() && !own.IsLine())) found = shape;
    }
    return found;
}

Hits PageWalk::Find(std::string_view text) const {
    const std::string wanted = UpperCase(Trim(text));
    Hits hits;
    if (wanted.empty()) return hits;
    for (int shape = 0; shape < Count(); ++shape) {
        if (searched_[static_cast<std::size_t>(shape)].find(wanted) != std::string::npos)
            hits.shapes.push_back(shape);
    }
    const auto place = [this](int shape) {
        const Rect& sight = Sight(shape);
        return std::tuple((*this)[shape].IsLine(), sight.y0, sight.x0);
    };
    std::ranges::stable_sort(hits.shapes, {}, place);
    const auto rank = [&](int shape) {
        return RankOf(FirstLine(searched_[static_cast<std::size_t>(shape)]), wanted);
    };
    hits.best =
        static_cast<std::size_t>(std::ranges::min_element(hits.shapes, {}, rank) - hits.shapes.begin());
    return hits;
}

std::string PageWalk::Title(int shape) const {
    const PageShape& own = (*this)[shape];
    const std::string_view line = FirstLine(own.text);
    return std::string(line.empty() ? Trim(own.name) : line);
}

const Rect& PageWalk::Sight(int shape) const {
    const PageShape& own = (*this)[shape];
    return own.IsLine() && own.label ? *own.label : own.bounds;
}

std::vector<int> PageWalk::LinesOf(int box) const {
    std::vector<int> lines;
    std::ranges::copy_if(GluedTo(box), std::back_inserter(lines),
                         [this](int each) { return (*this)[each].IsLine(); });
    return lines;
}

Surroundings PageWalk::Around(int shape) const {
    const PageShape& own = (*this)[shape];
    Surroundings around;
    if (own.IsLine()) {
        around.lines = {shape};
        around.others = {own.begin, own.end};
        return around;
    }
    around.others = {shape};
    if (own.begin != kNone) around.others.push_back(own.begin);
    for (const int glued : GluedTo(shape)) {
        const PageShape& other = (*this)[glued];
        if (other.IsLine()) {
            around.lines.push_back(glued);
            around.others.push_back(other.begin == shape ? other.end : other.begin);
        } else {
            around.others.push_back(glued);
        }
    }
    std::ranges::sort(around.others);
    around.others.erase(std::unique(around.others.begin(), around.others.end()), around.others.end());
    return around;
}

int PageWalk::FarEnd(int line, Point from) const {
    const PageShape& own = (*this)[line];
    if (!own.IsLine()) return kNone;
    const double begin = DistanceToRect((*this)[own.begin].bounds, from),
                 end = DistanceToRect((*this)[own.end].bounds, from);
    return begin > end ? own.begin : own.end;
}

int PageWalk::LineOf(const SetLine& set) const {
    const auto isSame = [](std::string_view a, std::string_view b) { return SameName(Trim(a), Trim(b)); };
    for (int shape = 0; shape < Count(); ++shape) {
        const auto own = SetOf(shape);
        if (own && isSame(own->set, set.set) && isSame(own->owner, set.owner) &&
            isSame(own->member, set.member))
            return shape;
    }
    return kNone;
}

std::optional<SetLine> PageWalk::SetOf(int line) const {
    const PageShape& own = (*this)[line];
    if (!own.IsLine()) return std::nullopt;
    return SetLine{std::string(FirstLine(own.text)), Title(own.begin), Title(own.end)};
}

}  // namespace norvelis::drawing::walk
