#include "drawing/render/foreign.h"

#include <librevenge-generators/librevenge-generators.h>
#include <librevenge-stream/librevenge-stream.h>
#include <librevenge/librevenge.h>
#include <libvisio/libvisio.h>
#include <QCoreApplication>
#include <QSvgRenderer>

namespace norvelis::drawing::render {

namespace {

using Parser = bool (*)(librevenge::RVNGInputStream*, librevenge::RVNGDrawingInterface*);

/// libvisio's SVG counts 72 units to the inch.
std::optional<Scene> SceneOf(std::string svg) {
    Scene scene;
    auto picture = std::make_shared<QSvgRenderer>(QByteArray::fromStdString(svg));
    picture->moveToThread(
        QCoreApplication::instance()->thread());  // It may be read in another than it is shown in.
    if (!picture->isValid()) return std::nullopt;
    scene.size = picture->viewBoxF().size() * kUnitsPerPoint;
    if (scene.size.isEmpty()) return std::nullopt;
    scene.foreign = ForeignPage{std::move(svg), std::move(picture)};
    return scene;
}

std::optional<std::vector<Scene>> Read(const std::string& bytes, Parser parse) {
    librevenge::RVNGStringStream stream(reinterpret_cast<const unsigned char*>(bytes.data()),
                                        static_cast<unsigned int>(bytes.size()));
    librevenge::RVNGStringVector pages;
    try {
        if (!libvisio::VisioDocument::isSupported(&stream)) return std::nullopt;
        librevenge::RVNGSVGDrawingGenerator generator(pages, "");
        if (!parse(&stream, &generator)) return std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
    std::vector<Scene> scenes;
    for (unsigned i = 0; i < pages.size(); ++i) {
        if (auto scene = SceneOf(pages[i].cstr())) scenes.push_back(std::move(*scene));
    }
    if (scenes.empty()) return std::nullopt;
    return scenes;
}

}  // namespace

std::optional<std::vector<Scene>> ForeignPages(const std::string& bytes) {
    return Read(bytes, &libvisio::VisioDocument::parse);
}

std::optional<std::vector<Scene>> ForeignMasters(const std::string& bytes) {
    return Read(bytes, &libvisio::VisioDocument::parseStencils);
}

}  // namespace norvelis::drawing::render
