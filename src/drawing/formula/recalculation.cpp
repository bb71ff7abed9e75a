#include "drawing/formula/recalculation.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "drawing/model/defaults.h"
#include "drawing/text/text_layout.h"

namespace norvelis::drawing {

namespace {

/// Steps of evaluations that wait for one another; the stack bears them, and only a hostile drawing has more.
constexpr int kDeepest = 2500;
constexpr int kNeitherPlacedNorRouted = 4;  // the published number of ObjType, as leaders of notes have it

constexpr int kStepsOfACell = 4;

/// No cell takes a number that is none, nor a place that no page reaches.
bool Fits(const CellRef& ref, const Value& value) {
    return value.isText ||
           (std::isfinite(value.number) && !(IsCoordinate(ref) && std::fabs(value.number) > kFarthest));
}

/// Cells whose change moves or resizes a shape: they fire its EventXFMod.
bool MovesShape(const CellRef& ref) {
    return ref.section == Name::None && ref.cell >= Name::PinX && ref.cell <= Name::FlipY;
}

/// Cells that the composed text depends on.
bool FormatsText(const CellRef& ref) {
    if (ref.section == Name::Character || ref.section == Name::Paragraph || ref.section == Name::Tabs)
        return true;
    return ref.section == Name::None && ref.cell >= Name::LeftMargin && ref.cell <= Name::DefaultTabStop;
}

bool IsTrigger(const CellRef& ref) {
    return ref.cell == Name::TheText || ref.cell == Name::EventXFMod;
}

}  // namespace

/// What a formula sees while it is evaluated for one cell.
class Recalculation::Source : public FormulaSource {
  public:
    Source(Recalculation& owner, const Place& place) : owner_(owner), place_(place) {}

    std::optional<Value> CellValue(const Reference& reference) override {
        Shape* sheet = owner_.Resolve(*place_.canvas, *place_.shape, place_.ref, reference);
        if (!sheet) return std::nullopt;
        return owner_.Get(*place_.canvas, *sheet, reference.cell);
    }
    double TextWidth(double mostWidth) override {
        owner_.SettleFormats(*place_.canvas, *place_.shape);
        return drawing::TextWidth(owner_.fonts_, owner_.document_, *place_.shape, mostWidth);
    }
    double TextHeight(double mostWidth) override {
        owner_.SettleFormats(*place_.canvas, *place_.shape);
        return drawing::TextHeight(owner_.fonts_, owner_.document_, *place_.shape, mostWidth);
    }
    std::optional<double> WalkGlue() override {
        return owner_.WalkGlue(*place_.canvas, *place_.shape, place_.ref.cell);
    }

