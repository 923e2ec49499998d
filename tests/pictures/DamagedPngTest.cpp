#include "pictures/PngMaker.h"
#include "pictures/ReducedByQt.h"
#include "platform/linux/PictureBytes.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using picture::bigEndian;
using picture::pngChunk;
using picture::PngMaker;

constexpr PictureSize dot{.width = 1, .height = 1};

bool isTaken(const std::string& png) { return picture::reduced(png, dot).has_value(); }

/// Left to others, or as the one who is asked then has it.
bool isAsByQt(const std::string& png) {
    const auto picture = picture::reduced(png, dot);
    if (!picture) return true;
    const QImage byQt = picture::reducedByQt(png, dot);
    return !byQt.isNull() && picture::difference(*picture, byQt) <= 1;
}

const std::string end = pngChunk("IEND");

/// A small one with all that the decoder reads.
PngMaker indexed() {
    return {.width = 9,
            .height = 7,
            .bits = 2,
            .colourType = 3,
            .palette = "abcdefghijkl",
            .transparency = "xyz",
            .pieceSize = 20};
}

TEST(PngInOrderTest, IsTaken) {
    EXPECT_TRUE(isTaken(PngMaker().bytes()));
    EXPECT_TRUE(isTaken(indexed().bytes()));
    EXPECT_TRUE(isTaken(indexed().bytes() + "what follows the end is no part of it"));
}

TEST(PngInOrderTest, MayHaveChunksThatNobodyKnowsButNotWithinThePixels) {
    PngMaker maker = indexed();
    maker.before = pngChunk("quTywhatever");
    EXPECT_TRUE(isTaken(maker.bytes()));

    maker.between = maker.before;
    EXPECT_FALSE(isTaken(maker.bytes()));
}

TEST(DamagedPngTest, IsLeftToOthersWhereverItBreaksOff) {
    const std::string bytes = indexed().bytes();
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_FALSE(isTaken(bytes.substr(0, size))) << size;
}

TEST(DamagedPngTest, IsLeftToOthersOrAsTheyHaveItWhicheverByteIsWrong) {
    const std::string bytes = indexed().bytes();
    int others = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at)
        for (const char other : {'\0', '\x7F', '\x80', '\xFF', static_cast<char>(~bytes[at])}) {
            std::string damaged = bytes;
            damaged[at] = other;

            EXPECT_TRUE(isAsByQt(damaged)) << at;
            others += !isTaken(damaged);
        }
    EXPECT_GT(others, static_cast<int>(bytes.size()));
}

TEST(DamagedPngTest, IsLeftToOthersOrAsTheyHaveItWhereThePackedPixelsAreWrong) {
    const PngMaker maker{.width = 9, .height = 7};
    const std::string packed = maker.packed();
    for (std::size_t at = 0; at < packed.size(); ++at) {
        std::string damaged = packed;
        damaged[at] = static_cast<char>(~damaged[at]);

        EXPECT_TRUE(isAsByQt(maker.header() + pngChunk("IDAT" + damaged) + end)) << at;
    }
}

TEST(DamagedPngTest, IsLeftToOthersOrAsTheyHaveItWithMoreOrFewerRowsThanItSays) {
    const PngMaker maker;
    PngMaker higher = maker;
    PngMaker lower = maker;
    ++higher.height;
    --lower.height;

    EXPECT_TRUE(isTaken(maker.header() + maker.pixels() + end));
    EXPECT_FALSE(isTaken(higher.header() + maker.pixels() + end));
    EXPECT_TRUE(isAsByQt(lower.header() + maker.pixels() + end));
    EXPECT_TRUE(isAsByQt(maker.header() + pngChunk("IDAT" + maker.packed() + "more") + end));
    EXPECT_TRUE(isAsByQt(maker.header() + maker.pixels() + pngChunk("IDATmore") + end));
}

