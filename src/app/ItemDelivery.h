#pragma once

#include "app/AppState.h"
#include "app/AppWindows.h"
#include "capture/ClipboardMonitor.h"
#include "capture/PasteService.h"

namespace nettlecap {

/// Puts an item back on the pasteboard and, where wanted and allowed, into the application
/// that the user was working in.
class ItemDelivery {
public:
    struct Collaborators {
        AppState& state;
        ClipboardMonitor& monitor;
        PasteService& paste;
        SearchPanel& searchPanel;
        Workspace& workspace;
        Scheduler& scheduler;
    };

    explicit ItemDelivery(Collaborators with) : with_(with) {}

    void trackApplications();  ///< from now on it is known which application is to be pasted into
    void copy(const ClipboardEntry& entry, std::optional<bool> pasteImmediately);
    void copy(const SavedSnippet& snippet, std::optional<bool> pasteImmediately);
    void performPasteIfNeeded(bool paste);

private:
    void deliver(std::optional<bool> pasteImmediately);
    void remember(const RunningApplication& application);

    Collaborators with_;
    bool hasPromptedForAccessibility_ = false;
    std::optional<RunningApplication> lastExternalApplication_;
    Subscription activationObserver_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
