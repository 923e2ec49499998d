#include "platform/linux/QtImageCodec.h"

#include "platform/contracts/ImageCodecContract.h"
#include "platform/linux/PictureSource.h"
#include "platform/linux/Pictures.h"
#include "platform/linux/TemporaryFolder.h"

#include <fstream>
#include <random>
#include <thread>
#include <unistd.h>
#include <vector>

namespace nettlecap {

void PrintTo(const Bytes& bytes, std::ostream* out) { *out << bytes.size() << " bytes"; }

namespace {

class QtImageCodecHarness final : public ImageCodecHarness {
public:
    ImageCodec& codec() override { return codec_; }
    Bytes png() const override { return picture::inFormat("png", {.width = 60, .height = 40}); }
    Bytes tiff() const override { return picture::inFormat("tiff", {.width = 60, .height = 40}); }
    Bytes jpeg() const override { return picture::inFormat("jpeg", {.width = 60, .height = 40}); }
    Bytes damagedPng() const override { return picture::beginning(png(), 0.6); }
    Path file(const Bytes& contents) override {
        Path path = folder_.path() / "picture";
        std::ofstream(path, std::ios::binary | std::ios::trunc) << contents.view();
        return path;
    }
    Path missingFile() const override { return folder_.path() / "nowhere"; }

private:
    TemporaryFolder folder_;
    QtImageCodec codec_;
};

INSTANTIATE_TEST_SUITE_P(Qt, ImageCodecContract, testing::Values([]() -> std::unique_ptr<ImageCodecHarness> {
                             return std::make_unique<QtImageCodecHarness>();
                         }));

/// Nothing may be printed, whatever is decoded.
class QtImageCodecTest : public testing::Test {
protected:
    QtImageCodecTest() { testing::internal::CaptureStderr(); }
    ~QtImageCodecTest() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

