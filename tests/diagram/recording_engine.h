#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/text.h"
#include "diagram/engine.h"

// A drawing engine that draws nothing and remembers everything: each operation becomes one line in `lines`,
// such as
//
//   Documents.Add "Basic Flowchart (US Units).vst"
//   Page-1.Drop "Process" at 3.5, 4 -> Sheet.1
//   Sheet.1!Char.Size.Formula = "=6 pt."
//   Sheet.1.Characters[0,8].CharProps Color = 2
//
// Steps from one object to its neighbour (Page.Document, Shape.Characters) and reads leave no line. Any line
// can be made to fail, and cells can be given values.
namespace norvelis::recording {

struct FakeShape {
    int id = 0;
    std::string name, master, text;
    std::map<std::string, double> values;  ///< By cell name in upper case, or "section,row,cell".
    std::vector<int> subShapes;
};

/// What all the handles of one engine share.
struct Recorder : std::enable_shared_from_this<Recorder> {
    std::vector<std::string> lines;
    /// Asked before each operation with its line; true makes it fail. A failed operation leaves its line with
    /// " FAILED".
    std::function<bool(const std::string& line)> refuse;
    /// Stencil file name -> its masters. A stencil that is not here can not be opened.
    std::map<std::string, std::vector<std::string>> stencils = {
        {"Basic Flowchart Shapes (US units).vss",
         {"Process", "Decision", "Terminator", "Annotation", "Dynamic connector"}},
        {"Backgrounds (US units).vss", {"Background none", "Background world"}},
        {"Borders and Titles (US units).vss", {"Title block deco"}},
    };
    /// Cells that CellExistsU finds, such as "Prop.Duration".
    std::vector<std::string> existingCells;
    /// Scripted reads: "Sheet.1!1,1,0" -> 3.5. What was written last is read otherwise, or 0.
    std::map<std::string, double> values;
    /// What creating gives: nullopt fails, false gives a null reference.
    std::optional<bool> creation = true;

    bool Do(std::string line) {
        const bool refused = refuse && refuse(line);
        lines.push_back(std::move(line) + (refused ? " FAILED" : ""));
        return !refused;
    }
    /// Makes the n-th operation from now on fail (1 is the next).
    void FailCall(int n) {
        refuse = [n, seen = 0](const std::string&) mutable { return ++seen == n; };
    }
    /// Makes every operation fail whose line holds `part`.
    void FailWhere(std::string part) {
        refuse = [part](const std::string& line) { return line.find(part) != std::string::npos; };
    }
    std::vector<std::string> LinesWith(std::string_view part) const {
        std::vector<std::string> found;
        for (const auto& line : lines) {
            if (line.find(part) != std::string::npos) found.push_back(line);
        }
        return found;
    }

    /// State of the drawing: shapes in z-order, back first.
    std::vector<std::shared_ptr<FakeShape>> shapes;
    std::shared_ptr<FakeShape> pageSheet = std::make_shared<FakeShape>();
    std::string pageName = "Page-1";
    std::vector<std::string> openDocuments;
    int nextId = 1, nextFont = 1, layers = 0;
    std::map<std::string, int> fonts;

