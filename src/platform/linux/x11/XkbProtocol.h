#pragma once

// <xcb/xkb.h>, in which a field has a keyword of C++ for its name. Renaming a keyword, as
// nothing else would do, is worth a warning to Clang, hence a header of the system's.
#pragma GCC system_header

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
