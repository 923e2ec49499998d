#include "ui/qml/StatusItemWindow.h"

#include "ui/MenuPlacement.h"
#include "ui/qml/RoundedMask.h"
#include "ui/qml/ScreenPoints.h"

#include <QKeyEvent>

namespace nettlecap {

namespace {

std::optional<Screen> screenWith(Point place, const Screens& screens) {
    for (const Screen& each : screens.all())
        if (each.frame.contains(place)) return each;
    return screens.main();
}

}  // namespace

StatusItemWindow::StatusItemWindow(Ports ports, std::unique_ptr<QQuickItem> content)
    : ports_(ports), content_(std::move(content)) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
             Qt::X11BypassWindowManagerHint);
    setColor(Qt::transparent);
    content_->setParentItem(contentItem());
}

StatusItemWindow::~StatusItemWindow() { giveInputBack(); }

void StatusItemWindow::showBeside(const Rect& item) {
    content_->ensurePolished();
    const Size size{content_->implicitWidth(), content_->implicitHeight()};
    const Point middle{item.origin.x + item.size.width * 0.5, item.origin.y + item.size.height * 0.5};
    const auto screen = screenWith(middle, ports_.screens);
    const MenuPlacement placement{.item = item, .menu = size, .screen = screen ? screen->frame : item};
    setGeometry(toQt({.origin = placement.origin(), .size = size}));
    content_->setSize(this->size());
    const RoundedMask seen{.margin = 0, .radius = content_->property("radius").toDouble()};
    setMask(ports_.windows.isComposited() ? QRegion() : seen.of(this->size()));
    show();
    raise();
}

bool StatusItemWindow::takeInput() {
    hasInput_ = true;
    setKeyboardGrabEnabled(true);
    return setMouseGrabEnabled(true);
}

void StatusItemWindow::dismiss() {
    giveInputBack();
    hide();
}

/// Once, since it would be taken from another window of this program, too.
void StatusItemWindow::giveInputBack() {
    if (!std::exchange(hasInput_, false)) return;
    setKeyboardGrabEnabled(false);
    setMouseGrabEnabled(false);
}

void StatusItemWindow::keyPressEvent(QKeyEvent* event) {
    Q_EMIT keyPressed(event->key(), event->modifiers());
}

void StatusItemWindow::mousePressEvent(QMouseEvent* event) {
    if (QRectF({}, QSizeF(size())).contains(event->position()))
        QQuickWindow::mousePressEvent(event);
    else
        Q_EMIT pressedOutside();
}

}  // namespace nettlecap
