#pragma once

#include "model/ClipboardStore.h"
#include "platform/Images.h"
#include "platform/InputEvents.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"

namespace nettlecap {

/// Watches the general pasteboard, makes a history entry of every copy, and puts entries
/// and snippets back. What the program itself wrote is never captured.
class ClipboardMonitor {
public:
    struct Ports {
        Pasteboard& pasteboard;
        Scheduler& scheduler;
        Clock& clock;
        Identifiers& identifiers;
        FileSystem& files;
        ImageCodec& images;
        BackgroundWork& background;
        Workspace& workspace;
        EventMonitors& events;
    };

    /// What is on the pasteboard now is never captured. Ports and store must outlive the monitor.
    ClipboardMonitor(Ports ports, ClipboardStore& store, Task didCapture);

    void start();  ///< for good; a second call does nothing
    void poll();
    void setEnabled(bool enabled);  ///< changes made meanwhile are consumed
    void setCaptureImages(bool captureImages);

    /// False: the item lacks its content, and the pasteboard keeps what it had; or the
    /// pasteboard refused the write.
    bool putOnPasteboard(const ClipboardEntry& entry);
    bool putOnPasteboard(const SavedSnippet& snippet);

private:
    Ports ports_;
    ClipboardStore& store_;
    Task didCapture_;
};

}  // namespace nettlecap
