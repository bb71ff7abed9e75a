#include "drawing/render/bitmap.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>

namespace norvelis::drawing::render {

namespace {

constexpr int kLongestSide = 4000;
constexpr std::size_t kMostPixels = 64'000'000;

}  // namespace

QImage ReadBitmap(const ForeignPicture& picture, std::size_t& pixels) {
    static const QByteArrayList kFormats = {"png", "jpeg", "jpg", "gif", "bmp"};
    const QByteArray format = QByteArray::fromStdString(picture.extension);
    if (!kFormats.contains(format)) return {};
    QByteArray bytes =
        QByteArray::fromRawData(picture.bytes.data(), static_cast<qsizetype>(picture.bytes.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, format);
    QSize size = reader.size();
    if (std::max(size.width(), size.height()) > kLongestSide) {
        size.scale(kLongestSide, kLongestSide, Qt::KeepAspectRatio);
        reader.setScaledSize(size);
    }
    pixels += static_cast<std::size_t>(std::max(size.width(), 1)) *
              static_cast<std::size_t>(std::max(size.height(), 1));
    return pixels <= kMostPixels ? reader.read() : QImage();
}

}  // namespace norvelis::drawing::render
