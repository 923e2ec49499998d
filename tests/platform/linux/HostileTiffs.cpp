#include "platform/linux/HostilePictures.h"
#include "platform/linux/PictureBytes.h"

namespace nettlecap::picture {
namespace {

enum Compression : std::size_t { none = 1, lzw = 5, deflate = 8, packBits = 32773 };

enum Kind : std::size_t { grey = 1, colours = 2, separated = 5 };

struct Shape {
    std::size_t width = 1;
    std::size_t height = 1;
    std::size_t bits = 8;
    std::size_t samples = 1;
    Compression compression = none;
    std::size_t rowsPerStrip = 1;
    std::size_t claimedSize = 0;  ///< of the strip; 0: what it has
    std::size_t nextDirectory = 0;
    Kind kind = grey;
};

Bytes inStrip(Shape shape, const std::string& pixels) {
    constexpr std::size_t fieldCount = 9;
    return Bytes(tiff({{256, shape.width},
                       {257, shape.height},
                       {258, shape.bits},
                       {259, shape.compression},
                       {262, shape.kind},
                       {273, tiffPixelsAt(fieldCount)},
                       {277, shape.samples},
                       {278, shape.rowsPerStrip},
                       {279, shape.claimedSize ? shape.claimedSize : pixels.size()}},
                      pixels, shape.nextDirectory));
}

Bytes inTile(Shape shape, std::size_t tileSide, const std::string& pixels) {
    constexpr std::size_t fieldCount = 10;
    return Bytes(tiff({{256, shape.width},
                       {257, shape.height},
                       {258, shape.bits},
                       {259, shape.compression},
                       {262, shape.kind},
                       {277, shape.samples},
                       {322, tileSide},
                       {323, tileSide},
                       {324, tiffPixelsAt(fieldCount)},
                       {325, pixels.size()}},
                      pixels));
}

Bytes manyPages() {
    constexpr std::size_t count = 200'000;
    std::string bytes = "II*" + std::string(1, '\0') + littleEndian(8, 4);
    for (std::size_t number = 1; number <= count; ++number) {
        const std::size_t next = 8 + number * 18;
        bytes += littleEndian(1, 2) + littleEndian(256, 2) + littleEndian(4, 2) + littleEndian(1, 4) +
                 littleEndian(1, 4) + littleEndian(number < count ? next : 0, 4);
    }
    return Bytes(bytes);
}

}  // namespace

std::vector<Hostile> hostileTiffs() {
    return {
        {"one pixel in a tile of 40,000 pixels each way",
         [] { return inTile({.compression = deflate}, 40'000, deflatedZeros(1000)); }},
        {"one pixel of four samples in a tile of 46,336 pixels each way",
         [] {
             return inTile({.samples = 4, .compression = deflate, .kind = colours}, 46'336,
                           deflatedZeros(1000));
         }},
        {"one pixel in a tile of PackBits of 60,000 pixels each way",
         [] { return inTile({.compression = packBits}, 60'000, std::string(100, '\x81')); }},
        {"4,000 pixels each way in a tile of 40,000",
         [] {
             return inTile(
                 {.width = 4000, .height = 4000, .samples = 4, .compression = deflate, .kind = colours},
                 40'000, deflatedZeros(64 << 20));
         }},
        {"a million samples a pixel",
         [] {
             return inStrip({.width = 60'000,
                             .height = 1000,
                             .samples = 65'535,
                             .compression = deflate,
                             .rowsPerStrip = 1000},
                            deflatedZeros(1 << 20));
         }},
        {"65,535 samples of 64 bits a pixel",
         [] {
             return inStrip(
                 {.width = 8192, .height = 1, .bits = 64, .samples = 65'535, .compression = deflate},
                 deflatedZeros(64 << 20));
         }},
        {"samples of 65,535 bits",
         [] {
             return inStrip({.width = 60'000,
                             .height = 1000,
                             .bits = 65'535,
                             .compression = deflate,
                             .rowsPerStrip = 1000},
                            deflatedZeros(1 << 20));
         }},
        {"64 Mi pixels out of nothing",
         [] {
             return inStrip({.width = 8192,
                             .height = 8192,
                             .samples = 3,
                             .compression = deflate,
                             .rowsPerStrip = 8192,
                             .kind = colours},
                            deflatedZeros(1000));
         }},
        {"64 Mi pixels in one strip, deflated",
         [] {
             return inStrip({.width = 8192,
                             .height = 8192,
                             .samples = 3,
                             .compression = deflate,
                             .rowsPerStrip = 8192,
                             .kind = colours},
                            deflatedZeros(192 << 20));
         }},
        {"64 Mi pixels of 64 bits in one strip, deflated",
         [] {
             return inStrip({.width = 8192,
                             .height = 8192,
                             .bits = 16,
                             .samples = 4,
                             .compression = deflate,
                             .rowsPerStrip = 8192,
                             .kind = colours},
                            deflatedZeros(512 << 20));
         }},
        {"one pixel in a strip that inflates to 256 MiB",
         [] {
             return inStrip({.compression = deflate, .rowsPerStrip = 0xFFFFFFFF}, deflatedZeros(256 << 20));
         }},
        {"a strip of 4 GiB, by its own words",
         [] {
             return inStrip({.width = 8000, .height = 8000, .rowsPerStrip = 8000, .claimedSize = 0xFFFFFFFF},
                            "x");
         }},
        {"60,000 pixels each way",
         [] { return inStrip({.width = 60'000, .height = 60'000, .bits = 1, .rowsPerStrip = 60'000}, "x"); }},
        {"2^32 - 1 pixels each way",
         [] { return inStrip({.width = 0xFFFFFFFF, .height = 0xFFFFFFFF}, "x"); }},
        {"64 Mi pixels of 40 inks in one strip",
         [] {
             return inStrip({.width = 8192,
                             .height = 8192,
                             .samples = 40,
                             .compression = deflate,
                             .rowsPerStrip = 8192,
                             .kind = separated},
                            deflatedZeros(1000));
         }},
        {"50 million pixels of 25,000 inks in strips of a line",
         [] {
             return inStrip({.width = 100'000,
                             .height = 500,
                             .samples = 25'000,
                             .compression = deflate,
                             .kind = separated},
                            deflatedZeros(1000));
         }},
        {"one pixel of ink in a tile of 22,992 pixels each way",
         [] {
             return inTile({.samples = 4, .compression = deflate, .kind = separated}, 22'992,
                           deflatedZeros(1000));
         }},
        {"a directory that comes after itself", [] { return inStrip({.nextDirectory = 8}, "x"); }},
        {"200,000 pages", [] { return manyPages(); }},
    };
}

}  // namespace nettlecap::picture
