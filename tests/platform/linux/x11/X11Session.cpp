#include "platform/linux/x11/X11Session.h"

namespace nettlecap::test {

namespace {

template <class T>
std::unique_ptr<T> opened(Result<std::unique_ptr<T>> result) {
    EXPECT_TRUE(result) << "no X server";
    return std::move(*result);
}

}  // namespace

X11Session::X11Session()
    : connection(opened(X11Connection::open())), inquiry(opened(X11Inquiry::open())),
      workspace(std::make_unique<X11Workspace>(*connection, *inquiry, entries)),
      raw(opened(X11RawInput::open())),
      monitors(std::make_unique<X11EventMonitors>(*workspace, *inquiry, *raw, *connection)) {
    user.moveTo(1200, 780);  // off every window
}

X11Session::~X11Session() { quitAll(); }

OtherWindow& X11Session::open(const Appearance& appearance) {
    others_.push_back(std::make_unique<OtherWindow>(appearance));
    if (appearance.isManaged && !appearance.isPanel) user.activate(others_.back()->id());
    return *others_.back();
}

QWindow& X11Session::openOwn(int x, int y) {
    own_.push_back(std::make_unique<QRasterWindow>());
    QWindow& window = *own_.back();
    window.setGeometry(x, y, 200, 150);
    window.show();
    EXPECT_TRUE(waitFor([&] { return window.isExposed(); }));
    user.activate(static_cast<xcb_window_t>(window.winId()));
    EXPECT_TRUE(waitFor([&] { return window.isActive(); }));
    return window;
}

void X11Session::quitAll() {
    others_.clear();
    own_.clear();
    EXPECT_TRUE(waitFor([this] { return user.isDesktopEmpty(); }));
    user.waitForManager();
    // The next window may get the number of this one, which openbox leaves behind.
    user.setRootWindow("_NET_ACTIVE_WINDOW", XCB_WINDOW_NONE);
}

}  // namespace nettlecap::test
