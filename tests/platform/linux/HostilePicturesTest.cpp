#include "platform/linux/HostilePictures.h"

#include "platform/linux/ChildProcess.h"
#include "platform/linux/Pictures.h"
#include "platform/linux/QtImageCodec.h"

#include <QElapsedTimer>
#include <QImageReader>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <sys/resource.h>

namespace nettlecap {
namespace {

using picture::Hostile;

#ifdef __SANITIZE_ADDRESS__
constexpr bool isSanitized = true;
#elif defined(__has_feature)
constexpr bool isSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool isSanitized = false;
#endif

/// What a picture of 64 Mi pixels takes that is in order: decoded, 256 MiB; in the hands of a
/// JPEG's decoder, up to 512 MiB more; and its own bytes twice. Sanitizers take as much again.
constexpr long mostMebibytes = isSanitized ? 2400 : 1200;

long peakInMebibytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss >> 10;
}

/// So that a test that fails does no harm itself. A sanitizer needs addresses without end.
void limitMemory() {
    constexpr rlimit limit{.rlim_cur = 4UL << 30U, .rlim_max = 4UL << 30U};
    if (!isSanitized) ::setrlimit(RLIMIT_AS, &limit);
}

/// Says first whether all was well, and then what it took.
std::string decode(const Hostile& hostile) {
    limitMemory();
    QImageReader::setAllocationLimit(256);  // as in the program
    const Bytes bytes = hostile.make();
    const QtImageCodec codec;
    const long before = peakInMebibytes();
    QElapsedTimer time;
    time.start();
    const bool isImage = codec.isImage(bytes);
    const auto look = time.restart();
    const auto png = codec.png(bytes);
    const auto conversion = time.elapsed();
    const bool isWell =
        peakInMebibytes() <= mostMebibytes && (!png || isImage) && (!png || codec.isImage(*png));
    return std::string(isWell ? "well" : "not well") + (png ? ", a picture" : ", none") + " of " +
           std::to_string(bytes.size() >> 10U) + " KiB; look " + std::to_string(look) + " ms, conversion " +
           std::to_string(conversion) + " ms, peak " + std::to_string(peakInMebibytes()) + " MiB, before " +
           std::to_string(before);
}

/// In every format, a small one.
std::vector<Bytes> samples() {
    std::vector<Bytes> result = {picture::gif(), picture::animatedGif(),
                                 picture::tiffWithPixelsLast({.width = 9, .height = 7})};
    for (const char* format : {"png", "tiff", "jpeg", "webp", "bmp"})
        result.push_back(picture::inFormat(format, {.width = 9, .height = 7}));
    return result;
}

/// What is made of each is a picture or nothing; the answer tells how many there were.
std::string decodeAll(const std::vector<std::string>& pictures) {
    limitMemory();
    const QtImageCodec codec;
    for (const std::string& bytes : pictures) {
        const auto png = codec.png(Bytes(bytes));
        if (png && !codec.isImage(*png)) return "no picture";
        static_cast<void>(codec.tiff(Bytes(bytes)));
    }
    return peakInMebibytes() <= mostMebibytes ? std::to_string(pictures.size()) : "too much memory";
}

TEST(DamagedPictureTest, MayBreakOffAnywhere) {
    for (const Bytes& sample : samples()) {
        std::vector<std::string> pictures;
        for (std::size_t size = 0; size < sample.size(); ++size)
            pictures.emplace_back(sample.view().substr(0, size));

        EXPECT_EQ(inChild([&] { return decodeAll(pictures); }), std::to_string(sample.size()));
    }
}

TEST(DamagedPictureTest, MayHaveAnyByteWrong) {
    for (const Bytes& sample : samples()) {
        std::vector<std::string> pictures;
        for (std::size_t position = 0; position < sample.size(); ++position)
            for (const char other :
                 {'\0', '\x7F', '\x80', '\xFF', static_cast<char>(~sample.view()[position])}) {
                pictures.emplace_back(sample.view());
                pictures.back()[position] = other;
            }

        EXPECT_EQ(inChild([&] { return decodeAll(pictures); }), std::to_string(5 * sample.size()));
    }
}

TEST(DamagedPictureTest, MayBeNoiseAfterARightBeginning) {
    std::mt19937 random(1);
    for (const Bytes& sample : samples())
        for (const std::size_t kept : {8U, 12U, 33U, 100U}) {
            std::vector<std::string> pictures(100, std::string(sample.view().substr(0, kept)));
            for (std::string& bytes : pictures)
                while (bytes.size() < 2000) bytes += static_cast<char>(random());

            EXPECT_EQ(inChild([&] { return decodeAll(pictures); }), "100");
        }
}

class HostilePictureTest : public testing::TestWithParam<Hostile> {};

TEST_P(HostilePictureTest, TakesNoMoreThanAGoodOneMay) {
    const std::string said = inChild([] { return decode(GetParam()); });

    EXPECT_TRUE(said.starts_with("well")) << GetParam().name << ": " << said;
    std::cout << GetParam().name << ": " << said << '\n';
}

INSTANTIATE_TEST_SUITE_P(Png, HostilePictureTest, testing::ValuesIn(picture::hostilePngs()));
INSTANTIATE_TEST_SUITE_P(Tiff, HostilePictureTest, testing::ValuesIn(picture::hostileTiffs()));
INSTANTIATE_TEST_SUITE_P(Other, HostilePictureTest, testing::ValuesIn(picture::hostilePictures()));

}  // namespace

namespace picture {
void PrintTo(const Hostile& hostile, std::ostream* out) { *out << hostile.name; }
}  // namespace picture

}  // namespace nettlecap
