#include <exception>

#include "base/paths.h"
#include "drawing/automation/handles.h"
#include "drawing/package/package.h"

// Application, Documents, Document, Pages, Masters, Fonts.
namespace norvelis::drawing {

using engine::Ref;

namespace {

/// What `work` gives; `otherwise` when a file or the machine refuses.
template <class Result, class Work>
Result Try(Result otherwise, Work work) {
    try {
        return work();
    } catch (const std::exception&) {
        return otherwise;
    }
}

template <class List>
auto* At(const List& list, int index) {
    const bool inside = index >= 1 && index <= static_cast<int>(list.size());
    return inside ? list[static_cast<std::size_t>(index) - 1].get() : nullptr;
}

class DocumentsHandle : public engine::Documents {
  public:
    explicit DocumentsHandle(SessionRef session) : session_(std::move(session)) {}

    Ref<engine::Document> Add(const std::string& templateName) override {
        return Try(Ref<engine::Document>(), [&] {
            std::shared_ptr<drawing::Document> model =
                ReadPackageFile(Resolve(session_->workshop->options.stencilFolder + "/" + templateName));
            model->kind = DocumentKind::Drawing;
            if (model->pages.empty()) model->AddPage("Page-1");
            return Enlist(std::move(model), "Drawing" + std::to_string(++session_->drawings), false);
        });
    }
    Ref<engine::Document> Item(int index) override {
        const bool isOpen = index >= 1 && index <= static_cast<int>(session_->documents.size());
        if (!isOpen) return nullptr;
        return HandleOf(Context{session_, session_->documents[static_cast<std::size_t>(index) - 1]});
    }
    Ref<engine::Document> Item(const std::string& fileName) override {
        const auto found = session_->Find(fileName);
        return found ? HandleOf(Context{session_, found}) : nullptr;
    }
    Ref<engine::Document> OpenEx(const std::string& fileName, int) override {
        return Try(Ref<engine::Document>(),
                   [&] { return Enlist(session_->workshop->Stencil(fileName), fileName, true); });
    }
    Ref<engine::Document> Open(const std::string& path) override {
        return Try(Ref<engine::Document>(), [&] {
            std::shared_ptr<drawing::Document> model = ReadPackageFile(Resolve(path));
            const bool readOnly = model->leftPartsOut;
            return Enlist(std::move(model), path, readOnly);
        });
    }

  private:
    Ref<engine::Document> Enlist(std::shared_ptr<drawing::Document> model, std::string name, bool readOnly) {
        if (!session_->running) return nullptr;
        auto document =
            std::make_shared<OpenDocument>(*session_->workshop, std::move(model), std::move(name), readOnly);
        session_->documents.push_back(document);
        return HandleOf(Context{session_, std::move(document)});
    }

    SessionRef session_;
};

class PagesHandle : public engine::Pages {
  public:
    explicit PagesHandle(Context context) : context_(std::move(context)) {}
    int Count() override {
        return context_.Alive() ? static_cast<int>(context_.document->model->pages.size()) : 0;
    }
    Ref<engine::Page> Item(int index) override {
        Page* page = context_.Alive() ? At(context_.document->model->pages, index) : nullptr;
        return page ? std::make_shared<PageHandle>(context_, *page) : nullptr;
    }
    Ref<engine::Page> Add() override {
        if (!context_.Writable()) return nullptr;
        drawing::Document& model = *context_.document->model;
        Page& page = model.AddPage("Page-" + std::to_string(model.pages.size() + 1));
        StatePage(model, page.sheet, kLetterWidth, kLetterHeight);
        return std::make_shared<PageHandle>(context_, page);
    }

  private:
    Context context_;
};

class MastersHandle : public engine::Masters {
  public:
    explicit MastersHandle(Context context) : context_(std::move(context)) {}
    Ref<engine::Master> Item(const std::string& name) override {
        Master* master = context_.Alive() ? context_.document->model->FindMaster(name) : nullptr;
        return master ? std::make_shared<MasterHandle>(context_, *master) : nullptr;
    }

  private:
    Context context_;
};

class FontHandle : public engine::Font {
  public:
    FontHandle(Context context, int id) : context_(std::move(context)), id_(id) {}
    std::optional<int> ID() override { return context_.Alive() ? std::optional(id_) : std::nullopt; }

  private:
    Context context_;
    int id_;
};

class FontsHandle : public engine::Fonts {
  public:
    explicit FontsHandle(Context context) : context_(std::move(context)) {}
    Ref<engine::Font> Item(const std::string& name) override {
        if (!context_.Writable() || name.empty()) return nullptr;
        return std::make_shared<FontHandle>(context_, context_.document->model->FontIndex(name));
    }

