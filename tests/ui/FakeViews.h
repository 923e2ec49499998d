#pragma once

#include "ui/ViewFactory.h"

namespace nettlecap {

/// Shows the view that it was made from.
template <class View>
struct FakeHostedView final : HostedView {
    explicit FakeHostedView(std::unique_ptr<View> shown) : view(std::move(shown)) {}

    double fittingHeight(double) override { return 0; }

    std::unique_ptr<View> view;
    std::unique_ptr<SettingsNavigationButton> button;
};
using HistoryContent = FakeHostedView<MenuBarContentView>;
using SettingsContent = FakeHostedView<SettingsView>;

class FakeViews final : public ViewFactory {
public:
    std::unique_ptr<HostedView> navigationHUD(std::unique_ptr<NavigationHUDView>) override { return nullptr; }
    std::unique_ptr<HostedView> menuBarContent(std::unique_ptr<MenuBarContentView> view) override {
        return std::make_unique<HistoryContent>(std::move(view));
    }
    std::unique_ptr<HostedView> settings(std::unique_ptr<SettingsView> view,
                                         std::unique_ptr<SettingsNavigationButton> button) override {
        auto result = std::make_unique<SettingsContent>(std::move(view));
        result->button = std::move(button);
        return result;
    }
    void releaseMemory() override {}
};

}  // namespace nettlecap
