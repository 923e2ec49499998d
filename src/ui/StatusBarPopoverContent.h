#pragma once

#include "app/AppWindows.h"
#include "ui/ViewFactory.h"

namespace nettlecap {

/// What hangs from the status item is the main view, as in the floating panel.
class StatusBarPopoverContent final : public StatusBarContent {
public:
    /// `views` and the ports must outlive what is made.
    StatusBarPopoverContent(MenuBarContentView::Ports ports, ViewFactory& views)
        : ports_(std::move(ports)), views_(views) {}

    std::unique_ptr<HostedView> make(AppModel& app) override {
        return views_.menuBarContent(std::make_unique<MenuBarContentView>(app, ports_));
    }

private:
    MenuBarContentView::Ports ports_;
    ViewFactory& views_;
};

}  // namespace nettlecap
