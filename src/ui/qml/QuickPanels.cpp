#include "ui/qml/QuickPanels.h"

#include "ui/qml/QuickCard.h"
#include "ui/qml/QuickPanel.h"

namespace nettlecap {

std::unique_ptr<Panel> QuickPanels::makePanel(PanelKind kind) {
    switch (kind) {
    case PanelKind::card: return std::make_unique<QuickCard>(windows_);
    }
    return nullptr;
}

std::unique_ptr<TitledPanel> QuickPanels::makeTitledPanel() {
    return std::make_unique<QuickPanel>(windows_, screens_);
}

}  // namespace nettlecap
