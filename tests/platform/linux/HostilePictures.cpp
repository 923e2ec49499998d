#include "platform/linux/HostilePictures.h"

#include "platform/linux/PictureBytes.h"

namespace nettlecap::picture {
namespace {

std::string twoBytes(std::size_t number) { return bigEndian(number).substr(2); }

// JPEG (ITU-T T.81).

std::string segment(char marker, const std::string& data) {
    return std::string("\xFF") + marker + twoBytes(data.size() + 2) + data;
}

/// A progressive picture up to its first scan. Its only code is of one bit, and means 0.
std::string progressive(std::size_t width, std::size_t height, std::size_t components) {
    std::string frame = '\x08' + twoBytes(height) + twoBytes(width) + static_cast<char>(components);
    for (std::size_t id = 1; id <= components; ++id)
        frame += static_cast<char>(id) + std::string("\x11\0", 2);
    const std::string code = '\1' + std::string(15, '\0') + std::string(1, '\0');
    return "\xFF\xD8" + segment('\xDB', std::string(1, '\0') + std::string(64, '\1')) +
           segment('\xC2', frame) + segment('\xC4', std::string(1, '\0') + code) +
           segment('\xC4', '\x10' + code);
}

/// Of the first component; the coefficients from..to, refined for the n-th time.
std::string scan(char from, char to, char precision, const std::string& data) {
    return segment('\xDA', std::string("\1\1\0", 3) + from + to + precision) + data;
}

Bytes jpegOfScans(std::size_t side, std::size_t count) {
    // Blocks that end at once, as many as the first component has: one code of one bit each.
    return Bytes(progressive(side, side, 1) + scan(0, 0, '\1', std::string(8, '\0')) +
                 repeated(scan(1, 63, '\1', std::string(2, '\0')), count) + "\xFF\xD9");
}

Bytes jpegOfSegments(std::size_t count) {
    return Bytes(
        "\xFF\xD8" +
        repeated(segment('\xE2', std::string("ICC_PROFILE\0\1\1", 14) + std::string(65'000, 'x')), count) +
        std::string(jpegOfScans(8, 1).view().substr(2)));
}

// WebP (RFC 9649).

std::string riff(const std::string& chunks) {
    return "RIFF" + littleEndian(chunks.size() + 4, 4) + "WEBP" + chunks;
}

std::string webpChunk(const std::string& type, const std::string& data) {
    return type + littleEndian(data.size(), 4) + data + std::string(data.size() % 2, '\0');
}

std::string lossless(std::size_t width, std::size_t height) {
    return webpChunk("VP8L",
                     '\x2F' + littleEndian((width - 1) | (height - 1) << 14U, 4) + std::string(64, '\0'));
}

std::string extended(char flags, std::size_t width, std::size_t height) {
    return webpChunk("VP8X",
                     flags + std::string(3, '\0') + littleEndian(width - 1, 3) + littleEndian(height - 1, 3));
}

Bytes animatedWebp(std::size_t side, std::size_t frames) {
    const std::string frame =
        webpChunk("ANMF", std::string(6, '\0') + littleEndian(0, 3) + littleEndian(0, 3) +
                              littleEndian(1, 3) + '\0' + lossless(1, 1));
    return Bytes(
        riff(extended('\2', side, side) + webpChunk("ANIM", std::string(6, '\0')) + repeated(frame, frames)));
}

// BMP.

struct BmpHeader {
    std::size_t width = 1;
    std::size_t height = 1;
    std::size_t bits = 24;
    std::size_t compression = 0;
    std::size_t colours = 0;
    std::size_t pixelsAt = 54;
};

Bytes bmp(BmpHeader header, const std::string& pixels) {
    return Bytes("BM" + littleEndian(54 + pixels.size(), 4) + std::string(4, '\0') +
                 littleEndian(header.pixelsAt, 4) + littleEndian(40, 4) + littleEndian(header.width, 4) +
                 littleEndian(header.height, 4) + littleEndian(1, 2) + littleEndian(header.bits, 2) +
                 littleEndian(header.compression, 4) + littleEndian(0, 4) + std::string(8, '\0') +
                 littleEndian(header.colours, 4) + std::string(4, '\0') + pixels);
}

// GIF.

std::string gifStart(std::size_t width, std::size_t height) {
    return "GIF89a" + littleEndian(width, 2) + littleEndian(height, 2) + '\x80' + std::string(2, '\0') +
           std::string("\0\0\0\xFF\xFF\xFF", 6);
}

std::string gifFrame(std::size_t at, std::size_t width, std::size_t height) {
    return "," + littleEndian(at, 2) + littleEndian(at, 2) + littleEndian(width, 2) +
           littleEndian(height, 2) + std::string("\0\2\2\x44\1\0", 6);
}

}  // namespace

std::vector<Hostile> hostilePictures() {
    return {
        {"JPEG of 65,500 pixels each way", [] { return jpegOfScans(65'500, 1); }},
        {"JPEG of 64 Mi pixels that are not there", [] { return jpegOfScans(8192, 0); }},
        {"JPEG of 64 Mi pixels and 100 scans", [] { return jpegOfScans(8192, 100); }},
        {"JPEG of 4 Mi pixels and 2,000 scans", [] { return jpegOfScans(2048, 2'000); }},
        {"JPEG of 64 pixels and a million scans", [] { return jpegOfScans(8, 1'000'000); }},
        {"JPEG of 64 Mi pixels in four components",
         [] { return Bytes(progressive(8192, 8192, 4) + scan(0, 0, '\1', "") + "\xFF\xD9"); }},
        {"JPEG with a colour profile of 250 MiB", [] { return jpegOfSegments(4000); }},
        {"WebP of 16 Mi pixels each way",
         [] { return Bytes(riff(extended('\0', 1 << 24, 1 << 24) + lossless(1, 1))); }},
        {"WebP of 64 Mi pixels around one",
         [] { return Bytes(riff(extended('\0', 8192, 8192) + lossless(1, 1))); }},
        {"WebP of 64 Mi pixels out of nothing", [] { return Bytes(riff(lossless(8192, 8192))); }},
        {"WebP of 268 million pixels", [] { return Bytes(riff(lossless(16'384, 16'384))); }},
        {"WebP that claims a chunk of 4 GiB",
         [] { return Bytes(riff("VP8 \xFF\xFF\xFF\xFF" + std::string(40, 'x'))); }},
        {"WebP of 64 Mi pixels and 100,000 frames", [] { return animatedWebp(8192, 100'000); }},
        {"BMP of 0x80000000 lines", [] { return bmp({.height = 0x80000000}, "xxxx"); }},
        {"BMP of -1 lines", [] { return bmp({.height = 0xFFFFFFFF}, "xxxx"); }},
        {"BMP of -1 columns", [] { return bmp({.width = 0xFFFFFFFF}, "xxxx"); }},
        {"BMP of 2^31 - 1 pixels each way",
         [] { return bmp({.width = 0x7FFFFFFF, .height = 0x7FFFFFFF}, "xxxx"); }},
        {"BMP of 64 Mi pixels that are not there",
         [] { return bmp({.width = 8192, .height = 8192}, "xxxx"); }},
        {"BMP of 64 Mi pixels in runs that end at once",
         [] {
             return bmp({.width = 8192, .height = 8192, .bits = 8, .compression = 1, .colours = 1},
                        std::string("\0\0\0\0\0\1", 6));
         }},
        {"BMP of runs that leave the picture",
         [] {
             return bmp({.width = 100, .height = 1, .bits = 8, .compression = 1, .colours = 1},
                        std::string(4, '\0') + repeated(std::string("\0\2\xFF\xFF\xFF\1", 6), 1'000'000));
         }},
        {"BMP of 2^32 - 1 colours", [] { return bmp({.bits = 8, .colours = 0xFFFFFFFF}, "xxxx"); }},
        {"BMP whose pixels are at 4 GiB", [] { return bmp({.pixelsAt = 0xFFFFFFFF}, "xxxx"); }},
        {"GIF of 65,535 pixels each way",
         [] { return Bytes(gifStart(65'535, 65'535) + gifFrame(0, 1, 1) + ";"); }},
        {"GIF of 64 Mi pixels around one",
         [] { return Bytes(gifStart(8192, 8192) + gifFrame(0, 1, 1) + ";"); }},
        {"GIF whose frame is larger than its screen",
         [] { return Bytes(gifStart(1, 1) + gifFrame(0, 65'535, 65'535) + ";"); }},
        {"GIF whose frame is beyond its screen",
         [] { return Bytes(gifStart(8, 8) + gifFrame(65'535, 8, 8) + ";"); }},
        {"GIF without a screen", [] { return Bytes(gifStart(0, 0) + gifFrame(0, 65'535, 65'535) + ";"); }},
        {"GIF of 64 Mi pixels and a million frames",
         [] { return Bytes(gifStart(8192, 8192) + repeated(gifFrame(0, 8192, 8192), 1'000'000) + ";"); }},
        {"GIF of 200 MB in blocks that say nothing",
         [] { return Bytes(gifStart(8, 8) + repeated(std::string("!\xFE\1x\0", 5), 40'000'000)); }},
        {"SVG", [] { return Bytes("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"); }},
        {"packed SVG of 256 MiB", [] { return Bytes("\x1F\x8B" + deflatedZeros(256 << 20)); }},
        {"icon of 4 GiB",
         [] { return Bytes(std::string("\0\0\1\0\1\0\0\0\0\0\1\0\x20\0\xFF\xFF\xFF\xFF\x16\0\0\0", 22)); }},
        {"Targa of 65,535 pixels each way",
         [] { return Bytes(std::string("\0\0\2\0\0\0\0\0\0\0\0\0\xFF\xFF\xFF\xFF\x20\0", 18)); }},
        {"bitmap in text of 60,000 pixels each way", [] { return Bytes("P1 60000 60000 "); }},
    };
}

}  // namespace nettlecap::picture
