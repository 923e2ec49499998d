#include "platform/linux/x11/X11Keyboard.h"

#include <algorithm>

namespace nettlecap {

namespace {

bool isPaste(const KeyEvent& event) {
    return event.keyCode == keyCode::v && event.flags == modifier::command;
}

std::optional<xcb_keycode_t> firstOf(const HeldKeys& keys) {
    for (std::size_t key = 0; key < keys.size(); ++key)
        if (keys[key]) return static_cast<xcb_keycode_t>(key);
    return std::nullopt;
}

}  // namespace

X11Keyboard::X11Keyboard(Parts parts) : parts_(parts), typist_(parts.inquiry, parts.keys) {}

bool X11Keyboard::post(std::span<const KeyEvent> events) {
    if (!typist_.isAvailable() || !parts_.inquiry.canAnswer()) return false;
    std::vector<KeyEvent> meant(events.begin(), events.end());
    std::optional<xcb_window_t> primaryReader;
    if (std::any_of(meant.begin(), meant.end(), isPaste)) {
        const auto target = parts_.workspace.frontmostApplication().value_or(RunningApplication());
        const PasteChord chord = pasteChord(target);
        for (KeyEvent& event : meant)
            if (isPaste(event)) event = {chord.keyCode, chord.flags, event.isDown};
        if (chord.pastesPrimary) primaryReader = static_cast<xcb_window_t>(target.handle);
    }
    const auto strokes = strokesFor(meant);
    if (!strokes) return false;
    // Without a text there the keys paste what the user has selected, as if typed by hand.
    if (primaryReader) parts_.pasteboard.lendAsPrimary(*primaryReader);
    bool wasTyped = false;
    parts_.hotKeys.standAside(chordsOf(*strokes), [&] { wasTyped = typist_.type(*strokes); });
    return wasTyped;
}

bool X11Keyboard::isTrusted(bool) { return typist_.isAvailable(); }

ModifierFlags X11Keyboard::modifiersDown() const {
    if (!parts_.inquiry.canAnswer()) return 0;
    const auto keys = typist_.keysDown();
    return keys ? parts_.keys.flagsOf(parts_.keys.modifiersOf(*keys)) : 0;
}

PasteChord X11Keyboard::pasteChord(const RunningApplication& target) const {
    const WindowClass window = parts_.workspace.windowClassOf(target);
    return PasteChord::of(window, parts_.entries.find(window));
}

/// Of each event's modifiers only what changes is typed, and all are up again at the end.
std::optional<X11Keyboard::Strokes> X11Keyboard::strokesFor(std::span<const KeyEvent> events) const {
    const auto layout = parts_.keys.layoutInUse();
    Strokes strokes;
    HeldKeys held;
    const auto hold = [&](const HeldKeys& wanted) {
        for (std::size_t key = 0; key < held.size(); ++key)
            if (held[key] != wanted[key]) strokes.push_back({static_cast<xcb_keycode_t>(key), wanted[key]});
        held = wanted;
    };
    for (const KeyEvent& event : events) {
        const auto key = firstOf(parts_.keys.keysOf(event.keyCode, layout));
        const auto modifiers = keysFor(event.flags);
        if (!key || !modifiers) return std::nullopt;
        hold(*modifiers);
        strokes.push_back({*key, event.isDown});
    }
    hold({});
    return strokes;
}

/// Each key that goes down, with the modifiers that are down by then.
KeyGrabs X11Keyboard::chordsOf(const Strokes& strokes) const {
    KeyGrabs chords;
    HeldKeys held;
    for (const X11Typist::Stroke& stroke : strokes) {
        if (stroke.isDown)
            chords.insert({stroke.key, static_cast<std::uint16_t>(parts_.keys.modifiersOf(held))});
        held.set(stroke.key, stroke.isDown);
    }
    return chords;
}

std::optional<HeldKeys> X11Keyboard::keysFor(ModifierFlags flags) const {
    const auto modifiers = parts_.keys.modifiersFor(flags);
    if (!modifiers) return std::nullopt;
    HeldKeys keys;
    for (std::uint32_t bit = 1; bit <= *modifiers; bit <<= 1U) {
        if ((*modifiers & bit) == 0) continue;
        if (const auto key = firstOf(parts_.keys.keysOfModifiers(bit))) keys.set(*key);
    }
    return keys;
}

}  // namespace nettlecap
