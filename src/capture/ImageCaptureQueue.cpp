#include "capture/ImageCaptureQueue.h"

#include "capture/ClipboardImageConverter.h"

namespace nettlecap {

void ImageCaptureQueue::enqueueImageCapture(PendingImageCapture capture) {
    const std::size_t waiting = waiting_ + capture.sourceData.size();
    if (waiting > mostWaiting) return;
    waiting_ = waiting;
    pendingImageCaptures_.push_back(std::move(capture));
    processNextImageCaptureIfNeeded();
}

void ImageCaptureQueue::processNextImageCaptureIfNeeded() {
    if (isConverting_ || pendingImageCaptures_.empty()) return;
    const PendingImageCapture capture = std::move(pendingImageCaptures_.front());
    pendingImageCaptures_.pop_front();
    waiting_ -= capture.sourceData.size();
    isConverting_ = true;
    const DidFinish didFinish =
        guard_([this, capture](const std::optional<Bytes>& png) { finish(capture, png); });
    // The job may outlive this, so it knows only what it carries.
    background_.run([&images = images_, data = capture.sourceData, didFinish]() -> Task {
        return [didFinish, png = ClipboardImageConverter::pngData(data, images)] { didFinish(png); };
    });
}

void ImageCaptureQueue::finish(const PendingImageCapture& capture, const std::optional<Bytes>& png) {
    isConverting_ = false;
    if (png) didConvert_(capture, *png);
    processNextImageCaptureIfNeeded();
}

}  // namespace nettlecap
