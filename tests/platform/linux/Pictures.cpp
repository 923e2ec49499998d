#include "platform/linux/Pictures.h"

#include "platform/linux/PictureBytes.h"

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>

namespace nettlecap::picture {
namespace {

QImage decoded(const Bytes& picture) {
    const auto view = picture.view();
    return QImage::fromData(QByteArray(view.data(), static_cast<qsizetype>(view.size())));
}

}  // namespace

Bytes inFormat(const char* format, Size size) {
    QImage image(size.width, size.height, QImage::Format_RGB32);
    for (int y = 0; y < size.height; ++y) {
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width; ++x) pixels[x] = qRgb(x * 37 % 256, y * 101 % 256, (x * y) % 256);
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter(&buffer, format).write(image);
    return Bytes(buffer.data().toStdString());
}

Bytes animatedGif() {
    return Bytes(
        QByteArray::fromHex("47494638396108000800f00000ff000000000021f904000000000021ff0b4e455453434150"
                            "45322e3003010000002c0000000008000800000207848fa9cbed5d000021f9040000000000"
                            "2c0000000008000800800000ff0000000207848fa9cbed5d00003b")
            .toStdString());
}

// Codes of eight bits, which a clear code (0x80) now and then keeps at that width.
Bytes gif() {
    constexpr int width = 64;
    constexpr int height = 48;
    std::string codes;
    for (int pixel = 0; pixel < width * height; ++pixel) {
        if (pixel % 100 == 0) codes += '\x80';
        codes += static_cast<char>(pixel * 7 % 128);
    }
    codes += '\x81';
    std::string bytes =
        "GIF89a" + littleEndian(width, 2) + littleEndian(height, 2) + "\xF6" + std::string(2, '\0');
    for (int colour = 0; colour < 128; ++colour)
        bytes += littleEndian(static_cast<std::size_t>(colour) * 0x020304U, 3);
    bytes += ",";
    bytes += std::string(4, '\0') + littleEndian(width, 2) + littleEndian(height, 2) + '\0' + '\7';
    for (std::size_t start = 0; start < codes.size(); start += 255) {
        const auto block = codes.substr(start, 255);
        bytes += littleEndian(block.size(), 1) + block;
    }
    return Bytes(bytes + '\0' + ';');
}

Bytes pngClaiming(Size size) {
    const std::string header = "IHDR" + bigEndian(static_cast<std::size_t>(size.width)) +
                               bigEndian(static_cast<std::size_t>(size.height)) + '\x08' + '\x02' +
                               std::string(3, '\0');
    const auto nearlyNothing =
        qCompress(QByteArray(1000, '\0')).mid(4).toStdString();  // after Qt's own length
    return Bytes("\x89PNG\r\n\x1a\n" + pngChunk(header) + pngChunk("IDAT" + nearlyNothing) +
                 pngChunk("IEND"));
}

Bytes tiffWithPixelsLast(Size size) {
    const auto width = static_cast<std::size_t>(size.width);
    const auto height = static_cast<std::size_t>(size.height);
    constexpr std::size_t fieldCount = 9;
    std::string pixels;
    for (std::size_t pixel = 0; pixel < width * height; ++pixel) pixels += static_cast<char>(pixel % 251);
    return Bytes(tiff({{256, width},
                       {257, height},
                       {258, 8},  // bits per sample
                       {259, 1},  // not compressed
                       {262, 1},  // 0 is black
                       {273, tiffPixelsAt(fieldCount)},
                       {277, 1},  // samples per pixel
                       {278, height},
                       {279, width * height}},
                      pixels));
}

Bytes beginning(const Bytes& picture, double part) {
    const auto size = static_cast<std::size_t>(static_cast<double>(picture.size()) * part);
    return Bytes(std::string(picture.view().substr(0, size)));
}

Bytes flipped(const Bytes& picture, std::size_t position) {
    std::string bytes(picture.view());
    bytes.at(position) = static_cast<char>(~bytes.at(position));
    return Bytes(bytes);
}

std::string firstColour(const Bytes& picture) {
    return decoded(picture).pixelColor(0, 0).name().toStdString();
}

std::string sizeText(const Bytes& picture) {
    const auto image = decoded(picture);
    return std::to_string(image.width()) + "x" + std::to_string(image.height());
}

}  // namespace nettlecap::picture
