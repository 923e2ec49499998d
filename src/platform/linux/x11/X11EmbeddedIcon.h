#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/x11/X11Connection.h"

#include <QImage>
#include <QRect>

namespace nettlecap {

/// An icon as a window of ours in the tray's (freedesktop.org, System Tray Protocol 0.3, and
/// XEmbed). It takes neither the keyboard nor a click that does not end where it began.
class X11EmbeddedIcon {
public:
    /// What it looks like; as large as it is told, or smaller.
    using Picture = std::function<QImage(int side)>;

    struct Look {
        std::string name;  ///< also of its class, small there
        Picture picture;
    };

    /// Asks the tray to take it. The connection must outlive this.
    X11EmbeddedIcon(X11Connection& connection, xcb_window_t tray, Look look);
    ~X11EmbeddedIcon();
    X11EmbeddedIcon(const X11EmbeddedIcon&) = delete;
    X11EmbeddedIcon& operator=(const X11EmbeddedIcon&) = delete;

    void repaint();  ///< the picture is another one now

    /// On the screen, in pixels; waits for the server. Empty: no tray has it, or shows it.
    QRect geometry() const;

    /// At the release of the button.
    Subscription onClick(std::function<void(StatusItemClick)> handler) const {
        return clicked_.subscribe(std::move(handler));
    }
    Subscription onHover(std::function<void(bool inside)> handler) const {
        return hovered_.subscribe(std::move(handler));
    }

private:
    void makeWindow(xcb_window_t tray);
    void describe();
    void dock(xcb_window_t tray);
    void onEvent(const xcb_generic_event_t& event);
    void onButton(const xcb_button_press_event_t& event, bool isDown);
    void paint();
    void upload(const QImage& image, xcb_pixmap_t pixmap);

    X11Connection& connection_;
    Look look_;
    xcb_window_t window_;
    xcb_colormap_t colours_ = XCB_NONE;
    std::uint32_t ink_ = XCB_NONE;  ///< the window as Render draws on it; NONE: it can't
    std::uint32_t argb_ = XCB_NONE;
    QSize size_;
    bool isEmbedded_ = false;
    std::uint8_t pressed_ = 0;
    Signal<StatusItemClick> clicked_;
    Signal<bool> hovered_;
    Subscription events_;
};

}  // namespace nettlecap
