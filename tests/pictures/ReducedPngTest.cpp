#include "pictures/ReducedPng.h"

#include "pictures/PngMaker.h"
#include "pictures/ReducedByQt.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/PictureBytes.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace nettlecap {

namespace picture {
void PrintTo(const PngMaker& maker, std::ostream* out) {
    *out << "colour type " << maker.colourType << ", " << maker.bits << " bits"
         << (maker.transparency.empty() ? "" : ", transparent parts");
}
}  // namespace picture

namespace {

using picture::bigEndian;
using picture::difference;
using picture::pngChunk;
using picture::PngMaker;
using picture::reduced;
using picture::reducedByQt;

constexpr PictureSize small{.width = 17, .height = 13};
constexpr PictureSize dot{.width = 1, .height = 1};
constexpr std::uint32_t red = 0xFFFF0000;

// Qt computes with fractions of 14 bits and cuts off what is left: that is one step, and never two.
constexpr int roundingOfQt = 1;

/// Of all colours that there are in as many bits.
std::string palette(int bits) {
    std::string colours;
    for (std::size_t index = 0; index < std::size_t{1} << static_cast<unsigned>(bits); ++index)
        colours += bigEndian(index * 2'654'435'761U).substr(1);
    return colours;
}

/// Every colour type with every depth, the rows with every filter.
std::vector<PngMaker> kinds() {
    std::vector<PngMaker> result;
    for (const auto& [type, depths] : std::vector<std::pair<int, std::vector<int>>>{
             {0, {1, 2, 4, 8, 16}}, {2, {8, 16}}, {3, {1, 2, 4, 8}}, {4, {8, 16}}, {6, {8, 16}}})
        for (const int bits : depths)
            result.push_back(
                {.bits = bits, .colourType = type, .palette = type == 3 ? palette(bits) : std::string()});
    return result;
}

std::vector<PngMaker> transparentKinds() {
    std::vector<PngMaker> result;
    for (PngMaker maker : kinds()) {
        if (maker.colourType == 0) maker.transparency = std::string("\0\1", 2);
        if (maker.colourType == 3) maker.transparency = std::string("\x00\x80", 2);
        if (!maker.transparency.empty()) result.push_back(maker);
    }
    return result;
}

class ReducedPngTest : public testing::TestWithParam<PngMaker> {};

TEST_P(ReducedPngTest, LooksAsDecodedAndScaledByQt) {
    PngMaker maker = GetParam();
    for (const bool isSmooth : {false, true})
        for (const PictureSize size : {small, dot, PictureSize{.width = 50, .height = 40}}) {
            maker.isSmooth = isSmooth;

            const auto picture = reduced(maker.bytes(), size);

            ASSERT_TRUE(picture);
            EXPECT_EQ(picture->size, size);
            EXPECT_LE(difference(*picture, reducedByQt(maker.bytes(), size)), roundingOfQt) << size.width;
        }
}

INSTANTIATE_TEST_SUITE_P(Kind, ReducedPngTest, testing::ValuesIn(kinds()));
INSTANTIATE_TEST_SUITE_P(TransparentKind, ReducedPngTest, testing::ValuesIn(transparentKinds()));

PngMaker twoPixels(std::vector<std::uint8_t> contents) {
    return {.width = 2, .height = 1, .contents = std::move(contents)};
}

TEST(ReducedPngColourTest, MayBeTransparentByItsColour) {
    PngMaker maker = twoPixels({1, 2, 3, 255, 0, 0});
    maker.transparency = std::string("\0\1\0\2\0\3", 6);

    const auto picture = reduced(maker.bytes(), {.width = 2, .height = 1});

    ASSERT_TRUE(picture);
    EXPECT_FALSE(picture->isOpaque);
    EXPECT_EQ(picture->pixels, (std::vector<std::uint32_t>{0, red}));
}

// Qt takes rows of this kind for rows with alpha.
TEST(ReducedPngColourTest, IsComparedInAllItsBits) {
    PngMaker maker = twoPixels({0, 1, 0, 2, 0, 3, 0, 1, 0, 2, 0, 4});
    maker.bits = 16;
    maker.transparency = std::string("\0\1\0\2\0\3", 6);

    const auto picture = reduced(maker.bytes(), {.width = 2, .height = 1});

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixels, (std::vector<std::uint32_t>{0, 0xFF000000}));
}

TEST(ReducedPngColourTest, CountsAsMuchAsItIsSeen) {
    PngMaker maker = twoPixels({255, 0, 0, 255, 0, 255, 0, 0});
    maker.colourType = 6;

    const auto picture = reduced(maker.bytes(), dot);

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixels, std::vector<std::uint32_t>{0x80800000});
}

