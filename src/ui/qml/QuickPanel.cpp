#include "ui/qml/QuickPanel.h"

#include "ui/qml/ScreenPoints.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

namespace nettlecap {

QuickPanel::QuickPanel(NativeWindows& windows, const Screens& screens)
    : windows_(windows), previews_(*this, {.windows = windows, .screens = screens}),
      sheets_(*this, {.windows = windows, .screens = screens}) {
    setFlags(Qt::Window | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
             Qt::WindowCloseButtonHint);
}

QuickPanel::~QuickPanel() = default;

void QuickPanel::setContent(std::unique_ptr<HostedView> content) {
    previews_.release();
    content_.replace(std::move(content));
}

void QuickPanel::dropContent() {
    previews_.release();
    content_.dropWithDrawing();
}

void QuickPanel::setContentSize(Size size) {
    const QSize whole = toQt({.size = size}).size();
    setMinimumSize(whole);
    setMaximumSize(whole);
    resize(whole);
    content_.setSize(whole);
}

void QuickPanel::setTitle(std::string_view title) {
    QQuickWindow::setTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
}

void QuickPanel::setOrigin(Point origin) {
    const QSizeF content = size();
    setPosition(toQt({.origin = origin, .size = {content.width(), content.height()}}).topLeft());
}

void QuickPanel::center() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (!primary) return;
    QRect place({}, size());
    place.moveCenter(primary->availableGeometry().center());
    setPosition(place.topLeft());
}

void QuickPanel::makeKeyAndOrderFront() {
    windows_.prepareToShow(winId());
    show();
    raise();
    requestActivate();
}

void QuickPanel::orderFrontRegardless() {
    show();
    windows_.bringToFront(winId());
}

void QuickPanel::orderOut() {
    if (!isVisible()) return;
    hide();
    orderedOut_.emit();
}

bool QuickPanel::event(QEvent* event) {
    if (event->type() != QEvent::Close) return QQuickWindow::event(event);
    event->ignore();  // accepted, it would destroy the window of the window system
    orderOut();
    return true;
}

void QuickPanel::keyPressEvent(QKeyEvent* event) {
    event->ignore();  // it comes accepted, and stays so where no item has the focus
    QQuickWindow::keyPressEvent(event);
    if (event->isAccepted() || event->key() != Qt::Key_Escape) return;
    event->accept();
    orderOut();
}

}  // namespace nettlecap