    std::shared_ptr<FakeShape> Find(int id) const {
        for (const auto& shape : shapes) {
            if (shape->id == id) return shape;
        }
        return nullptr;
    }
};

using R = std::shared_ptr<Recorder>;

inline std::string Label(const FakeShape& shape) {
    return shape.id == 0 ? "ThePage" : fmt::format("Sheet.{}", shape.id);
}

/// Byte offset of the n-th character.
inline std::size_t Offset(const std::string& utf8, int position) {
    std::size_t at = 0;
    for (int seen = 0; at < utf8.size(); ++at) {
        if ((static_cast<unsigned char>(utf8[at]) & 0xC0) == 0x80) continue;
        if (seen++ == position) break;
    }
    return at;
}

class CellHandle : public engine::Cell {
  public:
    CellHandle(R r, std::shared_ptr<FakeShape> shape, std::string name)
        : r_(std::move(r)), shape_(std::move(shape)), name_(std::move(name)) {}
    std::string Path() const { return Label(*shape_) + "!" + name_; }
    bool SetFormula(const std::string& f) override {
        return r_->Do(fmt::format("{}.Formula = {}", Path(), f));
    }
    bool SetFormulaU(const std::string& f) override {
        return r_->Do(fmt::format("{}.FormulaU = {}", Path(), f));
    }
    std::optional<double> ResultIU() override { return Read(); }
    bool SetResultIU(double v) override { return Write("ResultIU", v); }
    std::optional<double> Result(engine::Unit) override { return Read(); }
    bool SetResult(engine::Unit unit, double v) override {
        return Write(fmt::format("Result({})", static_cast<int>(unit)), v);
    }
    bool GlueTo(const engine::Ref<engine::Cell>& cell) override {
        const auto other = std::dynamic_pointer_cast<CellHandle>(cell);
        return r_->Do(fmt::format("{}.GlueTo {}", Path(), other ? other->Path() : "nothing")) && other;
    }

  private:
    std::optional<double> Read() const {
        if (const auto scripted = r_->values.find(Path()); scripted != r_->values.end())
            return scripted->second;
        const auto written = shape_->values.find(UpperCase(name_));
        return written == shape_->values.end() ? 0.0 : written->second;
    }
    bool Write(const std::string& how, double v) {
        if (!r_->Do(fmt::format("{}.{} = {}", Path(), how, v))) return false;
        shape_->values[UpperCase(name_)] = v;
        return true;
    }
    R r_;
    std::shared_ptr<FakeShape> shape_;
    std::string name_;
};

engine::Ref<engine::Document> DrawingOf(const R& r);

class CharactersHandle : public engine::Characters {
  public:
    CharactersHandle(R r, std::shared_ptr<FakeShape> shape)
        : r_(std::move(r)), shape_(std::move(shape)), end_(engine::CharacterCount(shape_->text)) {}
    std::optional<int> Begin() override { return begin_; }
    std::optional<int> End() override { return end_; }
    bool SetBegin(int p) override {
        if (!r_->Do(fmt::format("{}.Begin = {}", Path(), p))) return false;
        begin_ = Clamp(p);
        end_ = std::max(begin_, end_);
        return true;
    }
    bool SetEnd(int p) override {
        if (!r_->Do(fmt::format("{}.End = {}", Path(), p))) return false;
        end_ = Clamp(p);
        begin_ = std::min(begin_, end_);
        return true;
    }
    std::optional<std::string> Text() override {
        const auto from = Offset(shape_->text, begin_);
        return shape_->text.substr(from, Offset(shape_->text, end_) - from);
    }
    bool SetText(const std::string& text) override {
        if (!r_->Do(fmt::format("{}.Text = \"{}\"", Path(), text))) return false;
        const auto from = Offset(shape_->text, begin_);
        shape_->text.replace(from, Offset(shape_->text, end_) - from, text);
        end_ = begin_ + engine::CharacterCount(text);
        return true;
    }
    std::optional<int> CharCount() override { return end_ - begin_; }
    bool SetCharProps(engine::CharProperty property, int value) override {
        const char* name = property == engine::CharProperty::Font    ? "Font"
                           : property == engine::CharProperty::Color ? "Color"
                           : property == engine::CharProperty::Style ? "Style"
                                                                     : "Size";
        return r_->Do(fmt::format("{}.CharProps {} = {}", Path(), name, value));
    }
    bool SetParaProps(engine::ParaProperty property, int value) override {
        return r_->Do(fmt::format("{}.ParaProps {} = {}", Path(), static_cast<int>(property), value));
    }
    engine::Ref<engine::Document> Document() override { return DrawingOf(r_); }

