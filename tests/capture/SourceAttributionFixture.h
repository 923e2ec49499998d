#pragma once

#include "capture/SourceAttribution.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeWorkspace.h"

#include <gmock/gmock.h>

namespace nettlecap {

inline const InputEvent copyKey{
    .kind = InputKind::keyDown, .flags = modifier::command, .keyCode = keyCode::c};
inline const InputEvent leftClick{.kind = InputKind::leftMouseDown};
inline const InputEvent rightClick{.kind = InputKind::rightMouseDown};
inline const RunningApplication notes{
    .processIdentifier = 1, .localizedName = "Notas", .bundleIdentifier = "org.notas"};
inline const RunningApplication safari{
    .processIdentifier = 2, .localizedName = "Safari", .bundleIdentifier = "com.apple.Safari"};
inline const RunningApplication itself{
    .processIdentifier = 4242, .localizedName = "Nettlecap", .bundleIdentifier = "com.nettlecap.Nettlecap"};
inline const PasteboardTypes webTypes{"public.utf8-plain-text", "com.apple.webarchive"};

/// A main loop that is busy until the test says otherwise.
class LateScheduler final : public Scheduler {
public:
    void runPosted() {
        for (const auto& task : std::exchange(posted_, {})) task();
    }

    void post(Task task) override { posted_.push_back(std::move(task)); }
    void after(Seconds, Task task) override { posted_.push_back(std::move(task)); }
    Subscription every(Seconds, Task) override { return {}; }

private:
    std::vector<Task> posted_;
};

/// Attribution among made-up programs. It is made, not started.
class SourceAttributionFixture : public testing::Test {
protected:
    void start() {
        attribution->startMonitoringLocalInteractions();
        attribution->startTrackingExternalApplications();
    }
    void sendGlobal(const InputEvent& event) {
        events.sendGlobal(event);
        time.advance(Seconds::zero());
    }
    void sendLocal(const InputEvent& event) {
        events.sendLocal(event);
        time.advance(Seconds::zero());
    }
    void activate(const RunningApplication& application) {
        workspace.activate(application);
        time.advance(Seconds::zero());
    }
    /// The source of a change that is seen now.
    std::string source(const PasteboardTypes& types = {"public.utf8-plain-text"}) {
        return attribution->consumeSource(types);
    }

    FakeTime time;
    FakeWorkspace workspace;
    FakeEventMonitors events;
    std::unique_ptr<SourceAttribution> attribution = std::make_unique<SourceAttribution>(
        SourceAttribution::Ports{.workspace = workspace, .events = events, .scheduler = time, .clock = time});
};

}  // namespace nettlecap
