#pragma once

#include "platform/BundleInfo.h"
#include "platform/LoginItem.h"
#include "platform/Platform.h"
#include "platform/SoftwareUpdater.h"
#include "platform/Windows.h"
#include "platform/linux/LinuxApplication.h"
#include "platform/linux/LinuxStatusItem.h"

namespace nettlecap {

/// The whole Linux backend, on X11. Needs a QGuiApplication; the model that uses it goes first.
class LinuxPlatform {
public:
    /// Whether there is a display to work on. Ask before making the QGuiApplication: Qt
    /// ends the process where there is none.
    static Result<Done> findDisplay();

    /// The instance must outlive the backend.
    static Result<std::unique_ptr<LinuxPlatform>> open(const SingleInstance& instance,
                                                       LinuxApplication::Drawings drawings);
    ~LinuxPlatform();

    /// The ports, which live as long as the backend.
    Platform platform();
    /// What the windows need beside those.
    Screens& screens();
    NativeWindows& windows();
    LinuxStatusItem& statusItem();
    /// And what belongs to the program as it is installed.
    LoginItem& loginItem();
    const BundleInfo& bundle() const;
    MakeSoftwareUpdater makeUpdater();  ///< what it makes must go before the backend

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
