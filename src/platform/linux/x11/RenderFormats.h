#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <xcb/render.h>

namespace nettlecap {

/// How the Render extension reads pictures.
struct RenderFormats {
    xcb_render_pictformat_t argb = XCB_NONE;  ///< 32 bits, premultiplied
    xcb_render_pictformat_t visual = XCB_NONE;

    /// With the visual's own. Absent: the server lacks the extension or the visual. Waits for it.
    static std::optional<RenderFormats> find(X11Connection& connection, xcb_visualid_t visual);
};

}  // namespace nettlecap
