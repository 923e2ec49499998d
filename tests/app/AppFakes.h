#pragma once

#include "app/AppServices.h"
#include "app/AppWindows.h"

namespace nettlecap {

/// What a test can see of the windows. It outlives them, as they belong to the model.
struct SeenWindows {
    std::optional<NavigationCard> card;  ///< absent: hidden
    int cardHides = 0;
    std::optional<ContentKind> panel;  ///< absent: hidden
    std::vector<std::string> happenings;
};

class FakeNavigationHUD final : public NavigationHUD {
public:
    explicit FakeNavigationHUD(SeenWindows& seen) : seen_(seen) {}

    void show(NavigationCard card) override {
        seen_.card = std::move(card);
        seen_.happenings.emplace_back("card shown");
    }
    void hide() override {
        seen_.card.reset();
        ++seen_.cardHides;
        seen_.happenings.emplace_back("card hidden");
    }

private:
    SeenWindows& seen_;
};

class FakeSearchPanel final : public SearchPanel {
public:
    explicit FakeSearchPanel(SeenWindows& seen) : seen_(seen) {}

    void show(ContentKind content, AppModel&) override {
        seen_.panel = content;
        seen_.happenings.emplace_back(content == ContentKind::history ? "history shown" : "settings shown");
    }
    void hide() override {
        seen_.panel.reset();
        seen_.happenings.emplace_back("panel hidden");
    }

private:
    SeenWindows& seen_;
};

/// What a test can see of the services, and do in their place.
struct SeenServices {
    int synchronizations = 0;  ///< of the updates
    int checks = 0;
    bool canCheckForUpdates = true;
    Signal<> updatesChanged;

    std::vector<bool> loginItemShowsStatus;  ///< of each synchronization of the login item
    std::optional<std::string> loginItemMessage;
    bool loginItemRequiresApproval = false;
    int loginItemSettingsOpenings = 0;

    std::vector<std::string> happenings;
};

class FakeUpdates final : public AppUpdates {
public:
    explicit FakeUpdates(SeenServices& seen) : seen_(seen) {}

    void synchronize() override {
        ++seen_.synchronizations;
        seen_.happenings.emplace_back("updates synchronized");
    }
    void checkForUpdates() override { ++seen_.checks; }
    bool canCheckForUpdates() const override { return seen_.canCheckForUpdates; }
    Subscription onChange(Task handler) const override {
        return seen_.updatesChanged.subscribe(std::move(handler));
    }

private:
    SeenServices& seen_;
};

class FakeLoginItemSync final : public LoginItemSync {
public:
    explicit FakeLoginItemSync(SeenServices& seen) : seen_(seen) {}

    void syncLaunchAtLogin(AppState& state, bool showStatus) override {
        seen_.loginItemShowsStatus.push_back(showStatus);
        seen_.happenings.emplace_back("login item synchronized");
        if (seen_.loginItemMessage) state.statusMessage = seen_.loginItemMessage;
        state.launchAtLoginRequiresApproval = seen_.loginItemRequiresApproval;
    }
    void openSystemSettings() override { ++seen_.loginItemSettingsOpenings; }

private:
    SeenServices& seen_;
};

}  // namespace nettlecap
