#pragma once

#include <QQuickItem>

namespace nettlecap {

/// An area by which its window can be dragged. Whatever lies above it and takes a press of
/// the pointer keeps it.
class WindowMover : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit WindowMover(QQuickItem* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    bool isBeyondClick(QPointF place) const;

    QPointF grip_;  ///< where in the window it is held
    bool isMoving_ = false;
};

}  // namespace nettlecap
