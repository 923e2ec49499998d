#include "platform/linux/x11/X11Typist.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace nettlecap {

namespace {

constexpr std::uint32_t allModifiers = 0xFF;

bool hasExtension(xcb_connection_t* xcb, xcb_extension_t& extension) {
    const auto* data = xcb_get_extension_data(xcb, &extension);
    return data && data->present;
}

HeldKeys keysIn(std::span<const std::uint8_t> bits) {
    HeldKeys keys;
    for (std::size_t key = 0; key < std::min(keys.size(), bits.size() * 8); ++key)
        keys[key] = (bits[key / 8] & (1U << (key % 8))) != 0;
    return keys;
}

/// The one that the server has for every pair of keyboard and pointer, and that XTEST moves.
bool isTestKeyboard(const xcb_input_xi_device_info_t* device) {
    const std::string_view name(xcb_input_xi_device_info_name(device),
                                static_cast<std::size_t>(xcb_input_xi_device_info_name_length(device)));
    return name.ends_with("XTEST keyboard");
}

/// Nobody else's request comes between those of its life.
class ServerGrab {
public:
    explicit ServerGrab(xcb_connection_t* xcb) : xcb_(xcb) { xcb_grab_server(xcb_); }
    ~ServerGrab() {
        xcb_ungrab_server(xcb_);
        xcb_flush(xcb_);
    }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    xcb_connection_t* xcb_;
};

}  // namespace

X11Typist::X11Typist(X11Inquiry& inquiry, X11KeyTable& keys)
    : inquiry_(inquiry), keys_(keys), hasTest_(hasExtension(inquiry.xcb(), xcb_test_id)),
      hasDevices_(hasExtension(inquiry.xcb(), xcb_input_id)) {}

bool X11Typist::type(std::span<const Stroke> strokes) {
    if (!hasTest_ || !inquiry_.canAnswer()) return false;
    // Before the server is ours: the table asks over another connection.
    const auto locks = keys_.lockModifiers();
    const HeldKeys lockKeys = keys_.keysOfModifiers(locks);
    const HeldKeys modifiers = keys_.keysOfModifiers(allModifiers & ~locks) | keysThatShiftLevels();

    // Whoever holds keys by XTEST, such as a remote desktop, could let them go in between.
    const ServerGrab grab(inquiry_.xcb());
    const auto down = keysDown();
    const auto heldBefore = keysHeldByHand();
    if (!down || !inquiry_.canAnswer()) return false;
    sendAll(*down & (modifiers | ~lockKeys), false);
    for (const Stroke& stroke : strokes) send(stroke.key, stroke.isDown);
    sendAll(*down & modifiers, true);
    // To let go of a key that was lifted is no event, so our press would never end.
    const auto heldAfter = keysHeldByHand();
    if (heldBefore && heldAfter) sendAll(*down & modifiers & *heldBefore & ~*heldAfter, false);
    return true;
}

std::optional<HeldKeys> X11Typist::keysDown() const {
    const auto keymap = inquiry_.reply<xcb_query_keymap_reply_t>(xcb_query_keymap(inquiry_.xcb()).sequence);
    return keymap ? std::optional(keysIn(keymap->keys)) : std::nullopt;
}

/// AltGr and its like, which keymaps leave out of the modifier map.
HeldKeys X11Typist::keysThatShiftLevels() const {
    HeldKeys keys;
    const auto* setup = xcb_get_setup(inquiry_.xcb());
    const auto first = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
    const auto map = inquiry_.reply<xcb_get_keyboard_mapping_reply_t>(
        xcb_get_keyboard_mapping(inquiry_.xcb(), first, count).sequence);
    if (!map || map->keysyms_per_keycode == 0) return keys;
    const std::span symbols(xcb_get_keyboard_mapping_keysyms(map.get()),
                            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(map.get())));
    for (std::size_t i = 0; i < symbols.size(); ++i)
        if (symbols[i] == XKB_KEY_ISO_Level3_Shift || symbols[i] == XKB_KEY_ISO_Level5_Shift ||
            symbols[i] == XKB_KEY_Mode_switch)
            keys.set(first + i / map->keysyms_per_keycode);
    return keys;
}

/// On real keyboards, where a lifted key stays down.
std::optional<HeldKeys> X11Typist::keysHeldByHand() const {
    if (!hasDevices_) return std::nullopt;
    xcb_connection_t* xcb = inquiry_.xcb();
    const auto devices = inquiry_.reply<xcb_input_xi_query_device_reply_t>(
        xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL).sequence);
    if (!devices) return std::nullopt;
    std::vector<unsigned> questions;
    for (auto device = xcb_input_xi_query_device_infos_iterator(devices.get()); device.rem > 0;
         xcb_input_xi_device_info_next(&device)) {
        const bool isReal =
            device.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && !isTestKeyboard(device.data);
        const auto number = static_cast<std::uint8_t>(device.data->deviceid);
        if (isReal) questions.push_back(xcb_input_query_device_state(xcb, number).sequence);
    }
    HeldKeys held;
    for (const unsigned question : questions) {
        const auto state = inquiry_.reply<xcb_input_query_device_state_reply_t>(question);
        if (!state) continue;  // unplugged meanwhile
        for (auto part = xcb_input_query_device_state_classes_iterator(state.get()); part.rem > 0;
             xcb_input_input_state_next(&part)) {
            if (part.data->class_id != XCB_INPUT_INPUT_CLASS_KEY) continue;
            held |= keysIn(reinterpret_cast<const xcb_input_key_state_t*>(part.data)->keys);
        }
    }
    return held;
}

void X11Typist::send(xcb_keycode_t key, bool isDown) const {
    xcb_test_fake_input(inquiry_.xcb(), isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key, XCB_CURRENT_TIME,
                        XCB_WINDOW_NONE, 0, 0, 0);
}

void X11Typist::sendAll(const HeldKeys& keys, bool isDown) const {
    for (std::size_t key = 0; key < keys.size(); ++key)
        if (keys[key]) send(static_cast<xcb_keycode_t>(key), isDown);
}

}  // namespace nettlecap
