#include "capture/ClipboardMonitor.h"

#include "capture/ClipboardPayloadResolver.h"
#include "model/ClipboardContentFingerprint.h"
#include "model/SensitiveContentDetector.h"
#include "model/Text.h"

namespace nettlecap {

namespace {

/// Looked for after PNG and TIFF, in this order.
constexpr std::array<std::string_view, 6> otherImageTypes = {
    "public.jpeg", "public.heic", "public.heif", "public.webp", "com.compuserve.gif", "com.microsoft.bmp"};

PasteboardItem::Form form(std::string_view type, Bytes bytes) {
    return {.type = PasteboardType(type), .bytes = [bytes = std::move(bytes)] { return bytes; }};
}

std::optional<Bytes> contentsOf(const FileReading& file) {
    const auto bytes = file();
    return bytes ? std::optional(*bytes) : std::nullopt;
}

SourceAttribution::Ports attributionPorts(const ClipboardMonitor::Ports& ports) {
    return {.workspace = ports.workspace,
            .events = ports.events,
            .scheduler = ports.scheduler,
            .clock = ports.clock};
}

}  // namespace

ClipboardMonitor::ClipboardMonitor(Ports ports, ClipboardStore& store, Task didCapture)
    : ports_(ports), store_(store), didCapture_(std::move(didCapture)),
      lastChangeCount_(ports.pasteboard.changeCount()), attribution_(attributionPorts(ports)),
      imageCaptures_(
          ports.images, ports.background,
          [this](const PendingImageCapture& capture, const Bytes& png) { didConvert(capture, png); }) {
    ports_.pasteboard.setInterest(interest());
}

void ClipboardMonitor::start() {
    if (timer_) return;
    attribution_.startMonitoringLocalInteractions();
    attribution_.startTrackingExternalApplications();
    poll();
    timer_ = ports_.scheduler.every(pollInterval, guard_([this] { poll(); }));
    pasteboardChanges_ = ports_.pasteboard.onChange(guard_([this] { poll(); }));
}

void ClipboardMonitor::poll() {
    const std::int64_t changeCount = ports_.pasteboard.changeCount();
    if (changeCount == lastChangeCount_) return;
    lastChangeCount_ = changeCount;
    if (!isEnabled_) return;

    const auto offered = ports_.pasteboard.types().value_or(std::vector<PasteboardType>());
    const PasteboardTypes types(offered.begin(), offered.end());
    if (types.contains(ownType) || sharesMember(types, ignoredTypes))
        attribution_.forgetLocalCopy();
    else
        captureChange(types);
}

void ClipboardMonitor::setEnabled(bool enabled) {
    if (enabled == isEnabled_) return;
    // While still off, to consume what was copied since the last poll.
    if (enabled) poll();
    isEnabled_ = enabled;
    ports_.pasteboard.setInterest(interest());
}

void ClipboardMonitor::setCaptureImages(bool captureImages) {
    if (captureImages == captureImages_) return;
    captureImages_ = captureImages;
    ports_.pasteboard.setInterest(interest());
}

PasteboardInterest ClipboardMonitor::interest() const {
    if (!isEnabled_) return {};
    PasteboardInterest result;
    result.groups.push_back({PasteboardType(pasteboardType::text)});
    if (captureImages_) {
        std::vector<PasteboardType> images{PasteboardType(pasteboardType::png),
                                           PasteboardType(pasteboardType::tiff)};
        images.insert(images.end(), otherImageTypes.begin(), otherImageTypes.end());
        result.groups.push_back(std::move(images));
    }
    result.unlessOffered.emplace_back(ownType);
    result.unlessOffered.insert(result.unlessOffered.end(), ignoredTypes.begin(), ignoredTypes.end());
    return result;
}

void ClipboardMonitor::captureChange(const PasteboardTypes& types) {
    const std::string source = attribution_.consumeSource(types);
    const auto text = ports_.pasteboard.string(pasteboardType::text);
    const bool isTextFirst = ClipboardPayloadResolver::shouldCaptureTextFirst(text, source, types);
    if (captureImages_ && !isTextFirst)
        captureFirstImage(source, text);
    else if (text)
        captureText(*text, source);
}

void ClipboardMonitor::captureFirstImage(const std::string& sourceApplication,
                                         const std::optional<std::string>& text) {
    const Date date = ports_.clock.now();
    if (const auto png = ports_.pasteboard.data(pasteboardType::png)) {
        captureImage(*png, sourceApplication, date);
        return;
    }
    auto source = ports_.pasteboard.data(pasteboardType::tiff);
    for (const auto type : otherImageTypes) {
        if (source) break;
        source = ports_.pasteboard.data(type);
        if (source && !ports_.images.isImage(*source)) source.reset();
    }
    if (source)
        imageCaptures_.enqueueImageCapture(
            {.sourceData = *source, .sourceApplication = sourceApplication, .capturedAt = date});
    else if (text)
        captureText(*text, sourceApplication);
}

void ClipboardMonitor::captureText(const std::string& text, const std::string& sourceApplication) {
    const std::string normalized = text::normalized(text);
    if (normalized.empty()) return;
    const std::string fingerprint =
        ClipboardContentFingerprint::fingerprint(normalized, ClipboardContentKind::text);
    const Date now = ports_.clock.now();
    const auto sensitiveKind = SensitiveContentDetector::classify(text);
    if (!store_.promoteExistingEntry({.fingerprint = fingerprint,
                                      .sourceApplication = sourceApplication,
                                      .at = now,
                                      .replacementText = text,
                                      .sensitiveKind = sensitiveKind})) {
        store_.insertChronologically({.id = ports_.identifiers.next(),
                                      .kind = ClipboardContentKind::text,
                                      .text = text,
                                      .createdAt = now,
                                      .sourceApplication = sourceApplication,
                                      .fingerprint = fingerprint,
                                      .sensitiveKind = sensitiveKind});
        store_.trimIfNeeded();
        store_.persist();
    }
    didCapture_();
}

void ClipboardMonitor::didConvert(const PendingImageCapture& capture, const Bytes& png) {
    // Switched off since it was copied: the user no longer wants it kept.
    if (!isEnabled_ || !captureImages_) return;
    captureImage(png, capture.sourceApplication, capture.capturedAt);
}

void ClipboardMonitor::captureImage(const Bytes& png, const std::optional<std::string>& sourceApplication,
                                    Date date) {
    if (png.empty()) return;
    const auto mutation = store_.captureImage(png, sourceApplication, date);
    if (mutation.kind != ClipboardStoreMutation::Kind::unchanged) didCapture_();
}

bool ClipboardMonitor::putOnPasteboard(const ClipboardEntry& entry) {
    PasteboardItem item;
    if (entry.kind == ClipboardContentKind::text) {
        if (!entry.text) return false;
        item.forms.push_back(form(pasteboardType::text, Bytes(*entry.text)));
    } else {
        const auto path = store_.imageFile(entry);
        if (!path) return false;
        const auto file = ports_.files.open(*path);
        if (!file) return false;
        // Most pictures are stepped over: one is read for whoever asks for it, and the TIFF made for
        // the few that ask for that.
        item.forms.push_back({.type = PasteboardType(pasteboardType::png),
                              .bytes = [file = *file] { return contentsOf(file); }});
        if (ports_.images.isImage(*path))
            item.forms.push_back({.type = PasteboardType(pasteboardType::tiff),
                                  .bytes = [&images = ports_.images, file = *file]() -> std::optional<Bytes> {
                                      const auto png = contentsOf(file);
                                      return png ? images.tiff(*png) : std::nullopt;
                                  }});
    }
    return write(std::move(item), entry.id);
}

bool ClipboardMonitor::putOnPasteboard(const SavedSnippet& snippet) {
    return write({.forms = {form(pasteboardType::text, Bytes(snippet.content))}}, snippet.id);
}

bool ClipboardMonitor::write(PasteboardItem item, Uuid id) {
    item.forms.push_back(form(ownType, Bytes(id.text())));
    ports_.pasteboard.clearContents();
    const bool isWritten = ports_.pasteboard.write(std::move(item));
    lastChangeCount_ = ports_.pasteboard.changeCount();
    return isWritten;
}

}  // namespace nettlecap
