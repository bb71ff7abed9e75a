#include <algorithm>

#include "drawing/automation/cell_addresses.h"
#include "drawing/automation/handles.h"
#include "drawing/session/connectors.h"

// Shapes, Shape, Cell, Hyperlink.
namespace norvelis::drawing {

using engine::Ref;

namespace {

constexpr int kPageSheet = 0;  // The ID that page sheets have.
const CellRef kFirstTabStop(Name::Tabs, 0, RowKey::Number(0), Name::Position0);

struct TabStop {
    Name position, alignment;
};
constexpr TabStop kTabStops[] = {{Name::Position0, Name::Alignment0},
                                 {Name::Position1, Name::Alignment1},
                                 {Name::Position2, Name::Alignment2}};

class ShapesHandle : public engine::Shapes {
  public:
    ShapesHandle(Context context, Canvas& canvas, Shape* group)
        : context_(std::move(context)), canvas_(canvas), shapes_(group ? group->shapes : canvas.shapes) {}

    int Count() override { return context_.Alive() ? static_cast<int>(shapes_.size()) : 0; }
    Ref<engine::Shape> Item(int index) override {
        if (index < 1 || index > Count()) return nullptr;
        return HandleOf(context_, canvas_, *shapes_[static_cast<std::size_t>(index) - 1]);
    }
    Ref<engine::Shape> ItemFromID(int id) override {
        Shape* shape = context_.Alive() ? canvas_.ById(id) : nullptr;
        return shape ? HandleOf(context_, canvas_, *shape) : nullptr;
    }

  private:
    Context context_;
    Canvas& canvas_;
    const std::vector<std::unique_ptr<Shape>>& shapes_;
};

class HyperlinkHandle : public engine::Hyperlink {
  public:
    HyperlinkHandle(Context context, Shape& shape, RowKey row)
        : context_(std::move(context)), shape_(shape), row_(row) {}
    bool SetAddress(const std::string& address) override { return Write(Name::Address, address); }
    bool SetSubAddress(const std::string& place) override { return Write(Name::SubAddress, place); }
    bool SetDescription(const std::string& description) override {
        return Write(Name::Description, description);
    }

  private:
    bool Write(Name cell, const std::string& text) {
        if (!context_.Writable()) return false;
        shape_.LocalAt({Name::Hyperlink, 0, row_, cell}).SetText(text);
        return true;
    }

    Context context_;
    Shape& shape_;
    RowKey row_;
};

class TabStopCountHandle : public engine::Cell {
  public:
    TabStopCountHandle(Context context, Canvas& canvas, Shape& shape)
        : context_(std::move(context)), canvas_(canvas), shape_(shape) {}
    bool SetFormula(const std::string&) override { return false; }
    bool SetFormulaU(const std::string&) override { return false; }
    std::optional<double> ResultIU() override {
        if (!context_.Alive()) return std::nullopt;
        const Row* row = TabRow();
        return row ? std::count_if(
                         std::begin(kTabStops), std::end(kTabStops),
                         [row](const TabStop& stop) { return row->cells.Find(stop.position) != nullptr; })
                   : 0;
    }
    bool SetResultIU(double value) override {
        const int count = static_cast<int>(value);
        if (!context_.Writable() || !TabRow() || count < 0 || count > static_cast<int>(std::size(kTabStops)))
            return false;
        CellList& cells = TabRow()->cells;
        for (int i = 0; i < static_cast<int>(std::size(kTabStops)); ++i) {
            if (i < count) {
                cells.At(kTabStops[i].position);
                cells.At(kTabStops[i].alignment);
            } else {
                cells.Remove(kTabStops[i].position);
                cells.Remove(kTabStops[i].alignment);
            }
        }
        context_.document->recalculation.TextChanged(canvas_, shape_);
        return true;
    }
    bool SetResult(engine::Unit, double value) override { return SetResultIU(value); }
    bool GlueTo(const Ref<engine::Cell>&) override { return false; }

  private:
    Row* TabRow() {
        Section* section = shape_.Find(Name::Tabs);
        return section ? section->Find(RowKey::Number(0)) : nullptr;
    }

