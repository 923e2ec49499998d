#include "ui/qml/QuickPanels.h"

#include "ui/qml/QuickCard.h"

namespace nettlecap {

std::unique_ptr<Panel> QuickPanels::makePanel(PanelKind kind) {
    switch (kind) {
    case PanelKind::card: return std::make_unique<QuickCard>(windows_);
    }
    return nullptr;
}

}  // namespace nettlecap
