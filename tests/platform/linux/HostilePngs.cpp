#include "platform/linux/HostilePictures.h"
#include "platform/linux/PictureBytes.h"

namespace nettlecap::picture {
namespace {

constexpr std::size_t mebibyte = 1 << 20;

struct Header {
    std::size_t width = 1;
    std::size_t height = 1;
    char bits = 8;
    char colourType = 2;  // red, green and blue
    char interlaced = 0;
};

std::string start(Header header) {
    return "\x89PNG\r\n\x1a\n" +
           pngChunk("IHDR" + bigEndian(header.width) + bigEndian(header.height) + header.bits +
                    header.colourType + std::string(2, '\0') + header.interlaced);
}

/// `extra` comes before the pixels and `after` follows them.
Bytes png(Header header, const std::string& pixels, const std::string& extra, const std::string& after = {}) {
    return Bytes(start(header) + extra + pngChunk("IDAT" + pixels) + after + pngChunk("IEND"));
}

Bytes withManyOf(const std::string& chunk, bool after) {
    const auto many = repeated(pngChunk(chunk), 990);  // libpng keeps a thousand
    return png({}, deflatedZeros(4), after ? "" : many, after ? many : "");
}

// Just below what libpng lets one text take.
const std::size_t ofText = 7'900'000;

std::string packedText() { return std::string("zTXtk\0\0", 7) + deflated('x', ofText); }
std::string packedUnicode() { return std::string("iTXtk\0\1\0\0\0", 10) + deflated('x', ofText); }

Bytes manyFrames() {
    const std::string frame = pngChunk("fcTL" + bigEndian(0) + bigEndian(1) + bigEndian(1) + bigEndian(0) +
                                       bigEndian(0) + std::string(6, '\1')) +
                              pngChunk("fdAT" + bigEndian(1) + deflatedZeros(4));
    return png({}, deflatedZeros(4), pngChunk("acTL" + bigEndian(0x7FFFFFFF) + bigEndian(0)),
               repeated(frame, 100'000));
}

}  // namespace

std::vector<Hostile> hostilePngs() {
    return {
        {"pixels that inflate to 256 MiB in a picture of one",
         [] { return png({}, deflatedZeros(256 * mebibyte), ""); }},
        {"990 packed texts of 8 MB", [] { return withManyOf(packedText(), false); }},
        {"990 packed texts of 8 MB after the pixels", [] { return withManyOf(packedText(), true); }},
        {"990 packed Unicode texts of 8 MB", [] { return withManyOf(packedUnicode(), false); }},
        {"990 colour profiles of 8 MB",
         [] { return withManyOf(std::string("iCCPp\0\0", 7) + deflatedZeros(ofText), false); }},
        {"990 palettes of suggestions",
         [] { return withManyOf(std::string("sPLTk\0\x08", 7) + std::string(60'000, '\1'), false); }},
        {"a million chunks of pixels with nothing in them",
         [] { return png({}, deflatedZeros(4), repeated(pngChunk("IDAT"), 1'000'000)); }},
        {"a million unknown chunks",
         [] { return png({}, deflatedZeros(4), repeated(pngChunk("quTy"), 1'000'000)); }},
        {"60,000 pixels each way, of one bit",
         [] {
             return png({60'000, 60'000, 1, 0}, deflatedZeros(60'000 * 7'501), "");
         }},
        {"64 Mi pixels of 64 bits",
         [] {
             return png({8192, 8192, 16, 6}, deflatedZeros(512 * mebibyte), "");
         }},
        {"64 Mi pixels of one bit, interlaced",
         [] {
             return png({8192, 8192, 1, 0, 1}, deflatedZeros(12 * mebibyte), "");
         }},
        {"64 Mi pixels, interlaced",
         [] {
             return png({8192, 8192, 8, 2, 1}, deflatedZeros(193 * mebibyte), "");
         }},
        {"two thousand million frames", [] { return manyFrames(); }},
    };
}

}  // namespace nettlecap::picture
