#include "ui/qml/QuickCard.h"

#include "ui/qml/RoundedMask.h"
#include "ui/qml/ScreenPoints.h"

namespace nettlecap {

namespace {

/// What is seen of the card where nothing is translucent: its outline and the line around it.
constexpr RoundedMask seen{.margin = 3, .radius = 17};

}  // namespace

QuickCard::QuickCard(const NativeWindows& windows) : windows_(windows) {
    window_.setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                     Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus |
                     Qt::X11BypassWindowManagerHint);
    window_.setColor(Qt::transparent);
}

void QuickCard::setContent(std::unique_ptr<HostedView> content) { content_.replace(std::move(content)); }

void QuickCard::setContentSize(Size size) {
    size_ = size;
    content_.setSize({size.width, size.height});
    place();
}

void QuickCard::setOrigin(Point origin) {
    origin_ = origin;
    place();
}

void QuickCard::place() { window_.setGeometry(toQt({.origin = origin_, .size = size_})); }

void QuickCard::orderFrontRegardless() {
    const bool isComposited = windows_.isComposited();
    if (content_.item()) content_.item()->setProperty("isComposited", isComposited);
    window_.setMask(isComposited ? QRegion() : seen.of(window_.size()));
    window_.show();
    window_.raise();
}

void QuickCard::orderOut() { window_.hide(); }

void QuickCard::dropContent() { content_.dropWithDrawing(); }

}  // namespace nettlecap
