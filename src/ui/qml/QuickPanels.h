#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// Makes panels of Qt Quick, which must not outlive what it is given.
class QuickPanels final : public PanelFactory {
public:
    QuickPanels(NativeWindows& windows, const Screens& screens) : windows_(windows), screens_(screens) {}

    std::unique_ptr<Panel> makePanel(PanelKind kind) override;
    std::unique_ptr<TitledPanel> makeTitledPanel() override;

private:
    NativeWindows& windows_;
    const Screens& screens_;
};

}  // namespace nettlecap
