#include "platform/linux/x11/X11EmbeddedIcon.h"

#include "platform/linux/x11/RenderFormats.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <cstring>

namespace nettlecap {

namespace {

constexpr std::uint32_t requestDock = 0;        // SYSTEM_TRAY_REQUEST_DOCK
constexpr std::uint16_t firstSide = 22;         // until the tray says another
constexpr int largestSide = 256;                // of the picture, however much room the tray gives
constexpr std::uint32_t minimumSize = 1U << 4;  // WM_NORMAL_HINTS, PMinSize
constexpr std::uint32_t takesNoInput = 1;       // WM_HINTS, InputHint, with a zero behind it
constexpr std::uint8_t leftButton = 1, rightButton = 3;

struct Visual {
    xcb_visualid_t id;
    std::uint8_t depth;
};

std::optional<Visual> visualOf(const xcb_screen_t& screen, xcb_visualid_t id) {
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths))
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
             xcb_visualtype_next(&visuals))
            if (visuals.data->visual_id == id) return Visual{.id = id, .depth = depths.data->depth};
    return std::nullopt;
}

/// The tray's own, or the screen's where it names none.
Visual visualFor(X11Connection& connection, xcb_window_t tray) {
    const auto question = xcb_get_property(
        connection.xcb(), 0, tray, connection.atoms().of("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID, 0, 1);
    const auto reply = connection.waitFor<xcb_get_property_reply_t>(question.sequence);
    xcb_visualid_t id = XCB_NONE;
    if (reply && reply->format == 32 && reply->value_len == 1)
        std::memcpy(&id, xcb_get_property_value(reply.get()), sizeof id);
    const xcb_screen_t& screen = connection.screen();
    return visualOf(screen, id).value_or(Visual{.id = screen.root_visual, .depth = screen.root_depth});
}

bool isOrderOfServer(xcb_connection_t* xcb) {
    const bool isLittle = xcb_get_setup(xcb)->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    return isLittle == (Q_BYTE_ORDER == Q_LITTLE_ENDIAN);
}

std::string lowerCase(std::string text) {
    for (char& letter : text)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return text;
}

}  // namespace

X11EmbeddedIcon::X11EmbeddedIcon(X11Connection& connection, xcb_window_t tray, Look look)
    : connection_(connection), look_(std::move(look)), window_(xcb_generate_id(connection.xcb())),
      size_(firstSide, firstSide),
      events_(connection.onEvent([this](const xcb_generic_event_t& event) { onEvent(event); })) {
    makeWindow(tray);
    describe();
    dock(tray);
}

X11EmbeddedIcon::~X11EmbeddedIcon() {
    xcb_connection_t* xcb = connection_.xcb();
    if (ink_ != XCB_NONE) xcb_render_free_picture(xcb, ink_);
    xcb_destroy_window(xcb, window_);
    if (colours_ != XCB_NONE) xcb_free_colormap(xcb, colours_);
    connection_.flush();
}

/// Of the tray's own kind of colours, and else see-through as far as its ground is the tray's.
void X11EmbeddedIcon::makeWindow(xcb_window_t tray) {
    xcb_connection_t* xcb = connection_.xcb();
    const xcb_screen_t& screen = connection_.screen();
    const Visual visual = visualFor(connection_, tray);
    const bool isPlain = visual.id == screen.root_visual;
    if (!isPlain) {
        colours_ = xcb_generate_id(xcb);
        xcb_create_colormap(xcb, XCB_COLORMAP_ALLOC_NONE, colours_, screen.root, visual.id);
    }
    const std::uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                 XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                 XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
    const std::uint32_t ground = isPlain ? XCB_CW_BACK_PIXMAP : XCB_CW_BACK_PIXEL;
    const std::array<std::uint32_t, 4> values{isPlain ? std::uint32_t{XCB_BACK_PIXMAP_PARENT_RELATIVE} : 0U,
                                              0U, events, isPlain ? screen.default_colormap : colours_};
    xcb_create_window(xcb, visual.depth, window_, screen.root, -firstSide, -firstSide, firstSide, firstSide,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual.id,
                      ground | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values.data());
    const auto formats = RenderFormats::find(connection_, visual.id);
    if (!formats) return;
    argb_ = formats->argb;
    ink_ = xcb_generate_id(xcb);
    xcb_render_create_picture(xcb, ink_, window_, formats->visual, 0, nullptr);
}

void X11EmbeddedIcon::describe() {
    const auto set = [this](xcb_atom_t property, xcb_atom_t type, std::uint8_t format, std::size_t length,
                            const void* data) {
        xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, window_, property, type, format,
                            static_cast<std::uint32_t>(length), data);
    };
    X11Atoms& atoms = connection_.atoms();
    const std::string& name = look_.name;
    const std::string windowClass = lowerCase(name) + '\0' + name + '\0';
    set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, windowClass.size(), windowClass.data());
    set(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, name.size(), name.data());
    set(atoms.of("_NET_WM_NAME"), atoms.of("UTF8_STRING"), 8, name.size(), name.data());
    std::array<std::uint32_t, 18> size{minimumSize};
    size[5] = size[6] = firstSide;
    set(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, size.size(), size.data());
    const std::array<std::uint32_t, 9> hints{takesNoInput};
    set(XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32, hints.size(), hints.data());
    const std::array<std::uint32_t, 2> embedding{0, 1};  // the protocol's version, XEMBED_MAPPED
    set(atoms.of("_XEMBED_INFO"), atoms.of("_XEMBED_INFO"), 32, embedding.size(), embedding.data());
}

