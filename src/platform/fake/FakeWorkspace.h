#pragma once

#include "platform/Workspace.h"

namespace nettlecap {

/// Nothing is in front until a test says what.
class FakeWorkspace final : public Workspace {
public:
    /// Brings the application to the front and tells of it.
    void activate(RunningApplication application) {
        frontmost_ = std::move(application);
        activated_.emit(RunningApplication(*frontmost_));
    }
    /// Tells nobody. Absent: nothing is in front, or the system does not tell.
    void setFrontmost(std::optional<RunningApplication> application) { frontmost_ = std::move(application); }
    void setCurrent(RunningApplication application) { current_ = std::move(application); }

    RunningApplication current() const override { return current_; }
    std::optional<RunningApplication> frontmostApplication() const override { return frontmost_; }
    Subscription onActivation(std::function<void(const RunningApplication&)> handler) override {
        return activated_.subscribe(std::move(handler));
    }

private:
    RunningApplication current_{.processIdentifier = 4242,
                                .localizedName = "Nettlecap",
                                .bundleIdentifier = "com.nettlecap.Nettlecap"};
    std::optional<RunningApplication> frontmost_;
    Signal<RunningApplication> activated_;
};

}  // namespace nettlecap
