#include "platform/linux/x11/X11Pixels.h"

#include <QGuiApplication>

namespace nettlecap {

QRect pixelsOf(const QScreen& screen) {
    const QRect points = screen.geometry();
    return {points.topLeft(), (QSizeF(points.size()) * screen.devicePixelRatio()).toSize()};
}

QRectF inPoints(const QRect& pixels, const QScreen& screen) {
    const double ratio = screen.devicePixelRatio();
    const QPointF start = screen.geometry().topLeft();
    return {start + (pixels.topLeft() - start) / ratio, QSizeF(pixels.size()) / ratio};
}

const QScreen* screenAtPixel(QPoint pixel) {
    for (const QScreen* screen : QGuiApplication::screens())
        if (pixelsOf(*screen).contains(pixel)) return screen;
    return QGuiApplication::primaryScreen();
}

}  // namespace nettlecap
