#pragma once

#include "platform/LoginItem.h"

namespace nettlecap {

/// Not registered at first. What the user forbids stays forbidden until it is unregistered.
class FakeLoginItem final : public LoginItem {
public:
    void setStatus(LoginItemStatus status) { status_ = status; }  ///< by the user's hand, or the system's
    /// What is registered from now on waits for the user to allow it.
    void setNeedsApproval(bool needsApproval) { needsApproval_ = needsApproval; }
    /// From now on they fail in these words. Absent: they succeed.
    void failRegistration(std::optional<std::string> description) {
        registrationFailure_ = std::move(description);
    }
    void failUnregistration(std::optional<std::string> description) {
        unregistrationFailure_ = std::move(description);
    }

    LoginItemStatus status() const override { return status_; }
    Result<Done> registerItem() override {
        ++registrations_;
        if (registrationFailure_) return Failure{*registrationFailure_};
        if (status_ != LoginItemStatus::requiresApproval)
            status_ = needsApproval_ ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
        return Done();
    }
    Result<Done> unregisterItem() override {
        ++unregistrations_;
        if (unregistrationFailure_) return Failure{*unregistrationFailure_};
        status_ = LoginItemStatus::notRegistered;
        return Done();
    }
    void openSystemSettings() override { ++settingsOpenings_; }

    int registrations() const { return registrations_; }  ///< how often it was tried
    int unregistrations() const { return unregistrations_; }
    int settingsOpenings() const { return settingsOpenings_; }

private:
    LoginItemStatus status_ = LoginItemStatus::notRegistered;
    bool needsApproval_ = false;
    std::optional<std::string> registrationFailure_;
    std::optional<std::string> unregistrationFailure_;
    int registrations_ = 0;
    int unregistrations_ = 0;
    int settingsOpenings_ = 0;
};

}  // namespace nettlecap
