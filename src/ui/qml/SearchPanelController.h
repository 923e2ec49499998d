#pragma once

#include "ui/ViewFactory.h"
#include "ui/qml/QuickPanel.h"

namespace nettlecap {

/// Owns the floating panel, which is made at the first show and kept. Its content is made
/// anew at every show and dropped when the panel is hidden, so that a hidden panel costs
/// next to nothing and starts afresh.
class SearchPanelController final : public SearchPanel {
public:
    struct Collaborators {
        MenuBarContentView::Ports ports;
        ViewFactory& views;
        NativeWindows& windows;
    };

    /// `wasHidden` is called after the content is gone. The collaborators must outlive the
    /// controller.
    SearchPanelController(Collaborators with, Task wasHidden);

    /// The model must outlive the controller.
    void show(ContentKind content, AppModel& app) override;
    void hide() override;

private:
    void makePanel();
    void dropContent();

    Collaborators with_;
    Task wasHidden_;
    std::unique_ptr<QuickPanel> panel_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
