#include "drawing/session/connectors.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace norvelis::drawing {

namespace {

// Published numbers of the Connect records.
constexpr int kBeginPart = 9, kEndPart = 12, kWholeShape = 3;
constexpr double kTriggered = 2;      // What a trigger's cell shows.
constexpr double kJumpHeight = 0.04;  // Inches, upwards.

// A line that runs horizontally or vertically has a block of this width, for a block of none has no middle.
const std::string kLeastBlockFormula = "GUARD(0.19685039370079DL)";

const char* EndCell(bool begin) {
    return begin ? "BeginX" : "EndX";
}

CellRef GeometryCell(int row, Name cell) {
    return {Name::Geometry, 0, RowKey::Number(row), cell};
}

CellRef TextPositionCell(Name cell) {
    return {Name::Control, 0, RowKey::Named(Name::TextPosition), cell};
}

/// Rows of a line's geometry, in the coordinates of its block.
class RouteRows {
  public:
    RouteRows(Section& section, Point origin, double width, double height)
        : section_(section), origin_(origin), width_(width), height_(height) {
        section_.rows.clear();
    }

    void MoveTo(Point to) { Add(Name::MoveTo, Local(to)); }
    void LineTo(Point to) { Add(Name::LineTo, Local(to)); }
    /// `bow` is to the right of the way, negative to the left.
    void ArcTo(Point to, double bow) { Add(Name::ArcTo, Local(to)).cells.Set(Name::A, bow); }
    void CurveTo(Point corner, Point to) {
        const auto part = [this](Point at) {
            const Point local = Local(at);
            return Point{local.x / width_, local.y / height_};
        };
        Row& row = Add(Name::RelQuadBezTo, part(to));
        row.cells.Set(Name::A, part(corner).x).Set(Name::B, part(corner).y);
    }
    /// Rows that the master has beyond those written do not count.
    void CoverRowsOfMaster(int count) {
        while (number_ < count) {
            Row& row = section_.At(RowKey::Number(++number_));
            row.type = Name::LineTo;
            row.deleted = true;
        }
    }

  private:
    Point Local(Point at) const { return {at.x - origin_.x, at.y - origin_.y}; }
    Row& Add(Name type, Point at) {
        Row& row = section_.At(RowKey::Number(++number_));
        row.type = type;
        row.cells.Set(Name::X, at.x).Set(Name::Y, at.y);
        return row;
    }

    Section& section_;
    Point origin_;
    double width_, height_;
    int number_ = 0;
};

Point Middle(Point a, Point b) {
    return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

/// Whether one sees no turn at b, whose curve leads from the middle of a-b to the middle of b-c.
bool IsFlat(Point a, Point b, Point c) {
    constexpr double kHair = 0.001;  // inches from the curve's control point to its chord
    const double chord = Length(c - a);
    return chord < kHair || std::fabs(Cross(b - a, c - a)) / chord / 2 < kHair;
}

/// Whether the line goes on in another direction behind b, however short it is there.
bool Turns(Point a, Point b, Point c) {
    constexpr double kLeastTurn = 0.01;  // sine of the angle
    return std::fabs(Cross(b - a, c - b)) > kLeastTurn * Length(b - a) * Length(c - b);
}

/// The corners become quadratic curves between the middles of their segments; the end segments stay straight
/// up to their middle, and so do lines past points that are no corners. A curve too small to be seen is a
/// corner.
void WriteCurves(RouteRows& rows, const std::vector<Point>& points) {
    rows.MoveTo(points.front());
    bool straight = true;  // since the last row
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const bool isFlat = IsFlat(points[i - 1], points[i], points[i + 1]);
        if (!isFlat && straight) rows.LineTo(Middle(points[i - 1], points[i]));
        if (!isFlat) rows.CurveTo(points[i], Middle(points[i], points[i + 1]));
        if (isFlat && Turns(points[i - 1], points[i], points[i + 1])) rows.LineTo(points[i]);
        straight = isFlat;
    }
    rows.LineTo(points.back());
}

void WriteStraight(RouteRows& rows, const std::vector<Point>& points, const std::vector<LineJump>& jumps) {
    rows.MoveTo(points.front());
    auto jump = jumps.begin();
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        for (; jump != jumps.end() && jump->segment == i; ++jump) {
            rows.LineTo({jump->from, points[i].y});
            rows.ArcTo({jump->to, points[i].y}, jump->from < jump->to ? -kJumpHeight : kJumpHeight);
        }
        rows.LineTo(points[i + 1]);
    }
}

