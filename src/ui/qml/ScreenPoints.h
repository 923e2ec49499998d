#pragma once

#include "platform/Windows.h"

#include <QRect>

namespace nettlecap {

/// Between the ports' points, from the bottom left of the primary screen, and Qt's, whose
/// heights grow downwards. Whole points, so that lines of one point are sharp.
QRect toQt(const Rect& rect);
Rect fromQt(const QRect& rect);

}  // namespace nettlecap
