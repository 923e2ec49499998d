#include "platform/linux/EmbeddingTray.h"

#include <array>

namespace nettlecap::test {

namespace {

constexpr const char* selection = "_NET_SYSTEM_TRAY_S0";
constexpr std::uint32_t requestDock = 0;  // SYSTEM_TRAY_REQUEST_DOCK, the first number is the time

}  // namespace

EmbeddingTray::EmbeddingTray() : bar_(xcb_generate_id(xcb())) {
    const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(xcb())).data;
    const std::array<std::uint32_t, 2> values{screen->black_pixel, 1};  // unmanaged
    xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, bar_, screen->root, 100, 0, side, side, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    xcb_map_window(xcb(), bar_);
    xcb_set_selection_owner(xcb(), window(), atom(selection), serverTime());
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = screen->root;
    message.type = atom("MANAGER");
    message.data.data32[1] = atom(selection);
    message.data.data32[2] = window();
    xcb_send_event(xcb(), 0, screen->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    sync();
}

void EmbeddingTray::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE) return;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type != atom("_NET_SYSTEM_TRAY_OPCODE") || message.data.data32[1] != requestDock) return;
    icon_ = message.data.data32[2];
    const std::array<std::uint32_t, 2> size{side, side};
    xcb_reparent_window(xcb(), icon_, bar_, 0, 0);
    xcb_configure_window(xcb(), icon_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
    xcb_map_window(xcb(), icon_);
    sync();
}

}  // namespace nettlecap::test
