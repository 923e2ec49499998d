#pragma once

#include "platform/linux/x11/X11Session.h"

namespace nettlecap::test {

/// Another program's window in front, the pointer in it, and all monitors on.
class MonitoredSessionTest : public X11SessionTest {
protected:
    using Chord = std::initializer_list<xcb_keycode_t>;

    MonitoredSessionTest() {
        user.moveInto(other_.id());
        startMonitors();
    }

    void startMonitors() {
        global_ = session.monitors->addGlobal(~0U, [this](const InputEvent& event) {
            told_ += letter(event);
            tellers_.push_back(front());
        });
        local_ =
            session.monitors->addLocal(~0U, [this](const InputEvent& event) { toldHere_ += letter(event); });
    }
    static char letter(const InputEvent& event) {
        if (event.kind == InputKind::leftMouseDown) return 'l';
        if (event.kind == InputKind::rightMouseDown) return 'r';
        return event.keyCode == 8 ? 'c' : event.keyCode == 7 ? 'x' : '?';
    }
    /// What was told up to now. A right click on the other program shows that nothing more
    /// is on its way.
    std::string told() {
        user.click(3);
        EXPECT_TRUE(waitFor([&] { return told_.ends_with('r'); })) << told_;
        auto all = std::exchange(told_, {});
        if (!all.empty()) all.pop_back();
        return all;
    }
    std::string told(Chord chord) {
        user.type(chord);
        return told();
    }

    OtherWindow& other_ = session.openNamed("Editor");
    std::string told_;                  // a letter for each event: c, x, l, r
    std::string toldHere_;              // by the local monitor
    std::vector<std::string> tellers_;  // who was in front when it was told
    std::optional<Subscription> global_;
    std::optional<Subscription> local_;
};

}  // namespace nettlecap::test
