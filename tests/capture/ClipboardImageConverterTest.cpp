#include "capture/ClipboardImageConverter.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeImageCodec.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

class ClipboardImageConverterTest : public testing::Test {
protected:
    std::optional<std::string> pngData(std::string data) const {
        const auto png = ClipboardImageConverter::pngData(Bytes(std::move(data)), codec);
        if (!png) return std::nullopt;
        return std::string(png->view());
    }

    FakeFileSystem files;
    FakeImageCodec codec{files};
};

TEST_F(ClipboardImageConverterTest, PassesPNGOnByteForByteWithoutLookingInside) {
    EXPECT_EQ(pngData("\x89PNG\r\n\x1a\nflor"), "\x89PNG\r\n\x1a\nflor");
    EXPECT_EQ(pngData("\x89PNG\r\n\x1a\nBROKEN"), "\x89PNG\r\n\x1a\nBROKEN");
    EXPECT_EQ(pngData("\x89PNG\r\n\x1a\n"), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(codec.decodings(), 0);
}

TEST_F(ClipboardImageConverterTest, EncodesOtherPicturesAnew) {
    EXPECT_EQ(pngData("TIFF:flor"), "\x89PNG\r\n\x1a\nflor");
    EXPECT_EQ(pngData("JPEG:flor"), "\x89PNG\r\n\x1a\nflor");
}

TEST_F(ClipboardImageConverterTest, GivesNothingForWhatDoesNotDecode) {
    EXPECT_EQ(pngData("TIFF:BROKEN"), std::nullopt);
    EXPECT_EQ(pngData("\x89PNG\r\n\x1a"), std::nullopt);
    EXPECT_EQ(pngData("olá"), std::nullopt);
    EXPECT_EQ(pngData(""), std::nullopt);
}

}  // namespace
}  // namespace nettlecap
