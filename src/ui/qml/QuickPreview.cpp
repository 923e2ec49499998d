#include "ui/qml/QuickPreview.h"

#include "ui/qml/RoundedMask.h"

namespace nettlecap {

namespace {

/// The outline of PreviewFrame.qml and the line around it.
constexpr RoundedMask seen{.margin = 3, .radius = 13};

}  // namespace

QuickPreview::QuickPreview(const NativeWindows& windows) : windows_(windows) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
             Qt::X11BypassWindowManagerHint);
    setColor(Qt::transparent);
}

void QuickPreview::setContent(Parts parts) {
    parts_ = std::move(parts);
    parts_.frame->setParentItem(contentItem());
    connect(parts_.frame.get(), &QQuickItem::implicitWidthChanged, this, &QuickPreview::contentSizeChanged);
    connect(parts_.frame.get(), &QQuickItem::implicitHeightChanged, this, &QuickPreview::contentSizeChanged);
}

void QuickPreview::orderFront() {
    const bool isComposited = windows_.isComposited();
    parts_.frame->setProperty("isComposited", isComposited);
    updateMask();
    show();
    raise();
}

void QuickPreview::orderOut() {
    hide();
    parts_.frame.reset();
    parts_.content.reset();
}

QSizeF QuickPreview::contentSize() const {
    return parts_.frame ? QSizeF(parts_.frame->implicitWidth(), parts_.frame->implicitHeight()) : QSizeF();
}

bool QuickPreview::event(QEvent* event) {
    if (event->type() == QEvent::Enter) Q_EMIT hoverChanged(true);
    if (event->type() == QEvent::Leave) Q_EMIT hoverChanged(false);
    return QQuickWindow::event(event);
}

void QuickPreview::resizeEvent(QResizeEvent* event) {
    QQuickWindow::resizeEvent(event);
    if (parts_.frame) parts_.frame->setSize(size());
    updateMask();
}

void QuickPreview::updateMask() { setMask(windows_.isComposited() ? QRegion() : seen.of(size())); }

}  // namespace nettlecap