TEST(ReducedPngColourTest, IsTheSameWithoutWhatIsSaidOfIt) {
    PngMaker maker;
    const auto plain = reduced(maker.bytes(), small);

    maker.before = pngChunk("gAMA" + bigEndian(1)) + pngChunk("iCCPx") + pngChunk("tEXtComment");

    const auto picture = reduced(maker.bytes(), small);
    ASSERT_TRUE(picture && plain);
    EXPECT_EQ(picture->pixels, plain->pixels);
    EXPECT_LE(difference(*picture, reducedByQt(maker.bytes(), small)), roundingOfQt);
}

TEST(ReducedPngTaskTest, IsTheSameInWhateverPiecesTheFileComes) {
    const PngMaker maker{.pieceSize = 7};
    const auto wanted = [](const PngFormat&) { return std::optional(small); };

    const auto whole = reducedPng(picture::sourceOf(maker.bytes()), wanted);
    const std::string bytes = maker.bytes();
    const auto byByte = reducedPng(picture::sourceOf(bytes, 1), wanted);

    ASSERT_TRUE(whole && byByte);
    EXPECT_EQ(byByte->pixels, whole->pixels);
}

TEST(ReducedPngTaskTest, IsNeverToEnlarge) {
    const std::string bytes = PngMaker().bytes();

    EXPECT_TRUE(reduced(bytes, {.width = 50, .height = 40}));
    EXPECT_FALSE(reduced(bytes, {.width = 51, .height = 40}));
    EXPECT_FALSE(reduced(bytes, {.width = 50, .height = 41}));
    EXPECT_FALSE(reduced(bytes, {.width = 0, .height = 1}));
}

TEST(ReducedPngTaskTest, EndsBeforeThePixelsWhereThePictureIsNotWanted) {
    const std::string bytes = PngMaker().bytes();
    PictureSize asked;
    const auto source = [&bytes, taken = std::size_t{0}](std::span<std::uint8_t> to) mutable {
        EXPECT_LT(taken, bytes.find("IDAT") + 4);
        to[0] = static_cast<std::uint8_t>(bytes[taken++]);
        return std::size_t{1};
    };

    const auto picture = reducedPng(source, [&](const PngFormat& format) -> std::optional<PictureSize> {
        asked = format.size;
        return std::nullopt;
    });

    EXPECT_FALSE(picture);
    EXPECT_EQ(asked, (PictureSize{.width = 50, .height = 40}));
}

TEST(ReducedPngTaskTest, TakesNoMoreMemoryForALargePicture) {
    constexpr std::size_t side = 8000;
    const std::string start = PngMaker{.width = side, .height = side}.header();
    const std::string bytes =
        start + pngChunk("IDAT" + picture::deflatedZeros(side * (3 * side + 1))) + pngChunk("IEND");

    const std::string growth = inChild([&] {
        const auto peak = [] {
            rusage usage{};
            ::getrusage(RUSAGE_SELF, &usage);
            return usage.ru_maxrss >> 10;
        };
        const long before = peak();
        const bool isWell = reduced(bytes, small).has_value();
        return std::string(isWell && peak() - before < 16 ? "small" : "large");
    });

    EXPECT_EQ(growth, "small");
}

}  // namespace
}  // namespace nettlecap
