#pragma once

#include "platform/Workspace.h"
#include "platform/linux/x11/X11Inquiry.h"
#include "platform/linux/x11/X11RawInput.h"

#include <set>

class QTimer;

namespace nettlecap {

/// What goes to this program's windows is told by Qt, everything else by the devices.
///
/// A click on a window behind is told when the window manager has brought that to the
/// front, so that whoever then asks the workspace hears whose click it was.
class X11EventMonitors final : public EventMonitors {
public:
    /// The connection has the program's icon in a tray, of which Qt knows nothing.
    X11EventMonitors(Workspace& workspace, X11Inquiry& inquiry, X11RawInput& raw,
                     const X11Connection& connection);
    ~X11EventMonitors() override;

    std::optional<Subscription> addGlobal(std::uint32_t mask, Handler handler) override;
    std::optional<Subscription> addLocal(std::uint32_t mask, Handler handler) override;

private:
    class LocalInput;

    void selectRawInput();
    void receive(const InputEvent& event);
    void receiveClick(const InputEvent& event);
    void tellPendingClick();
    bool isThisProgramInFront() const;
    bool mayComeToFront(const std::vector<xcb_window_t>& clicked) const;
    std::vector<xcb_window_t> windowsUnderPointer() const;

    Workspace& workspace_;
    X11Inquiry& inquiry_;
    X11RawInput& raw_;
    const X11Connection& connection_;
    std::unique_ptr<LocalInput> local_;
    std::multiset<std::uint32_t> globalMasks_;
    Signal<InputEvent> global_;
    std::optional<InputEvent> pendingClick_;
    std::unique_ptr<QTimer> activationDelay_;
    Subscription rawInput_;
    Subscription activations_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
