#include "ui/qml/ScreenPoints.h"

#include <QGuiApplication>
#include <QScreen>

namespace nettlecap {

namespace {

QRect primaryFrame() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry() : QRect();
}

}  // namespace

QRect toQt(const Rect& rect) {
    const QRect primary = primaryFrame();
    const QSize size(qCeil(rect.size.width), qCeil(rect.size.height));
    const int left = primary.x() + qRound(rect.origin.x);
    const int bottom = primary.y() + primary.height() - qRound(rect.origin.y);
    return {QPoint(left, bottom - size.height()), size};
}

Rect fromQt(const QRect& rect) {
    const QRect primary = primaryFrame();
    const int bottom = rect.y() + rect.height();
    return {.origin = {static_cast<double>(rect.x() - primary.x()),
                       static_cast<double>(primary.y() + primary.height() - bottom)},
            .size = {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

std::optional<Rect> visibleFrameAround(const QWindow& window, const Screens& screens) {
    const auto& [corner, size] = fromQt(window.frameGeometry());
    const Point middle{corner.x + size.width * 0.5, corner.y + size.height * 0.5};
    for (const Screen& screen : screens.all())
        if (screen.frame.contains(middle)) return screen.visibleFrame;
    const auto main = screens.main();
    return main ? std::optional(main->visibleFrame) : std::nullopt;
}

}  // namespace nettlecap