  private:
    std::string Path() const { return fmt::format("{}.Characters[{},{}]", Label(*shape_), begin_, end_); }
    int Clamp(int p) const { return std::clamp(p, 0, engine::CharacterCount(shape_->text)); }
    R r_;
    std::shared_ptr<FakeShape> shape_;
    int begin_ = 0, end_ = 0;
};

class HyperlinkHandle : public engine::Hyperlink {
  public:
    HyperlinkHandle(R r, std::string shape) : r_(std::move(r)), shape_(std::move(shape)) {}
    bool SetAddress(const std::string& a) override {
        return r_->Do(fmt::format("{}.Hyperlink.Address = {}", shape_, a));
    }
    bool SetDescription(const std::string& d) override {
        return r_->Do(fmt::format("{}.Hyperlink.Description = {}", shape_, d));
    }

  private:
    R r_;
    std::string shape_;
};

engine::Ref<engine::Page> PageOf(const R& r);
engine::Ref<engine::Shapes> ShapesOf(const R& r, std::vector<std::shared_ptr<FakeShape>> shapes);

class MasterHandle : public engine::Master {
  public:
    MasterHandle(R r, std::string name) : r_(std::move(r)), name_(std::move(name)) {}
    std::string Name() override { return name_; }
    engine::Ref<engine::Shapes> Shapes() override {
        auto shape = std::make_shared<FakeShape>();
        shape->id = -1;
        return ShapesOf(r_, {shape});
    }
    engine::Ref<engine::Master> Open() override {
        return r_->Do(fmt::format("Master \"{}\".Open", name_)) ? std::make_shared<MasterHandle>(r_, name_)
                                                                : nullptr;
    }
    bool Close() override { return r_->Do(fmt::format("Master \"{}\".Close", name_)); }

  private:
    R r_;
    std::string name_;
};

class ShapeHandle : public engine::Shape {
  public:
    ShapeHandle(R r, std::shared_ptr<FakeShape> shape) : r_(std::move(r)), shape_(std::move(shape)) {}
    const std::string& MasterName() const { return shape_->master; }
    int ID() override { return shape_->id; }
    std::string Name() override { return shape_->name; }
    bool SetName(const std::string& name) override {
        if (!r_->Do(fmt::format("{}.Name = {}", Label(*shape_), name))) return false;
        shape_->name = name;
        return true;
    }
    bool SetText(const std::string& text) override {
        if (!r_->Do(fmt::format("{}.Text = \"{}\"", Label(*shape_), text))) return false;
        shape_->text = text;
        return true;
    }
    engine::Ref<engine::Master> Master() override {
        return shape_->master.empty() ? nullptr : std::make_shared<MasterHandle>(r_, shape_->master);
    }
    engine::Ref<engine::Page> ContainingPage() override { return PageOf(r_); }
    engine::Ref<engine::Shapes> Shapes() override {
        std::vector<std::shared_ptr<FakeShape>> inner;
        for (const int id : shape_->subShapes) inner.push_back(r_->Find(id));
        return ShapesOf(r_, std::move(inner));
    }
    engine::Ref<engine::Characters> Characters() override {
        return std::make_shared<CharactersHandle>(r_, shape_);
    }
    engine::Ref<engine::Cell> Cells(const std::string& name) override {
        return std::make_shared<CellHandle>(r_, shape_, name);
    }
    engine::Ref<engine::Cell> CellsU(const std::string& name) override { return Cells(name); }
    engine::Ref<engine::Cell> CellsSRC(const engine::CellAddress& a) override {
        return Cells(fmt::format("{},{},{}", a.section, a.row, a.cell));
    }
    bool CellExistsU(const std::string& name, int) override {
        return std::find(r_->existingCells.begin(), r_->existingCells.end(), name) != r_->existingCells.end();
    }
    std::optional<int> AddRow(int section, int row, int tag) override {
        if (!r_->Do(fmt::format("{}.AddRow {}, {}, {}", Label(*shape_), section, row, tag)))
            return std::nullopt;
        return row;
    }
    engine::Ref<engine::Hyperlink> AddHyperlink() override {
        if (!r_->Do(Label(*shape_) + ".AddHyperlink")) return nullptr;
        return std::make_shared<HyperlinkHandle>(r_, Label(*shape_));
    }
    bool SendToBack() override {
        if (!r_->Do(Label(*shape_) + ".SendToBack")) return false;
        const auto at = std::find(r_->shapes.begin(), r_->shapes.end(), shape_);
        if (at != r_->shapes.end()) std::rotate(r_->shapes.begin(), at, at + 1);
        return true;
    }

