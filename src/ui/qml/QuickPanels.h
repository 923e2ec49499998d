#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// Makes panels of Qt Quick. `windows` must outlive them.
class QuickPanels final : public PanelFactory {
public:
    explicit QuickPanels(const NativeWindows& windows) : windows_(windows) {}

    std::unique_ptr<Panel> makePanel(PanelKind kind) override;

private:
    const NativeWindows& windows_;
};

}  // namespace nettlecap
