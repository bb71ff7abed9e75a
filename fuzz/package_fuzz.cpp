#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "base/failure.h"
#include "drawing/export/svg.h"
#include "drawing/package/archive.h"
#include "drawing/package/package.h"
#include "drawing/package/rich_drawing.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/open.h"

using namespace norvelis;
using namespace norvelis::drawing;

namespace {

/// The rich drawing with other contents of its first page: so the fuzzer gets past the archive's check sums.
std::string WithPage(const std::string& page) {
    static const std::vector<std::string> names = {
        "[Content_Types].xml",       "_rels/.rels",
        "visio/document.xml",        "visio/_rels/document.xml.rels",
        "visio/masters/masters.xml", "visio/masters/_rels/masters.xml.rels",
        "visio/masters/master1.xml", "visio/masters/master2.xml",
        "visio/pages/pages.xml",     "visio/pages/_rels/pages.xml.rels",
        "visio/pages/page1.xml",     "visio/pages/_rels/page1.xml.rels",
        "visio/pages/page2.xml",     "visio/media/image1.png"};
    static const std::vector<Part> good = [] {
        const std::string bytes = WritePackage(*RichDrawing());
        Archive archive(bytes);
        std::vector<Part> parts;
        for (const auto& name : names) parts.push_back({name, archive.Read(name)});
        return parts;
    }();
    std::vector<Part> parts = good;
    for (auto& part : parts) {
        if (part.name == "visio/pages/page1.xml") part.bytes = page;
    }
    return Zip(parts);
}

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

}  // namespace

/// Any bytes as a package, or as the contents of a package's page: refused with a reason, or read, shown, and
/// saved so that reading and saving once more gives the same file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FontLibrary fonts;
    render::NeedFonts();
    const std::string input(reinterpret_cast<const char*>(data), size);
    std::unique_ptr<Document> document;
    try {
        document = ReadPackage(input.starts_with("PK") ? input : WithPage(input));
        for (const auto& page : document->pages) render::SvgText(render::BuildScene(fonts, *document, *page));
    } catch (const RuntimeFailure& failure) {
        Require(failure.Number() == FailureNumber::DeviceIoError, "a refusal of another number");
    }
    if (!document) return 0;
    const std::string saved = WritePackage(*document);
    std::unique_ptr<Document> again;
    try {
        again = ReadPackage(saved);
    } catch (const RuntimeFailure& failure) {
        Require(false, failure.what());
    }
    Require(WritePackage(*again) == saved, "saved, read and saved again is another file");
    return 0;
}
