#pragma once

#include "platform/Keyboard.h"

namespace nettlecap {

/// Types ⌘V into the application in front, and knows whether it may.
class PasteService {
public:
    /// The keyboard must outlive the service.
    explicit PasteService(Keyboard& keyboard) : keyboard_(keyboard) {}

    void postPasteKeystroke();                          ///< nothing happens where the system refuses
    bool isTrusted(bool prompt);                        ///< may ask the user with `prompt`
    bool areAnyPressed(ModifierFlags modifiers) const;  ///< of ⌘ ⌥ ⌃ ⇧, now

private:
    Keyboard& keyboard_;
};

}  // namespace nettlecap
