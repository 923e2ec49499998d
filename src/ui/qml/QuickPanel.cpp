#include "ui/qml/QuickPanel.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

namespace nettlecap {

QuickPanel::QuickPanel(QSize size, NativeWindows& windows) : windows_(windows) {
    setFlags(Qt::Window | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
             Qt::WindowCloseButtonHint);
    setMinimumSize(size);
    setMaximumSize(size);
    resize(size);
    content_.setSize(size);
}

QuickPanel::~QuickPanel() = default;

void QuickPanel::setContent(std::unique_ptr<HostedView> content) { content_.replace(std::move(content)); }

void QuickPanel::dropContent() { content_.drop(); }

void QuickPanel::makeKeyAndOrderFront() {
    if (!isVisible()) positionOnCurrentScreen();
    windows_.prepareToShow(winId());
    show();
    raise();
    requestActivate();
    windows_.bringToFront(winId());
}

void QuickPanel::orderOut() {
    if (!isVisible()) return;
    hide();
    Q_EMIT orderedOut();
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

void QuickPanel::positionOnCurrentScreen() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    QRect place({}, size());
    place.moveCenter(screen->availableGeometry().center());
    setPosition(place.topLeft());
}

}  // namespace nettlecap
