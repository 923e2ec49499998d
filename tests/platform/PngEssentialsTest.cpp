#include "platform/PngEssentials.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

const std::string signature = "\x89PNG\r\n\x1a\n";
const std::string header = std::string("\0\0\0\3IHDR", 8) + "abcCRCx";
const std::string pixels = std::string("\0\0\0\2IDAT", 8) + "abCRCx";
const std::string text = std::string("\0\0\0\2zTXt", 8) + "abCRCx";
const std::string profile = std::string("\0\0\0\2iCCP", 8) + "abCRCx";
const std::string end = std::string("\0\0\0\0IEND", 8) + "CRCx";

TEST(PngEssentialsTest, KeepWhatThePixelsDependOn) {
    const std::string png = signature + header + profile + pixels + pixels + end;

    EXPECT_EQ(pngEssentials(png), png);
}

TEST(PngEssentialsTest, HaveNoTexts) {
    EXPECT_EQ(pngEssentials(signature + header + text + pixels + text + end),
              signature + header + pixels + end);
}

TEST(PngEssentialsTest, AreThereOnceEach) {
    EXPECT_EQ(pngEssentials(signature + header + profile + profile + pixels + end),
              signature + header + profile + pixels + end);
}

TEST(PngEssentialsTest, EndWithThePicture) {
    EXPECT_EQ(pngEssentials(signature + header + end + pixels), signature + header + end);
}

TEST(PngEssentialsTest, BreakOffWhereThePictureDoes) {
    const std::string png = signature + header + pixels;

    for (std::size_t size = signature.size(); size < png.size(); ++size) {
        const std::string kept = pngEssentials(png.substr(0, size));
        EXPECT_TRUE(png.starts_with(kept)) << size;
    }
    EXPECT_EQ(pngEssentials(signature + header + "\xFF\xFF\xFF\xFFIDATab"),
              signature + header + "\xFF\xFF\xFF\xFFIDATab");
}

TEST(PngEssentialsTest, AreNothingOfWhatIsNoPng) {
    EXPECT_EQ(pngEssentials(""), "");
    EXPECT_EQ(pngEssentials("<svg/>"), "");
    EXPECT_EQ(pngEssentials(signature.substr(0, 7)), "");
}

}  // namespace
}  // namespace nettlecap
