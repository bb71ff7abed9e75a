#include "drawing/export/contact_sheet.h"

#include <QPainter>
#include <algorithm>

#include "drawing/render/paint.h"

namespace norvelis::drawing::render {

namespace {

constexpr int kCardWidth = 300, kCardHeight = 250, kPadding = 14, kCaption = 30, kGap = 16;
constexpr double kLargestScale = 0.2;  ///< Pixels to the scene unit: 144 to the inch.

/// What the scene shows, which may reach beyond its page (a note's leader); an empty page as it is.
QRectF Contents(const Scene& scene) {
    QRectF contents;
    for (const Figure& figure : scene.figures) contents |= figure.bounds;
    return contents.isEmpty() ? QRectF(QPointF(), scene.size) : contents;
}

/// Paints that part of the scene into the middle of `area`, as large as fits.
void PaintInto(QPainter& painter, const Scene& scene, const QRectF& part, const QRectF& area) {
    const double scale =
        std::min({area.width() / part.width(), area.height() / part.height(), kLargestScale});
    painter.save();
    painter.translate(area.center());
    painter.scale(scale, scale);
    painter.translate(-part.center());
    PaintScene(painter, scene);
    painter.restore();
}

QFont CaptionFont() {
    QFont font;
    font.setFamilies({"Liberation Sans"});
    font.setPixelSize(14);
    return font;
}

void PaintCard(QPainter& painter, const Scene& scene, const QRectF& card) {
    painter.setPen(QPen(QColor(0xD0, 0xD7, 0xDF), 1));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(card, 6, 6);
    PaintInto(painter, scene, Contents(scene),
              card.adjusted(kPadding, kPadding, -kPadding, -kPadding - kCaption));
    painter.setPen(QColor(0x33, 0x41, 0x52));
    painter.setFont(CaptionFont());
    painter.drawText(card.adjusted(0, 0, 0, -8), Qt::AlignHCenter | Qt::AlignBottom, scene.name);
}

/// An owner, a member and their line at the upper left, in fractions of the card.
void PaintSampleBoxes(QPainter& painter, const QRectF& card) {
    const auto at = [&card](double x, double y) {
        return card.topLeft() + QPointF(x * card.width(), y * card.height());
    };
    painter.setPen(QPen(QColor(120, 134, 152), 1));
    painter.drawLine(at(0.22, 0.30), at(0.36, 0.48));
    painter.setBrush(QColor(249, 251, 253));
    for (const QPointF corner : {at(0.12, 0.16), at(0.28, 0.48)})
        painter.drawRect(QRectF(corner, QSizeF(card.width() * 0.19, card.height() * 0.14)));
}

}  // namespace

QImage ContactSheet(const std::vector<Scene>& scenes) {
    const int count = static_cast<int>(scenes.size()), columns = std::clamp(count, 1, count > 9 ? 4 : 3);
    const int rows = std::max(1, (count + columns - 1) / columns);
    QImage sheet(columns * (kCardWidth + kGap) + kGap, rows * (kCardHeight + kGap) + kGap,
                 QImage::Format_RGB32);
    sheet.fill(QColor(0xEE, 0xF1, 0xF4));
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < count; ++i) {
        const QPoint corner(kGap + (i % columns) * (kCardWidth + kGap),
                            kGap + (i / columns) * (kCardHeight + kGap));
        PaintCard(painter, scenes[static_cast<std::size_t>(i)],
                  QRect(corner, QSize(kCardWidth, kCardHeight)));
    }
    return sheet;
}

QImage BackgroundChoice(const std::vector<Scene>& backgrounds) {
    const int count = static_cast<int>(backgrounds.size()),
              rows = (count + kChoiceColumns - 1) / kChoiceColumns;
    QImage choice(kChoiceColumns * (kChoiceWidth + kChoiceGap) + kChoiceGap,
                  rows * (kChoiceHeight + kChoiceGap) + kChoiceGap, QImage::Format_RGB32);
    choice.fill(Qt::white);
    QPainter painter(&choice);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < count; ++i) {
        const QPoint corner(kChoiceGap + (i % kChoiceColumns) * (kChoiceWidth + kChoiceGap),
                            kChoiceGap + (i / kChoiceColumns) * (kChoiceHeight + kChoiceGap));
        const QRectF card(corner, QSizeF(kChoiceWidth, kChoiceHeight));
        const Scene& background = backgrounds[static_cast<std::size_t>(i)];
        PaintInto(painter, background, QRectF(QPointF(), background.size), card);
        PaintSampleBoxes(painter, card);
        painter.setPen(QPen(QColor(0xC6, 0xD0, 0xDC), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(card);
    }
    return choice;
}

}  // namespace norvelis::drawing::render
