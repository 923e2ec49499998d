#pragma once

#include "platform/Platform.h"
#include "platform/Windows.h"

namespace nettlecap {

/// The whole Linux backend, on X11. Needs a QGuiApplication; the model that uses it goes
/// first.
class LinuxPlatform {
public:
    /// Whether there is a display to work on. Ask before making the QGuiApplication: Qt
    /// ends the process where there is none.
    static Result<Done> findDisplay();

    static Result<std::unique_ptr<LinuxPlatform>> open();
    ~LinuxPlatform();

    /// The ports, which live as long as the backend.
    Platform platform();
    /// What the windows need beside those.
    Screens& screens();
    NativeWindows& windows();

    /// The program is about to end: somebody else is to keep what it has on the clipboard.
    /// Runs the event loop for a moment.
    void handOver();
    /// The display is gone, and nothing will work any more.
    Subscription onLost(Task handler) const;

private:
    struct Parts;

    explicit LinuxPlatform(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts_;
};

}  // namespace nettlecap
