#pragma once

#include "platform/linux/x11/SelectionWatch.h"

namespace nettlecap {

/// The tray that takes icons as windows (freedesktop.org, System Tray Protocol): whoever owns
/// the selection of its name.
class X11EmbeddingTray {
public:
    /// The connection must outlive this.
    static Result<std::unique_ptr<X11EmbeddingTray>> open(X11Connection& connection);

    bool isThere() const { return window() != XCB_WINDOW_NONE; }
    xcb_window_t window() const { return watch_->owner(); }  ///< NONE: there is no tray
    /// Also of one that takes the place of another.
    Subscription onArrival(Task handler) const;
    Subscription onDeparture(Task handler) const;  ///< with none that takes its place

private:
    explicit X11EmbeddingTray(std::unique_ptr<SelectionWatch> watch) : watch_(std::move(watch)) {}

    std::unique_ptr<SelectionWatch> watch_;
};

}  // namespace nettlecap
