#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// A panel for the settings alone, which its cancel command hides. Nothing is destroyed.
class SettingsPanel {
public:
    explicit SettingsPanel(std::unique_ptr<TitledPanel> panel) : panel_(std::move(panel)) {}

    void makeKeyAndOrderFront() { panel_->makeKeyAndOrderFront(); }
    void cancelOperation() { panel_->orderOut(); }

private:
    std::unique_ptr<TitledPanel> panel_;
};

/// Holds the panel for the settings alone. The program's settings are the panel's of
/// SearchPanelController, so it holds none.
struct SettingsPanelController {
    std::optional<SettingsPanel> panel;
};

}  // namespace nettlecap
