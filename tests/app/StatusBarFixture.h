#pragma once

#include "app/AppModelFixture.h"
#include "app/StatusBarController.h"

namespace nettlecap {

class FakeStatusBarContent final : public StatusBarContent {
public:
    struct View final : HostedView {
        explicit View(AppModel& shown) : app(shown) {}

        double fittingHeight(double) override { return 560; }

        AppModel& app;
    };

    std::unique_ptr<HostedView> make(AppModel& app) override {
        ++made_;
        return std::make_unique<View>(app);
    }

    int made() const { return made_; }

private:
    int made_ = 0;
};

/// A model that has started, with its icon among those of the system.
class StatusBarFixture : public AppModelFixture {
protected:
    StatusBarFixture() {
        model->start();
        makeController();
    }

    void makeController() {
        controller.reset();
        controller.emplace(StatusBarController::Collaborators{.app = *model,
                                                              .application = system.application,
                                                              .statusItem = system.statusItem,
                                                              .popover = system.popover,
                                                              .content = content});
    }
    void click() { system.statusItem.click(StatusItemClick::left); }
    void rightClick() { system.statusItem.click(StatusItemClick::right); }
    bool isPopoverShown() const { return system.popover.isShown(); }
    bool isMenuOpen() const { return system.statusItem.isMenuOpen(); }

    FakeStatusBarContent content;
    std::optional<StatusBarController> controller;
};

}  // namespace nettlecap
