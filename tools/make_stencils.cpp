// Makes the delivered stencils, the template, and the picture of the backgrounds that the settings screen
// shows.
#include <QImage>
#include <cstdio>

#include "base/failure.h"
#include "base/paths.h"
#include "drawing/export/contact_sheet.h"
#include "drawing/package/package.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/open.h"
#include "drawing/stencils/build.h"

using namespace norvelis;
using namespace norvelis::drawing;

namespace {

constexpr int kJpegQuality = 92;

void WriteStencil(FontLibrary& fonts, const std::string& folder,
                  const stencils::StencilDefinition& definition) {
    WriteFile(folder + "/" + definition.file, WritePackage(*stencils::BuildStencil(fonts, definition)));
}

void WriteBackgroundChoice(FontLibrary& fonts, const std::string& path) {
    const auto stencil = stencils::BuildStencil(fonts, stencils::PageBackgrounds());
    std::vector<render::Scene> scenes;
    render::SceneCost cost;
    for (const auto& master : stencil->masters)
        scenes.push_back(render::BuildScene(fonts, *stencil, *master, cost));
    WriteFileThrough(path, [&scenes](const std::string& temporary) {
        if (!render::BackgroundChoice(scenes).save(QString::fromStdString(temporary), "JPG", kJpegQuality))
            throw RuntimeFailure(FailureNumber::DeviceIoError, temporary);
    });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_stencils STENCIL-FOLDER BACKGROUND-PICTURE\n");
        return 2;
    }
    try {
        render::NeedFonts();
        FontLibrary fonts;
        for (const auto& definition :
             {stencils::FlowchartShapes(), stencils::PageBackgrounds(), stencils::BordersAndTitles()})
            WriteStencil(fonts, argv[1], definition);
        WriteFile(std::string(argv[1]) + "/" + stencils::kTemplateFile,
                  WritePackage(*stencils::BuildTemplate()));
        WriteBackgroundChoice(fonts, argv[2]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "make_stencils: %s\n", failure.what());
        return 1;
    }
}
