#pragma once

#include "platform/SoftwareUpdater.h"

namespace nettlecap {

/// What a test can see of an updater, and do to it. It outlives the updater.
struct FakeSoftwareUpdaterState {
    bool canCheckForUpdates = false;
    bool canCheckOnceStarted = true;
    Signal<> changed;
    std::vector<std::string> happenings;  ///< what it was told, in order

    void setCanCheckForUpdates(bool canCheck) {  ///< and tells
        canCheckForUpdates = canCheck;
        changed.emit();
    }
};

/// The updaters that were made.
class FakeSoftwareUpdaters {
public:
    MakeSoftwareUpdater maker() {
        return [this] { return make(); };
    }
    /// From now on the system has none for this copy of the program.
    void setAbsent(bool isAbsent) { isAbsent_ = isAbsent; }

    const std::vector<std::shared_ptr<FakeSoftwareUpdaterState>>& made() const { return made_; }

private:
    class FakeSoftwareUpdater final : public SoftwareUpdater {
    public:
        explicit FakeSoftwareUpdater(std::shared_ptr<FakeSoftwareUpdaterState> state)
            : state_(std::move(state)) {}

        bool canCheckForUpdates() const override { return state_->canCheckForUpdates; }
        Subscription onCanCheckForUpdatesChange(Task handler) override {
            return state_->changed.subscribe(std::move(handler));
        }
        void setAutomaticallyChecksForUpdates(bool isOn) override {
            happened(isOn ? "checks by itself" : "no longer checks by itself");
        }
        void start() override {
            happened("started");
            if (state_->canCheckOnceStarted) state_->setCanCheckForUpdates(true);
        }
        void resetUpdateCycleAfterShortDelay() override { happened("cycle reset"); }
        void checkForUpdates() override { happened("checked for the user"); }

    private:
        void happened(const char* what) { state_->happenings.emplace_back(what); }

        std::shared_ptr<FakeSoftwareUpdaterState> state_;
    };

    std::unique_ptr<SoftwareUpdater> make() {
        if (isAbsent_) return nullptr;
        made_.push_back(std::make_shared<FakeSoftwareUpdaterState>());
        return std::make_unique<FakeSoftwareUpdater>(made_.back());
    }

    bool isAbsent_ = false;
    std::vector<std::shared_ptr<FakeSoftwareUpdaterState>> made_;
};

}  // namespace nettlecap
