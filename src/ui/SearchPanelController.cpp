#include "ui/SearchPanelController.h"

namespace nettlecap {

namespace {

constexpr Size panelSize{430, 560};

}  // namespace

SearchPanelController::SearchPanelController(Collaborators with, Task wasHidden)
    : with_(std::move(with)), wasHidden_(std::move(wasHidden)) {}

void SearchPanelController::show(ContentKind content, AppModel& app) {
    if (!panel_) makePanel();
    switch (content) {
    case ContentKind::history: showHistory(app); break;
    case ContentKind::settings: showSettings(app); break;
    }
    panel_->setContentSize(panelSize);
    if (!panel_->isVisible()) positionOnCurrentScreen();
    panel_->makeKeyAndOrderFront();
    panel_->orderFrontRegardless();
}

void SearchPanelController::hide() {
    if (panel_) panel_->orderOut();
}

void SearchPanelController::makePanel() {
    panel_ = with_.panels.makeTitledPanel();
    // It is hidden from within a key or a close event that its content may be handling.
    orderedOut_ =
        panel_->onOrderedOut([this] { with_.ports.scheduler.post(guard_([this] { dropContent(); })); });
}

void SearchPanelController::showHistory(AppModel& app) {
    panel_->setContent(with_.views.menuBarContent(std::make_unique<MenuBarContentView>(app, with_.ports)));
    panel_->setTitle("Nettlecap");
}

void SearchPanelController::showSettings(AppModel& app) {
    auto button =
        std::make_unique<SettingsNavigationButton>([this, &app] { show(ContentKind::history, app); });
    panel_->setContent(with_.views.settings(std::make_unique<SettingsView>(app), std::move(button)));
    panel_->setTitle("Ajustes do Nettlecap");
}

void SearchPanelController::positionOnCurrentScreen() {
    const Point pointer = with_.screens.pointerLocation();
    std::optional<Screen> current;
    for (const Screen& screen : with_.screens.all())
        if (!current && screen.frame.contains(pointer)) current = screen;
    if (!current) current = with_.screens.main();
    if (!current) {
        panel_->center();
        return;
    }
    const Rect& visible = current->visibleFrame;
    panel_->setOrigin({visible.origin.x + (visible.size.width - panelSize.width) * 0.5,
                       visible.origin.y + (visible.size.height - panelSize.height) * 0.5});
}

void SearchPanelController::dropContent() {
    if (panel_->isVisible()) return;  // shown again meanwhile
    panel_->dropContent();
    with_.views.releaseMemory();
    wasHidden_();
}

}  // namespace nettlecap
