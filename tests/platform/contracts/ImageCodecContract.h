#pragma once

#include "platform/Images.h"

#include <gtest/gtest.h>

namespace nettlecap {

/// A codec to be tested, with pictures that it should know.
class ImageCodecHarness {
public:
    virtual ~ImageCodecHarness() = default;

    virtual ImageCodec& codec() = 0;
    virtual Bytes png() const = 0;
    virtual Bytes tiff() const = 0;
    virtual Bytes jpeg() const = 0;
    virtual Bytes damagedPng() const = 0;  ///< the header is right, the rest is not
    virtual Path file(const Bytes& contents) = 0;
    virtual Path missingFile() const = 0;
};

/// What every ImageCodec does. Instantiate it with a function that makes the harness.
class ImageCodecContract : public testing::TestWithParam<std::unique_ptr<ImageCodecHarness> (*)()> {
protected:
    static constexpr std::string_view pngSignature = "\x89PNG\r\n\x1a\n";

    std::unique_ptr<ImageCodecHarness> harness = GetParam()();
    ImageCodec& codec = harness->codec();
};

TEST_P(ImageCodecContract, KnowsAnImageByItsHeader) {
    EXPECT_TRUE(codec.isImage(harness->png()));
    EXPECT_TRUE(codec.isImage(harness->tiff()));
    EXPECT_TRUE(codec.isImage(harness->jpeg()));
    EXPECT_TRUE(codec.isImage(harness->damagedPng()));
}

TEST_P(ImageCodecContract, KnowsTheFileOfAnImageByItsHeader) {
    EXPECT_TRUE(codec.isImage(harness->file(harness->png())));
    EXPECT_TRUE(codec.isImage(harness->file(harness->damagedPng())));
    EXPECT_FALSE(codec.isImage(harness->file(Bytes("text"))));
    EXPECT_FALSE(codec.isImage(harness->file(Bytes())));
    EXPECT_FALSE(codec.isImage(harness->missingFile()));
}

TEST_P(ImageCodecContract, OtherBytesAreNoImage) {
    for (const char* text : {"", "P", "\x89PNG", "hello", "<svg></svg>"}) {
        EXPECT_FALSE(codec.isImage(Bytes(text))) << text;
        EXPECT_FALSE(codec.png(Bytes(text))) << text;
        EXPECT_FALSE(codec.tiff(Bytes(text))) << text;
    }
}

TEST_P(ImageCodecContract, MakesAPngOfEveryImage) {
    for (const Bytes& image : {harness->png(), harness->tiff(), harness->jpeg()}) {
        const auto png = codec.png(image);

        ASSERT_TRUE(png);
        EXPECT_TRUE(png->view().starts_with(pngSignature));
        EXPECT_TRUE(codec.isImage(*png));
    }
}

TEST_P(ImageCodecContract, MakesATiffOfEveryImage) {
    for (const Bytes& image : {harness->png(), harness->tiff(), harness->jpeg()}) {
        const auto tiff = codec.tiff(image);

        ASSERT_TRUE(tiff);
        EXPECT_FALSE(tiff->view().starts_with(pngSignature));
        EXPECT_TRUE(codec.isImage(*tiff));
    }
}

TEST_P(ImageCodecContract, APngSurvivesTheWayThroughATiff) {
    const auto there = codec.tiff(harness->png());
    ASSERT_TRUE(there);
    const auto back = codec.png(*there);
    ASSERT_TRUE(back);

    EXPECT_EQ(*codec.tiff(*back), *there);
}

TEST_P(ImageCodecContract, MakesNothingOfADamagedImage) {
    EXPECT_FALSE(codec.png(harness->damagedPng()));
    EXPECT_FALSE(codec.tiff(harness->damagedPng()));
}

}  // namespace nettlecap
