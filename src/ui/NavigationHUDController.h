#pragma once

#include "app/AppWindows.h"
#include "ui/ViewFactory.h"

namespace nettlecap {

/// Owns the card, which is made at the first show and kept, and hides it half a minute
/// after the last show. The collaborators must outlive the controller.
class NavigationHUDController final : public NavigationHUD {
public:
    struct Collaborators {
        PanelFactory& panels;
        const Screens& screens;
        Scheduler& scheduler;
        ViewFactory& views;
    };

    static constexpr Seconds hideDelay{30};
    static constexpr Seconds contentPatience{1};  ///< for what a hidden card showed

    explicit NavigationHUDController(Collaborators with) : with_(with) {}

    void show(NavigationCard card) override;
    void hide() override;

private:
    void place(double panelWidth);
    void hideLater();

    Collaborators with_;
    std::unique_ptr<Panel> panel_;
    std::uint64_t presentationGeneration_ = 0;  ///< counts shows and hides
    LifetimeGuard guard_;
};

}  // namespace nettlecap
