#include "capture/SourceAttribution.h"

namespace nettlecap {

namespace {

constexpr std::string_view ownName = "Nettlecap";

constexpr auto keys = static_cast<std::uint32_t>(InputKind::keyDown);
constexpr auto clicks = static_cast<std::uint32_t>(InputKind::leftMouseDown) |
                        static_cast<std::uint32_t>(InputKind::rightMouseDown);

/// ⌘C or ⌘X, whatever else is held.
bool isCopyKey(const InputEvent& event) {
    return (event.flags & modifier::command) != 0 &&
           (event.keyCode == keyCode::c || event.keyCode == keyCode::x);
}

}  // namespace

void SourceAttribution::startMonitoringLocalInteractions() {
    if (copyKeyMonitor_) return;
    copyKeyMonitor_ = ports_.events.addGlobal(keys, guard_([this](const InputEvent& event) {
                                                  if (isCopyKey(event)) recordLocalInteraction(std::nullopt);
                                              }));
    mouseMonitor_ = ports_.events.addGlobal(
        clicks, guard_([this](const InputEvent&) { recordLocalInteraction(std::nullopt); }));
    localInteractionMonitor_ =
        ports_.events.addLocal(keys | clicks, guard_([this](const InputEvent& event) {
                                   if (event.kind != InputKind::keyDown || isCopyKey(event))
                                       recordLocalInteraction(std::string(ownName));
                               }));
}

void SourceAttribution::startTrackingExternalApplications() {
    if (const auto application = ports_.workspace.frontmostApplication())
        rememberExternalApplication(*application);
    if (applicationActivationObserver_) return;
    applicationActivationObserver_ =
        ports_.workspace.onActivation(guard_([this](const RunningApplication& application) {
            ports_.scheduler.post(guard_([this, application] { rememberExternalApplication(application); }));
        }));
}

std::string SourceAttribution::consumeSource(const PasteboardTypes& pasteboardTypes) {
    const Uptime uptime = ports_.clock.uptime();
    return originResolver_.consumeSource(uptime, inferredLocalSource(pasteboardTypes, uptime));
}

void SourceAttribution::recordLocalInteraction(std::optional<std::string> sourceApplication) {
    if (!sourceApplication)
        if (const auto application = ports_.workspace.frontmostApplication())
            sourceApplication = application->localizedName;
    const Uptime uptime = ports_.clock.uptime();
    ports_.scheduler.post(guard_([this, source = std::move(sourceApplication), uptime] {
        if (source && !source->empty())
            originResolver_.pendingLocalCopy = LocalCopyGesture{*source, uptime};
        else
            originResolver_.pendingLocalCopy.reset();
    }));
}

void SourceAttribution::rememberExternalApplication(const RunningApplication& application) {
    if (isNettlecap(application)) return;
    recentExternalApplication_ = {.localizedName = application.localizedName,
                                  .bundleIdentifier = application.bundleIdentifier,
                                  .uptime = ports_.clock.uptime()};
}

std::optional<std::string> SourceAttribution::inferredLocalSource(const PasteboardTypes& pasteboardTypes,
                                                                  Uptime uptime) const {
    const auto front = ports_.workspace.frontmostApplication();
    if (!front) return std::nullopt;  // nobody to be the browser
    if (!isNettlecap(*front))
        return ClipboardOriginResolver::activeApplicationSource(front->localizedName,
                                                                front->bundleIdentifier);

    if (auto browser = ClipboardOriginResolver::inferredLocalSource(front->localizedName,
                                                                    front->bundleIdentifier, pasteboardTypes))
        return browser;
    if (!recentExternalApplication_) return std::nullopt;
    const Seconds age = uptime - recentExternalApplication_->uptime;
    if (age < Seconds::zero() || age > recentExternalApplicationValidity) return std::nullopt;
    return ClipboardOriginResolver::inferredLocalSource(recentExternalApplication_->localizedName,
                                                        recentExternalApplication_->bundleIdentifier,
                                                        pasteboardTypes);
}

bool SourceAttribution::isNettlecap(const RunningApplication& application) const {
    // Two absent identifiers count as one program: neither is an installed application.
    return application.bundleIdentifier == ports_.workspace.current().bundleIdentifier ||
           application.localizedName == ownName;
}

}  // namespace nettlecap
