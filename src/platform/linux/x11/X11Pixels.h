#pragma once

#include <QRect>
#include <QScreen>

namespace nettlecap {

// Between the server's pixels and the points that Qt counts in. Qt keeps a screen's place in
// pixels and gives its size in points.

QRect pixelsOf(const QScreen& screen);
/// Of what is on that screen.
QRectF inPoints(const QRect& pixels, const QScreen& screen);
/// The one with that pixel, else the primary one. Null: there is none.
const QScreen* screenAtPixel(QPoint pixel);

}  // namespace nettlecap
