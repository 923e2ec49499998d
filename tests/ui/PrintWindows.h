#pragma once

#include "platform/Windows.h"

#include <ostream>

namespace nettlecap {

inline void PrintTo(const Point& point, std::ostream* out) {
    *out << '(' << point.x << ", " << point.y << ')';
}
inline void PrintTo(const Size& size, std::ostream* out) { *out << size.width << " x " << size.height; }

}  // namespace nettlecap
