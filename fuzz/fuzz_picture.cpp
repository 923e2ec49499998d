#include "pictures/ReducedByQt.h"
#include "platform/PngEssentials.h"
#include "platform/linux/QtImageCodec.h"

#include <QCoreApplication>
#include <QImageReader>
#include <cstdint>
#include <cstdlib>
#include <zlib.h>

// A picture in any of the formats: whatever the bytes are, its decoder ends, and what is made
// of it is a picture that decodes. A PNG that is reduced while it is decoded is one for Qt, too,
// and looks the same.

namespace {

using namespace nettlecap;

void require(bool holds) {
    if (!holds) std::abort();
}

constexpr int mostMebibytes = 4;  // decoded, so that a run is short

/// With right checksums, or else hardly anything would get past them.
std::string mended(std::string png) {
    constexpr std::size_t signatureSize = 8;
    constexpr std::size_t wordSize = 4;
    const auto byteAt = [&png](std::size_t at) { return static_cast<unsigned char>(png[at]); };
    for (std::size_t at = signatureSize; at + 3 * wordSize <= png.size();) {
        const std::size_t length = std::size_t{byteAt(at + 2)} << 8U | byteAt(at + 3);
        if (png[at] != 0 || png[at + 1] != 0 || length > png.size() - at - 3 * wordSize) break;
        const auto* checked = reinterpret_cast<const Bytef*>(png.data()) + at + wordSize;
        const auto sum = crc32_z(0, checked, wordSize + length);
        at += 2 * wordSize + length;
        for (const unsigned shift : {24U, 16U, 8U, 0U}) png[at++] = static_cast<char>(sum >> shift & 0xFFU);
    }
    return png;
}

void checkReduced(const std::string& png) {
    // Qt takes deep rows with a transparent colour for rows with alpha, and has another colour than
    // libpng for an index beyond a palette.
    constexpr std::size_t placeOfColourType = 25;
    bool isMisread = png.size() > placeOfColourType && png[placeOfColourType] == 3;
    const auto choice = [&](const PngFormat& format) -> std::optional<PictureSize> {
        isMisread = isMisread || (format.bits > 8 && format.hasTransparentColour);
        if (format.size.pixels() * 8 > mostMebibytes << 20) return std::nullopt;
        return PictureSize{.width = (format.size.width + 2) / 3, .height = (format.size.height + 2) / 3};
    };
    const auto picture = reducedPng(picture::sourceOf(png), choice);
    if (!picture) return;
    const QImage byQt = picture::reducedByQt(pngEssentials(png), picture->size);
    require(!byQt.isNull());
    require(isMisread || picture::difference(*picture, byQt) <= 1);
}

/// Where the plugins are is known to the application alone.
struct Program {
    int count = 1;
    char name[5] = "fuzz";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{count, arguments};
    QtImageCodec codec;

    Program() { QImageReader::setAllocationLimit(mostMebibytes); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Program program;
    const Bytes bytes(std::string(reinterpret_cast<const char*>(data), size));
    checkReduced(std::string(bytes.view()));
    checkReduced(mended(std::string(bytes.view())));
    const bool isImage = program.codec.isImage(bytes);
    const auto png = program.codec.png(bytes);
    if (!png) return 0;
    require(isImage && program.codec.isImage(*png));
    require(program.codec.png(*png).has_value());
    require(program.codec.tiff(*png).has_value());
    return 0;
}
