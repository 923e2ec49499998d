#pragma once

#include "platform/Keyboard.h"
#include "platform/linux/x11/PasteChord.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/linux/x11/X11Pasteboard.h"
#include "platform/linux/x11/X11Typist.h"
#include "platform/linux/x11/X11Workspace.h"

namespace nettlecap {

/// The keyboard by XTEST, which asks no user for leave. ⌘V becomes the keys that the
/// application in front takes for it; all else is typed with Super, Alt, Control and Shift.
class X11Keyboard final : public Keyboard {
public:
    /// All must outlive this.
    struct Parts {
        X11Inquiry& inquiry;
        X11KeyTable& keys;
        X11Workspace& workspace;
        DesktopEntries& entries;
        X11Pasteboard& pasteboard;
        X11HotKeys& hotKeys;
    };

    explicit X11Keyboard(Parts parts);

    bool post(std::span<const KeyEvent> events) override;

    bool isTrusted(bool prompt) override;
    /// What keys hold, not what is latched or locked. Nothing, where the server does not
    /// answer: who waits for hands to leave the keyboard is not to wait for ever, and what is
    /// held all the same is lifted when keys are typed.
    ModifierFlags modifiersDown() const override;

private:
    using Strokes = std::vector<X11Typist::Stroke>;

    PasteChord pasteChord(const RunningApplication& target) const;
    std::optional<Strokes> strokesFor(std::span<const KeyEvent> events) const;
    KeyGrabs chordsOf(const Strokes& strokes) const;
    std::optional<HeldKeys> keysFor(ModifierFlags flags) const;

    Parts parts_;
    X11Typist typist_;
};

}  // namespace nettlecap
