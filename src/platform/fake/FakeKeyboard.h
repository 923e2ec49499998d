#pragma once

#include "platform/Keyboard.h"

#include <vector>

namespace nettlecap {

/// Types into a list. Trusted until a test says otherwise.
class FakeKeyboard final : public Keyboard {
public:
    void setModifiersDown(ModifierFlags modifiers) { modifiersDown_ = modifiers; }
    void setTrusted(bool trusted) { isTrusted_ = trusted; }
    void setRefusesPosts(bool refuses) { refusesPosts_ = refuses; }

    bool post(std::span<const KeyEvent> events) override {
        if (refusesPosts_) return false;
        typed_.insert(typed_.end(), events.begin(), events.end());
        return true;
    }
    bool isTrusted(bool prompt) override {
        prompts_.push_back(prompt);
        return isTrusted_;
    }
    ModifierFlags modifiersDown() const override { return modifiersDown_; }

    const std::vector<KeyEvent>& typed() const { return typed_; }
    const std::vector<bool>& prompts() const { return prompts_; }  ///< of each question for trust

private:
    ModifierFlags modifiersDown_ = 0;
    bool isTrusted_ = true;
    bool refusesPosts_ = false;
    std::vector<KeyEvent> typed_;
    std::vector<bool> prompts_;
};

}  // namespace nettlecap
