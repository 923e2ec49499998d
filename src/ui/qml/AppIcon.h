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

    /// A drawing of the program in the sizes that desktops ask for. Null: there is none by
    /// this name.
    static QIcon drawing(const QString& name);

    void paint(QPainter* painter) override;
};

}  // namespace nettlecap
