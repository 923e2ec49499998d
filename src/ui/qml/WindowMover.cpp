#include "ui/qml/WindowMover.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QStyleHints>

namespace nettlecap {

WindowMover::WindowMover(QQuickItem* parent) : QQuickItem(parent) { setAcceptedMouseButtons(Qt::LeftButton); }

void WindowMover::mousePressEvent(QMouseEvent* event) {
    grip_ = event->scenePosition();
    isMoving_ = false;
}

void WindowMover::mouseMoveEvent(QMouseEvent* event) {
    isMoving_ = isMoving_ || isBeyondClick(event->scenePosition());
    if (!isMoving_) return;
    // The window manager's own way of moving keeps the button's release to itself, and with
    // it the next click.
    window()->setPosition((event->globalPosition() - grip_).toPoint());
}

bool WindowMover::isBeyondClick(QPointF place) const {
    return (place - grip_).manhattanLength() >= QGuiApplication::styleHints()->startDragDistance();
}

}  // namespace nettlecap
