#pragma once

#include "platform/HotKeyService.h"
#include "platform/linux/x11/X11KeyTable.h"

#include <map>

namespace nettlecap {

/// Makes one press and one release for each time that a hot key goes down, from what the
/// server sends while such keys are held. A release is told of the key alone, whatever
/// modifiers went up before it.
class HotKeyPresses {
public:
    /// `kind` is one of HotKeyEvent's. May change whatever it likes.
    using Teller = std::function<void(HotKeyReference, std::uint32_t kind)>;

    explicit HotKeyPresses(Teller teller) : tell_(std::move(teller)) {}

    /// A key that repeats is pressed again and again. A server that cannot do better lets it
    /// go before each time, at the same moment; this one can.
    void setRepeatClear(bool isRepeatClear) { isRepeatClear_ = isRepeatClear; }

    /// Absent: with these modifiers the key is none of ours.
    void press(xcb_keycode_t key, xcb_timestamp_t time, std::optional<HotKeyReference> hotKey);
    void release(xcb_keycode_t key, xcb_timestamp_t time);
    /// A release awaits what else came at its moment: call `settle` once that is here.
    bool isUnsettled() const { return released_.has_value(); }
    void settle();

    /// The keys that are down, looked at from time to time while `any`: a release that never
    /// came, since a grab was broken or a keyboard taken away, is told at the second look.
    void look(const HeldKeys& down);

    /// Its release is not told any more, and its key does not count as pressed anew.
    void forget(HotKeyReference hotKey);

    bool any() const { return !held_.empty(); }
    bool anyBut(xcb_keycode_t key) const { return held_.size() > held_.count(key); }

private:
    struct Release {
        xcb_keycode_t key;
        xcb_timestamp_t time;
    };

    void end(xcb_keycode_t key);

    Teller tell_;
    bool isRepeatClear_ = false;
    std::map<xcb_keycode_t, std::optional<HotKeyReference>> held_;  // absent: forgotten
    std::optional<Release> released_;
    HeldKeys missing_;  // held, but up at the last look
};

}  // namespace nettlecap
