#include "drawing/export/pdf.h"

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include "drawing/render/paint.h"

namespace norvelis::drawing::render {

namespace {

constexpr double kLongestSide = 14400;  // Points: readers refuse larger pages.

double PointsPerUnit(const Scene& scene) {
    const double longest = std::max(scene.size.width(), scene.size.height()) / kUnitsPerPoint;
    return (longest > kLongestSide ? kLongestSide / longest : 1) / kUnitsPerPoint;
}

QByteArray PaintPages(const std::vector<Scene>& scenes) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(static_cast<int>(kUnitsPerInch));
    writer.setCreator("Norvelis");
    if (!scenes.empty()) writer.setTitle(scenes.front().title);
    writer.setPageMargins(QMarginsF());
    QPainter painter;
    for (const Scene& scene : scenes) {
        const double points = PointsPerUnit(scene);
        writer.setPageSize(QPageSize(scene.size * points, QPageSize::Point, {}, QPageSize::ExactMatch));
        if (painter.isActive())
            writer.newPage();
        else
            painter.begin(&writer);
        painter.resetTransform();
        painter.scale(points * kUnitsPerPoint, points * kUnitsPerPoint);
        PaintScene(painter, scene);
    }
    painter.end();
    return bytes;
}

/// A figure's bounds on its page, from the lower left corner in points.
QPDFObjectHandle::Rectangle PlaceOf(const Figure& figure, const Scene& scene) {
    const double points = PointsPerUnit(scene), height = scene.size.height() * points;
    const QRectF box = figure.bounds;
    return {box.left() * points, height - box.bottom() * points, box.right() * points,
            height - box.top() * points};
}

/// The place in the document that "page" or "page/shape" means; null for a page that there is not.
QPDFObjectHandle Destination(const QString& place, const std::vector<Scene>& scenes,
                             std::vector<QPDFPageObjectHelper>& pages) {
    constexpr double kAir = 36;  // Points above and beside the shape.
    const QString pageName = place.section('/', 0, 0), shape = place.section('/', 1);
    for (std::size_t i = 0; i < scenes.size() && i < pages.size(); ++i) {
        if (scenes[i].name != pageName) continue;
        auto destination = QPDFObjectHandle::newArray({pages[i].getObjectHandle()});
        for (const Figure& figure : scenes[i].figures) {
            if (shape.isEmpty() || figure.name != shape) continue;
            const auto box = PlaceOf(figure, scenes[i]);
            destination.appendItem(QPDFObjectHandle::newName("/XYZ"));
            destination.appendItem(QPDFObjectHandle::newReal(box.llx - kAir));
            destination.appendItem(QPDFObjectHandle::newReal(box.ury + kAir));
            destination.appendItem(QPDFObjectHandle::newNull());
            return destination;
        }
        destination.appendItem(QPDFObjectHandle::newName("/Fit"));
        return destination;
    }
    return QPDFObjectHandle::newNull();
}

QPDFObjectHandle Link(const Figure& figure, const Scene& scene, const std::vector<Scene>& scenes,
                      std::vector<QPDFPageObjectHelper>& pages) {
    auto link = QPDFObjectHandle::newDictionary();
    link.replaceKey("/Type", QPDFObjectHandle::newName("/Annot"));
    link.replaceKey("/Subtype", QPDFObjectHandle::newName("/Link"));
    link.replaceKey("/Rect", QPDFObjectHandle::newArray(PlaceOf(figure, scene)));
    link.replaceKey("/Border", QPDFObjectHandle::parse("[0 0 0]"));
    if (figure.address.startsWith('#')) {
        link.replaceKey("/Dest", Destination(figure.address.mid(1), scenes, pages));
    } else {
        auto action = QPDFObjectHandle::newDictionary();
        action.replaceKey("/S", QPDFObjectHandle::newName("/URI"));
        action.replaceKey("/URI", QPDFObjectHandle::newString(figure.address.toUtf8().toStdString()));
        link.replaceKey("/A", action);
    }
    if (!figure.addressText.isEmpty())
        link.replaceKey("/Contents", QPDFObjectHandle::newUnicodeString(figure.addressText.toStdString()));
    return link;
}

}  // namespace

std::string PdfText(const std::vector<Scene>& scenes) {
    const QByteArray painted = PaintPages(scenes);
    QPDF document;
    document.processMemoryFile("drawing", painted.constData(), static_cast<std::size_t>(painted.size()));
    auto pages = QPDFPageDocumentHelper(document).getAllPages();
    for (std::size_t i = 0; i < pages.size() && i < scenes.size(); ++i) {
        auto links = QPDFObjectHandle::newArray();
        for (const Figure& figure : scenes[i].figures) {
            if (!figure.address.isEmpty())
                links.appendItem(document.makeIndirectObject(Link(figure, scenes[i], scenes, pages)));
        }
        if (links.getArrayNItems() > 0) pages[i].getObjectHandle().replaceKey("/Annots", links);
    }
    // The clock and the random names that the painter put in would make equal drawings unequal files.
    auto information = document.getTrailer().getKey("/Info");
    if (information.isDictionary()) {
        information.removeKey("/CreationDate");
        information.removeKey("/ModDate");
    }
    document.getRoot().removeKey("/Metadata");
    QPDFWriter writer(document);
    writer.setOutputMemory();
    writer.setDeterministicID(true);
    writer.write();
    const auto buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

}  // namespace norvelis::drawing::render
