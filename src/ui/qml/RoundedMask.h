#pragma once

#include <QRegion>

namespace nettlecap {

/// What is seen of a window without corners where nothing is translucent.
struct RoundedMask {
    double margin;  ///< of the window that is left out at each side
    double radius;

    QRegion of(QSize window) const;
};

}  // namespace nettlecap
