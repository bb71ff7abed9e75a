#include "drawing/render/build_scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>
#include <unordered_map>

#include "base/failure.h"
#include "base/text.h"
#include "drawing/render/bitmap.h"
#include "drawing/render/outline.h"
#include "drawing/render/text_picture.h"

namespace norvelis::drawing::render {

namespace {

constexpr int kMaxGroupDepth = 64;
/// What lies beyond every page comes from a damaged file.
double Finite(double value) {
    return std::isfinite(value) ? std::clamp(value, -kFarthest, kFarthest) : 0;
}
double Value(const Shape& shape, const CellRef& ref) {
    return Finite(Number(shape, ref));
}
int Whole(const Shape& shape, const CellRef& ref) {
    return static_cast<int>(Value(shape, ref));
}

QColor Translucent(Color color, double transparency) {
    QColor result(color.red, color.green, color.blue);
    result.setAlphaF(static_cast<float>(1 - std::clamp(transparency, 0.0, 1.0)));
    return result;
}

/// Where a shape's own coordinates lie in the scene, and how far its text is turned (radians, left).
struct Placement {
    QTransform toScene;
    double turn = 0;
};

Placement Place(const Shape& shape, const Placement& around) {
    QTransform local;
    local.translate(Value(shape, Name::PinX), Value(shape, Name::PinY));
    const double angle = Value(shape, Name::Angle);
    local.rotateRadians(angle);
    local.scale(Value(shape, Name::FlipX) != 0 ? -1 : 1, Value(shape, Name::FlipY) != 0 ? -1 : 1);
    local.translate(-Value(shape, Name::LocPinX), -Value(shape, Name::LocPinY));
    return {local * around.toScene, around.turn + angle};
}

/// A length of the scene's lines, which the page's scale does not change.
double Units(double inches) {
    return inches * kUnitsPerInch;
}

constexpr std::size_t kMostWork = 10'000'000;
constexpr std::size_t kWorkOfAFragment = 20;  ///< Of a line of text.

class SceneBuilder {
  public:
    SceneBuilder(FontLibrary& fonts, const Document& document, Scene& scene, SceneCost& cost)
        : fonts_(fonts), document_(document), scene_(scene), cost_(cost) {}

    /// A background page's shapes are only painted.
    void Add(const Canvas& canvas, const Placement& page, bool background = false) {
        FindLayers(canvas.sheet);
        background_ = background;
        for (const auto& shape : canvas.shapes) Add(*shape, page, nullptr, 0);
        if (!background) TieEnds(canvas);
    }

  private:
    void FindLayers(const Shape& sheet) {
        hidden_.clear();
        locked_.clear();
        const Section layers = SectionOf(sheet, Name::Layer);
        for (const Row& row : layers.rows) {
            const Cell* visible = row.cells.Find(Name::Visible);
            if (visible && !visible->isText && visible->value == 0) hidden_.insert(row.key.Index());
            const Cell* lock = row.cells.Find(Name::Lock);
            if (lock && !lock->isText && lock->value != 0) locked_.insert(row.key.Index());
        }
    }

    void Spend(std::size_t work) {
        cost_.work += work;
        if (cost_.work > kMostWork)
            throw RuntimeFailure(FailureNumber::DeviceIoError, "the page holds more than can be shown");
    }

    /// The text of a cell, whose length counts.
    QString Words(const Shape& shape, const CellRef& ref) {
        const std::string text = TextValue(shape, ref);
        Spend(text.size());
        return QString::fromStdString(text);
    }

    /// Whether the shape is on layers, and on these alone: it shows while one of its layers does.
    bool IsOnlyOn(const std::set<int>& layers, const Shape& shape) {
        if (layers.empty()) return false;
        const QStringList member = Words(shape, Name::LayerMember).split(';', Qt::SkipEmptyParts);
        return !member.isEmpty() &&
               std::all_of(member.begin(), member.end(),
                           [&layers](const QString& layer) { return layers.contains(layer.toInt()); });
    }

    void Add(const Shape& shape, const Placement& around, const Figure* group, int depth) {
        Spend(1);
        if (depth > kMaxGroupDepth || shape.kind == ShapeKind::Guide) return;
        if (IsOnlyOn(hidden_, shape)) return;
        const Placement place = Place(shape, around);
        Figure figure = Describe(shape, group);
        figure.locked = (group && group->locked) || IsOnlyOn(locked_, shape);
        if (group)
            figure.onPage = group->onPage;
        else if (!background_)
            figure.onPage = Enter(figure);
        const int display = shape.kind == ShapeKind::Group ? Whole(shape, Name::DisplayMode) : 0;
        if (shape.kind != ShapeKind::Group || display != 0) {
            AddMarks(shape, place, figure);
            AddPicture(shape, place, figure);
            AddText(shape, place, figure);
        }
        Measure(figure);
        const auto addParts = [&, described = figure] {  // They share its tip and link.
            for (const auto& part : shape.shapes) Add(*part, place, &described, depth + 1);
        };
        const bool inFront = display == 2;
        if (inFront) addParts();
        Keep(std::move(figure));
        if (!inFront) addParts();
    }

