#pragma once

#include "recording_shapes.h"

// A drawing engine that draws nothing and remembers everything (recorder.h).
namespace norvelis::recording {

class LayerHandle : public engine::Layer {
  public:
    LayerHandle(R r, std::string name) : r_(std::move(r)), name_(std::move(name)) {}
    bool Add(const engine::Ref<engine::Shape>& shape, int preserve) override {
        return r_->Do(
                   fmt::format("Layer \"{}\".Add Sheet.{}, {}", name_, shape ? shape->ID() : 0, preserve)) &&
               shape;
    }
    engine::Ref<engine::Cell> CellsC(int cell) override {
        if (!r_->Step("CellsC")) return nullptr;
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
    engine::Ref<engine::Layer> Add(const std::string& name) override {
        if (!r_->Do(fmt::format("Layers.Add \"{}\"", name))) return nullptr;
        return std::make_shared<LayerHandle>(r_, name);
    }

  private:
    R r_;
};

engine::Ref<engine::Application> ApplicationOf(const R& r);

class PageHandle : public engine::Page {
  public:
    explicit PageHandle(R r) : r_(std::move(r)) {}
    engine::Ref<engine::Application> Application() override {
        return r_->Give("Application", ApplicationOf(r_));
    }
    engine::Ref<engine::Document> Document() override { return r_->Give("Document", DrawingOf(r_)); }
    std::string Name() override { return r_->pageName; }
    bool SetName(const std::string& name) override {
        if (!r_->Do(fmt::format("Page.Name = {}", name))) return false;
        r_->pageName = name;
        return true;
    }
    engine::Ref<engine::Shapes> Shapes() override { return r_->Give("Shapes", ShapesOf(r_, r_->shapes)); }
    engine::Ref<engine::Layers> Layers() override {
        return r_->Give("Layers", std::make_shared<LayersHandle>(r_));
    }
    engine::Ref<engine::Shape> PageSheet() override {
        return r_->Give("PageSheet", std::make_shared<ShapeHandle>(r_, r_->pageSheet));
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
    bool ReserveNote(const engine::Ref<engine::Shape>&, const std::string& text, double) override {
        return r_->Do("Page.ReserveNote \"" + text + "\"");
    }
    bool Layout() override { return r_->Do("Page.Layout"); }
    bool LayoutLike(const engine::Ref<engine::Page>&) override { return r_->Do("Page.LayoutLike"); }
    bool ResizeToFitContents() override { return r_->Do("Page.ResizeToFitContents"); }
    bool CenterDrawing() override { return r_->Do("Page.CenterDrawing"); }
    bool PlaceNotes() override { return r_->Do("Page.PlaceNotes"); }

  private:
    R r_;
};

class PagesHandle : public engine::Pages {
  public:
    explicit PagesHandle(R r) : r_(std::move(r)) {}
    int Count() override { return r_->pageCount; }
    engine::Ref<engine::Page> Item(int index) override {
        return index >= 1 && index <= r_->pageCount ? r_->Give("Pages.Item", PageOf(r_)) : nullptr;
    }
    engine::Ref<engine::Page> Add() override {
        if (!r_->Do("Pages.Add")) return nullptr;
        ++r_->pageCount;
        return PageOf(r_);
    }

  private:
    R r_;
};

class MastersHandle : public engine::Masters {
  public:
    MastersHandle(R r, std::string document) : r_(std::move(r)), document_(std::move(document)) {}
    engine::Ref<engine::Master> Item(const std::string& name) override {
        if (!r_->Do(fmt::format("Masters.Item \"{}\"", name))) return nullptr;
        for (const auto& own : r_->stencils[document_]) {
            if (EqualIgnoringCase(own, name)) return std::make_shared<MasterHandle>(r_, own);
        }
        return nullptr;
    }

  private:
    R r_;
    std::string document_;
};

class FontHandle : public engine::Font {
  public:
    FontHandle(R r, int id) : r_(std::move(r)), id_(id) {}
    std::optional<int> ID() override { return r_->Give("ID", std::optional(id_)); }

  private:
    R r_;
    int id_;
};

class FontsHandle : public engine::Fonts {
  public:
    explicit FontsHandle(R r) : r_(std::move(r)) {}
    engine::Ref<engine::Font> Item(const std::string& name) override {
        if (!r_->Do(fmt::format("Fonts.Item \"{}\"", name))) return nullptr;
        if (!r_->fonts.contains(name)) r_->fonts[name] = r_->nextFont++;
        return std::make_shared<FontHandle>(r_, r_->fonts[name]);
    }

  private:
    R r_;
};

class DocumentHandle : public engine::Document {
  public:
    DocumentHandle(R r, std::string name) : r_(std::move(r)), name_(std::move(name)) {}
    engine::Ref<engine::Application> Application() override {
        return r_->Give("Application", ApplicationOf(r_));
    }
    engine::Ref<engine::Pages> Pages() override {
        return r_->Give("Pages", std::make_shared<PagesHandle>(r_));
    }
    engine::Ref<engine::Masters> Masters() override {
        return r_->Give("Masters", std::make_shared<MastersHandle>(r_, name_));
    }
    engine::Ref<engine::Fonts> Fonts() override {
        return r_->Give("Fonts", std::make_shared<FontsHandle>(r_));
    }
    engine::Ref<engine::Master> Drop(const engine::Ref<engine::Master>& master, double x, double y) override {
        if (!master) return nullptr;
        if (!r_->Do(fmt::format("Document.Drop \"{}\" at {}, {}", master->Name(), x, y))) return nullptr;
        return std::make_shared<MasterHandle>(r_, master->Name());
    }
    engine::SaveResult SaveAs(const std::string& path) override {
        const bool saved = r_->Do("Document.SaveAs " + path);
        return {saved, saved ? r_->copyFailure : "Disk full: " + path};
    }
    bool SetFooterLeft(const std::string& text) override { return r_->Do("Document.FooterLeft = " + text); }
    bool Print() override { return r_->Do("Document.Print"); }
    bool PrintPage(int page) override { return r_->Do(fmt::format("Document.PrintPage {}", page)); }

  private:
    R r_;
    std::string name_;
};

class DocumentsHandle : public engine::Documents {
  public:
    explicit DocumentsHandle(R r) : r_(std::move(r)) {}
    engine::Ref<engine::Document> Add(const std::string& name) override {
        return OpenNew(fmt::format("Documents.Add \"{}\"", name), name, true);
    }
    engine::Ref<engine::Document> Item(int index) override {
        const bool isOpen = index >= 1 && index <= static_cast<int>(r_->openDocuments.size());
        if (!isOpen || !r_->Step("Documents.Item")) return nullptr;
        return std::make_shared<DocumentHandle>(r_, r_->openDocuments[static_cast<std::size_t>(index - 1)]);
    }
    engine::Ref<engine::Document> Item(const std::string& name) override {
        for (const auto& open : r_->openDocuments) {
            if (open == name && r_->Step("Documents.Item")) return std::make_shared<DocumentHandle>(r_, open);
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
    engine::Ref<engine::Documents> Documents() override {
        return r_->Give("Documents", std::make_shared<DocumentsHandle>(r_));
    }
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
