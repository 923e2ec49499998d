#include "ui/qml/ReadOut.h"

#include <QAccessible>

namespace nettlecap {

void ReadOut::setItem(QQuickItem* item) {
    if (item == item_) return;
    item_ = item;
    Q_EMIT itemChanged();
}

void ReadOut::setWanted(bool isWanted) {
    if (isWanted == isWanted_) return;
    isWanted_ = isWanted;
    Q_EMIT isWantedChanged();
    // Not at once: an item that is being made has no name yet.
    if (isWanted_) QMetaObject::invokeMethod(this, "tell", Qt::QueuedConnection);
}

void ReadOut::tell() const {
    if (!isWanted_ || !item_ || !QAccessible::isActive()) return;
    QAccessibleEvent event(item_, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

}  // namespace nettlecap
