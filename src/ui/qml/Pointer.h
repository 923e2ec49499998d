#pragma once

#include <QQuickItem>

namespace nettlecap {

/// Where the pointer is at this moment, also where no event has told it.
class Pointer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// In the window of the item, as events have it.
    Q_INVOKABLE QPointF positionIn(const QQuickItem* item) const;
};

}  // namespace nettlecap
