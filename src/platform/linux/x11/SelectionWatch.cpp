#include "platform/linux/x11/SelectionWatch.h"

namespace nettlecap {

Result<std::unique_ptr<SelectionWatch>> SelectionWatch::open(X11Connection& connection,
                                                             xcb_atom_t selection) {
    xcb_connection_t* xcb = connection.xcb();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(xcb, &xcb_xfixes_id);
    if (!extension || extension->present == 0) return Failure{"the X server lacks the XFixes extension"};
    const auto cookie = xcb_xfixes_query_version(xcb, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    if (!connection.waitFor<xcb_xfixes_query_version_reply_t>(cookie.sequence))
        return Failure{"the X server does not answer"};
    return std::unique_ptr<SelectionWatch>(new SelectionWatch(connection, selection, extension->first_event));
}

SelectionWatch::SelectionWatch(X11Connection& connection, xcb_atom_t selection, std::uint8_t xfixesFirstEvent)
    : connection_(connection), selection_(selection), xfixesFirstEvent_(xfixesFirstEvent),
      events_(connection.onEvent([this](const xcb_generic_event_t& event) { onEvent(event); })) {
    select(XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
           XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
           XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

SelectionWatch::~SelectionWatch() { select(0); }

void SelectionWatch::select(std::uint32_t events) {
    xcb_xfixes_select_selection_input(connection_.xcb(), connection_.root(), selection_, events);
    connection_.flush();
}

xcb_window_t SelectionWatch::owner() const {
    const auto cookie = xcb_get_selection_owner(connection_.xcb(), selection_);
    const auto reply = connection_.waitFor<xcb_get_selection_owner_reply_t>(cookie.sequence);
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_NONE);
}

/// Null: it tells of something else.
const SelectionWatch::Notice* SelectionWatch::noticeIn(const xcb_generic_event_t& event) const {
    if ((event.response_type & 0x7F) != xfixesFirstEvent_ + XCB_XFIXES_SELECTION_NOTIFY) return nullptr;
    const auto* notice = reinterpret_cast<const Notice*>(&event);
    return notice->selection == selection_ ? notice : nullptr;
}

void SelectionWatch::onEvent(const xcb_generic_event_t& event) const {
    const Notice* told = noticeIn(event);
    if (!told) return;
    const auto isNewOwner = [](const Notice& notice) {
        return notice.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    };
    const auto overtakes = [&](const xcb_generic_event_t& later) {
        const Notice* notice = noticeIn(later);
        return notice && isNewOwner(*notice);
    };
    changed_.emit({.kind = isNewOwner(*told) ? OwnerChange::Kind::newOwner : OwnerChange::Kind::died,
                   .owner = told->owner,
                   .time = told->timestamp,
                   .selectionTime = told->selection_timestamp,
                   .sequence = event.full_sequence,
                   .isOvertaken = connection_.isAhead(overtakes)});
}

std::uint32_t clientOf(const X11Connection& connection, xcb_window_t window) {
    return window & ~xcb_get_setup(connection.xcb())->resource_id_mask;
}

}  // namespace nettlecap
