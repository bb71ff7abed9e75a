#include "desktop/drawing_sheets.h"

#include <QPainter>

#include "base/failure.h"
#include "commands/print_commands.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/open.h"
#include "drawing/sheets/print_queue.h"
#include "drawing/sheets/sheet_job.h"
#include "paper/kept_choice.h"

namespace norvelis::desktop {

namespace {

using drawing::render::Scene;
using drawing::sheets::SheetJob;

class SceneSheets : public ui::DrawingSheets {
  public:
    explicit SceneSheets(std::vector<Scene> pages) : pages_(std::move(pages)), job_({}, {}, {}) {}

    int PageCount() const override { return static_cast<int>(pages_.size()); }
    QString PageName(int page) const override { return pages_.at(static_cast<std::size_t>(page) - 1).name; }
    void Cut(const std::vector<int>& pages, const paper::SheetChoice& choice,
             const paper::Footer& footer) override {
        std::vector<const Scene*> cut;
        for (const int page : pages) cut.push_back(&pages_.at(static_cast<std::size_t>(page) - 1));
        job_ = SheetJob(std::move(cut), choice, footer);
    }

    int Count() const override { return job_.Count(); }
    const paper::SheetPlan& PlanOf(int sheet) const override { return job_.PlanOf(sheet); }
    const paper::Sheet& SheetOf(int sheet) const override { return job_.SheetOf(sheet); }
    void Paint(QPainter& painter, int sheet) const override {
        constexpr double kMillimetresPerUnit = 25.4 / drawing::render::kUnitsPerInch;
        painter.save();
        painter.scale(kMillimetresPerUnit, kMillimetresPerUnit);
        job_.Paint(painter, sheet);
        painter.restore();
    }
    std::string Pdf(const std::vector<int>& sheets) const override { return job_.Pdf(sheets); }

  private:
    std::vector<Scene> pages_;
    SheetJob job_;
};

std::vector<Scene> ScenesOf(const drawing::Document& document, std::optional<int> page) {
    drawing::FontLibrary fonts;
    std::vector<Scene> scenes;
    int number = 0;
    for (const auto& each : document.pages) {
        const bool wanted = page ? *page == ++number : !each->background;
        if (wanted) scenes.push_back(drawing::render::BuildScene(fonts, document, *each));
    }
    return scenes;
}

}  // namespace

bool PrintOpenDrawing(AppState& app, const drawing::Document& document, std::optional<int> page) {
    try {
        const std::vector<Scene> scenes = ScenesOf(document, page);
        if (scenes.empty()) return false;
        const std::string title = scenes.front().title.toStdString();
        const paper::SheetChoice choice = paper::SetUpChoice(app.gLocalIni);
        std::vector<const Scene*> pages;
        for (const Scene& scene : scenes) pages.push_back(&scene);
        const SheetJob job(std::move(pages), choice, commands::FooterOf(app, title));
        const std::string pdf = job.Pdf(commands::ChosenSheets({}, job.Count()));
        drawing::sheets::SendToPrinter({paper::KeptPrinter(app.gLocalIni), title, choice.paper.name, pdf});
        return true;
    } catch (const RuntimeFailure& failure) {
        app.host.MessageBox(failure.what());
        return false;
    }
}

ui::SheetPrinting MakeSheetPrinting() {
    return {[](const QString& path) {
                return std::make_unique<SceneSheets>(drawing::render::OpenPages(path.toStdString()));
            },
            [](const std::string& printer, const std::string& title, const std::string& paper,
               const std::string& pdf) {
                drawing::sheets::SendToPrinter({printer, title, paper, pdf});
            }};
}

}  // namespace norvelis::desktop