    int Enter(const Figure& figure) {
        const int place = static_cast<int>(scene_.shapes.size());
        scene_.shapes.push_back(
            {figure.shape, figure.name, {}, figure.tip, figure.address, figure.locked, -1, -1});
        places_.try_emplace(figure.shape, place);
        return place;
    }

    /// The place in the scene of a shape, or of the group around it.
    int PlaceOf(const Canvas& canvas, int id) const {
        const Shape* shape = canvas.ById(id);
        while (shape && shape->parent) shape = shape->parent;
        const auto place = shape ? places_.find(shape->id) : places_.end();
        return place == places_.end() ? -1 : place->second;
    }

    void TieEnds(const Canvas& canvas) {
        for (const Connect& connect : canvas.connects) {
            const int line = PlaceOf(canvas, connect.fromSheet), to = PlaceOf(canvas, connect.toSheet);
            if (line < 0 || line == to) continue;
            ShapeOnPage& tied = scene_.shapes[static_cast<std::size_t>(line)];
            if (EqualIgnoringCase(connect.fromCell, "BeginX")) tied.begin = to;
            if (EqualIgnoringCase(connect.fromCell, "EndX")) tied.end = to;
        }
    }

    void Keep(Figure figure) {
        if (!figure.marks.empty() || !figure.text.fragments.empty() || !figure.picture.isNull())
            scene_.figures.push_back(std::move(figure));
    }

    Figure Describe(const Shape& shape, const Figure* group) {
        Figure figure;
        figure.shape = shape.id;
        figure.name = QString::fromStdString(shape.name.empty() ? shape.nameU : shape.name);
        figure.tip = Words(shape, Name::Comment);
        if (const auto link = FirstLink(shape)) {
            const auto text = [&](Name cell) {
                return Words(shape, CellRef(Name::Hyperlink, 0, *link, cell));
            };
            figure.address = text(Name::Address);
            if (const QString inside = text(Name::SubAddress); !inside.isEmpty())
                figure.address += '#' + inside;
            figure.addressText = text(Name::Description);
        }
        if (group) {
            if (figure.tip.isEmpty()) figure.tip = group->tip;
            if (figure.address.isEmpty())
                figure.address = group->address, figure.addressText = group->addressText;
        }
        return figure;
    }

    static std::optional<RowKey> FirstLink(const Shape& shape) {
        for (const Shape* at = &shape; at; at = at->base) {
            const Section* links = at->Find(Name::Hyperlink);
            if (links && !links->rows.empty()) return links->rows.front().key;
        }
        return std::nullopt;
    }

    QPainterPath GeometryPath(const Shape& shape, int index) {
        for (const Shape* at = &shape; at; at = at->base) {
            const Section* own = at->Find(Name::Geometry, index);
            if (own) Spend(own->rows.size());
        }
        std::vector<OutlineRow> rows;
        for (const Row& row : SectionOf(shape, Name::Geometry, index).rows) {
            const auto value = [&row](Name cell) {
                const Cell* stated = row.cells.Find(cell);
                return stated ? Finite(stated->value) : 0;
            };
            rows.push_back({row.type, value(Name::X), value(Name::Y), value(Name::A), value(Name::B),
                            value(Name::C), value(Name::D), CurveData(row)});
        }
        QPainterPath path = Outline(rows, Value(shape, Name::Width), Value(shape, Name::Height));
        Spend(static_cast<std::size_t>(path.elementCount()));
        return path;
    }

    /// Knots and points of a free curve, which are in one cell as a formula's text.
    std::string CurveData(const Row& row) {
        const Cell* cell = row.cells.Find(Name::E);
        if (!cell) return {};
        Spend(cell->text.size() + cell->formula.size());
        return cell->isText && !cell->text.empty() ? cell->text : cell->formula;
    }

