#include "platform/linux/x11/X11Bell.h"

#include "platform/linux/x11/DesktopUser.h"
#include "platform/linux/x11/XkbProtocol.h"

#include <gtest/gtest.h>

namespace nettlecap::test {
namespace {

TEST(X11BellTest, RingsAsLoudAsTheUserHasIt) {
    const auto connection = X11Connection::open();
    const auto desktop = X11Connection::open();
    ASSERT_TRUE(connection && desktop);
    xcb_connection_t* xcb = (*desktop)->xcb();
    const auto version =
        (*desktop)->waitFor<xcb_xkb_use_extension_reply_t>(xcb_xkb_use_extension(xcb, 1, 0).sequence);
    ASSERT_TRUE(version && version->supported);
    const std::uint8_t firstEvent = xcb_get_extension_data(xcb, &xcb_xkb_id)->first_event;
    const std::uint16_t bells = XCB_XKB_EVENT_TYPE_BELL_NOTIFY;
    xcb_xkb_select_events(xcb, XCB_XKB_ID_USE_CORE_KBD, bells, 0, bells, 0, 0, nullptr);
    ASSERT_TRUE((*desktop)->serverTime());
    std::vector<int> percents;
    const auto listening = (*desktop)->onEvent([&](const xcb_generic_event_t& event) {
        if (event.response_type != firstEvent || event.pad0 != XCB_XKB_BELL_NOTIFY) return;
        percents.push_back(reinterpret_cast<const xcb_xkb_bell_notify_event_t&>(event).percent);
    });
    X11Bell bell(**connection);

    bell.ring();

    const auto control =
        (*desktop)->waitFor<xcb_get_keyboard_control_reply_t>(xcb_get_keyboard_control(xcb).sequence);
    ASSERT_TRUE(control);
    ASSERT_TRUE(waitFor([&] { return percents.size() == 1; }));
    EXPECT_EQ(percents[0], control->bell_percent);
}

}  // namespace
}  // namespace nettlecap::test