    QtImageCodec codec;
};

TEST_F(QtImageCodecTest, ReadsEveryFormatThatProgramsCopy) {
    for (const char* format : {"png", "tiff", "jpeg", "webp", "bmp"}) {
        const auto png = codec.png(picture::inFormat(format, {.width = 60, .height = 40}));
        ASSERT_TRUE(png) << format;
        EXPECT_EQ(picture::sizeText(*png), "60x40") << format;
    }
    EXPECT_EQ(picture::sizeText(*codec.png(picture::gif())), "64x48");
    EXPECT_EQ(picture::sizeText(*codec.png(picture::tiffWithPixelsLast({.width = 30, .height = 20}))),
              "30x20");
}

TEST_F(QtImageCodecTest, KeepsEveryPixelOfALosslessFormat) {
    const auto original = picture::inFormat("png", {.width = 60, .height = 40});

    for (const char* format : {"tiff", "bmp"})
        EXPECT_EQ(codec.png(picture::inFormat(format, {.width = 60, .height = 40})), codec.png(original))
            << format;
}

TEST_F(QtImageCodecTest, TakesTheFirstFrameOfAnAnimation) {
    const auto png = codec.png(picture::animatedGif());

    ASSERT_TRUE(png);
    EXPECT_EQ(picture::sizeText(*png), "8x8");
    EXPECT_EQ(picture::firstColour(*png), "#ff0000");
}

TEST_F(QtImageCodecTest, ReadsPicturesOfUnusualProportions) {
    for (const picture::Size size : {picture::Size{.width = 1, .height = 1},
                                     {.width = 20'000, .height = 10},
                                     {.width = 10, .height = 20'000}})
        for (const char* format : {"png", "tiff", "jpeg", "bmp"}) {
            const auto original = picture::inFormat(format, size);
            EXPECT_TRUE(codec.isImage(original)) << format;
            EXPECT_TRUE(codec.png(original)) << format;
            EXPECT_TRUE(codec.tiff(original)) << format;
        }
}

TEST_F(QtImageCodecTest, ReadsAPhotographOfEightThousandPixelsAcross) {
    const auto photograph = picture::inFormat("jpeg", {.width = 7680, .height = 4320});

    EXPECT_TRUE(codec.tiff(photograph));
}

TEST_F(QtImageCodecTest, APictureOfMoreThan64MebipixelsIsNone) {
    EXPECT_TRUE(codec.isImage(picture::pngClaiming({.width = 8192, .height = 8192})));
    EXPECT_FALSE(codec.isImage(picture::pngClaiming({.width = 8192, .height = 8193})));
    EXPECT_FALSE(codec.isImage(picture::pngClaiming({.width = 60'000, .height = 60'000})));
    EXPECT_FALSE(codec.isImage(picture::pngClaiming({.width = 0x7FFFFFFF, .height = 0x7FFFFFFF})));
    EXPECT_FALSE(codec.isImage(picture::pngClaiming({.width = -1, .height = -1})));
    EXPECT_FALSE(codec.isImage(picture::pngClaiming({.width = 0, .height = 10})));
    EXPECT_FALSE(codec.png(picture::pngClaiming({.width = 60'000, .height = 60'000})));
    EXPECT_FALSE(codec.tiff(picture::pngClaiming({.width = 60'000, .height = 60'000})));
}

TEST_F(QtImageCodecTest, APictureOfMoreThanAMillionPixelsAcrossIsNone) {
    EXPECT_TRUE(codec.isImage(picture::pngClaiming({.width = 1'000'000, .height = 1})));
    EXPECT_FALSE(codec.isImage(picture::pngClaiming({.width = 1'000'001, .height = 1})));
    EXPECT_FALSE(codec.isImage(picture::pngClaiming({.width = 1, .height = 1'000'001})));
}

TEST_F(QtImageCodecTest, DoesNotTakeTheHeadersWordForTheContents) {
    const auto hollow = picture::pngClaiming({.width = 4000, .height = 4000});

    EXPECT_TRUE(codec.isImage(hollow));
    EXPECT_FALSE(codec.png(picture::beginning(hollow, 0.9)));
}

TEST_F(QtImageCodecTest, APictureThatBreaksOffDoesNotDecode) {
    std::vector<Bytes> pictures = {picture::gif(),
                                   picture::tiffWithPixelsLast({.width = 300, .height = 200})};
    for (const char* format : {"png", "tiff", "jpeg", "webp", "bmp"})
        pictures.push_back(picture::inFormat(format, {.width = 300, .height = 200}));

    for (const auto& whole : pictures) {
        ASSERT_TRUE(codec.png(whole)) << whole.view().substr(0, 4);
        for (const double part : {0.0, 0.01, 0.1, 0.5, 0.9, 0.99})
            EXPECT_FALSE(codec.png(picture::beginning(whole, part))) << whole.view().substr(0, 4) << part;
    }
}

TEST_F(QtImageCodecTest, APngWithAFlippedByteDoesNotDecode) {
    const auto png = picture::inFormat("png", {.width = 60, .height = 40});

    for (const std::size_t fromEnd : {5U, 20U, 100U})
        EXPECT_FALSE(codec.png(picture::flipped(png, png.size() - fromEnd)));
}

TEST_F(QtImageCodecTest, AlwaysSurvivesDamage) {
    std::mt19937 random(1);
    for (const char* format : {"png", "tiff", "jpeg", "webp", "bmp", "gif"}) {
        const bool isGif = std::string_view(format) == "gif";
        const auto whole = isGif ? picture::gif() : picture::inFormat(format, {.width = 60, .height = 40});
        for (int round = 0; round < 60; ++round) {
            auto damaged = whole;
            for (int i = 0; i < 3; ++i)
                damaged = picture::flipped(damaged, random() % std::min<std::size_t>(damaged.size(), 600));
            const auto png = codec.png(damaged);
            EXPECT_TRUE(!png || codec.isImage(*png));
        }
    }
}

TEST_F(QtImageCodecTest, MakesEveryFormOfAPictureThatClaimsANegativeDensity) {
    std::string bmp(picture::inFormat("bmp", {.width = 60, .height = 40}).view());
    for (const std::size_t highestByte : {41U, 45U}) bmp.at(highestByte) = '\x80';

    const auto png = codec.png(Bytes(bmp));

    ASSERT_TRUE(png);
    EXPECT_TRUE(codec.tiff(*png));
    EXPECT_TRUE(codec.tiff(Bytes(bmp)));
}

TEST_F(QtImageCodecTest, APictureGivesNothingMoreOnceItsTimeIsUp) {
    char byte = 0;
    PictureSource inTime("picture");
    PictureSource late("picture", std::chrono::milliseconds(0));

    EXPECT_EQ(inTime.read(&byte, 1), 1);
    EXPECT_EQ(late.read(&byte, 1), 0);
    EXPECT_TRUE(late.gaveNothing());
}

TEST_F(QtImageCodecTest, KnowsNoFormatThatNoProgramShouldPutOnAPasteboard) {
    for (const char* text : {"<svg xmlns='http://www.w3.org/2000/svg' width='1' height='1'/>", "P1 1 1 1",
                             "/* XPM */ static char * x[] = {\"1 1 1 1\", \"a c #000\", \"a\"};"})
        EXPECT_FALSE(codec.isImage(Bytes(text))) << text;
}

TEST_F(QtImageCodecTest, LooksAtRegularFilesOnly) {
    const TemporaryFolder folder;
    const Path file = folder.path() / "picture";
    std::ofstream(file) << picture::gif().view();
    std::filesystem::create_symlink(file, folder.path() / "link");
    ASSERT_EQ(::mkfifo((folder.path() / "fifo").c_str(), 0600), 0);

    EXPECT_TRUE(codec.isImage(file));
    EXPECT_FALSE(codec.isImage(folder.path() / "link"));
    EXPECT_FALSE(codec.isImage(folder.path() / "fifo"));
    EXPECT_FALSE(codec.isImage(folder.path()));
}

TEST_F(QtImageCodecTest, AFileLargerThanAnyCopyIsNoPicture) {
    constexpr std::uintmax_t most = 256U << 20U;
    const TemporaryFolder folder;
    const Path file = folder.path() / "picture";
    std::ofstream(file) << picture::gif().view();

    std::filesystem::resize_file(file, most);
    EXPECT_TRUE(codec.isImage(file));
    std::filesystem::resize_file(file, most + 1);
    EXPECT_FALSE(codec.isImage(file));
}

TEST_F(QtImageCodecTest, APictureWhoseSizeComesAfter17MebibytesIsNone) {
    const auto jpeg = picture::inFormat("jpeg", {.width = 60, .height = 40});
    const auto after = [&](std::size_t segments) {
        std::string bytes("\xFF\xD8");
        while (segments-- > 0) bytes += "\xFF\xE2\xFF\xFF" + std::string(65'533, 'x');
        return Bytes(bytes + std::string(jpeg.view().substr(2)));
    };

    EXPECT_TRUE(codec.isImage(after(255)));
    EXPECT_TRUE(codec.png(after(255)));
    EXPECT_FALSE(codec.isImage(after(280)));
    EXPECT_FALSE(codec.png(after(280)));
}

TEST_F(QtImageCodecTest, WorksOnSeveralThreadsAtOnce) {
    std::vector<std::optional<Bytes>> results(4);
    std::vector<std::thread> threads;
    threads.reserve(results.size());
    for (auto& result : results)
        threads.emplace_back(
            [&] { result = codec.png(picture::inFormat("tiff", {.width = 300, .height = 200})); });
    for (auto& thread : threads) thread.join();

    for (const auto& result : results) {
        ASSERT_TRUE(result);
        EXPECT_EQ(result, results.front());
    }
}

}  // namespace
}  // namespace nettlecap
