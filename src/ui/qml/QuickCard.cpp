#include "ui/qml/QuickCard.h"

#include <QBitmap>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace nettlecap {

namespace {

/// What is seen of the card where nothing is translucent: its outline and the line around it.
constexpr double seenMargin = 3;
constexpr double seenRadius = 17;

QRegion seen(QSize size) {
    QBitmap bitmap(size);
    bitmap.clear();
    QPainter painter(&bitmap);
    painter.setBrush(Qt::color1);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(
        QRectF({}, QSizeF(size)).adjusted(seenMargin, seenMargin, -seenMargin, -seenMargin), seenRadius,
        seenRadius);
    painter.end();
    return QRegion(bitmap);
}

}  // namespace

QuickCard::QuickCard(const NativeWindows& windows) : windows_(windows) {
    window_.setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                     Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus |
                     Qt::X11BypassWindowManagerHint);
    window_.setColor(Qt::transparent);
}

void QuickCard::setContent(std::unique_ptr<HostedView> content) { content_.replace(std::move(content)); }

void QuickCard::setContentSize(Size size) {
    size_ = size;
    content_.setSize({size.width, size.height});
    place();
}

void QuickCard::setOrigin(Point origin) {
    origin_ = origin;
    place();
}

/// Whole points, so that the lines of one point are sharp.
void QuickCard::place() {
    const QSize size(qCeil(size_.width), qCeil(size_.height));
    const QScreen* primary = QGuiApplication::primaryScreen();
    const QRect frame = primary ? primary->geometry() : QRect();
    const int left = frame.x() + qRound(origin_.x);
    const int bottom = frame.y() + frame.height() - qRound(origin_.y);
    window_.setGeometry({QPoint(left, bottom - size.height()), size});
}

void QuickCard::orderFrontRegardless() {
    const bool isComposited = windows_.isComposited();
    if (content_.item()) content_.item()->setProperty("isComposited", isComposited);
    window_.setMask(isComposited ? QRegion() : seen(window_.size()));
    window_.show();
    window_.raise();
}

void QuickCard::orderOut() { window_.hide(); }

}  // namespace nettlecap
