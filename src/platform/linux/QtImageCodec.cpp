#include "platform/linux/QtImageCodec.h"

#include "platform/PngEssentials.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PictureSource.h"
#include "platform/linux/PngChunks.h"
#include "platform/linux/TiffLayout.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QLoggingCategory>
#include <array>
#include <new>

namespace nettlecap {
namespace {

/// As Qt's own limit for an image of 32 bits per pixel; a photograph of 7680x4320 has half.
constexpr qint64 mostPixels = qint64{64} * 1024 * 1024;
/// As many pixels of 64 bits.
constexpr std::uint64_t mostUnpackedTiff = 8 * mostPixels;
/// zlib's level 2: a fifth larger than with the usual level, in a seventh of the time.
constexpr int pngQuality = 70;
constexpr qint64 mostAcross = 1'000'000;           // as libpng's own limit
constexpr qint64 mostInFile = qint64{256} << 20U;  // as of a copy
/// What comes before the size of a JPEG is read on the main thread: 255 segments of 64 KiB of
/// a colour profile are the most that makes sense.
constexpr std::size_t mostBeforeJpeg = std::size_t{17} << 20U;

struct Format {
    const char* name;  ///< as Qt calls it
    std::string_view signature;
    std::size_t offset = 0;
};

constexpr std::array formats = {
    Format{.name = "png", .signature = "\x89PNG\r\n\x1a\n"},
    Format{.name = "jpeg", .signature = "\xFF\xD8\xFF"},
    Format{.name = "tiff", .signature = std::string_view("II*\0", 4)},
    Format{.name = "tiff", .signature = std::string_view("MM\0*", 4)},
    Format{.name = "tiff", .signature = std::string_view("II+\0", 4)},  // BigTIFF
    Format{.name = "tiff", .signature = std::string_view("MM\0+", 4)},
    Format{.name = "webp", .signature = "WEBP", .offset = 8},
    Format{.name = "gif", .signature = "GIF8"},
    Format{.name = "bmp", .signature = "BM"},
};

/// Of Qt's many decoders only the one that the first bytes call for ever sees the rest.
std::optional<std::string_view> formatOf(std::string_view start) {
    for (const auto& format : formats)
        if (start.substr(std::min(format.offset, start.size())).starts_with(format.signature))
            return format.name;
    return std::nullopt;
}

QLoggingCategory::CategoryFilter otherFilter = nullptr;

void withoutPictureWarnings(QLoggingCategory* category) {
    otherFilter(category);
    const std::string_view name = category->categoryName();
    if (name.starts_with("qt.gui.imageio") || name == "qt.gui.icc") {
        category->setEnabled(QtInfoMsg, false);
        category->setEnabled(QtWarningMsg, false);
    }
}

bool hasSaneSize(QSize size) {
    return !size.isEmpty() && size.width() <= mostAcross && size.height() <= mostAcross &&
           size.width() <= mostPixels / size.height();
}

bool hasSaneSize(const QImageReader& reader, std::string_view format, std::string_view start) {
    if (format != "png") return hasSaneSize(reader.size());
    const auto size = png::sizeOf(start).value_or(png::PixelSize());
    return hasSaneSize(QSize(static_cast<int>(size.width), static_cast<int>(size.height)));
}

void prepare(QImageReader& reader, std::string_view format) {
    if (format == "tiff") tiff::silence();
    reader.setAutoDetectImageFormat(false);
    reader.setFormat(QByteArray(format.data(), static_cast<qsizetype>(format.size())));
    reader.setAutoTransform(true);
}

/// Decides by the header alone. `start` is what the device begins with.
bool isImageIn(QIODevice& device, std::string_view start) {
    const auto format = formatOf(start);
    if (!format) return false;
    QImageReader reader(&device);
    prepare(reader, *format);
    return hasSaneSize(reader, *format, start);
}

bool isImageIn(std::string_view bytes) {
    PictureSource source(formatOf(bytes) == "jpeg" ? bytes.substr(0, mostBeforeJpeg) : bytes);
    return isImageIn(source, bytes);
}

bool brokeOff(const PictureSource& source, std::string_view format) {
    // These two read blocks of a fixed size, so the last one is short in a whole picture too.
    if (format == "jpeg" || format == "gif") return source.gaveNothing();
    return source.gaveLessThanAsked();
}

bool hasSaneLayout(std::string_view bytes, std::string_view format) {
    if (format == "png") return png::isUndamaged(bytes);
    if (format == "jpeg") return isImageIn(bytes);
    return format != "tiff" || tiff::unpackedSize(bytes).value_or(UINT64_MAX) <= mostUnpackedTiff;
}

std::optional<QImage> decoded(std::string_view bytes) {
    const auto format = formatOf(bytes);
    if (!format || !hasSaneLayout(bytes, *format)) return std::nullopt;
    const std::string essentials = format == "png" ? pngEssentials(bytes) : std::string();
    PictureSource source(format == "png" ? essentials : bytes);
    QImageReader reader(&source);
    prepare(reader, *format);
    if (!hasSaneSize(reader, *format, bytes)) return std::nullopt;
    source.forgetShortReads();
    QImage image;
    if (!reader.read(&image) || image.isNull() || brokeOff(source, *format)) return std::nullopt;
    return image;
}

/// As Qt takes it for a picture that says nothing: 96 dots an inch.
constexpr int usualDotsPerMetre = 3780;

/// A negative density, which a BMP and a PNG may claim, makes libtiff refuse the picture.
void mendDensity(QImage& image) {
    if (image.dotsPerMeterX() > 0 && image.dotsPerMeterY() > 0) return;
    image.setDotsPerMeterX(usualDotsPerMetre);
    image.setDotsPerMeterY(usualDotsPerMetre);
}

std::optional<Bytes> encoded(const QImage& image, const char* format, int quality) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    if (!writer.write(image)) return std::nullopt;
    const QByteArray& bytes = buffer.data();
    return Bytes(std::string(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

std::optional<Bytes> reencoded(const Bytes& data, const char* format, int quality) try {
    auto image = decoded(data.view());
    if (!image) return std::nullopt;
    mendDensity(*image);
    return encoded(*image, format, quality);
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

}  // namespace

QtImageCodec::QtImageCodec() {
    if (otherFilter) return;
    otherFilter = QLoggingCategory::installFilter(nullptr);
    QLoggingCategory::installFilter(withoutPictureWarnings);
}

bool QtImageCodec::isImage(const Bytes& data) const { return isImageIn(data.view()); }

bool QtImageCodec::isImage(const Path& path) const {
    const auto regular = RegularFile::open(path);
    QFile file;
    if (!regular || !file.open(regular->descriptor.number(), QIODevice::ReadOnly)) return false;
    if (file.size() > mostInFile) return false;
    const auto start = file.peek(png::headerSize).toStdString();
    if (formatOf(start) == "jpeg") return isImageIn(file.read(mostBeforeJpeg).toStdString());
    return isImageIn(file, start);
}

std::optional<Bytes> QtImageCodec::png(const Bytes& data) const { return reencoded(data, "png", pngQuality); }

std::optional<Bytes> QtImageCodec::tiff(const Bytes& data) const {
    tiff::silence();
    return reencoded(data, "tiff", -1);
}

}  // namespace nettlecap