/// The glue's formula stays; who routes the line knows the value.
void StateEnd(OpenDocument& document, Canvas& canvas, Shape& line, Name name, double value) {
    Cell& cell = line.LocalAt(name);
    cell.SetNumber(value);
    cell.stale = false;
    document.recalculation.Changed(canvas, line, name);
}

/// The ends of a line look for their places again, after the line itself has changed.
void RefreshGlue(OpenDocument& document, Canvas& canvas, Shape& line) {
    for (const Name trigger : {Name::BegTrigger, Name::EndTrigger}) {
        if (line.cells.Find(trigger)) document.recalculation.Changed(canvas, line, trigger);
    }
}

/// The ends of a line with a route.
void StateEnds(OpenDocument& document, Canvas& canvas, Shape& line, Point begin, Point end) {
    Recalculation& cells = document.recalculation;
    DropRoute(document, canvas, line);
    cells.Settle();
    PutBegin(document, canvas, line, begin);
    StateEnd(document, canvas, line, Name::EndX, end.x);
    StateEnd(document, canvas, line, Name::EndY, end.y);
    if (std::fabs(end.x - begin.x) < 1e-9) cells.SetFormula(canvas, line, Name::Width, kLeastBlockFormula);
    if (std::fabs(end.y - begin.y) < 1e-9) cells.SetFormula(canvas, line, Name::Height, kLeastBlockFormula);
}

bool Joins(const Connect& connect, const Shape& line, bool begin) {
    return connect.fromSheet == line.id && connect.fromCell == EndCell(begin);
}

}  // namespace

bool IsOneDimensional(const Shape& shape) {
    return Find(shape, Name::BeginX) != nullptr && Find(shape, Name::EndX) != nullptr;
}

Shape* GluedTo(const Canvas& canvas, const Shape& line, bool begin) {
    for (const auto& connect : canvas.connects) {
        if (Joins(connect, line, begin)) return canvas.ById(connect.toSheet);
    }
    return nullptr;
}

bool GlueEnd(OpenDocument& document, Canvas& canvas, Shape& line, bool begin, const Shape& box) {
    if (!IsOneDimensional(line) || &line == &box || canvas.ById(box.id) != &box) return false;
    DropRoute(document, canvas, line);
    Recalculation& cells = document.recalculation;
    const std::string trigger = fmt::format("_XFTRIGGER(Sheet.{}!EventXFMod)", box.id);
    const std::string walk = begin ? "_WALKGLUE(BegTrigger,EndTrigger,WalkPreference)"
                                   : "_WALKGLUE(EndTrigger,BegTrigger,WalkPreference)";
    const Name triggerCell = begin ? Name::BegTrigger : Name::EndTrigger;
    const bool isGlued = line.cells.Find(triggerCell) != nullptr;
    if (!cells.SetFormula(canvas, line, triggerCell, trigger)) return false;
    line.LocalAt(triggerCell).SetNumber(kTriggered);
    if (!cells.SetFormula(canvas, line, begin ? Name::BeginX : Name::EndX, walk)) return false;
    if (!cells.SetFormula(canvas, line, begin ? Name::BeginY : Name::EndY, walk)) return false;
    if (isGlued)
        std::erase_if(canvas.connects, [&](const Connect& connect) { return Joins(connect, line, begin); });
    canvas.connects.push_back(
        {line.id, EndCell(begin), begin ? kBeginPart : kEndPart, box.id, "PinX", kWholeShape});
    return true;
}

