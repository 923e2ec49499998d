#include "ui/qml/Pointer.h"

#include <QCursor>
#include <QQuickWindow>

namespace nettlecap {

QPointF Pointer::positionIn(const QQuickItem* item) const {
    const QQuickWindow* window = item ? item->window() : nullptr;
    return window ? window->mapFromGlobal(QPointF(QCursor::pos())) : QPointF(QCursor::pos());
}

}  // namespace nettlecap