    Context context_;
    Canvas& canvas_;
    Shape& shape_;
};

/// The place of a shape among its siblings.
std::vector<std::unique_ptr<Shape>>& SiblingsOf(Canvas& canvas, Shape& shape) {
    return shape.parent ? shape.parent->shapes : canvas.shapes;
}

bool MovesBox(const CellRef& ref) {
    return ref.section == Name::None && ref.cell >= Name::PinX && ref.cell <= Name::FlipY;
}

}  // namespace

Ref<engine::Shape> HandleOf(const Context& context, Canvas& canvas, Shape& shape) {
    return std::make_shared<ShapeHandle>(context, canvas, shape);
}
Ref<engine::Shapes> ShapesOf(const Context& context, Canvas& canvas, Shape* group) {
    return std::make_shared<ShapesHandle>(context, canvas, group);
}
Ref<engine::Cell> TabStopCountOf(const Context& context, Canvas& canvas, Shape& shape) {
    return std::make_shared<TabStopCountHandle>(context, canvas, shape);
}

int ShapeHandle::ID() {
    return context_.Alive() ? shape_.id : 0;
}

std::string ShapeHandle::Name() {
    if (!context_.Alive()) return {};
    const bool isPart = !shape_.master && shape_.base;  // Called as its master's part.
    return isPart && shape_.name.empty() ? shape_.base->name : shape_.name;
}

bool ShapeHandle::SetName(const std::string& name) {
    if (!context_.Writable() || name.empty()) return false;
    shape_.name = shape_.nameU = name;
    return true;
}

bool ShapeHandle::SetText(const std::string& text) {
    if (!context_.Writable()) return false;
    const TextRuns& old = TextOf(shape_);
    TextRun run = old.empty() ? TextRun() : old.front();
    run.text = text;
    run.field = -1;
    shape_.text = text.empty() ? TextRuns() : TextRuns{std::move(run)};
    context_.document->recalculation.TextChanged(canvas_, shape_);
    return true;
}

Ref<engine::Master> ShapeHandle::Master() {
    if (!context_.Alive() || !shape_.master) return nullptr;
    return std::make_shared<MasterHandle>(context_, *shape_.master);
}

Ref<engine::Page> ShapeHandle::ContainingPage() {
    if (!context_.Alive()) return nullptr;
    for (const auto& page : context_.document->model->pages) {
        if (page.get() == &canvas_) return std::make_shared<PageHandle>(context_, *page);
    }
    return nullptr;  // A shape of a master.
}

Ref<engine::Shapes> ShapeHandle::Shapes() {
    return context_.Alive() ? ShapesOf(context_, canvas_, &shape_) : nullptr;
}

Ref<engine::Characters> ShapeHandle::Characters() {
    return context_.Alive() ? CharactersOf(context_, canvas_, shape_) : nullptr;
}

Ref<engine::Cell> ShapeHandle::Cells(const std::string& name) {
    if (!context_.Alive()) return nullptr;
    const CellRef ref = ParseCellName(context_.document->model->names, name);
    if (ref.cell == Name::None) return nullptr;
    return std::make_shared<CellHandle>(context_, canvas_, shape_, ref);
}

Ref<engine::Cell> ShapeHandle::CellsSRC(const engine::CellAddress& address) {
    if (!context_.Alive()) return nullptr;
    if (address == engine::kTabStopCount) return TabStopCountOf(context_, canvas_, shape_);
    if (address == engine::kTabStopPosition)
        return std::make_shared<CellHandle>(context_, canvas_, shape_, kFirstTabStop);
    const auto ref = CellAt(address);
    return ref ? std::make_shared<CellHandle>(context_, canvas_, shape_, *ref) : nullptr;
}

bool ShapeHandle::CellExistsU(const std::string& name, int localOnly) {
    if (!context_.Alive()) return false;
    const CellRef ref = ParseCellName(context_.document->model->names, name);
    if (ref.cell == Name::None) return false;
    return localOnly ? shape_.FindLocal(ref) != nullptr : Find(shape_, ref) != nullptr;
}

std::optional<int> ShapeHandle::AddRow(int section, int row, int tag) {
    if (!context_.Writable() || section != engine::kTabSection || row != 0 ||
        tag != engine::kTabRowOfTwoStops)
        return std::nullopt;
    Section& tabs = shape_.At(Name::Tabs);
    tabs.rows.clear();
    CellList& cells = tabs.At(RowKey::Number(0)).cells;
    for (int i = 0; i < 2; ++i) cells.Set(kTabStops[i].position, 0).Set(kTabStops[i].alignment, 0);
    context_.document->recalculation.TextChanged(canvas_, shape_);
    return 0;
}

Ref<engine::Hyperlink> ShapeHandle::AddHyperlink() {
    if (!context_.Writable()) return nullptr;
    Section& links = shape_.At(Name::Hyperlink);
    const std::string name = "Row_" + std::to_string(links.rows.size() + 1);
    const RowKey key = RowKey::Named(context_.document->model->names.Intern(name));
    links.At(key).cells.SetText(Name::Description, "").SetText(Name::Address, "");
    return std::make_shared<HyperlinkHandle>(context_, shape_, key);
}

bool ShapeHandle::SendToBack() {
    if (!context_.Writable() || shape_.id == kPageSheet) return false;
    auto& siblings = SiblingsOf(canvas_, shape_);
    const auto at = std::find_if(siblings.begin(), siblings.end(),
                                 [this](const auto& sibling) { return sibling.get() == &shape_; });
    if (at == siblings.end()) return false;
    std::rotate(siblings.begin(), at, at + 1);
    return true;
}

bool CellHandle::SetFormula(const std::string& formula) {
    if (!context_.Writable()) return false;
    if (!context_.document->recalculation.SetFormula(canvas_, shape_, ref_, formula)) return false;
    Moved();
    return true;
}

std::optional<double> CellHandle::ResultIU() {
    if (!context_.Alive()) return std::nullopt;
    const Value value = context_.document->recalculation.Get(canvas_, shape_, ref_);
    return value.isText ? std::nullopt : std::optional(value.number);
}

bool CellHandle::SetResultIU(double value) {
    if (!context_.Writable()) return false;
    if (!context_.document->recalculation.SetValue(canvas_, shape_, ref_, Value::Of(value))) return false;
    Moved();
    return true;
}

void CellHandle::Moved() {
    if (MovesBox(ref_) && shape_.id != kPageSheet) DropRoutesOf(*context_.document, canvas_, shape_);
}

bool CellHandle::GlueTo(const Ref<engine::Cell>& cell) {
    const auto target = std::dynamic_pointer_cast<CellHandle>(cell);
    if (!context_.Writable() || !target || &target->canvas_ != &canvas_) return false;
    const bool begin = ref_ == CellRef(Name::BeginX);
    if (!begin && ref_ != CellRef(Name::EndX)) return false;
    if (target->ref_ != CellRef(Name::PinX)) return false;  // To the whole shape; we glue to nothing less.
    return GlueEnd(*context_.document, canvas_, shape_, begin, target->shape_);
}

}  // namespace norvelis::drawing
