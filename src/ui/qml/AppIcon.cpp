#include "ui/qml/AppIcon.h"

#include <QPainter>
#include <QSvgRenderer>

namespace nettlecap {

namespace {

void draw(QPainter* painter, const QRectF& bounds) {
    QSvgRenderer drawing(QStringLiteral(":/nettlecap/symbols/Nettlecap.svg"));
    drawing.render(painter, bounds);
}

}  // namespace

QIcon AppIcon::windowIcon() {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        draw(&painter, QRectF(pixmap.rect()));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

void AppIcon::paint(QPainter* painter) { draw(painter, boundingRect()); }

}  // namespace nettlecap
