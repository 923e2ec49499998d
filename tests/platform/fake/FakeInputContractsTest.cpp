#include "platform/contracts/EventMonitorsContract.h"
#include "platform/contracts/WorkspaceContract.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeWorkspace.h"

namespace nettlecap {
namespace {

class FakeWorkspaceHarness final : public WorkspaceHarness {
public:
    Workspace& workspace() override { return workspace_; }
    void bringToFront(const std::string& application) override {
        workspace_.activate({.processIdentifier = 7, .localizedName = application});
    }
    void bringThisProgramToFront() override { workspace_.activate(workspace_.current()); }
    bool runUntil(const std::function<bool()>& condition) override { return condition(); }

private:
    FakeWorkspace workspace_;
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

INSTANTIATE_TEST_SUITE_P(Fake, WorkspaceContract, testing::Values([]() -> std::unique_ptr<WorkspaceHarness> {
                             return std::make_unique<FakeWorkspaceHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, EventMonitorsContract,
                         testing::Values([]() -> std::unique_ptr<EventMonitorsHarness> {
                             return std::make_unique<FakeEventMonitorsHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
