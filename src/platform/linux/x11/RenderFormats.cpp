#include "platform/linux/x11/RenderFormats.h"

namespace nettlecap {

namespace {

bool isArgb(const xcb_render_pictforminfo_t& format) {
    const auto& [redShift, redMask, greenShift, greenMask, blueShift, blueMask, alphaShift, alphaMask] =
        format.direct;
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == 32 && alphaShift == 24 &&
           alphaMask == 0xFF && redShift == 16 && redMask == 0xFF && greenShift == 8 && greenMask == 0xFF &&
           blueShift == 0 && blueMask == 0xFF;
}

xcb_render_pictformat_t argbIn(const xcb_render_query_pict_formats_reply_t& reply) {
    for (auto formats = xcb_render_query_pict_formats_formats_iterator(&reply); formats.rem > 0;
         xcb_render_pictforminfo_next(&formats))
        if (isArgb(*formats.data)) return formats.data->id;
    return XCB_NONE;
}

xcb_render_pictformat_t ofVisual(xcb_visualid_t visual, const xcb_render_pictscreen_t& screen) {
    for (auto depths = xcb_render_pictscreen_depths_iterator(&screen); depths.rem > 0;
         xcb_render_pictdepth_next(&depths))
        for (auto visuals = xcb_render_pictdepth_visuals_iterator(depths.data); visuals.rem > 0;
             xcb_render_pictvisual_next(&visuals))
            if (visuals.data->visual == visual) return visuals.data->format;
    return XCB_NONE;
}

}  // namespace

std::optional<RenderFormats> RenderFormats::find(X11Connection& connection, xcb_visualid_t visual) {
    const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_render_id);
    if (!extension || extension->present == 0) return std::nullopt;
    const auto question = xcb_render_query_pict_formats(connection.xcb()).sequence;
    const auto reply = connection.waitFor<xcb_render_query_pict_formats_reply_t>(question);
    if (!reply) return std::nullopt;
    RenderFormats result{.argb = argbIn(*reply)};
    for (auto screens = xcb_render_query_pict_formats_screens_iterator(reply.get());
         screens.rem > 0 && result.visual == XCB_NONE; xcb_render_pictscreen_next(&screens))
        result.visual = ofVisual(visual, *screens.data);
    const bool isComplete = result.argb != XCB_NONE && result.visual != XCB_NONE;
    return isComplete ? std::optional(result) : std::nullopt;
}

}  // namespace nettlecap
