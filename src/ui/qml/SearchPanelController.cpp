#include "ui/qml/SearchPanelController.h"

namespace nettlecap {

namespace {

constexpr QSize panelSize(430, 560);

}  // namespace

SearchPanelController::SearchPanelController(AppModel& app, MenuBarContentView::Ports ports,
                                             QuickViewFactory& views, Task wasHidden)
    : app_(app), ports_(ports), views_(views), wasHidden_(std::move(wasHidden)) {}

void SearchPanelController::show() {
    if (!panel_) {
        panel_ = std::make_unique<QuickPanel>(panelSize);
        // It is hidden from within a key or a close event that its content may be handling.
        QObject::connect(panel_.get(), &QuickPanel::orderedOut,
                         [this] { ports_.scheduler.post(guard_([this] { dropContent(); })); });
    }
    if (!panel_->isVisible()) {
        panel_->setContent(nullptr);
        view_ = std::make_unique<MenuBarContentView>(app_, ports_);
        panel_->setContent(views_.menuBarContent(*view_));
    }
    panel_->makeKeyAndOrderFront();
}

void SearchPanelController::dropContent() {
    if (panel_->isVisible()) return;  // shown again meanwhile
    panel_->setContent(nullptr);
    view_.reset();
    panel_->releaseResources();
    views_.releaseMemory();
    wasHidden_();
}

}  // namespace nettlecap
