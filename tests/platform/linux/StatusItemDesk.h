#pragma once

#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeTime.h"
#include "platform/fake/FakeWindows.h"
#include "platform/linux/EmbeddingTray.h"
#include "platform/linux/LinuxStatusItem.h"
#include "platform/linux/x11/DesktopUser.h"
#include "platform/linux/x11/X11Connection.h"
#include "ui/qml/QuickStatusItemWindows.h"
#include "ui/qml/QuickViewFactory.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>
#include <optional>
#include <xcb/xtest.h>

namespace nettlecap::test {

/// The item in a tray that takes windows, with a user before it. The panel is alive only
/// while somebody waits.
class StatusItemDesk {
public:
    enum class Tray { embedding, none };

    explicit StatusItemDesk(Tray kind = Tray::embedding) {
        const QSize screen = QGuiApplication::primaryScreen()->size();
        const Rect frame{.size = {static_cast<double>(screen.width()), static_cast<double>(screen.height())}};
        screens.setAll({{.frame = frame, .visibleFrame = frame}});
        user.moveTo(640, 400);
        item.setImage({.size = {18, 18},
                       .rectangles = {{.frame = {.origin = {3, 3}, .size = {12, 12}}}},
                       .strokes = {}});
        if (kind == Tray::none) return;
        tray.emplace();
        EXPECT_TRUE(untilEmbedded());
    }
    ~StatusItemDesk() {
        user.moveTo(640, 400);
        windows.closeMenu();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    bool until(const std::function<bool()>& condition) {
        return waitFor([&] {
            if (tray) tray->pump();
            return condition();
        });
    }
    /// A panel's patience passes meanwhile, again and again.
    bool untilEmbedded() {
        return until([this] {
            time.advance(LinuxStatusItem::panelPatience);
            return isIconThere();
        });
    }
    /// All that the bus and the X server have told by now has been heard.
    void catchUp() {
        user.waitForManager();
        const auto question = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                             "org.freedesktop.DBus", "GetId");
        const QDBusPendingCall answer = QDBusConnection::sessionBus().asyncCall(question);
        EXPECT_TRUE(until([&] { return answer.isFinished(); }));
        // It has read the events on its way, so that nothing wakes the loop any more.
        (void)connection->serverTime();
        QCoreApplication::processEvents();
        Q_EMIT QAbstractEventDispatcher::instance()->aboutToBlock();
    }
    bool isIconThere() const {
        return item.geometry() == QRect(100, 0, EmbeddingTray::side, EmbeddingTray::side);
    }
    void pointAt(QPoint place) {
        user.moveTo(static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()));
    }
    void click(std::uint8_t button) {
        pointAt(item.geometry().center());
        user.click(button);
    }
    void sendButton(std::uint8_t event) {
        xcb_test_fake_input(user.xcb(), event, 1, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
        xcb_flush(user.xcb());
    }
    const StatusItemWindow* openMenu() const {
        const StatusItemWindow* const menu = windows.menuWindow();
        return menu && menu->isExposed() ? menu : nullptr;
    }
    /// The middle of a line of the open menu, on the screen.
    QPoint lineOf(const std::string& title) const {
        const auto* column = openMenu()->content().childItems().constFirst();
        for (const QQuickItem* line : column->childItems())
            if (line->property("modelData").value<StatusItemMenuLine>().label.toStdString() == title)
                return line->mapToGlobal(QPointF(line->width() / 2, line->height() / 2)).toPoint();
        ADD_FAILURE() << "no line " << title;
        return {};
    }

    std::unique_ptr<X11Connection> connection = std::move(*X11Connection::open());
    std::optional<EmbeddingTray> tray;
    DesktopUser user;
    FakeTime time;
    LinuxStatusItem item{*connection, time};
    QuickViewFactory views{"/nowhere"};
    FakeNativeWindows native;
    FakeScreens screens;
    FakeEventMonitors events;
    QuickStatusItemWindows windows{{.windows = native, .screens = screens, .events = events},
                                   views.engine(),
                                   [this] { return item.geometry(); }};
    Subscription showing = item.showIn(windows);
};

}  // namespace nettlecap::test
