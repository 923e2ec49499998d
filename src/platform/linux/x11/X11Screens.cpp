#include "platform/linux/x11/X11Screens.h"

#include "platform/linux/x11/X11Pixels.h"

#include <QGuiApplication>
#include <QScreen>

#include <cstring>

namespace nettlecap {

namespace {

constexpr std::size_t plainStrut = 4;     // left, right, top, bottom
constexpr std::size_t partialStrut = 12;  // and where along the edge each begins and ends

Rect pointsOf(const QRect& pixels, const QScreen& screen) {
    const QRectF points = inPoints(pixels, screen);
    const QRect primary = QGuiApplication::primaryScreen()->geometry();
    return {
        .origin = {points.x() - primary.x(), primary.y() + primary.height() - (points.y() + points.height())},
        .size = {points.width(), points.height()}};
}

}  // namespace

/// Along the four edges of the whole desktop, in pixels.
struct X11Screens::Reserved {
    QRect left;
    QRect right;
    QRect top;
    QRect bottom;

    static Reserved of(const std::vector<std::uint32_t>& strut, QSize desktop) {
        const auto at = [&](std::size_t index, int otherwise) {
            return strut.size() >= partialStrut ? static_cast<int>(strut[index]) : otherwise;
        };
        const auto deep = [&](std::size_t index) { return static_cast<int>(strut[index]); };
        const int right = desktop.width() - 1;
        const int bottom = desktop.height() - 1;
        return {
            .left = {QPoint(0, at(4, 0)), QPoint(deep(0) - 1, at(5, bottom))},
            .right = {QPoint(right - deep(1) + 1, at(6, 0)), QPoint(right, at(7, bottom))},
            .top = {QPoint(at(8, 0), 0), QPoint(at(9, right), deep(2) - 1)},
            .bottom = {QPoint(at(10, 0), bottom - deep(3) + 1), QPoint(at(11, right), bottom)},
        };
    }

    /// What stands at an inner edge reserves all of the monitors on the way to the outer one:
    /// of those nothing would be left, and it is not meant.
    void takeFrom(QRect& visible, const QRect& monitor) const {
        if (left.intersects(monitor) && left.right() < monitor.right())
            visible.setLeft(std::max(visible.left(), left.right() + 1));
        if (right.intersects(monitor) && right.left() > monitor.left())
            visible.setRight(std::min(visible.right(), right.left() - 1));
        if (top.intersects(monitor) && top.bottom() < monitor.bottom())
            visible.setTop(std::max(visible.top(), top.bottom() + 1));
        if (bottom.intersects(monitor) && bottom.top() > monitor.top())
            visible.setBottom(std::min(visible.bottom(), bottom.top() - 1));
    }
};

std::optional<Screen> X11Screens::main() const {
    const auto screens = all();
    if (screens.empty()) return std::nullopt;
    if (const auto middle = middleOfActiveWindow())
        for (qsizetype index = 0; index < QGuiApplication::screens().size(); ++index)
            if (QRectF(pixelsOf(*QGuiApplication::screens()[index])).contains({middle->x, middle->y}))
                return screens[static_cast<std::size_t>(index)];
    return screens.front();
}

std::vector<Screen> X11Screens::all() const {
    std::vector<Screen> result;
    const auto areas = reserved();
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect monitor = pixelsOf(*screen);
        QRect visible = monitor;
        for (const Reserved& area : areas) area.takeFrom(visible, monitor);
        if (visible.isEmpty()) visible = monitor;
        result.push_back({.frame = pointsOf(monitor, *screen), .visibleFrame = pointsOf(visible, *screen)});
    }
    return result;
}

/// Qt's own answer is rounded, at an edge onto the next screen.
Point X11Screens::pointerLocation() const {
    const auto question = xcb_query_pointer(inquiry_.xcb(), inquiry_.root()).sequence;
    const auto pointer = inquiry_.reply<xcb_query_pointer_reply_t>(question);
    if (!pointer) return {};
    const QPoint pixel(pointer->root_x, pointer->root_y);
    const QScreen* const nearest = screenAtPixel(pixel);
    return nearest ? pointsOf({pixel, QSize(1, 1)}, *nearest).origin : Point();
}

std::vector<X11Screens::Reserved> X11Screens::reserved() const {
    const auto sizeQuestion = xcb_get_geometry(inquiry_.xcb(), inquiry_.root()).sequence;
    const auto clients = numbers(inquiry_.askProperty(inquiry_.root(), "_NET_CLIENT_LIST"));
    const auto root = inquiry_.reply<xcb_get_geometry_reply_t>(sizeQuestion);
    std::vector<std::pair<unsigned, unsigned>> questions;
    questions.reserve(clients.size());
    for (const xcb_window_t client : clients)
        questions.emplace_back(inquiry_.askProperty(client, "_NET_WM_STRUT_PARTIAL"),
                               inquiry_.askProperty(client, "_NET_WM_STRUT"));
    std::vector<Reserved> result;
    for (const auto& [partialQuestion, plainQuestion] : questions) {
        const auto partial = numbers(partialQuestion);
        const auto plain = numbers(plainQuestion);
        const auto& strut = partial.size() >= partialStrut ? partial : plain;
        if (root && strut.size() >= plainStrut)
            result.push_back(Reserved::of(strut, {root->width, root->height}));
    }
    return result;
}

std::vector<std::uint32_t> X11Screens::numbers(unsigned sequence) const {
    const auto bytes = inquiry_.propertyBytes(sequence).value_or("");
    std::vector<std::uint32_t> result(bytes.size() / sizeof(std::uint32_t));
    if (!result.empty()) std::memcpy(result.data(), bytes.data(), result.size() * sizeof(std::uint32_t));
    return result;
}

std::optional<Point> X11Screens::middleOfActiveWindow() const {
    const auto active = inquiry_.propertyNumber(inquiry_.askProperty(inquiry_.root(), "_NET_ACTIVE_WINDOW"));
    if (!active || *active == XCB_WINDOW_NONE) return std::nullopt;
    const auto sizeQuestion = xcb_get_geometry(inquiry_.xcb(), *active).sequence;
    const auto placeQuestion =
        xcb_translate_coordinates(inquiry_.xcb(), *active, inquiry_.root(), 0, 0).sequence;
    const auto frameQuestion = inquiry_.askProperty(*active, "_NET_FRAME_EXTENTS");
    const auto size = inquiry_.reply<xcb_get_geometry_reply_t>(sizeQuestion);
    const auto place = inquiry_.reply<xcb_translate_coordinates_reply_t>(placeQuestion);
    auto frame = numbers(frameQuestion);
    if (!size || !place) return std::nullopt;
    frame.resize(plainStrut);  // in the same order
    const auto difference = [&](std::size_t far, std::size_t near) {
        return static_cast<double>(frame[far]) - static_cast<double>(frame[near]);
    };
    return Point{place->dst_x + (size->width + difference(1, 0)) * 0.5,
                 place->dst_y + (size->height + difference(3, 2)) * 0.5};
}

}  // namespace nettlecap
