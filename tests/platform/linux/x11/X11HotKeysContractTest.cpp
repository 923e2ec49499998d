#include "platform/contracts/HotKeyServiceContract.h"
#include "platform/linux/x11/HotKeySession.h"

namespace nettlecap {
namespace {

using namespace test;

class X11HotKeysHarness final : public HotKeyServiceHarness {
public:
    X11HotKeysHarness() {
        auto opened = X11HotKeys::open();
        EXPECT_TRUE(opened);
        service_ = std::move(*opened);
    }

    HotKeyService& service() override { return *service_; }
    void press(const Shortcut& shortcut) override {
        for (const auto& modifier : modifiers)
            if ((shortcut.second & modifier.flag) != 0) user_.press(modifier.key);
        user_.press(keyOf(shortcut));
    }
    void release(const Shortcut& shortcut) override {
        user_.release(keyOf(shortcut));
        for (const auto& modifier : modifiers)
            if ((shortcut.second & modifier.flag) != 0) user_.release(modifier.key);
    }
    bool take(const Shortcut& shortcut) override { return other_.take(keyOf(shortcut), bitsOf(shortcut)); }
    void giveBack(const Shortcut& shortcut) override { other_.giveBack(keyOf(shortcut), bitsOf(shortcut)); }
    bool runUntil(const std::function<bool()>& condition) override { return waitFor(condition); }

private:
    struct Modifier {
        std::uint32_t flag;
        xcb_keycode_t key;
        std::uint16_t bit;
    };

    static constexpr Modifier modifiers[] = {{hotKeyModifier::command, key::super, XCB_MOD_MASK_4},
                                             {hotKeyModifier::shift, key::shift, XCB_MOD_MASK_SHIFT},
                                             {hotKeyModifier::option, key::alt, XCB_MOD_MASK_1},
                                             {hotKeyModifier::control, key::control, XCB_MOD_MASK_CONTROL}};

    /// Where the us keyboard has it.
    static xcb_keycode_t keyOf(const Shortcut& shortcut) {
        static const std::map<KeyCode, xcb_keycode_t> keys{{18, 10}, {19, 11}, {9, key::v}, {37, 46}};
        return keys.at(shortcut.first);
    }
    static std::uint16_t bitsOf(const Shortcut& shortcut) {
        std::uint16_t bits = 0;
        for (const auto& modifier : modifiers)
            if ((shortcut.second & modifier.flag) != 0)
                bits = static_cast<std::uint16_t>(bits | modifier.bit);
        return bits;
    }

    DesktopUser user_;
    OtherGrabber other_;
    std::unique_ptr<X11HotKeys> service_;
};

INSTANTIATE_TEST_SUITE_P(X11, HotKeyServiceContract,
                         testing::Values([]() -> std::unique_ptr<HotKeyServiceHarness> {
                             return std::make_unique<X11HotKeysHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
