#include "ui/qml/QuickSheet.h"

#include "ui/qml/RoundedMask.h"

#include <QCoreApplication>
#include <utility>

namespace nettlecap {

namespace {

/// The outline of the content.
constexpr RoundedMask seen{.margin = 0, .radius = 12};

}  // namespace

QuickSheet::QuickSheet(QQuickWindow& panel, NativeWindows& windows, std::unique_ptr<QQuickItem> content)
    : windows_(windows), content_(std::move(content), nullptr) {
    setFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setColor(Qt::transparent);
    setTransientParent(&panel);
    QQuickItem& item = content_.item();
    setTitle(item.property("title").toString());
    item.setParentItem(contentItem());
    item.setFocus(true);
    fit();
    connect(&item, &QQuickItem::implicitHeightChanged, this, &QuickSheet::fit);
}

void QuickSheet::fit() {
    QQuickItem& item = content_.item();
    const double width = item.implicitWidth();
    const QSize whole = QSizeF(width, content_.fittingHeight(width)).toSize();
    item.setSize(whole);
    setMinimumSize(whole);
    setMaximumSize(whole);
    resize(whole);
    const bool isComposited = windows_.isComposited();
    item.setProperty("isComposited", isComposited);
    setMask(isComposited ? QRegion() : seen.of(whole));
    Q_EMIT contentSizeChanged();
}

void QuickSheet::orderFront() {
    fit();
    windows_.prepareToCover(winId());
    windows_.prepareToShow(winId());
    show();
    raise();
    takeKeyboard();
}

void QuickSheet::takeKeyboard() {
    requestActivate();
    windows_.bringToFront(winId());
}

void QuickSheet::takeKey(const QKeyEvent& key) {
    early_.emplace_back(key.clone());
    if (activeFocusItem()) takeEarlyKeys();
}

void QuickSheet::takeEarlyKeys() {
    for (const auto& key : std::exchange(early_, {})) QCoreApplication::sendEvent(this, key.get());
}

bool QuickSheet::event(QEvent* event) {
    if (event->type() == QEvent::Close) {
        event->ignore();
        Q_EMIT closeRequested();
        return true;
    }
    const bool isTaken = QQuickWindow::event(event);
    if (event->type() == QEvent::FocusIn) takeEarlyKeys();
    return isTaken;
}

}  // namespace nettlecap
