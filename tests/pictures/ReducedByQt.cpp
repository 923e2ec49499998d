#include "pictures/ReducedByQt.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <cstdlib>

namespace nettlecap::picture {

ByteSource sourceOf(std::string_view bytes, std::size_t most) {
    return [bytes, most](std::span<std::uint8_t> to) mutable {
        const std::size_t count = std::min({bytes.size(), to.size(), most});
        std::copy_n(bytes.begin(), count, to.begin());
        bytes.remove_prefix(count);
        return count;
    };
}

std::optional<ReducedPicture> reduced(std::string_view png, PictureSize to) {
    return reducedPng(sourceOf(png), [to](const PngFormat&) { return std::optional(to); });
}

QImage reducedByQt(std::string_view png, PictureSize to) {
    QByteArray data(png.data(), static_cast<qsizetype>(png.size()));
    QBuffer buffer(&data);
    QImage whole = QImageReader(&buffer, "png").read();
    if (whole.isNull()) return {};
    // Scaled as it is, a picture with a palette keeps that and loses colours, and one of deep
    // colours loses what is transparent.
    whole.convertTo(whole.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return whole.scaled(static_cast<int>(to.width), static_cast<int>(to.height), Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

int difference(const ReducedPicture& one, const QImage& other) {
    int most = 0;
    const auto width = static_cast<std::size_t>(other.width());
    for (std::size_t at = 0; at < one.pixels.size(); ++at) {
        const auto* line = reinterpret_cast<const QRgb*>(other.constScanLine(static_cast<int>(at / width)));
        for (const unsigned shift : {0U, 8U, 16U, 24U}) {
            const auto channel = [shift](std::uint32_t pixel) {
                return static_cast<int>(pixel >> shift & 0xFFU);
            };
            most = std::max(most, std::abs(channel(one.pixels[at]) - channel(line[at % width])));
        }
    }
    return most;
}

}  // namespace nettlecap::picture
