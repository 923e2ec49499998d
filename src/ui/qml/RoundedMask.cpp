#include "ui/qml/RoundedMask.h"

#include <QBitmap>
#include <QPainter>

namespace nettlecap {

QRegion RoundedMask::of(QSize window) const {
    QBitmap bitmap(window);
    bitmap.clear();
    QPainter painter(&bitmap);
    painter.setBrush(Qt::color1);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF({}, QSizeF(window)).adjusted(margin, margin, -margin, -margin), radius,
                            radius);
    painter.end();
    return QRegion(bitmap);
}

}  // namespace nettlecap
