#include "ui/qml/AppIcon.h"

#include <QPainter>
#include <QSvgRenderer>

namespace nettlecap {

namespace {

QString fileOf(const QString& name) { return QStringLiteral(":/nettlecap/symbols/%1.svg").arg(name); }

}  // namespace

QIcon AppIcon::drawing(const QString& name) {
    QIcon icon;
    QSvgRenderer drawing(fileOf(name));
    if (!drawing.isValid()) return icon;
    for (const int side : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawing.render(&painter, QRectF(pixmap.rect()));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

void AppIcon::paint(QPainter* painter) {
    QSvgRenderer(fileOf(QStringLiteral("Nettlecap"))).render(painter, boundingRect());
}

}  // namespace nettlecap
