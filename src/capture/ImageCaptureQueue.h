#pragma once

#include "platform/Images.h"
#include "platform/Time.h"

#include <deque>

namespace nettlecap {

/// A picture that is still to be converted, with what was known when it was copied.
struct PendingImageCapture {
    Bytes sourceData;
    std::optional<std::string> sourceApplication;
    Date capturedAt;

    bool operator==(const PendingImageCapture&) const = default;
};

/// Converts pictures to PNG off the main thread, one at a time and in the order in which
/// they were copied. One that can't be converted is dropped without a word.
class ImageCaptureQueue {
public:
    /// What may wait, in bytes. A program that offers large pictures faster than they convert
    /// would take all memory, so those that go beyond are dropped.
    static constexpr std::size_t mostWaiting = std::size_t{1} << 30U;

    using DidConvert = std::function<void(const PendingImageCapture& capture, const Bytes& png)>;

    /// The ports must outlive this, the codec also the conversion under way.
    ImageCaptureQueue(const ImageCodec& images, BackgroundWork& background, DidConvert didConvert)
        : images_(images), background_(background), didConvert_(std::move(didConvert)) {}

    void enqueueImageCapture(PendingImageCapture capture);

private:
    using DidFinish = std::function<void(const std::optional<Bytes>& png)>;

    void processNextImageCaptureIfNeeded();
    void finish(const PendingImageCapture& capture, const std::optional<Bytes>& png);

    const ImageCodec& images_;
    BackgroundWork& background_;
    DidConvert didConvert_;
    std::deque<PendingImageCapture> pendingImageCaptures_;
    std::size_t waiting_ = 0;  // bytes
    bool isConverting_ = false;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
