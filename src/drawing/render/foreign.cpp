#include "drawing/render/foreign.h"

#include <libvisio/libvisio.h>
#include <librevenge-generators/librevenge-generators.h>
#include <librevenge-stream/librevenge-stream.h>
#include <librevenge/librevenge.h>

namespace norvelis::drawing::render {

namespace {

using Parser = bool (*)(librevenge::RVNGInputStream*, librevenge::RVNGDrawingInterface*);

std::optional<std::vector<std::string>> Read(const std::string& bytes, Parser parse) {
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
    std::vector<std::string> texts;
    for (unsigned i = 0; i < pages.size(); ++i) texts.emplace_back(pages[i].cstr());
    if (texts.empty()) return std::nullopt;
    return texts;
}

}  // namespace

std::optional<std::vector<std::string>> ForeignPages(const std::string& bytes) {
    return Read(bytes, &libvisio::VisioDocument::parse);
}

std::optional<std::vector<std::string>> ForeignMasters(const std::string& bytes) {
    return Read(bytes, &libvisio::VisioDocument::parseStencils);
}

}  // namespace norvelis::drawing::render