  private:
    R r_;
    std::shared_ptr<FakeShape> shape_;
};

class ShapesHandle : public engine::Shapes {
  public:
    ShapesHandle(R r, std::vector<std::shared_ptr<FakeShape>> shapes)
        : r_(std::move(r)), shapes_(std::move(shapes)) {}
    int Count() override { return static_cast<int>(shapes_.size()); }
    engine::Ref<engine::Shape> Item(int index) override {
        if (index < 1 || index > Count()) return nullptr;
        return std::make_shared<ShapeHandle>(r_, shapes_[static_cast<std::size_t>(index - 1)]);
    }
    engine::Ref<engine::Shape> ItemFromID(int id) override {
        for (const auto& shape : shapes_) {
            if (shape->id == id) return std::make_shared<ShapeHandle>(r_, shape);
        }
        return nullptr;
    }

  private:
    R r_;
    std::vector<std::shared_ptr<FakeShape>> shapes_;
};

class LayerHandle : public engine::Layer {
  public:
    LayerHandle(R r, std::string name) : r_(std::move(r)), name_(std::move(name)) {}
    std::string Name() override { return name_; }
    bool Add(const engine::Ref<engine::Shape>& shape, int preserve) override {
        return r_->Do(
                   fmt::format("Layer \"{}\".Add Sheet.{}, {}", name_, shape ? shape->ID() : 0, preserve)) &&
               shape;
    }
    engine::Ref<engine::Cell> CellsC(int cell) override {
        auto row = std::make_shared<FakeShape>();
        return std::make_shared<CellHandle>(r_, row, fmt::format("Layers[{}].{}", name_, cell));
    }

  private:
    R r_;
    std::string name_;
};

class LayersHandle : public engine::Layers {
  public:
    explicit LayersHandle(R r) : r_(std::move(r)) {}
    int Count() override { return r_->layers; }
    engine::Ref<engine::Layer> Add(const std::string& name) override {
        if (!r_->Do(fmt::format("Layers.Add \"{}\"", name))) return nullptr;
        ++r_->layers;
        return std::make_shared<LayerHandle>(r_, name);
    }

  private:
    R r_;
};

engine::Ref<engine::Application> ApplicationOf(const R& r);

class PageHandle : public engine::Page {
  public:
    explicit PageHandle(R r) : r_(std::move(r)) {}
    engine::Ref<engine::Application> Application() override { return ApplicationOf(r_); }
    engine::Ref<engine::Document> Document() override { return DrawingOf(r_); }
    std::string Name() override { return r_->pageName; }
    bool SetName(const std::string& name) override {
        if (!r_->Do(fmt::format("Page.Name = {}", name))) return false;
        r_->pageName = name;
        return true;
    }
    engine::Ref<engine::Shapes> Shapes() override { return ShapesOf(r_, r_->shapes); }
    engine::Ref<engine::Layers> Layers() override { return std::make_shared<LayersHandle>(r_); }
    engine::Ref<engine::Shape> PageSheet() override {
        return std::make_shared<ShapeHandle>(r_, r_->pageSheet);
    }
    engine::Ref<engine::Shape> Drop(const engine::Ref<engine::Master>& master, double x, double y) override {
        if (!master) return nullptr;
        const std::string line = fmt::format("{}.Drop \"{}\" at {}, {}", r_->pageName, master->Name(), x, y);
        if (!r_->Do(fmt::format("{} -> Sheet.{}", line, r_->nextId))) return nullptr;
        auto shape = std::make_shared<FakeShape>();
        shape->id = r_->nextId++;
        shape->master = master->Name();
        shape->name = fmt::format("Sheet.{}", shape->id);
        shape->values = {{"1,1,0", x}, {"1,1,1", y}, {"PINX", x}, {"PINY", y}};
        r_->shapes.push_back(shape);
        return std::make_shared<ShapeHandle>(r_, shape);
    }
    bool Layout() override { return r_->Do("Page.Layout"); }
    bool ResizeToFitContents() override { return r_->Do("Page.ResizeToFitContents"); }
    bool CenterDrawing() override { return r_->Do("Page.CenterDrawing"); }
    bool PlaceNotes() override { return r_->Do("Page.PlaceNotes"); }

