#include "capture/PasteService.h"

#include <array>

namespace nettlecap {

void PasteService::postPasteKeystroke() {
    static constexpr std::array keystroke = {
        KeyEvent{.keyCode = keyCode::v, .flags = modifier::command, .isDown = true},
        KeyEvent{.keyCode = keyCode::v, .flags = modifier::command, .isDown = false},
    };
    // Without it the content still is on the pasteboard, for a ⌘V by hand.
    (void)keyboard_.post(keystroke);
}

bool PasteService::isTrusted(bool prompt) { return keyboard_.isTrusted(prompt); }

bool PasteService::areAnyPressed(ModifierFlags modifiers) const {
    return (keyboard_.modifiersDown() & modifiers & modifier::all) != 0;
}

}  // namespace nettlecap
