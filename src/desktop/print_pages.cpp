#include "desktop/print_pages.h"

#include <QPainter>
#include <QPrinter>
#include <vector>

#include "base/paths.h"
#include "drawing/export/pdf.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/paint.h"

namespace norvelis::desktop {

namespace {

using drawing::render::Scene;

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

QPageLayout::Orientation OrientationOf(const Scene& scene) {
    return scene.size.width() > scene.size.height() ? QPageLayout::Landscape : QPageLayout::Portrait;
}

void PaintOnSheet(QPainter& painter, const Scene& scene) {
    const QRect sheet = painter.viewport();
    const double scale = std::min(sheet.width() / scene.size.width(), sheet.height() / scene.size.height());
    const QSizeF size = scene.size * scale;
    painter.save();
    painter.translate((sheet.width() - size.width()) / 2, (sheet.height() - size.height()) / 2);
    painter.scale(scale, scale);
    drawing::render::PaintScene(painter, scene);
    painter.restore();
}

}  // namespace

bool PrintPages(const drawing::Document& document, std::optional<int> page, QPrinter& printer) {
    const std::vector<Scene> scenes = ScenesOf(document, page);
    if (scenes.empty()) return false;
    if (printer.outputFormat() == QPrinter::PdfFormat) {
        WriteFile(printer.outputFileName().toStdString(), drawing::render::PdfText(scenes));
        return true;
    }
    printer.setDocName(scenes.front().title);
    QPainter painter;
    for (const Scene& scene : scenes) {
        printer.setPageOrientation(OrientationOf(scene));
        if (!(painter.isActive() ? printer.newPage() : painter.begin(&printer))) return false;
        PaintOnSheet(painter, scene);
    }
    return painter.end();
}

}  // namespace norvelis::desktop