    void AddMarks(const Shape& shape, const Placement& place, Figure& figure) {
        const LineStyle style{
            Whole(shape, Name::LinePattern), Units(Value(shape, Name::LineWeight)),
            Translucent(ColorOf(document_, shape, Name::LineColor), Value(shape, Name::LineColorTrans)),
            Whole(shape, Name::LineCap)};
        const FillStyle fill{
            Whole(shape, Name::FillPattern),
            Translucent(ColorOf(document_, shape, Name::FillForegnd), Value(shape, Name::FillForegndTrans)),
            Translucent(ColorOf(document_, shape, Name::FillBkgnd), Value(shape, Name::FillBkgndTrans))};
        const double rounding = Value(shape, Name::Rounding);
        QPainterPath filled, lined;
        bool same = true;
        for (const int index : GeometryIndexes(shape)) {
            const auto says = [&](Name cell) {
                return Value(shape, CellRef(Name::Geometry, index, CellRef::kSectionCell, cell)) != 0;
            };
            if (says(Name::NoShow)) continue;
            const bool fills = fill.pattern != 0 && !says(Name::NoFill),
                       lines = style.pattern != 0 && !says(Name::NoLine);
            if (!fills && !lines) continue;
            const QPainterPath path = place.toScene.map(Rounded(GeometryPath(shape, index), rounding));
            if (fills) filled.addPath(path);
            if (lines) lined.addPath(path);
            same = same && fills == lines;
        }
        filled.setFillRule(Qt::OddEvenFill);
        const int begin = Whole(shape, Name::BeginArrow), end = Whole(shape, Name::EndArrow);
        const bool together =
            same && begin == 0 && end == 0 && HatchLines(fill.pattern, filled.boundingRect()) == std::nullopt;
        if (!filled.isEmpty()) {
            figure.marks.push_back(
                {filled, FillBrush(fill), together ? LinePen(style) : QPen(Qt::NoPen), false});
            if (const auto hatch = HatchLines(fill.pattern, filled.boundingRect())) {
                Spend(static_cast<std::size_t>(hatch->elementCount()));
                figure.marks.push_back({*hatch, Qt::NoBrush, LinePen({1, 4, fill.foreground, 1}), true});
            }
        }
        if (lined.isEmpty() || (together && !filled.isEmpty())) return;
        AddLines(lined, style, {begin, Whole(shape, Name::BeginArrowSize)},
                 {end, Whole(shape, Name::EndArrowSize)}, figure);
    }

    struct Arrow {
        int kind, size;
    };

    /// The lines, open ones with their ends.
    static void AddLines(const QPainterPath& path, const LineStyle& style, Arrow begin, Arrow end,
                         Figure& figure) {
        QPainterPath line = path;
        std::vector<LineEnd> ends;
        const int count = line.elementCount();
        for (int first = 0; first < count && (begin.kind > 0 || end.kind > 0);) {
            int last = first;
            while (last + 1 < count && !line.elementAt(last + 1).isMoveTo()) ++last;
            const QPointF start = line.elementAt(first), stop = line.elementAt(last);
            if (last > first && start != stop) {
                const auto put = [&](Arrow arrow, int tip, int before) {
                    const QPointF at = line.elementAt(tip), from = line.elementAt(before);
                    auto made = MakeLineEnd(arrow.kind, arrow.size, style.weight, from, at);
                    if (!made) return;
                    const QPointF way = at - from;
                    const QPointF cut = at - way * (made->cut / std::hypot(way.x(), way.y()));
                    line.setElementPositionAt(tip, cut.x(), cut.y());
                    ends.push_back(std::move(*made));
                };
                put(begin, first, first + 1);
                put(end, last, last - 1);
            }
            first = last + 1;
        }
        figure.marks.push_back({line, Qt::NoBrush, LinePen(style), false});
        for (LineEnd& made : ends) {
            LineStyle solid = style;
            solid.pattern = 1;
            figure.marks.push_back(
                {made.path, made.filled ? QBrush(style.color) : QBrush(Qt::NoBrush), LinePen(solid), false});
        }
    }

    void AddPicture(const Shape& shape, const Placement& place, Figure& figure) {
        if (!shape.picture) return;
        figure.picture = ReadBitmap(*shape.picture, cost_.pixels);
        const double x = Value(shape, Name::ImgOffsetX), y = Value(shape, Name::ImgOffsetY);
        const double width = Value(shape, Name::ImgWidth), height = Value(shape, Name::ImgHeight);
        figure.picturePlace = QTransform(width, 0, 0, -height, x, y + height) * place.toScene;
    }

