#include "platform/contracts/EventMonitorsContract.h"
#include "platform/contracts/HotKeyServiceContract.h"
#include "platform/contracts/KeyboardContract.h"
#include "platform/contracts/WorkspaceContract.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeHotKeyService.h"
#include "platform/fake/FakeKeyboard.h"
#include "platform/fake/FakeWorkspace.h"

#include <algorithm>

namespace nettlecap {
namespace {

class FakeWorkspaceHarness final : public WorkspaceHarness {
public:
    Workspace& workspace() override { return workspace_; }
    void bringToFront(const std::string& application) override { workspace_.activate(named(application)); }
    void bringThisProgramToFront() override { workspace_.activate(workspace_.current()); }
    void quit(const std::string& application) override { workspace_.terminate(named(application)); }
    bool runUntil(const std::function<bool()>& condition) override { return condition(); }

private:
    static RunningApplication named(const std::string& name) {
        return {.processIdentifier = 7, .localizedName = name};
    }

    FakeWorkspace workspace_;
};

class FakeKeyboardHarness final : public KeyboardHarness {
public:
    Keyboard& keyboard() override { return keyboard_; }
    void hold(ModifierFlags modifiers) override { keyboard_.setModifiersDown(modifiers); }
    int pastes() override {
        const auto isPress = [](const KeyEvent& event) {
            return event == KeyEvent{keyCode::v, modifier::command, true};
        };
        return static_cast<int>(std::ranges::count_if(keyboard_.typed(), isPress));
    }
    bool runUntil(const std::function<bool()>& condition) override { return condition(); }

private:
    FakeKeyboard keyboard_;
};

class FakeEventMonitorsHarness final : public EventMonitorsHarness {
public:
    EventMonitors& monitors() override { return monitors_; }
    void copy(Target target) override { send(target, {InputKind::keyDown, modifier::command, keyCode::c}); }
    void cut(Target target) override { send(target, {InputKind::keyDown, modifier::command, keyCode::x}); }
    void click(Target target, Button button) override {
        send(target, {.kind = button == Button::left ? InputKind::leftMouseDown : InputKind::rightMouseDown});
    }
    bool runUntil(const std::function<bool()>& condition) override { return condition(); }

private:
    void send(Target target, const InputEvent& event) {
        if (target == Target::thisProgram)
            monitors_.sendLocal(event);
        else
            monitors_.sendGlobal(event);
    }

    FakeEventMonitors monitors_;
};

class FakeHotKeyServiceHarness final : public HotKeyServiceHarness {
public:
    HotKeyService& service() override { return service_; }
    void press(const Shortcut& shortcut) override { service_.press(shortcut); }
    void release(const Shortcut& shortcut) override { service_.release(shortcut); }
    bool take(const Shortcut& shortcut) override {
        for (const auto& [reference, request] : service_.registered())
            if (Shortcut(request.keyCode, request.modifiers) == shortcut) return false;
        service_.take(shortcut);
        return true;
    }
    void giveBack(const Shortcut& shortcut) override { service_.giveBack(shortcut); }
    bool runUntil(const std::function<bool()>& condition) override { return condition(); }

private:
    FakeHotKeyService service_;
};

INSTANTIATE_TEST_SUITE_P(Fake, WorkspaceContract, testing::Values([]() -> std::unique_ptr<WorkspaceHarness> {
                             return std::make_unique<FakeWorkspaceHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, KeyboardContract, testing::Values([]() -> std::unique_ptr<KeyboardHarness> {
                             return std::make_unique<FakeKeyboardHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, EventMonitorsContract,
                         testing::Values([]() -> std::unique_ptr<EventMonitorsHarness> {
                             return std::make_unique<FakeEventMonitorsHarness>();
                         }));

INSTANTIATE_TEST_SUITE_P(Fake, HotKeyServiceContract,
                         testing::Values([]() -> std::unique_ptr<HotKeyServiceHarness> {
                             return std::make_unique<FakeHotKeyServiceHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
