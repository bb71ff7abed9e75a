#include <algorithm>

#include "base/text.h"
#include "drawing/arrange/note_rooms.h"
#include "drawing/arrange/page_arrangement.h"
#include "drawing/automation/cell_addresses.h"
#include "drawing/automation/handles.h"

// Page, Layers, Layer.
namespace norvelis::drawing {

using engine::Ref;

namespace {

class LayerHandle : public engine::Layer {
  public:
    LayerHandle(Context context, Page& page, int index)
        : context_(std::move(context)), page_(page), index_(index) {}
    bool Add(const Ref<engine::Shape>& shape, int) override {
        const auto member = std::dynamic_pointer_cast<ShapeHandle>(shape);
        if (!context_.Writable() || !member || page_.ById(member->Model().id) != &member->Model())
            return false;
        Cell& layers = member->Model().LocalAt(drawing::Name::LayerMember);
        const std::string mine = std::to_string(index_);
        const std::string others = layers.isText ? layers.text : "";
        if ((";" + others + ";").find(";" + mine + ";") == std::string::npos)
            layers.SetText(others.empty() ? mine : others + ";" + mine);
        return true;
    }
    Ref<engine::Cell> CellsC(int cell) override {
        const auto name = LayerCell(cell);
        if (!context_.Alive() || !name) return nullptr;
        return std::make_shared<CellHandle>(context_, page_, page_.sheet, CellOf(*name));
    }

  private:
    using Name_ = drawing::Name;
    CellRef CellOf(Name_ cell) const { return {Name_::Layer, 0, RowKey::Number(index_), cell}; }

    Context context_;
    Page& page_;
    int index_;
};

class LayersHandle : public engine::Layers {
  public:
    LayersHandle(Context context, Page& page) : context_(std::move(context)), page_(page) {}
    Ref<engine::Layer> Add(const std::string& name) override {
        if (!context_.Writable() || name.empty()) return nullptr;
        Section& section = page_.sheet.At(Name::Layer);
        for (const Row& row : section.rows) {
            const Cell* known = row.cells.Find(Name::Name);
            if (known && EqualIgnoringCase(known->text, name)) return HandleOfLayer(row.key.Index());
        }
        const int index = section.NextIndex(0);
        section.At(RowKey::Number(index))
            .cells.SetText(Name::Name, name)
            .Set(Name::Color, kNoColor)
            .Set(Name::Status, 0)
            .Set(Name::Visible, 1)
            .Set(Name::Print, 1)
            .Set(Name::Active, 0)
            .Set(Name::Lock, 0)
            .Set(Name::Snap, 1)
            .Set(Name::Glue, 1)
            .SetText(Name::NameUniv, name)
            .Set(Name::ColorTrans, 0);
        return HandleOfLayer(index);
    }

  private:
    static constexpr double kNoColor = 255;

    Ref<engine::Layer> HandleOfLayer(int index) const {
        return std::make_shared<LayerHandle>(context_, page_, index);
    }

    Context context_;
    Page& page_;
};

}  // namespace

Ref<engine::Layers> LayersOf(const Context& context, Page& page) {
    return std::make_shared<LayersHandle>(context, page);
}

Ref<engine::Application> PageHandle::Application() {
    return context_.Alive() ? HandleOf(context_.session) : nullptr;
}
Ref<engine::Document> PageHandle::Document() {
    return context_.Alive() ? HandleOf(context_) : nullptr;
}
std::string PageHandle::Name() {
    return context_.Alive() ? page_.name : std::string();
}

bool PageHandle::SetName(const std::string& name) {
    if (!context_.Writable() || name.empty()) return false;
    page_.name = page_.nameU = name;
    return true;
}

Ref<engine::Shapes> PageHandle::Shapes() {
    return context_.Alive() ? ShapesOf(context_, page_, nullptr) : nullptr;
}
Ref<engine::Layers> PageHandle::Layers() {
    return context_.Alive() ? LayersOf(context_, page_) : nullptr;
}
Ref<engine::Shape> PageHandle::PageSheet() {
    return context_.Alive() ? HandleOf(context_, page_, page_.sheet) : nullptr;
}

Ref<engine::Shape> PageHandle::Drop(const Ref<engine::Master>& master, double x, double y) {
    const auto source = std::dynamic_pointer_cast<MasterHandle>(master);
    if (!context_.Writable() || !source || !source->Place().Alive()) return nullptr;
    OpenDocument& document = *context_.document;
    drawing::Master& own = document.OwnMaster(*source->Place().document, source->Model());
    Shape& shape = DropInstance(page_, own, x, y);
    document.recalculation.Dropped(page_, shape);
    return HandleOf(context_, page_, shape);
}

bool PageHandle::ReserveNote(const Ref<engine::Shape>& shape, const std::string& text, double mostWidth) {
    const auto box = std::dynamic_pointer_cast<ShapeHandle>(shape);
    if (!context_.Writable() || !box || page_.ById(box->Model().id) != &box->Model()) return false;
    OpenDocument& document = *context_.document;
    const auto size = SizeOfNote(document, text, mostWidth);
    if (size) document.noteRooms[{page_.id, box->Model().id}].notes.push_back(*size);
    return size.has_value();
}

bool PageHandle::Layout() {
    if (!context_.Writable()) return false;
    context_.document->Shop().RunInBackground([this] { LayOutPage(*context_.document, page_); });
    return true;
}

bool PageHandle::LayoutLike(const Ref<engine::Page>& former) {
    const auto before = std::dynamic_pointer_cast<PageHandle>(former);
    if (!context_.Writable() || !before || !before->context_.Alive()) return false;
    context_.document->Shop().RunInBackground([&] {
        const FormerPage page{*before->context_.document, before->page_};
        LayOutPage(*context_.document, page_, &page);
    });
    return true;
}

bool PageHandle::ResizeToFitContents() {
    if (!context_.Writable()) return false;
    ResizePageToContents(*context_.document, page_);
    return true;
}

bool PageHandle::CenterDrawing() {
    if (!context_.Writable()) return false;
    CenterContents(*context_.document, page_);
    return true;
}

bool PageHandle::PlaceNotes() {
    if (!context_.Writable()) return false;
    context_.document->Shop().RunInBackground([this] { FindSpaceForNotes(*context_.document, page_); });
    return true;
}

}  // namespace norvelis::drawing
