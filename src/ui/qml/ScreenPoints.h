#pragma once

#include "platform/Windows.h"

#include <QRect>
#include <QWindow>

namespace nettlecap {

/// Between the ports' points, from the bottom left of the primary screen, and Qt's, whose
/// heights grow downwards. Whole points, so that lines of one point are sharp.
QRect toQt(const Rect& rect);
Rect fromQt(const QRect& rect);

/// Of the screen with the middle of the window, frame included, else of the main one. Absent:
/// there is none.
std::optional<Rect> visibleFrameAround(const QWindow& window, const Screens& screens);

}  // namespace nettlecap
