#include "capture/ImageCaptureQueue.h"
#include "platform/fake/FakeBackgroundWork.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeImageCodec.h"
#include "platform/fake/FakeTime.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class ImageCaptureQueueTest : public testing::Test {
protected:
    ImageCaptureQueueTest() {
        queue = std::make_unique<ImageCaptureQueue>(
            codec, background, [this](const PendingImageCapture& capture, const Bytes& png) {
                converted.push_back(*capture.sourceApplication + " " + std::string(png.view().substr(8)));
                if (onConverted) onConverted();
            });
    }

    void enqueue(std::string data, std::string source) {
        queue->enqueueImageCapture(
            {.sourceData = Bytes(std::move(data)), .sourceApplication = std::move(source), .capturedAt = {}});
    }
    void convertNext() {
        background.runNext();
        time.advance(0s);
    }

    FakeTime time;
    FakeBackgroundWork background{time};
    FakeFileSystem files;
    FakeImageCodec codec{files};
    std::vector<std::string> converted;
    Task onConverted;
    std::unique_ptr<ImageCaptureQueue> queue;
};

TEST_F(ImageCaptureQueueTest, ConvertsOneAtATimeInTheOrderOfCopying) {
    enqueue("TIFF:a", "Notas");
    enqueue("TIFF:b", "Fotos");
    enqueue("JPEG:c", "Mapas");

    EXPECT_EQ(background.waitingJobs(), 1U);
    convertNext();
    EXPECT_THAT(converted, ElementsAre("Notas a"));

    EXPECT_EQ(background.waitingJobs(), 1U);
    convertNext();
    convertNext();
    EXPECT_THAT(converted, ElementsAre("Notas a", "Fotos b", "Mapas c"));
    EXPECT_EQ(background.waitingJobs(), 0U);
}

TEST_F(ImageCaptureQueueTest, DoesNotConvertBeforeTheLastOneIsBack) {
    enqueue("TIFF:a", "Notas");
    enqueue("TIFF:b", "Fotos");

    background.runNext();
    EXPECT_EQ(background.waitingJobs(), 0U);

    time.advance(0s);
    EXPECT_EQ(background.waitingJobs(), 1U);
}

TEST_F(ImageCaptureQueueTest, DoesNotDecodeOnTheMainThread) {
    enqueue("TIFF:a", "Notas");

    time.advance(1s);

    EXPECT_EQ(codec.decodings(), 0);
    EXPECT_THAT(converted, IsEmpty());
}

TEST_F(ImageCaptureQueueTest, DropsWhatIsOfferedWhileTooMuchWaits) {
    // The same bytes are held once, however often they wait.
    const Bytes large(std::string(ImageCaptureQueue::mostWaiting / 16 + 1, 'x'));
    const auto enqueueLarge = [&] { queue->enqueueImageCapture({large, "Hostil", {}}); };
    for (int i = 0; i < 100; ++i) enqueueLarge();

    enqueue("TIFF:a", "Notas");  // there is room for a small one, and it has its turn

    int conversions = 0;
    while (background.waitingJobs() > 0) {
        ++conversions;
        convertNext();
    }
    EXPECT_EQ(conversions, 1 + 15 + 1);
    EXPECT_EQ(converted.back(), "Notas a");
    enqueueLarge();
    EXPECT_EQ(background.waitingJobs(), 1U);
}

TEST_F(ImageCaptureQueueTest, DropsWhatCannotBeConvertedAndGoesOn) {
    enqueue("TIFF:BROKEN", "Notas");
    enqueue("", "Mapas");
    enqueue("TIFF:b", "Fotos");

    convertNext();
    convertNext();
    convertNext();

    EXPECT_THAT(converted, ElementsAre("Fotos b"));
}

TEST_F(ImageCaptureQueueTest, KeepsTheOrderWhenAListenerAddsOne) {
    onConverted = [this] {
        if (converted.size() == 1) enqueue("TIFF:c", "Mapas");
    };
    enqueue("TIFF:a", "Notas");
    enqueue("TIFF:b", "Fotos");

    convertNext();
    EXPECT_EQ(background.waitingJobs(), 1U);
    convertNext();
    convertNext();

    EXPECT_THAT(converted, ElementsAre("Notas a", "Fotos b", "Mapas c"));
}

TEST_F(ImageCaptureQueueTest, StartsAnewAfterItRanEmpty) {
    enqueue("TIFF:a", "Notas");
    convertNext();

    enqueue("TIFF:b", "Fotos");
    convertNext();

    EXPECT_THAT(converted, ElementsAre("Notas a", "Fotos b"));
}

TEST_F(ImageCaptureQueueTest, MayGoAwayBeforeAConversionBegins) {
    enqueue("TIFF:a", "Notas");
    enqueue("TIFF:b", "Fotos");

    queue.reset();
    convertNext();

    EXPECT_THAT(converted, IsEmpty());
    EXPECT_EQ(background.waitingJobs(), 0U);
}

TEST_F(ImageCaptureQueueTest, MayGoAwayBeforeAConversionIsBack) {
    enqueue("TIFF:a", "Notas");
    enqueue("TIFF:b", "Fotos");

    background.runNext();
    queue.reset();
    time.advance(0s);

    EXPECT_THAT(converted, IsEmpty());
    EXPECT_EQ(background.waitingJobs(), 0U);
}

}  // namespace
}  // namespace nettlecap
