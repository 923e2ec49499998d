#include "platform/contracts/EventMonitorsContract.h"
#include "platform/contracts/WorkspaceContract.h"
#include "platform/linux/x11/X11Session.h"

#include <map>

namespace nettlecap {
namespace {

using namespace test;

class X11WorkspaceHarness final : public WorkspaceHarness {
public:
    Workspace& workspace() override { return *session_.workspace; }
    void bringToFront(const std::string& application) override {
        auto& window = windows_[application];
        if (!window) window = &session_.openNamed(application);
        session_.user.activate(window->id());
    }
    void bringThisProgramToFront() override { session_.openOwn(); }
    void quit(const std::string& application) override { windows_.at(application)->quit(); }
    bool runUntil(const std::function<bool()>& condition) override { return waitFor(condition); }

private:
    X11Session session_;
    std::map<std::string, OtherWindow*> windows_;
};

class X11EventMonitorsHarness final : public EventMonitorsHarness {
public:
    EventMonitors& monitors() override { return *session_.monitors; }
    void copy(Target target) override { type(target, key::c); }
    void cut(Target target) override { type(target, key::x); }
    void click(Target target, Button button) override {
        session_.user.activate(windowOf(target));
        session_.user.moveInto(windowOf(target));
        session_.user.click(button == Button::left ? 1 : 3);
        waitForDevices();
    }
    bool runUntil(const std::function<bool()>& condition) override { return waitFor(condition); }

private:
    void type(Target target, xcb_keycode_t letter) {
        session_.user.activate(windowOf(target));
        session_.user.type({key::control, letter});
        waitForDevices();
    }
    xcb_window_t windowOf(Target target) const {
        return target == Target::thisProgram ? static_cast<xcb_window_t>(own_.winId()) : other_.id();
    }
    /// Nobody changes windows within a millisecond of a key.
    void waitForDevices() {
        ++sent_;
        EXPECT_TRUE(waitFor([this] { return received_ == sent_; }));
    }

    X11Session session_;
    OtherWindow& other_ = session_.openNamed("Editor");
    QWindow& own_ = session_.openOwn();
    int sent_ = 0;
    int received_ = 0;
    std::optional<Subscription> everything_ = session_.monitors->addGlobal(~0U, [](const InputEvent&) {});
    Subscription devices_ = session_.raw->onInput([this](const InputEvent&) { ++received_; });
};

INSTANTIATE_TEST_SUITE_P(X11, WorkspaceContract, testing::Values([]() -> std::unique_ptr<WorkspaceHarness> {
                             return std::make_unique<X11WorkspaceHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(X11, EventMonitorsContract,
                         testing::Values([]() -> std::unique_ptr<EventMonitorsHarness> {
                             return std::make_unique<X11EventMonitorsHarness>();
                         }));

}  // namespace
}  // namespace nettlecap