TEST(DamagedPngTest, IsNothingToTellTheUserOf) {
    const PngMaker maker{.width = 9, .height = 7, .before = pngChunk("gAMAx")};
    std::string damaged = maker.bytes();
    damaged[damaged.size() - 20] ^= '\xFF';

    testing::internal::CaptureStderr();
    EXPECT_FALSE(isTaken(damaged));
    EXPECT_FALSE(isTaken("no picture"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(DamagedPngTest, IsLeftToOthersWithAFilterThatThereIsNot) {
    PngMaker maker{.filter = 4};
    EXPECT_TRUE(isTaken(maker.bytes()));

    maker.filter = 5;
    EXPECT_FALSE(isTaken(maker.bytes()));
}

TEST(DamagedPngTest, IsLeftToOthersWithAHeaderThatIsWrongOrNotPlain) {
    const PngMaker maker{.width = 8, .height = 8, .bits = 8, .colourType = 0};
    const auto withHeader = [&](const std::string& header) {
        return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR" + header) + maker.pixels() + end;
    };
    const auto sized = [](std::size_t width, std::size_t height) {
        return bigEndian(width) + bigEndian(height);
    };
    const std::string plain("\x08\0\0\0\0", 5);
    ASSERT_TRUE(isTaken(withHeader(sized(8, 8) + plain)));

    for (const std::string& header :
         {sized(0, 8) + plain, sized(8, 0) + plain, sized(1'000'001, 8) + plain, sized(8, 1'000'001) + plain,
          sized(8, 8), sized(8, 8) + plain + '\0', sized(8, 8) + std::string("\x08\0\1\0\0", 5),
          sized(8, 8) + std::string("\x08\0\0\1\0", 5), sized(8, 8) + std::string("\x08\0\0\0\1", 5),
          sized(8, 8) + std::string("\x03\0\0\0\0", 5), sized(8, 8) + std::string("\x08\1\0\0\0", 5),
          sized(8, 8) + std::string("\x04\2\0\0\0", 5)})
        EXPECT_FALSE(isTaken(withHeader(header))) << testing::PrintToString(header);
}

TEST(DamagedPngTest, IsLeftToOthersOrAsTheyHaveItWithChunksThatAreWrongOrInTheWrongPlace) {
    const PngMaker grey{.width = 8, .height = 8, .colourType = 0, .pieceSize = 20};
    PngMaker divided = grey;
    divided.between = pngChunk("gAMA" + bigEndian(1));
    const PngMaker withAlpha{.width = 8, .height = 8, .colourType = 6};
    const PngMaker indices{.width = 8, .height = 8, .bits = 1, .colourType = 3};
    const std::string colours = pngChunk("PLTEabcdef");
    const std::string alphas = pngChunk("tRNSxy");
    ASSERT_TRUE(isTaken(indices.header() + colours + alphas + indices.pixels() + end));

    for (const std::string& bytes :
         {divided.bytes(), grey.header() + colours + grey.pixels() + end,
          grey.header() + pngChunk("tRNSx") + grey.pixels() + end,
          grey.header() + pngChunk("tRNS" + std::string("\1\0", 2)) + grey.pixels() + end,
          grey.header() + grey.header().substr(8) + grey.pixels() + end, grey.header() + end,
          withAlpha.header() + pngChunk("tRNS" + std::string(6, '\0')) + withAlpha.pixels() + end,
          indices.header() + indices.pixels() + end,
          indices.header() + alphas + colours + indices.pixels() + end,
          indices.header() + colours + colours + indices.pixels() + end,
          indices.header() + colours + alphas + alphas + indices.pixels() + end,
          indices.header() + pngChunk("PLTEabcdefghi") + indices.pixels() + end,
          indices.header() + pngChunk("PLTEabcd") + indices.pixels() + end,
          indices.header() + colours + pngChunk("tRNSxyz") + indices.pixels() + end,
          indices.header() + colours + indices.pixels() + colours + end,
          indices.header() + colours + indices.pixels() + pngChunk("IENDx"),
          indices.header() + colours + indices.pixels()})
        EXPECT_TRUE(isAsByQt(bytes)) << testing::PrintToString(bytes);
}

}  // namespace
}  // namespace nettlecap
