#pragma once

#include "capture/ClipboardOriginResolver.h"
#include "platform/InputEvents.h"
#include "platform/Time.h"
#include "platform/Workspace.h"

namespace nettlecap {

/// Credits each change of the pasteboard to an application. The pasteboard does not say
/// who wrote to it, so this goes by what the user did just before: copy keys and clicks,
/// and which application is or was in front.
class SourceAttribution {
public:
    struct Ports {
        Workspace& workspace;
        EventMonitors& events;
        Scheduler& scheduler;
        Clock& clock;
    };

    static constexpr Seconds recentExternalApplicationValidity{5.0};

    /// The ports must outlive this.
    explicit SourceAttribution(Ports ports) : ports_(ports) {}

    void startMonitoringLocalInteractions();
    void startTrackingExternalApplications();

    /// Never absent: "Outro dispositivo" when nothing tells. Uses up the pending gesture.
    std::string consumeSource(const PasteboardTypes& pasteboardTypes);
    void forgetLocalCopy() { originResolver_.pendingLocalCopy.reset(); }

private:
    /// In the event's handler: the gesture's time is that of the event.
    void recordLocalInteraction(std::optional<std::string> sourceApplication);
    void rememberExternalApplication(const RunningApplication& application);
    std::optional<std::string> inferredLocalSource(const PasteboardTypes& pasteboardTypes,
                                                   Uptime uptime) const;
    bool isNettlecap(const RunningApplication& application) const;

    Ports ports_;
    ClipboardOriginResolver originResolver_;
    std::optional<RecentExternalApplication> recentExternalApplication_;
    std::optional<Subscription> copyKeyMonitor_;
    std::optional<Subscription> mouseMonitor_;
    std::optional<Subscription> localInteractionMonitor_;
    Subscription applicationActivationObserver_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