    void AddText(const Shape& shape, const Placement& place, Figure& figure) {
        for (const TextRun& run : TextOf(shape)) Spend(run.text.size());
        if (TextOf(shape).empty() || Value(shape, Name::HideText) != 0) return;
        if (figure.onPage >= 0) {
            QString& words = scene_.shapes[static_cast<std::size_t>(figure.onPage)].text;
            if (!words.isEmpty()) words += '\n';
            words += QString::fromStdString(PlainText(TextOf(shape)));
        }
        const double width = Value(shape, Name::Width), height = Value(shape, Name::Height);
        const auto orElse = [&](Name cell, double otherwise) {
            return Find(shape, cell) ? Value(shape, cell) : otherwise;
        };
        const double blockWidth = orElse(Name::TxtWidth, std::abs(width)),
                     blockHeight = orElse(Name::TxtHeight, std::abs(height));
        const QPointF pin(orElse(Name::TxtPinX, width / 2), orElse(Name::TxtPinY, height / 2));
        const double pinX = orElse(Name::TxtLocPinX, blockWidth / 2),
                     pinY = orElse(Name::TxtLocPinY, blockHeight / 2);
        figure.text = PictureOfText(fonts_, document_, shape, blockWidth, blockHeight);
        if (figure.text.fragments.empty()) return;
        Spend(kWorkOfAFragment * figure.text.fragments.size());
        const QPointF at = place.toScene.map(pin);
        QTransform text;
        text.translate(at.x(), at.y());
        text.rotateRadians(-(place.turn + Value(shape, Name::TxtAngle)));
        text.translate(-Units(pinX), -Units(blockHeight - pinY));
        figure.text.place = text;
        if (const auto ground = TextGround(shape)) {
            QPainterPath plate;
            plate.setFillRule(Qt::WindingFill);
            for (const QRectF& line : figure.text.ink) plate.addRect(line);
            figure.marks.push_back({text.map(plate), *ground, Qt::NoPen, false});
        }
    }

    /// The colour behind the text; the cell holds none (0 or 255), a colour, or a palette index counted
    /// from 1.
    std::optional<QColor> TextGround(const Shape& shape) const {
        const Cell* cell = Find(shape, Name::TextBkgnd);
        if (!cell) return std::nullopt;
        const double transparency = Value(shape, Name::TextBkgndTrans);
        if (cell->isText)
            return cell->text.starts_with('#')
                       ? std::optional(Translucent(ColorOf(document_, *cell), transparency))
                       : std::nullopt;
        if (!(cell->value >= 1 && cell->value < 255)) return std::nullopt;
        return Translucent(document_.PaletteColor(static_cast<int>(cell->value) - 1), transparency);
    }

    static void Measure(Figure& figure) {
        for (const Mark& mark : figure.marks) {
            if (mark.clipped) continue;
            const double half = mark.line.style() == Qt::NoPen ? 0 : mark.line.widthF();
            figure.bounds |= mark.path.boundingRect().adjusted(-half, -half, half, half);
        }
        if (!figure.text.fragments.empty()) figure.bounds |= figure.text.place.mapRect(figure.text.bounds);
        if (!figure.picture.isNull()) figure.bounds |= figure.picturePlace.mapRect(QRectF(0, 0, 1, 1));
    }

    FontLibrary& fonts_;
    const Document& document_;
    Scene& scene_;
    std::set<int> hidden_, locked_;        ///< Layers.
    std::unordered_map<int, int> places_;  ///< In the scene's shapes, by ID.
    bool background_ = false;
    SceneCost& cost_;
};

/// Of a page whose drawing scale is not its page scale: paper inches to the drawing's inch.
double Scale(const Shape& sheet) {
    const double paper = Value(sheet, Name::PageScale), drawn = Value(sheet, Name::DrawingScale);
    return paper > 0 && drawn > 0 ? paper / drawn : 1;
}

Placement PagePlacement(const Shape& sheet) {
    const double scale = Scale(sheet) * kUnitsPerInch;
    return {QTransform(scale, 0, 0, -scale, 0, Value(sheet, Name::PageHeight) * scale), 0};
}

Scene EmptyScene(const Shape& sheet) {
    Scene scene;
    const double scale = Scale(sheet) * kUnitsPerInch;
    scene.size = {std::max(Value(sheet, Name::PageWidth) * scale, 1.0),
                  std::max(Value(sheet, Name::PageHeight) * scale, 1.0)};
    return scene;
}

}  // namespace

Scene BuildScene(FontLibrary& fonts, const Document& document, const Page& page, SceneCost& cost) {
    Scene scene = EmptyScene(page.sheet);
    scene.title = QString::fromStdString(document.title.empty() ? page.name : document.title);
    scene.name = QString::fromStdString(page.name);
    SceneBuilder builder(fonts, document, scene, cost);
    std::vector<const Page*> pages = {&page};
    for (const Page* back = document.PageById(page.backPage);
         back && std::find(pages.begin(), pages.end(), back) == pages.end();
         back = document.PageById(back->backPage))
        pages.push_back(back);
    for (auto at = pages.rbegin(); at != pages.rend(); ++at)
        builder.Add(**at, PagePlacement((*at)->sheet), *at != &page);
    return scene;
}

Scene BuildScene(FontLibrary& fonts, const Document& document, const Page& page) {
    SceneCost cost;
    return BuildScene(fonts, document, page, cost);
}

Scene BuildScene(FontLibrary& fonts, const Document& document, const Master& master, SceneCost& cost) {
    Scene scene = EmptyScene(master.sheet);
    scene.title = scene.name = QString::fromStdString(master.name);
    SceneBuilder(fonts, document, scene, cost).Add(master, PagePlacement(master.sheet));
    return scene;
}

}  // namespace norvelis::drawing::render
