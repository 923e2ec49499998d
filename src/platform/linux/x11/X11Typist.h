#pragma once

#include "platform/linux/x11/X11Inquiry.h"
#include "platform/linux/x11/X11KeyTable.h"

#include <span>

namespace nettlecap {

/// Types keys as if they came from a keyboard (XTEST), whatever is held on the real ones:
/// modifiers are lifted before and pressed again after. Other keys that are down are lifted
/// for good: as long as a hot key's is down, all that is typed goes to whoever grabbed it.
/// What is only locked stays so.
class X11Typist {
public:
    struct Stroke {
        xcb_keycode_t key = 0;
        bool isDown = true;
    };

    X11Typist(X11Inquiry& inquiry, X11KeyTable& keys);

    bool isAvailable() const { return hasTest_; }  ///< the server has XTEST
    /// All or none. False: the server does not answer.
    bool type(std::span<const Stroke> strokes);
    /// All that is down, on whatever keyboard. Absent: the server does not answer.
    std::optional<HeldKeys> keysDown() const;

private:
    HeldKeys keysThatShiftLevels() const;
    std::optional<HeldKeys> keysHeldByHand() const;
    void send(xcb_keycode_t key, bool isDown) const;
    void sendAll(const HeldKeys& keys, bool isDown) const;

    X11Inquiry& inquiry_;
    X11KeyTable& keys_;
    bool hasTest_;
    bool hasDevices_;  // the server can tell its keyboards apart
};

}  // namespace nettlecap
