#pragma once

#include "platform/Workspace.h"

#include <algorithm>

namespace nettlecap {

/// Nothing is in front until a test says what.
class FakeWorkspace final : public Workspace {
public:
    /// Tells nobody. Absent: nothing is in front, or the system does not tell.
    void setFrontmost(std::optional<RunningApplication> application) { frontmost_ = std::move(application); }
    void setCurrent(RunningApplication application) { current_ = std::move(application); }
    void terminate(const RunningApplication& application) { terminated_.push_back(application); }

    /// Brings the application to the front and tells of it; also how a user does it.
    void activate(const RunningApplication& application) override {
        if (isTerminated(application)) return;
        frontmost_ = application;
        activated_.emit(RunningApplication(*frontmost_));
    }

    RunningApplication current() const override { return current_; }
    std::optional<RunningApplication> frontmostApplication() const override { return frontmost_; }
    bool isTerminated(const RunningApplication& application) const override {
        return std::ranges::find(terminated_, application) != terminated_.end();
    }
    Subscription onActivation(std::function<void(const RunningApplication&)> handler) override {
        return activated_.subscribe(std::move(handler));
    }

private:
    RunningApplication current_{.processIdentifier = 4242,
                                .localizedName = "Nettlecap",
                                .bundleIdentifier = "com.nettlecap.Nettlecap"};
    std::optional<RunningApplication> frontmost_;
    std::vector<RunningApplication> terminated_;
    Signal<RunningApplication> activated_;
};

}  // namespace nettlecap
