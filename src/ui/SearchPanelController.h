#pragma once

#include "ui/ViewFactory.h"

namespace nettlecap {

/// Owns the floating panel, which is made at the first show and kept. Its content is made
/// anew at every show and dropped when the panel is hidden, so that a hidden panel costs
/// next to nothing and starts afresh.
class SearchPanelController final : public SearchPanel {
public:
    struct Collaborators {
        MenuBarContentView::Ports ports;
        PanelFactory& panels;
        const Screens& screens;
        ViewFactory& views;
    };

    /// `wasHidden` is called after the content is gone. The collaborators must outlive the
    /// controller.
    SearchPanelController(Collaborators with, Task wasHidden);

    /// The model must outlive the controller. A panel that is shown stays where it is.
    void show(ContentKind content, AppModel& app) override;
    void hide() override;

private:
    void makePanel();
    void showHistory(AppModel& app);
    void showSettings(AppModel& app);
    void positionOnCurrentScreen();
    void dropContent();

    Collaborators with_;
    Task wasHidden_;
    std::unique_ptr<TitledPanel> panel_;
    Subscription orderedOut_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