  private:
    R r_;
};

class PagesHandle : public engine::Pages {
  public:
    explicit PagesHandle(R r) : r_(std::move(r)) {}
    int Count() override { return 1; }
    engine::Ref<engine::Page> Item(int index) override { return index == 1 ? PageOf(r_) : nullptr; }

  private:
    R r_;
};

class MastersHandle : public engine::Masters {
  public:
    MastersHandle(R r, std::string document) : r_(std::move(r)), document_(std::move(document)) {}
    int Count() override { return static_cast<int>(Names().size()); }
    engine::Ref<engine::Master> Item(int index) override {
        if (index < 1 || index > Count()) return nullptr;
        return std::make_shared<MasterHandle>(r_, Names()[static_cast<std::size_t>(index - 1)]);
    }
    engine::Ref<engine::Master> Item(const std::string& name) override {
        if (!r_->Do(fmt::format("Masters.Item \"{}\"", name))) return nullptr;
        for (const auto& own : Names()) {
            if (EqualIgnoringCase(own, name)) return std::make_shared<MasterHandle>(r_, own);
        }
        return nullptr;
    }

  private:
    const std::vector<std::string>& Names() const { return r_->stencils[document_]; }
    R r_;
    std::string document_;
};

class FontHandle : public engine::Font {
  public:
    FontHandle(std::string name, int id) : name_(std::move(name)), id_(id) {}
    std::optional<int> ID() override { return id_; }
    std::string Name() override { return name_; }

  private:
    std::string name_;
    int id_;
};

class FontsHandle : public engine::Fonts {
  public:
    explicit FontsHandle(R r) : r_(std::move(r)) {}
    engine::Ref<engine::Font> Item(const std::string& name) override {
        if (!r_->Do(fmt::format("Fonts.Item \"{}\"", name))) return nullptr;
        if (!r_->fonts.contains(name)) r_->fonts[name] = r_->nextFont++;
        return std::make_shared<FontHandle>(name, r_->fonts[name]);
    }

  private:
    R r_;
};

class DocumentHandle : public engine::Document {
  public:
    DocumentHandle(R r, std::string name) : r_(std::move(r)), name_(std::move(name)) {}
    engine::Ref<engine::Application> Application() override { return ApplicationOf(r_); }
    engine::Ref<engine::Pages> Pages() override { return std::make_shared<PagesHandle>(r_); }
    engine::Ref<engine::Masters> Masters() override { return std::make_shared<MastersHandle>(r_, name_); }
    engine::Ref<engine::Fonts> Fonts() override { return std::make_shared<FontsHandle>(r_); }
    engine::Ref<engine::Master> Drop(const engine::Ref<engine::Master>& master, double x, double y) override {
        if (!master) return nullptr;
        if (!r_->Do(fmt::format("Document.Drop \"{}\" at {}, {}", master->Name(), x, y))) return nullptr;
        return std::make_shared<MasterHandle>(r_, master->Name());
    }
    bool SaveAs(const std::string& path) override { return r_->Do("Document.SaveAs " + path); }
    bool SetFooterLeft(const std::string& text) override { return r_->Do("Document.FooterLeft = " + text); }
    bool Print() override { return r_->Do("Document.Print"); }
    bool PrintPage(int page) override { return r_->Do(fmt::format("Document.PrintPage {}", page)); }
    bool Close() override { return r_->Do("Document.Close"); }