  private:
    Context context_;
};

/// Gives what is in one sheet to another of the same form.
void TakeOver(const Shape& from, Shape& to) {
    to.cells = from.cells;
    to.sections = from.sections;
    to.text = from.text;
    for (std::size_t i = 0; i < std::min(from.shapes.size(), to.shapes.size()); ++i)
        TakeOver(*from.shapes[i], *to.shapes[i]);
}

class OurEngine : public engine::DrawingEngine {
  public:
    explicit OurEngine(EngineOptions options) : workshop_(std::make_shared<Workshop>(std::move(options))) {}
    std::optional<Ref<engine::Application>> CreateVisible() override { return Create(); }
    std::optional<Ref<engine::Application>> CreateHidden() override { return Create(); }

  private:
    std::optional<Ref<engine::Application>> Create() {
        if (!FolderExists(workshop_->options.stencilFolder)) return std::nullopt;
        return HandleOf(std::make_shared<Session>(workshop_));
    }

    std::shared_ptr<Workshop> workshop_;
};

}  // namespace

std::unique_ptr<engine::DrawingEngine> MakeDrawingEngine(EngineOptions options) {
    return std::make_unique<OurEngine>(std::move(options));
}

Ref<engine::Application> HandleOf(const SessionRef& session) {
    return std::make_shared<ApplicationHandle>(session);
}
Ref<engine::Document> HandleOf(const Context& context) {
    return std::make_shared<DocumentHandle>(context);
}

bool ApplicationHandle::SetAlertResponse(int) {
    return session_->running;  // This engine never asks anybody anything.
}
Ref<engine::Documents> ApplicationHandle::Documents() {
    return session_->running ? std::make_shared<DocumentsHandle>(session_) : nullptr;
}
bool ApplicationHandle::Quit() {
    if (!session_->running) return false;
    session_->Quit();
    return true;
}

Ref<engine::Application> DocumentHandle::Application() {
    return context_.Alive() ? HandleOf(context_.session) : nullptr;
}
Ref<engine::Pages> DocumentHandle::Pages() {
    return context_.Alive() ? std::make_shared<PagesHandle>(context_) : nullptr;
}
Ref<engine::Masters> DocumentHandle::Masters() {
    return context_.Alive() ? std::make_shared<MastersHandle>(context_) : nullptr;
}
Ref<engine::Fonts> DocumentHandle::Fonts() {
    return context_.Alive() ? std::make_shared<FontsHandle>(context_) : nullptr;
}

Ref<engine::Master> DocumentHandle::Drop(const Ref<engine::Master>& master, double, double) {
    const auto source = std::dynamic_pointer_cast<MasterHandle>(master);
    if (!context_.Writable() || !source || !source->Place().Alive()) return nullptr;
    Master& copy = context_.document->CopyOf(*source->Place().document, source->Model());
    return std::make_shared<MasterHandle>(context_, copy);
}

engine::SaveResult DocumentHandle::SaveAs(const std::string& path) {
    if (!context_.Writable()) return {false, path + " can be shown, not rewritten"};
    try {
        return {true, context_.document->Save(path)};
    } catch (const std::exception& failure) {
        return {false, failure.what()};
    }
}

bool DocumentHandle::SetFooterLeft(const std::string& text) {
    if (!context_.Writable()) return false;
    context_.document->model->headerFooter.footerLeft = text;
    return true;
}

bool DocumentHandle::Print() {
    const auto& print = context_.session->workshop->options.print;
    if (!context_.Alive() || !print) return false;
    return Try(false, [&] { return print(*context_.document->model, std::nullopt); });
}

bool DocumentHandle::PrintPage(int page) {
    const auto& print = context_.session->workshop->options.print;
    if (!context_.Alive() || !print || !At(context_.document->model->pages, page)) return false;
    return Try(false, [&] { return print(*context_.document->model, page); });
}

std::string MasterHandle::Name() {
    return context_.Alive() ? master_->name : std::string();
}

Ref<engine::Shapes> MasterHandle::Shapes() {
    return context_.Alive() ? ShapesOf(context_, *master_, nullptr) : nullptr;
}

Ref<engine::Master> MasterHandle::Open() {
    if (!context_.Writable() || original_) return nullptr;
    Context scratch = context_;
    auto model = std::make_shared<drawing::Document>(DocumentKind::Stencil);
    model->names = context_.document->model->names;  // What comes back speaks of the same names and fonts.
    model->fonts = context_.document->model->fonts;
    scratch.document = std::make_shared<OpenDocument>(context_.document->Shop(), std::move(model),
                                                      context_.document->name, false);
    drawing::Master& copy = scratch.document->CopyOf(*context_.document, *master_);
    auto opened = std::make_shared<MasterHandle>(scratch, copy);
    opened->original_ = context_;
    opened->originalMaster_ = master_;
    return opened;
}

bool MasterHandle::Close() {
    if (!context_.Alive() || !original_ || !original_->Writable()) return false;
    context_.document->recalculation.Settle();
    for (std::size_t i = 0; i < master_->shapes.size(); ++i)
        TakeOver(*master_->shapes[i], *originalMaster_->shapes[i]);
    original_->document->recalculation.MasterChanged(*originalMaster_);
    context_.document->open = false;
    return true;
}

}  // namespace norvelis::drawing