void PutBegin(OpenDocument& document, Canvas& canvas, Shape& line, Point begin) {
    StateEnd(document, canvas, line, Name::BeginX, begin.x);
    StateEnd(document, canvas, line, Name::BeginY, begin.y);
}

void WriteRoute(OpenDocument& document, Canvas& canvas, Shape& line, const layout::Route& route,
                const std::vector<LineJump>& jumps) {
    if (route.points.size() < 2) return;
    Recalculation& cells = document.recalculation;
    StateEnds(document, canvas, line, route.points.front(), route.points.back());
    const auto number = [&](Name name) { return cells.Number(canvas, line, name); };
    const double width = number(Name::Width), height = number(Name::Height);
    const Point origin{number(Name::PinX) - number(Name::LocPinX),
                       number(Name::PinY) - number(Name::LocPinY)};
    Section& section = line.At(Name::Geometry, 0);
    RouteRows rows(section, origin, width, height);
    if (route.curved && route.points.size() > 2) {
        WriteCurves(rows, route.points);
    } else {
        WriteStraight(rows, route.points, jumps);
    }
    if (line.base)
        rows.CoverRowsOfMaster(static_cast<int>(SectionOf(*line.base, Name::Geometry).rows.size()));
    cells.SetValue(canvas, line, TextPositionCell(Name::X), Value::Of(route.label.x - origin.x));
    cells.SetValue(canvas, line, TextPositionCell(Name::Y), Value::Of(route.label.y - origin.y));
}

void CopyRoute(OpenDocument& document, Canvas& canvas, Shape& line, const Shape& from) {
    StateEnds(document, canvas, line, {Number(from, Name::BeginX), Number(from, Name::BeginY)},
              {Number(from, Name::EndX), Number(from, Name::EndY)});
    if (const Section* route = from.Find(Name::Geometry)) line.At(Name::Geometry) = *route;
    for (const Name axis : {Name::X, Name::Y}) {
        const CellRef label = TextPositionCell(axis);
        document.recalculation.SetValue(canvas, line, label, Value::Of(Number(from, label)));
    }
}

void DropRoute(OpenDocument& document, Canvas& canvas, Shape& line) {
    if (!HasOwnGeometry(line)) return;
    std::erase_if(line.sections, [](const Section& section) {
        return section.name == Name::Geometry || section.name == Name::Control;
    });
    line.cells.Remove(Name::Width);
    line.cells.Remove(Name::Height);
    document.recalculation.Renewed(canvas, line);
}

void DropRoutesOf(OpenDocument& document, Canvas& canvas, const Shape& box) {
    for (const auto& connect : canvas.connects) {
        if (connect.toSheet != box.id) continue;
        if (Shape* line = canvas.ById(connect.fromSheet)) {
            DropRoute(document, canvas, *line);
            RefreshGlue(document, canvas, *line);
        }
    }
}

std::vector<Point> RouteOf(OpenDocument& document, Canvas& canvas, Shape& line) {
    const auto number = [&](const CellRef& ref) { return document.recalculation.Number(canvas, line, ref); };
    const Point origin{number(Name::PinX) - number(Name::LocPinX),
                       number(Name::PinY) - number(Name::LocPinY)};
    const double width = number(Name::Width), height = number(Name::Height);
    std::vector<Point> points;
    for (const Row& row : SectionOf(line, Name::Geometry).rows) {
        const int index = row.key.Index();
        const auto at = [&](Name x, Name y, double byX, double byY) {
            points.push_back({origin.x + number(GeometryCell(index, x)) * byX,
                              origin.y + number(GeometryCell(index, y)) * byY});
        };
        if (row.type == Name::RelQuadBezTo) {
            at(Name::A, Name::B, width, height);
            at(Name::X, Name::Y, width, height);
        } else {
            at(Name::X, Name::Y, 1, 1);
        }
    }
    return points;
}

}  // namespace norvelis::drawing
