#pragma once

#include "platform/Windows.h"
#include "ui/MenuBarContentView.h"
#include "ui/NavigationHUDView.h"
#include "ui/SettingsNavigationButton.h"
#include "ui/SettingsView.h"

namespace nettlecap {

/// Turns view logic into what a panel can show. What it makes owns the logic that it was
/// made from, and must not outlive the factory.
class ViewFactory {
public:
    virtual ~ViewFactory() = default;

    virtual std::unique_ptr<HostedView> navigationHUD(std::unique_ptr<NavigationHUDView> view) = 0;
    virtual std::unique_ptr<HostedView> menuBarContent(std::unique_ptr<MenuBarContentView> view) = 0;
    /// The form, below a header with the button.
    virtual std::unique_ptr<HostedView> settings(std::unique_ptr<SettingsView> view,
                                                 std::unique_ptr<SettingsNavigationButton> button) = 0;

    /// After a view is gone: gives up what was kept to make the next one sooner.
    virtual void releaseMemory() = 0;
};

}  // namespace nettlecap