  private:
    Recalculation& owner_;
    const Place& place_;
};

Recalculation::Recalculation(Document& document, FontLibrary& fonts)
    : document_(document), fonts_(fonts), tables_(document.names) {
    for (const auto& page : document.pages) {
        Added(*page, page->sheet);
        for (const auto& shape : page->shapes) Added(*page, *shape);
    }
}

Recalculation::~Recalculation() = default;

void Recalculation::Added(Canvas& canvas, Shape& shape) {
    EachFormula(shape, [&](const CellRef& ref, const std::string& formula) {
        if (auto expression = tables_.Parsed(formula))
            RememberLocal(canvas, shape, ref, std::move(expression));
    });
    if (shape.base) {
        for (const auto& [reference, dependent] : tables_.Of(*shape.base).elsewhere) {
            if (reference.where == Reference::Where::Page) {
                watches_[{&canvas, 0}].push_back({reference.cell, &shape, dependent});
            }
        }
    }
    for (const auto& inner : shape.shapes) Added(canvas, *inner);
}

void Recalculation::RememberLocal(Canvas& canvas, Shape& shape, const CellRef& ref,
                                  ExpressionPtr expression) {
    WatchOthers(canvas, shape, ref, *expression);
    locals_[&shape].push_back({ref, std::move(expression)});
}

void Recalculation::WatchOthers(Canvas& canvas, Shape& shape, const CellRef& ref,
                                const Expression& expression) {
    for (const auto& reference : expression.References()) {
        if (reference.where == Reference::Where::Own) continue;
        const int sheet = reference.where == Reference::Where::Page ? 0 : reference.sheet;
        watches_[{&canvas, sheet}].push_back({reference.cell, &shape, ref});
    }
}

void Recalculation::ForgetLocal(Canvas& canvas, Shape& shape, const CellRef& ref) {
    const auto known = locals_.find(&shape);
    if (known == locals_.end()) return;
    std::erase_if(known->second, [&](const CellFormula& formula) {
        if (formula.ref != ref) return false;
        for (const auto& reference : formula.expression->References()) {
            if (reference.where == Reference::Where::Own) continue;
            const int sheet = reference.where == Reference::Where::Page ? 0 : reference.sheet;
            std::erase_if(watches_[{&canvas, sheet}], [&](const Watch& watch) {
                return watch.shape == &shape && watch.dependent == ref;
            });
        }
        return true;
    });
}

const Expression* Recalculation::FormulaInForce(const Shape& shape, const CellRef& ref) {
    if (const auto known = locals_.find(&shape); known != locals_.end()) {
        for (const auto& formula : known->second) {
            if (formula.ref == ref) return formula.expression.get();
        }
    }
    const Cell* own = shape.FindLocal(ref);
    if (!shape.base || (own && !own->inherited)) return nullptr;
    return tables_.Of(*shape.base).Find(ref);
}

Shape* Recalculation::Resolve(Canvas& canvas, Shape& shape, const CellRef& ref,
                              const Reference& reference) const {
    if (reference.where == Reference::Where::Own) return &shape;
    if (reference.where == Reference::Where::Page) return &canvas.sheet;
    const Cell* own = shape.FindLocal(ref);
    if (!shape.base || (own && !own->inherited)) return canvas.ById(reference.sheet);
    // An inherited formula names the master's shapes; it means their instances in this group.
    Shape* top = &shape;
    while (top->parent && !top->master) top = top->parent;
    std::vector<Shape*> open{top};
    while (!open.empty()) {
        Shape* at = open.back();
        open.pop_back();
        if (at->base && at->base->id == reference.sheet) return at;
        for (const auto& inner : at->shapes) open.push_back(inner.get());
    }
    return nullptr;
}

bool Recalculation::Reaches(Canvas& canvas, Shape& shape, const CellRef& ref, const Expression& expression) {
    std::set<std::pair<const Shape*, CellRef>> seen;
    std::vector<Place> open;
    const auto follow = [&](Shape& from, const CellRef& cell, const Expression& formula) {
        for (const auto& reference : formula.References()) {
            Shape* sheet = Resolve(canvas, from, cell, reference);
            if (sheet && seen.insert({sheet, reference.cell}).second)
                open.push_back({&canvas, sheet, reference.cell});
        }
    };
    // The cell may still inherit its formula while the new one, which is its own, is followed.
    for (const auto& reference : expression.References()) {
        Shape* sheet = reference.where == Reference::Where::Own    ? &shape
                       : reference.where == Reference::Where::Page ? &canvas.sheet
                                                                   : canvas.ById(reference.sheet);
        if (sheet && seen.insert({sheet, reference.cell}).second)
            open.push_back({&canvas, sheet, reference.cell});
    }
    while (!open.empty()) {
        const Place at = open.back();
        open.pop_back();
        if (at.shape == &shape && at.ref == ref) return true;
        if (IsTrigger(at.ref)) {
            const bool text = at.ref.cell == Name::TheText;
            const auto fires = [&](const CellRef& cell) {
                return text ? FormatsText(cell) : MovesShape(cell);
            };
            if (at.shape == &shape && fires(ref)) return true;
            const auto add = [&](const CellFormula& formula) {
                if (fires(formula.ref) && seen.insert({at.shape, formula.ref}).second) {
                    open.push_back({&canvas, at.shape, formula.ref});
                }
            };
            if (const auto known = locals_.find(at.shape); known != locals_.end()) {
                for (const auto& formula : known->second) add(formula);
            }
            if (at.shape->base) {
                for (const auto& formula : tables_.Of(*at.shape->base).formulas) add(formula);
            }
        } else if (const Expression* formula = FormulaInForce(*at.shape, at.ref)) {
            follow(*at.shape, at.ref, *formula);
        }
    }
    return false;
}

bool Recalculation::SetFormula(Canvas& canvas, Shape& shape, const CellRef& ref, std::string_view formula) {
    if (formula.starts_with('=')) formula.remove_prefix(1);
    const ExpressionPtr expression = tables_.Parsed(std::string(formula));
    if (!expression) return false;
    if (expression->IsConstant()) {
        const Place place{&canvas, &shape, ref};
        Source source(*this, place);
        const auto value = expression->Evaluate(source);
        if (!value || !Fits(ref, *value)) return false;
        PutValue(canvas, shape, ref, *value, expression->ConstantUnit());
        return true;
    }
    for (const auto& reference : expression->References()) {
        if (reference.where == Reference::Where::Sheet && !canvas.ById(reference.sheet)) return false;
    }
    if (Reaches(canvas, shape, ref, *expression)) return false;
    ForgetLocal(canvas, shape, ref);
    Cell& cell = shape.LocalAt(ref);
    cell.formula = expression->IsOpaque() ? std::string(formula) : expression->Text();
    cell.inherited = false;
    cell.unit = Name::None;
    RememberLocal(canvas, shape, ref, expression);
    std::vector<Place> todo;
    MarkStale({&canvas, &shape, ref}, todo);
    Changed(canvas, shape, ref);
    return true;
}

bool Recalculation::SetValue(Canvas& canvas, Shape& shape, const CellRef& ref, const Value& value) {
    if (!Fits(ref, value) || FormulaOf(shape, ref).starts_with("GUARD(")) return false;
    const Cell* cell = drawing::Find(shape, ref);
    const bool keepsUnit = cell && cell->isText == value.isText;
    PutValue(canvas, shape, ref, value, keepsUnit ? cell->unit : Name::None);
    return true;
}

void Recalculation::PutValue(Canvas& canvas, Shape& shape, const CellRef& ref, const Value& value,
                             Name unit) {
    ForgetLocal(canvas, shape, ref);
    Cell& cell = shape.LocalAt(ref);
    cell.formula.clear();
    cell.inherited = cell.stale = false;
    cell.unit = unit;
    value.isText ? cell.SetText(value.text) : cell.SetNumber(value.number);
    Changed(canvas, shape, ref);
}

void Recalculation::MarkStale(const Place& place, std::vector<Place>& todo) {
    Cell* cell = place.shape->FindLocal(place.ref);
    if (cell && cell->stale) return;
    if (!cell) {  // The formula is the master's; the value becomes the shape's own.
        const Cell* inherited = drawing::Find(*place.shape, place.ref);
        const Value old = inherited ? Value{inherited->value, inherited->text, inherited->isText} : Value();
        const Name type = [&] {
            if (place.ref.section != Name::Geometry || !place.shape->base) return Name::None;
            for (const Shape* at = place.shape->base; at; at = at->base) {
                const Section* section = at->Find(Name::Geometry, place.ref.index);
                const Row* row = section ? section->Find(place.ref.row) : nullptr;
                if (row && row->type != Name::None) return row->type;
            }
            return Name::None;
        }();
        cell = &place.shape->LocalAt(place.ref);
        if (type != Name::None)
            place.shape->At(Name::Geometry, place.ref.index).At(place.ref.row).type = type;
        cell->inherited = true;
        old.isText ? cell->SetText(old.text) : cell->SetNumber(old.number);
    }
    cell->stale = true;
    stale_.push_back(place);
    todo.push_back(place);
}

void Recalculation::MarkDependents(const Place& place, std::vector<Place>& todo) {
    Canvas& canvas = *place.canvas;
    Shape& shape = *place.shape;
    if (const auto known = locals_.find(&shape); known != locals_.end()) {
        for (const auto& formula : known->second) {
            for (const auto& reference : formula.expression->References()) {
                if (reference.where == Reference::Where::Own && reference.cell == place.ref) {
                    MarkStale({&canvas, &shape, formula.ref}, todo);
                }
            }
        }
    }
    const auto inForce = [](const Shape& at, const CellRef& ref) {
        const Cell* own = at.FindLocal(ref);
        return !own || own->inherited;
    };
    if (shape.base) {
        const auto& dependents = tables_.Of(*shape.base).dependents;
        auto at = std::lower_bound(dependents.begin(), dependents.end(), std::pair(place.ref, CellRef()));
        for (; at != dependents.end() && at->first == place.ref; ++at) {
            if (inForce(shape, at->second)) MarkStale({&canvas, &shape, at->second}, todo);
        }
        Shape* top = &shape;
        while (top->parent && !top->master) top = top->parent;
        std::vector<Shape*> open;
        if (!top->shapes.empty()) open.push_back(top);
        while (!open.empty()) {
            Shape* each = open.back();
            open.pop_back();
            for (const auto& inner : each->shapes) open.push_back(inner.get());
            if (!each->base) continue;
            for (const auto& [reference, dependent] : tables_.Of(*each->base).elsewhere) {
                if (reference.where == Reference::Where::Sheet && reference.sheet == shape.base->id &&
                    reference.cell == place.ref && inForce(*each, dependent)) {
                    MarkStale({&canvas, each, dependent}, todo);
                }
            }
        }
    }
    const bool isPage = &shape == &canvas.sheet;
    if (const auto watched = watches_.find({&canvas, isPage ? 0 : shape.id}); watched != watches_.end()) {
        for (const auto& watch : watched->second) {
            if (watch.watched == place.ref) MarkStale({&canvas, watch.shape, watch.dependent}, todo);
        }
    }
}

void Recalculation::Changed(Canvas& canvas, Shape& shape, const CellRef& ref) {
    std::vector<Place> todo{{&canvas, &shape, ref}};
    bool moved = false, composed = ref.cell == Name::TheText;
    while (!todo.empty()) {
        const Place at = todo.back();
        todo.pop_back();
        MarkDependents(at, todo);
        // The pseudo cells fire once for each shape that changed through this call at most.
        if (MovesShape(at.ref) && !(at.shape == &shape && std::exchange(moved, true))) {
            MarkDependents({at.canvas, at.shape, Name::EventXFMod}, todo);
        }
        if (FormatsText(at.ref) && !(at.shape == &shape && std::exchange(composed, true))) {
            MarkDependents({at.canvas, at.shape, Name::TheText}, todo);
        }
    }
}

void Recalculation::MarkAll(Canvas& canvas, Shape& shape, std::vector<Place>& todo) {
    if (const auto known = locals_.find(&shape); known != locals_.end()) {
        for (const auto& formula : known->second) MarkStale({&canvas, &shape, formula.ref}, todo);
    }
    if (shape.base) {
        for (const auto& formula : tables_.Of(*shape.base).formulas) {
            const Cell* own = shape.FindLocal(formula.ref);
            if (!own || own->inherited) MarkStale({&canvas, &shape, formula.ref}, todo);
        }
    }
    for (const auto& inner : shape.shapes) MarkAll(canvas, *inner, todo);
}

void Recalculation::Dropped(Canvas& canvas, Shape& shape) {
    Added(canvas, shape);
    std::vector<CellRef> own;
    for (const auto& cell : shape.cells) {
        if (!cell.inherited) own.emplace_back(cell.name);
    }
    for (const CellRef& ref : own) Changed(canvas, shape, ref);
    MarkReadersOfThePage(canvas, shape);
}

void Recalculation::MarkReadersOfThePage(Canvas& canvas, Shape& shape) {
    if (shape.base) {
        for (const auto& [reference, dependent] : tables_.Of(*shape.base).elsewhere) {
            const Cell* own = shape.FindLocal(dependent);
            if (reference.where != Reference::Where::Page || (own && !own->inherited)) continue;
            std::vector<Place> todo;
            MarkStale({&canvas, &shape, dependent}, todo);
            Changed(canvas, shape, dependent);
        }
    }
    for (const auto& inner : shape.shapes) MarkReadersOfThePage(canvas, *inner);
}

void Recalculation::Renewed(Canvas& canvas, Shape& shape) {
    if (const auto known = locals_.find(&shape); known != locals_.end()) {
        std::vector<CellRef> gone;
        for (const auto& formula : known->second) {
            if (!shape.FindLocal(formula.ref)) gone.push_back(formula.ref);
        }
        for (const CellRef& ref : gone) ForgetLocal(canvas, shape, ref);
    }
    std::vector<Place> todo;
    MarkAll(canvas, shape, todo);
}

void Recalculation::MasterChanged(Master& master) {
    for (const auto& shape : master.shapes) tables_.Forget(*shape);
    for (const auto& page : document_.pages) {
        for (const auto& shape : page->shapes) {
            std::vector<Place> todo;
            if (shape->master == &master) MarkAll(*page, *shape, todo);
        }
    }
}

Value Recalculation::Get(Canvas& canvas, Shape& shape, const CellRef& ref) {
    const Cell* cell = shape.FindLocal(ref);
    if (cell && cell->stale) {
        Evaluate({&canvas, &shape, ref});
        cell = shape.FindLocal(ref);
    }
    if (!cell) cell = drawing::Find(shape, ref);
    return cell ? Value{cell->value, cell->text, cell->isText} : Value::Of(DefaultNumber(ref.cell));
}

void Recalculation::Evaluate(const Place& place) {
    Cell* cell = place.shape->FindLocal(place.ref);
    if (!cell || !cell->stale) return;
    const Expression* expression = FormulaInForce(*place.shape, place.ref);
    const int steps = expression ? expression->Depth() + kStepsOfACell : 0;
    if (depth_ + steps > kDeepest) return;
    cell->stale = false;  // A chain that leads back here finds the old value.
    if (!expression) return;
    depth_ += steps;
    ++evaluations_;
    Source source(*this, place);
    const auto value = expression->Evaluate(source);
    depth_ -= steps;
    if (!value || !Fits(place.ref, *value)) return;
    cell = place.shape->FindLocal(place.ref);
    value->isText ? cell->SetText(value->text) : cell->SetNumber(value->number);
}

void Recalculation::SettleFormats(Canvas& canvas, Shape& shape) {
    std::vector<CellRef> stale;
    EachCell(shape, [&stale](const CellRef& ref, const Cell& cell) {
        if (cell.stale && FormatsText(ref)) stale.push_back(ref);
    });
    for (const CellRef& ref : stale) Evaluate({&canvas, &shape, ref});
}

void Recalculation::Settle() {
    for (std::size_t i = 0; i < stale_.size(); ++i) Evaluate(Place(stale_[i]));
    stale_.clear();
}

std::optional<glue::Block> Recalculation::GluedBlock(Canvas& canvas, Shape& line, Name trigger) {
    const Expression* expression = FormulaInForce(line, trigger);
    if (!expression || expression->References().empty()) return std::nullopt;
    Shape* box = canvas.ById(expression->References()[0].sheet);
    if (!box) return std::nullopt;
    const auto number = [&](Name name) { return Number(canvas, *box, name); };
    return glue::Block{number(Name::PinX) - number(Name::LocPinX), number(Name::PinY) - number(Name::LocPinY),
                       number(Name::Width), number(Name::Height)};
}

std::optional<double> Recalculation::WalkGlue(Canvas& canvas, Shape& line, Name cell) {
    const bool begin = cell == Name::BeginX || cell == Name::BeginY;
    const auto from = GluedBlock(canvas, line, Name::BegTrigger),
               to = GluedBlock(canvas, line, Name::EndTrigger);
    const auto& mine = begin ? from : to;
    const auto& other = begin ? to : from;
    if (!mine) return std::nullopt;
    const auto coordinate = [cell](Point end) {
        return cell == Name::BeginX || cell == Name::EndX ? end.x : end.y;
    };
    // A routed line keeps its ends while they are on the borders of their boxes, and so does a leader.
    if (HasOwnGeometry(line) || (!other && drawing::Number(line, Name::ObjType) == kNeitherPlacedNorRouted)) {
        const Cell* x = drawing::Find(line, begin ? Name::BeginX : Name::EndX);
        const Cell* y = drawing::Find(line, begin ? Name::BeginY : Name::EndY);
        if (x && y && mine->HasOnBorder({x->value, y->value})) return coordinate({x->value, y->value});
    }
    if (other && *other == *mine) return coordinate(mine->LoopEnd(begin));
    const Name otherX = begin ? Name::EndX : Name::BeginX, otherY = begin ? Name::EndY : Name::BeginY;
    return coordinate(mine->BorderTowards(
        other ? other->Middle() : Point{Number(canvas, line, otherX), Number(canvas, line, otherY)}));
}

}  // namespace norvelis::drawing
