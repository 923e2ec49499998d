#include "ui/NavigationHUDController.h"

#include "ui/NavigationHUDTextPreview.h"

#include <algorithm>

namespace nettlecap {

namespace {

constexpr double wide = 480;
constexpr double narrow = 440;
constexpr double imageHeight = 330;
constexpr double mostTextHeight = 260;
constexpr double distanceFromBottom = 110;

}  // namespace

void NavigationHUDController::show(NavigationCard card) {
    ++presentationGeneration_;
    const bool isImage = card.entry.kind == ClipboardContentKind::image;
    auto text = NavigationHUDTextPreview::presentation(card.entry, card.protectSensitiveContent);
    const double panelWidth = isImage || text.usesExpandedLayout ? wide : narrow;
    auto content = with_.views.navigationHUD(
        std::make_unique<NavigationHUDView>(std::move(card), std::move(text), panelWidth));
    const double height =
        isImage ? imageHeight : std::min(content->fittingHeight(panelWidth), mostTextHeight);

    if (!panel_) panel_ = with_.panels.makePanel(PanelKind::card);
    panel_->setContent(std::move(content));
    panel_->setContentSize({panelWidth, height});
    place(panelWidth);
    panel_->orderFrontRegardless();
    hideLater();
}

void NavigationHUDController::hide() {
    ++presentationGeneration_;
    if (!panel_) return;
    panel_->orderOut();
    // Not at once: the entry is about to be pasted.
    with_.scheduler.after(contentPatience, guard_([this, generation = presentationGeneration_] {
                              if (generation == presentationGeneration_) panel_->dropContent();
                          }));
}

void NavigationHUDController::place(double panelWidth) {
    auto screen = with_.screens.main();
    if (!screen) {
        const auto all = with_.screens.all();
        if (all.empty()) return;  // it stays where it was
        screen = all.front();
    }
    const Rect& visible = screen->visibleFrame;
    const double middle = visible.origin.x + visible.size.width * 0.5;
    panel_->setOrigin({middle - panelWidth * 0.5, visible.origin.y + distanceFromBottom});
}

void NavigationHUDController::hideLater() {
    with_.scheduler.after(hideDelay, guard_([this, generation = presentationGeneration_] {
                              if (generation != presentationGeneration_) return;  // shown or hidden since
                              hide();
                          }));
}

}  // namespace nettlecap
