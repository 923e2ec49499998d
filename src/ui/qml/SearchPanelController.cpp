#include "ui/qml/SearchPanelController.h"

namespace nettlecap {

namespace {

constexpr QSize panelSize(430, 560);

}  // namespace

SearchPanelController::SearchPanelController(Collaborators with, Task wasHidden)
    : with_(std::move(with)), wasHidden_(std::move(wasHidden)) {}

void SearchPanelController::show(ContentKind content, AppModel& app) {
    if (content != ContentKind::history) return;  // there is no other yet
    if (!panel_) makePanel();
    panel_->setContent(with_.views.menuBarContent(std::make_unique<MenuBarContentView>(app, with_.ports)));
    panel_->setTitle(QStringLiteral("Nettlecap"));
    panel_->makeKeyAndOrderFront();
}

void SearchPanelController::hide() {
    if (panel_) panel_->orderOut();
}

void SearchPanelController::makePanel() {
    panel_ = std::make_unique<QuickPanel>(panelSize, with_.windows);
    // It is hidden from within a key or a close event that its content may be handling.
    QObject::connect(panel_.get(), &QuickPanel::orderedOut, panel_.get(),
                     [this] { with_.ports.scheduler.post(guard_([this] { dropContent(); })); });
}

void SearchPanelController::dropContent() {
    if (panel_->isVisible()) return;  // shown again meanwhile
    panel_->dropContent();
    panel_->releaseResources();
    with_.views.releaseMemory();
    wasHidden_();
}

}  // namespace nettlecap
