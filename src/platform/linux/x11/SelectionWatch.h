#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <xcb/xfixes.h>

namespace nettlecap {

/// Who owns a selection, and how the owner before it went.
struct OwnerChange {
    enum class Kind {
        newOwner,  ///< or, with no window: the old one gave it up on purpose
        died,      ///< with its window or its connection
    };

    Kind kind = Kind::newOwner;
    xcb_window_t owner = XCB_NONE;
    xcb_timestamp_t time = XCB_CURRENT_TIME;           ///< of the change
    xcb_timestamp_t selectionTime = XCB_CURRENT_TIME;  ///< since when the owner, or the dead one, had it
    unsigned sequence = 0;                             ///< of our last request that was carried out before
    bool isOvertaken = false;                          ///< there is a newer owner already
};

/// Tells of every change of a selection's owner, by XFixes.
class SelectionWatch {
public:
    /// Fails where the server lacks XFixes.
    static Result<std::unique_ptr<SelectionWatch>> open(X11Connection& connection, xcb_atom_t selection);
    ~SelectionWatch();
    SelectionWatch(const SelectionWatch&) = delete;
    SelectionWatch& operator=(const SelectionWatch&) = delete;

    Subscription onChange(std::function<void(const OwnerChange&)> handler) const {
        return changed_.subscribe(std::move(handler));
    }
    /// The owner at present, waiting for the server; none too when it does not answer.
    xcb_window_t owner() const;

private:
    using Notice = xcb_xfixes_selection_notify_event_t;

    SelectionWatch(X11Connection& connection, xcb_atom_t selection, std::uint8_t xfixesFirstEvent);
    void select(std::uint32_t events);
    const Notice* noticeIn(const xcb_generic_event_t& event) const;
    void onEvent(const xcb_generic_event_t& event) const;

    X11Connection& connection_;
    xcb_atom_t selection_;
    std::uint8_t xfixesFirstEvent_;
    Signal<OwnerChange> changed_;
    Subscription events_;
};

/// The same for all windows of one connection to the server.
std::uint32_t clientOf(const X11Connection& connection, xcb_window_t window);

}  // namespace nettlecap
