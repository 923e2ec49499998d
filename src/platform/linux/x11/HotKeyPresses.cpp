#include "platform/linux/x11/HotKeyPresses.h"

namespace nettlecap {

void HotKeyPresses::press(xcb_keycode_t key, xcb_timestamp_t time, std::optional<HotKeyReference> hotKey) {
    if (released_ && released_->key == key && released_->time == time) return released_.reset();
    settle();
    missing_.reset(key);
    if (hotKey && held_.emplace(key, hotKey).second) tell_(*hotKey, HotKeyEvent::pressed);
}

void HotKeyPresses::release(xcb_keycode_t key, xcb_timestamp_t time) {
    settle();
    if (isRepeatClear_) return end(key);
    if (held_.contains(key)) released_ = {key, time};
}

void HotKeyPresses::settle() {
    if (const auto release = std::exchange(released_, std::nullopt)) end(release->key);
}

void HotKeyPresses::look(const HeldKeys& down) {
    std::vector<xcb_keycode_t> lost;
    HeldKeys missing;
    for (const auto& [key, hotKey] : held_) {
        if (down[key]) continue;
        // Its release may be on its way: nothing tells how far events and answers have got.
        if (missing_[key])
            lost.push_back(key);
        else
            missing.set(key);
    }
    missing_ = missing;
    for (const xcb_keycode_t key : lost) end(key);
}

void HotKeyPresses::forget(HotKeyReference hotKey) {
    for (auto& [key, held] : held_)
        if (held == hotKey) held.reset();
}

void HotKeyPresses::end(xcb_keycode_t key) {
    const auto held = held_.find(key);
    if (held == held_.end()) return;
    const auto hotKey = held->second;
    held_.erase(held);
    missing_.reset(key);
    if (hotKey) tell_(*hotKey, HotKeyEvent::released);
}

}  // namespace nettlecap
