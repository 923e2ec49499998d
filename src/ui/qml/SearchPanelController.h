#pragma once

#include "ui/qml/QuickPanel.h"
#include "ui/qml/QuickViewFactory.h"

namespace nettlecap {

/// Owns the floating panel, which is made at the first show and kept. Its content is made
/// anew at every show and dropped when the panel is hidden, so that a hidden panel costs
/// next to nothing and starts afresh.
class SearchPanelController {
public:
    /// `wasHidden` is called after the content is gone. The model, its ports and the factory
    /// must outlive the controller.
    SearchPanelController(AppModel& app, MenuBarContentView::Ports ports, QuickViewFactory& views,
                          Task wasHidden);

    void show();

private:
    void dropContent();

    AppModel& app_;
    MenuBarContentView::Ports ports_;
    QuickViewFactory& views_;
    Task wasHidden_;
    std::unique_ptr<MenuBarContentView> view_;  // outlives what shows it
    std::unique_ptr<QuickPanel> panel_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