void X11EmbeddedIcon::dock(xcb_window_t tray) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = tray;
    message.type = connection_.atoms().of("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = window_;
    xcb_send_event(connection_.xcb(), 0, tray, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    connection_.flush();
}

void X11EmbeddedIcon::repaint() {
    paint();
    connection_.flush();
}

QRect X11EmbeddedIcon::geometry() const {
    if (!isEmbedded_) return {};
    const auto sizeQuestion = xcb_get_geometry(connection_.xcb(), window_).sequence;
    const auto placeQuestion =
        xcb_translate_coordinates(connection_.xcb(), window_, connection_.root(), 0, 0).sequence;
    const auto size = connection_.waitFor<xcb_get_geometry_reply_t>(sizeQuestion);
    const auto place = connection_.waitFor<xcb_translate_coordinates_reply_t>(placeQuestion);
    if (!size || !place) return {};
    return {place->dst_x, place->dst_y, size->width, size->height};
}

void X11EmbeddedIcon::onEvent(const xcb_generic_event_t& event) {
    const auto isHere = [&](xcb_window_t window) { return window == window_; };
    switch (event.response_type & 0x7F) {
    case XCB_EXPOSE: {
        const auto& exposed = reinterpret_cast<const xcb_expose_event_t&>(event);
        if (isHere(exposed.window) && exposed.count == 0) paint();
        return;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto& place = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (!isHere(place.window)) return;
        size_ = {place.width, place.height};
        paint();  // the ground below it is another where it moves, too
        return;
    }
    case XCB_REPARENT_NOTIFY: {
        const auto& place = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
        if (!isHere(place.window)) return;
        isEmbedded_ = place.parent != connection_.root();
        // A tray that ends leaves its icons on the desktop.
        if (!isEmbedded_) xcb_unmap_window(connection_.xcb(), window_);
        return;
    }
    case XCB_DESTROY_NOTIFY:
        if (isHere(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window)) isEmbedded_ = false;
        return;
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE: {
        const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(event);
        if (isHere(button.event)) onButton(button, (event.response_type & 0x7F) == XCB_BUTTON_PRESS);
        return;
    }
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY: {
        const auto& crossing = reinterpret_cast<const xcb_enter_notify_event_t&>(event);
        if (isHere(crossing.event) && crossing.mode == XCB_NOTIFY_MODE_NORMAL)
            hovered_.emit((event.response_type & 0x7F) == XCB_ENTER_NOTIFY);
        return;
    }
    default: return;
    }
}

/// From the press to the release the server tells everything here, wherever the pointer goes.
void X11EmbeddedIcon::onButton(const xcb_button_press_event_t& event, bool isDown) {
    if (isDown) {
        pressed_ = event.detail;
        return hovered_.emit(false);
    }
    const bool isWithin = QRect({}, size_).contains(event.event_x, event.event_y);
    if (std::exchange(pressed_, std::uint8_t{0}) != event.detail || !isWithin) return;
    if (event.detail == leftButton) clicked_.emit(StatusItemClick::left);
    if (event.detail == rightButton) clicked_.emit(StatusItemClick::right);
}

void X11EmbeddedIcon::paint() {
    if (ink_ == XCB_NONE || !isEmbedded_) return;
    xcb_connection_t* xcb = connection_.xcb();
    xcb_clear_area(xcb, 0, window_, 0, 0, 0, 0);
    const QImage image = look_.picture(std::min({size_.width(), size_.height(), largestSide}));
    if (image.isNull()) return;
    const auto pixmap = xcb_generate_id(xcb);
    const auto picture = xcb_generate_id(xcb);
    const auto width = static_cast<std::uint16_t>(image.width());
    const auto height = static_cast<std::uint16_t>(image.height());
    xcb_create_pixmap(xcb, 32, pixmap, window_, width, height);
    upload(image, pixmap);
    xcb_render_create_picture(xcb, picture, pixmap, argb_, 0, nullptr);
    xcb_render_composite(xcb, XCB_RENDER_PICT_OP_OVER, picture, XCB_NONE, ink_, 0, 0, 0, 0,
                         static_cast<std::int16_t>((size_.width() - width) / 2),
                         static_cast<std::int16_t>((size_.height() - height) / 2), width, height);
    xcb_render_free_picture(xcb, picture);
    xcb_free_pixmap(xcb, pixmap);
}

void X11EmbeddedIcon::upload(const QImage& image, xcb_pixmap_t pixmap) {
    xcb_connection_t* xcb = connection_.xcb();
    QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (!isOrderOfServer(xcb))
        for (int y = 0; y < pixels.height(); ++y)
            qbswap<sizeof(QRgb)>(pixels.constScanLine(y), pixels.width(), pixels.scanLine(y));
    const auto context = xcb_generate_id(xcb);
    xcb_create_gc(xcb, context, pixmap, 0, nullptr);
    xcb_put_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, static_cast<std::uint16_t>(pixels.width()),
                  static_cast<std::uint16_t>(pixels.height()), 0, 0, 0, 32,
                  static_cast<std::uint32_t>(pixels.sizeInBytes()), pixels.constBits());
    xcb_free_gc(xcb, context);
}

}  // namespace nettlecap
