#pragma once

#include "platform/linux/x11/HotKeyPresses.h"
#include "platform/linux/x11/X11KeyGrabs.h"

class QTimer;

namespace nettlecap {

/// Hot keys as key grabs on the root window. They follow the keyboard: when its layout or
/// its modifiers change, every hot key moves to the key that carries its label then, and
/// one that finds its place taken waits for the next change.
class X11HotKeys final : public HotKeyService {
public:
    static constexpr Status alreadyInstalled = -9866;  ///< eventHandlerAlreadyInstalledErr

    /// Over a connection of its own, whose events stay in the server's order.
    static Result<std::unique_ptr<X11HotKeys>> open();
    ~X11HotKeys() override;

    Registered<HandlerReference> installHandler(Handler handler) override;  ///< one at a time
    void removeHandler(HandlerReference handler) override;
    Registered<HotKeyReference> registerHotKey(const HotKeyRequest& request) override;
    void unregisterHotKey(HotKeyReference hotKey) override;
    /// Runs what types these keys, which then go to whoever has the keyboard, hot keys or not.
    /// Other hot keys stay: the user may be quick.
    void standAside(const KeyGrabs& typed, const Task& type);
    bool isBehind() override { return connection_->hasMoreToTell(); }

private:
    explicit X11HotKeys(std::unique_ptr<X11Connection> connection);

    KeyGrabs grabsFor(const HotKeyRequest& request);
    void follow();
    void receive(const xcb_generic_event_t& event);
    void press(const xcb_key_press_event_t& event);
    void tell(HotKeyReference hotKey, std::uint32_t kind);
    void watchHeld();
    void settleLater();
    void look();
    void holdKeyboard(bool holds);

    std::unique_ptr<X11Connection> connection_;
    X11KeyTable table_;
    X11KeyGrabs grabs_;
    std::optional<std::pair<HandlerReference, Handler>> handler_;
    std::map<HotKeyReference, HotKeyRequest> hotKeys_;
    std::uint64_t lastReference_ = 0;
    std::uint32_t locks_ = 0;  // the modifiers that make no difference
    HotKeyPresses presses_;
    std::uint64_t releases_ = 0;
    bool holdsKeyboard_ = false;
    bool isLooking_ = false;
    std::unique_ptr<QTimer> watching_;
    std::unique_ptr<QTimer> settling_;
    Subscription events_;
    Subscription changes_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
