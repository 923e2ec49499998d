#include "capture/ImageCaptureQueue.h"
#include "platform/linux/Pictures.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/QtBackgroundWork.h"
#include "platform/linux/QtImageCodec.h"
#include "platform/linux/ThreadedBackgroundWork.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

enum class Threads { ofQt, ofTheStandardLibrary };

/// The queue with the decoders that it has in the program, and with its threads or others that
/// the thread sanitizer understands.
class PictureConversionTest : public testing::TestWithParam<Threads> {
protected:
    void enqueue(const char* format, int width) {
        queue->enqueueImageCapture({.sourceData = picture::inFormat(format, {.width = width, .height = 50}),
                                    .sourceApplication = format,
                                    .capturedAt = {}});
    }
    std::unique_ptr<ImageCaptureQueue> makeQueue() {
        return std::make_unique<ImageCaptureQueue>(
            codec, background, [this](const PendingImageCapture& capture, const Bytes& png) {
                converted.push_back(*capture.sourceApplication + " " + picture::sizeText(png));
            });
    }

    bool waitUntil(const std::function<bool()>& condition) {
        return runMainLoopUntil([&] {
            if (standard) standard->runTasks();
            return condition();
        });
    }

    QtImageCodec codec;
    std::vector<std::string> converted;
    std::unique_ptr<QtBackgroundWork> qt =
        GetParam() == Threads::ofQt ? std::make_unique<QtBackgroundWork>() : nullptr;
    std::unique_ptr<ThreadedBackgroundWork> standard =
        qt ? nullptr : std::make_unique<ThreadedBackgroundWork>();
    BackgroundWork& background = qt ? static_cast<BackgroundWork&>(*qt) : *standard;
    std::unique_ptr<ImageCaptureQueue> queue = makeQueue();
};

INSTANTIATE_TEST_SUITE_P(Qt, PictureConversionTest, testing::Values(Threads::ofQt));
INSTANTIATE_TEST_SUITE_P(Standard, PictureConversionTest, testing::Values(Threads::ofTheStandardLibrary));

TEST_P(PictureConversionTest, KeepsTheOrderOfCopiesWhateverEachTakes) {
    std::vector<std::string> copied;
    for (int round = 1; round <= 10; ++round)
        for (const char* format : {"webp", "bmp", "tiff", "jpeg"}) {
            const int width = round % 3 == 0 ? 2000 : round;
            enqueue(format, width);
            copied.push_back(std::string(format) + " " + std::to_string(width) + "x50");
        }

    ASSERT_TRUE(waitUntil([&] { return converted.size() == copied.size(); }));
    EXPECT_EQ(converted, copied);
}

TEST_P(PictureConversionTest, APictureThatCannotBeConvertedHoldsUpNoOther) {
    queue->enqueueImageCapture(
        {.sourceData = picture::beginning(picture::inFormat("tiff", {.width = 300, .height = 200}), 0.5),
         .sourceApplication = "tiff",
         .capturedAt = {}});
    enqueue("jpeg", 60);

    ASSERT_TRUE(waitUntil([&] { return !converted.empty(); }));
    EXPECT_EQ(converted, std::vector<std::string>{"jpeg 60x50"});
}

TEST_P(PictureConversionTest, MakesFormsOfAPictureBesideAConversion) {
    const Bytes png = picture::inFormat("png", {.width = 300, .height = 200});
    int made = 0;
    for (int round = 0; round < 10; ++round) {
        enqueue("tiff", 1000);
        background.run([&, png]() -> Task {
            return [&made, tiff = codec.tiff(png)] { made += tiff.has_value() ? 1 : 0; };
        });
    }

    ASSERT_TRUE(waitUntil([&] { return made == 10 && converted.size() == 10; }));
}

TEST_P(PictureConversionTest, AQueueMayGoWhileItConverts) {
    for (int round = 0; round < 20; ++round) {
        enqueue("jpeg", 3000);
        enqueue("jpeg", 3000);
        queue = makeQueue();
    }
    enqueue("bmp", 60);

    ASSERT_TRUE(waitUntil([&] { return !converted.empty(); }));
    EXPECT_EQ(converted, std::vector<std::string>{"bmp 60x50"});
}

}  // namespace
}  // namespace nettlecap
