#include "drawing/render/open.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include "base/failure.h"
#include "base/paths.h"
#include "drawing/formula/recalculation.h"
#include "drawing/package/package.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/foreign.h"

namespace norvelis::drawing::render {

namespace {

/// Our reader's scenes, or libvisio's when the file is no package; when both refuse, our reader's reason. A
/// package that our reader refuses is not given to anybody else: it may be made to do harm.
template <class Ours, class Foreign>
std::vector<Scene> Open(const std::string& path, Ours ours, Foreign foreign) {
    const std::string bytes = ReadFile(path);
    try {
        const auto document = ReadPackage(bytes);
        return ours(*document);
    } catch (const RuntimeFailure&) {
        const bool isPackage = bytes.starts_with("PK");
        if (auto scenes = isPackage ? std::nullopt : foreign(bytes)) return std::move(*scenes);
        throw;
    }
}

/// A box without text shows what it is called.
void AddSampleText(Recalculation& recalculation, Master& master) {
    if (master.shapes.empty()) return;
    Shape& shape = *master.shapes.front();
    if (!TextOf(shape).empty() || FormulaOf(shape, Name::Width).find("ThePage") != std::string_view::npos)
        return;
    shape.text = TextRuns{{master.name}};
    recalculation.Added(master, shape);
    recalculation.TextChanged(master, shape);
}

}  // namespace

std::vector<Scene> OpenPages(const std::string& path) {
    NeedFonts();
    const auto ours = [](Document& document) {
        FontLibrary fonts;
        SceneCost cost;
        std::vector<Scene> scenes;
        for (const auto& page : document.pages) {
            if (!page->background || document.pages.size() == 1)
                scenes.push_back(BuildScene(fonts, document, *page, cost));
        }
        return scenes;
    };
    return Open(path, ours, &ForeignPages);
}

std::vector<Scene> OpenMasters(const std::string& path) {
    NeedFonts();
    const auto ours = [](Document& document) {
        FontLibrary fonts;
        SceneCost cost;
        std::vector<Scene> scenes;
        Recalculation recalculation(document, fonts);
        for (const auto& master : document.masters) AddSampleText(recalculation, *master);
        recalculation.Settle();
        for (const auto& master : document.masters)
            scenes.push_back(BuildScene(fonts, document, *master, cost));
        return scenes;
    };
    return Open(path, ours, &ForeignMasters);
}

void NeedFonts() {
    if (QCoreApplication::instance()) return;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(
        "default.warning=false");  // Words about missing screens help nobody here.
    static int count = 1;
    static char name[] = "norvelis";
    static char* arguments[] = {name, nullptr};
    static auto* const application = new QGuiApplication(count, arguments);  // Lives as long as the process.
    Q_UNUSED(application);
}

}  // namespace norvelis::drawing::render
