#include "drawing/export/export.h"

#include <QBuffer>
#include <QImage>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "drawing/export/contact_sheet.h"
#include "drawing/export/pdf.h"
#include "drawing/export/svg.h"
#include "drawing/package/package.h"
#include "drawing/render/foreign.h"
#include "drawing/render/open.h"
#include "drawing/render/paint.h"

namespace norvelis::drawing::render {

namespace {

constexpr double kPixelsPerInch = 144;

bool EndsWith(const std::string& path, std::string_view ending) {
    return path.size() > ending.size() &&
           EqualIgnoringCase(std::string_view(path).substr(path.size() - ending.size()), ending);
}

std::string PngText(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        throw RuntimeFailure(FailureNumber::DeviceIoError, "the picture can not be written");
    return bytes.toStdString();
}

const Scene& PageOf(const std::vector<Scene>& pages, int page) {
    if (page < 1 || page > static_cast<int>(pages.size()))
        throw RuntimeFailure(FailureNumber::SubscriptOutOfRange,
                             "the drawing has " + std::to_string(pages.size()) + " page(s)");
    return pages[static_cast<std::size_t>(page) - 1];
}

/// The bytes of a drawing that is a package already, all its parts included.
std::string CheckedPackage(const std::string& drawing) {
    std::string bytes = ReadFile(drawing);
    NeedFonts();
    if (!bytes.starts_with("PK") && ForeignPages(bytes))
        throw RuntimeFailure(FailureNumber::DeviceIoError,
                             "another program made this drawing: it can be shown, not rewritten");
    ReadPackage(bytes);
    return bytes;
}

}  // namespace

void Export(const std::string& drawing, const std::string& out, int page) {
    if (EndsWith(out, ".svg"))
        WriteFile(out, SvgText(PageOf(OpenPages(drawing), page)));
    else if (EndsWith(out, ".png"))
        WriteFile(out, PngText(Picture(PageOf(OpenPages(drawing), page), kPixelsPerInch)));
    else if (EndsWith(out, ".pdf"))
        WriteFile(out, PdfText(OpenPages(drawing)));
    else if (EndsWith(out, ".vsdx"))
        WriteFile(out, CheckedPackage(drawing));
    else
        throw RuntimeFailure(FailureNumber::InvalidCall,
                             "a drawing is exported to .svg, .png, .pdf or .vsdx, not to " + out);
}

std::string LinkedSvg(const std::string& drawing, const engine::ShapeLinks& links) {
    return SvgText(PageOf(OpenPages(drawing), 1), links);
}

void ExportContactSheet(const std::string& stencil, const std::string& out) {
    if (!EndsWith(out, ".png"))
        throw RuntimeFailure(FailureNumber::InvalidCall, "a contact sheet is written to .png, not to " + out);
    WriteFile(out, PngText(ContactSheet(OpenMasters(stencil))));
}

}  // namespace norvelis::drawing::render
