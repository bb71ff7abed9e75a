#pragma once

#include <optional>
#include <string>

#include "drawing/session/session.h"
#include "engine/drawing_engine.h"

// The objects that callers hold: thin, each a place in a document of a running engine. A handle whose engine
// has quit or whose document is closed fails every call. Nothing here throws.
namespace norvelis::drawing {

/// The engine and the document that a handle belongs to.
struct Context {
    SessionRef session;
    OpenDocumentRef document;

    bool Alive() const { return session->running && (!document || document->open); }
    bool Writable() const { return Alive() && document && !document->readOnly; }
};

class ApplicationHandle : public engine::Application {
  public:
    explicit ApplicationHandle(SessionRef session) : session_(std::move(session)) {}
    bool SetAlertResponse(int response) override;
    engine::Ref<engine::Documents> Documents() override;
    bool Quit() override;

  private:
    SessionRef session_;
};

class DocumentHandle : public engine::Document {
  public:
    explicit DocumentHandle(Context context) : context_(std::move(context)) {}
    engine::Ref<engine::Application> Application() override;
    engine::Ref<engine::Pages> Pages() override;
    engine::Ref<engine::Masters> Masters() override;
    engine::Ref<engine::Fonts> Fonts() override;
    engine::Ref<engine::Master> Drop(const engine::Ref<engine::Master>& master, double x, double y) override;
    engine::SaveResult SaveAs(const std::string& path) override;
    bool SetFooterLeft(const std::string& text) override;
    bool Print() override;
    bool PrintPage(int page) override;

  private:
    Context context_;
};

class PageHandle : public engine::Page {
  public:
    PageHandle(Context context, drawing::Page& page) : context_(std::move(context)), page_(page) {}
    engine::Ref<engine::Application> Application() override;
    engine::Ref<engine::Document> Document() override;
    std::string Name() override;
    bool SetName(const std::string& name) override;
    engine::Ref<engine::Shapes> Shapes() override;
    engine::Ref<engine::Layers> Layers() override;
    engine::Ref<engine::Shape> PageSheet() override;
    engine::Ref<engine::Shape> Drop(const engine::Ref<engine::Master>& master, double x, double y) override;
    bool ReserveNote(const engine::Ref<engine::Shape>& shape, const std::string& text,
                     double mostWidth) override;
    bool Layout() override;
    bool LayoutLike(const engine::Ref<engine::Page>& former) override;
    bool ResizeToFitContents() override;
    bool CenterDrawing() override;
    bool PlaceNotes() override;

  private:
    Context context_;
    drawing::Page& page_;
};

class MasterHandle : public engine::Master {
  public:
    MasterHandle(Context context, drawing::Master& master) : context_(std::move(context)), master_(&master) {}
    std::string Name() override;
    engine::Ref<engine::Shapes> Shapes() override;
    engine::Ref<engine::Master> Open() override;
    bool Close() override;

    const Context& Place() const { return context_; }
    drawing::Master& Model() const { return *master_; }

  private:
    Context context_;
    drawing::Master* master_;
    std::optional<Context> original_;  ///< Of an editable copy: where its changes go.
    drawing::Master* originalMaster_ = nullptr;
};

class ShapeHandle : public engine::Shape {
  public:
    ShapeHandle(Context context, Canvas& canvas, drawing::Shape& shape)
        : context_(std::move(context)), canvas_(canvas), shape_(shape) {}
    int ID() override;
    std::string Name() override;
    bool SetName(const std::string& name) override;
    bool SetText(const std::string& text) override;
    engine::Ref<engine::Master> Master() override;
    engine::Ref<engine::Page> ContainingPage() override;
    engine::Ref<engine::Shapes> Shapes() override;
    engine::Ref<engine::Characters> Characters() override;
    engine::Ref<engine::Cell> Cells(const std::string& name) override;
    engine::Ref<engine::Cell> CellsU(const std::string& name) override { return Cells(name); }
    engine::Ref<engine::Cell> CellsSRC(const engine::CellAddress& address) override;
    bool CellExistsU(const std::string& name, int localOnly) override;
    std::optional<int> AddRow(int section, int row, int tag) override;
    engine::Ref<engine::Hyperlink> AddHyperlink() override;
    bool SendToBack() override;

    const Context& Place() const { return context_; }
    drawing::Shape& Model() const { return shape_; }

  private:
    Context context_;
    Canvas& canvas_;
    drawing::Shape& shape_;
};

class CellHandle : public engine::Cell {
  public:
    CellHandle(Context context, Canvas& canvas, Shape& shape, CellRef ref)
        : context_(std::move(context)), canvas_(canvas), shape_(shape), ref_(ref) {}
    bool SetFormula(const std::string& formula) override;
    bool SetFormulaU(const std::string& formula) override { return SetFormula(formula); }
    std::optional<double> ResultIU() override;
    bool SetResultIU(double value) override;
    bool SetResult(engine::Unit, double value) override { return SetResultIU(value); }
    bool GlueTo(const engine::Ref<engine::Cell>& cell) override;

  private:
    /// Lines that were routed to this shape are routed again once its place or size is another.
    void Moved();

    Context context_;
    Canvas& canvas_;
    Shape& shape_;
    CellRef ref_;
};

engine::Ref<engine::Application> HandleOf(const SessionRef& session);
engine::Ref<engine::Document> HandleOf(const Context& context);
engine::Ref<engine::Shape> HandleOf(const Context& context, Canvas& canvas, Shape& shape);
engine::Ref<engine::Characters> CharactersOf(const Context& context, Canvas& canvas, Shape& shape);
/// The number of tab stops as a cell: writing it drops or adds stops.
engine::Ref<engine::Cell> TabStopCountOf(const Context& context, Canvas& canvas, Shape& shape);
engine::Ref<engine::Layers> LayersOf(const Context& context, Page& page);
engine::Ref<engine::Shapes> ShapesOf(const Context& context, Canvas& canvas, Shape* group);

}  // namespace norvelis::drawing