  private:
    R r_;
    std::string name_;
};

class DocumentsHandle : public engine::Documents {
  public:
    explicit DocumentsHandle(R r) : r_(std::move(r)) {}
    int Count() override { return static_cast<int>(r_->openDocuments.size()); }
    engine::Ref<engine::Document> Add(const std::string& name) override {
        return OpenNew(fmt::format("Documents.Add \"{}\"", name), name, true);
    }
    engine::Ref<engine::Document> Item(int index) override {
        if (index < 1 || index > Count()) return nullptr;
        return std::make_shared<DocumentHandle>(r_, r_->openDocuments[static_cast<std::size_t>(index - 1)]);
    }
    engine::Ref<engine::Document> Item(const std::string& name) override {
        for (const auto& open : r_->openDocuments) {
            if (open == name) return std::make_shared<DocumentHandle>(r_, open);
        }
        return nullptr;
    }
    engine::Ref<engine::Document> OpenEx(const std::string& name, int flags) override {
        return OpenNew(fmt::format("Documents.OpenEx \"{}\", {}", name, flags), name,
                       r_->stencils.contains(name));
    }
    engine::Ref<engine::Document> Open(const std::string& path) override {
        return OpenNew(fmt::format("Documents.Open \"{}\"", path), path, true);
    }

  private:
    engine::Ref<engine::Document> OpenNew(const std::string& line, const std::string& name, bool there) {
        if (!r_->Do(line) || !there) return nullptr;
        r_->openDocuments.push_back(name);
        return std::make_shared<DocumentHandle>(r_, name);
    }
    R r_;
};

class ApplicationHandle : public engine::Application {
  public:
    explicit ApplicationHandle(R r) : r_(std::move(r)) {}
    bool SetAlertResponse(int response) override {
        return r_->Do(fmt::format("Application.AlertResponse = {}", response));
    }
    engine::Ref<engine::Documents> Documents() override { return std::make_shared<DocumentsHandle>(r_); }
    bool Quit() override {
        r_->openDocuments.clear();
        return r_->Do("Application.Quit");
    }

  private:
    R r_;
};

inline engine::Ref<engine::Application> ApplicationOf(const R& r) {
    return std::make_shared<ApplicationHandle>(r);
}
inline engine::Ref<engine::Page> PageOf(const R& r) {
    return std::make_shared<PageHandle>(r);
}
inline engine::Ref<engine::Document> DrawingOf(const R& r) {
    return std::make_shared<DocumentHandle>(r, "Drawing1");
}
inline engine::Ref<engine::Shapes> ShapesOf(const R& r, std::vector<std::shared_ptr<FakeShape>> shapes) {
    return std::make_shared<ShapesHandle>(r, std::move(shapes));
}

/// The engine itself. Each one created starts an empty drawing; lines run on.
class RecordingEngine : public engine::DrawingEngine {
  public:
    R recorder = std::make_shared<Recorder>();

    std::optional<engine::Ref<engine::Application>> CreateVisible() override { return Create("visible"); }
    std::optional<engine::Ref<engine::Application>> CreateHidden() override { return Create("hidden"); }

  private:
    std::optional<engine::Ref<engine::Application>> Create(const std::string& how) {
        recorder->shapes.clear();
        recorder->openDocuments.clear();
        recorder->nextId = 1;
        if (!recorder->Do("create " + how) || !recorder->creation) return std::nullopt;
        return *recorder->creation ? ApplicationOf(recorder) : nullptr;
    }
};

}  // namespace norvelis::recording
