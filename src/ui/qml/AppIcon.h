#pragma once

#include <QIcon>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// The program's icon, as large as the item. Drawn here and not by Qt's picture plugins,
/// which would all be loaded for it.
class AppIcon : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit AppIcon(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    static QIcon windowIcon();  ///< in the sizes that desktops ask for

    void paint(QPainter* painter) override;
};

}  // namespace nettlecap
