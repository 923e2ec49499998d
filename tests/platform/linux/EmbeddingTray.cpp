#include "platform/linux/EmbeddingTray.h"

#include <array>

namespace nettlecap::test {

namespace {

constexpr const char* selection = "_NET_SYSTEM_TRAY_S0";
constexpr std::uint32_t requestDock = 0;  // SYSTEM_TRAY_REQUEST_DOCK, the first number is the time

xcb_visualid_t visualWithAlpha(const xcb_screen_t& screen) {
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths))
        if (depths.data->depth == 32) return xcb_depth_visuals_iterator(depths.data).data->visual_id;
    return XCB_NONE;
}

}  // namespace

EmbeddingTray::EmbeddingTray(Kind kind) : bar_(xcb_generate_id(xcb())) {
    const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(xcb())).data;
    const xcb_visualid_t visual = kind == Kind::translucent ? visualWithAlpha(*screen) : screen->root_visual;
    const auto depth = static_cast<std::uint8_t>(kind == Kind::translucent ? 32 : screen->root_depth);
    const auto colours = xcb_generate_id(xcb());
    xcb_create_colormap(xcb(), XCB_COLORMAP_ALLOC_NONE, colours, screen->root, visual);
    const std::uint32_t ground = kind == Kind::blue ? 0x0000FF : 0;
    const std::array<std::uint32_t, 4> values{ground, 0, 1, colours};  // unmanaged
    xcb_create_window(
        xcb(), depth, bar_, screen->root, 100, 0, side, side, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
        XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values.data());
    if (kind == Kind::translucent)
        xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window(), atom("_NET_SYSTEM_TRAY_VISUAL"),
                            XCB_ATOM_VISUALID, 32, 1, &visual);
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

void EmbeddingTray::resizeIcon(std::uint32_t width, std::uint32_t height) {
    const std::array<std::uint32_t, 2> size{width, height};
    xcb_configure_window(xcb(), bar_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
    xcb_configure_window(xcb(), icon_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
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
