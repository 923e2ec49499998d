#include "platform/linux/x11/X11EmbeddingTray.h"

namespace nettlecap {

namespace {

int numberOfScreen(const X11Connection& connection) {
    int number = 0;
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.xcb())); screens.rem > 0;
         xcb_screen_next(&screens), ++number)
        if (screens.data->root == connection.root()) break;
    return number;
}

bool isOwned(const OwnerChange& change) {
    return change.kind == OwnerChange::Kind::newOwner && change.owner != XCB_WINDOW_NONE;
}

}  // namespace

Result<std::unique_ptr<X11EmbeddingTray>> X11EmbeddingTray::open(X11Connection& connection) {
    const auto name = "_NET_SYSTEM_TRAY_S" + std::to_string(numberOfScreen(connection));
    auto watch = SelectionWatch::open(connection, connection.atoms().of(name));
    if (!watch) return Failure{watch.description()};
    return std::unique_ptr<X11EmbeddingTray>(new X11EmbeddingTray(std::move(*watch)));
}

Subscription X11EmbeddingTray::onArrival(Task handler) const {
    return watch_->onChange([handler = std::move(handler)](const OwnerChange& change) {
        if (isOwned(change)) handler();
    });
}

Subscription X11EmbeddingTray::onDeparture(Task handler) const {
    return watch_->onChange([handler = std::move(handler)](const OwnerChange& change) {
        if (!isOwned(change)) handler();
    });
}

}  // namespace nettlecap
