#include "platform/linux/x11/X11KeyGrabs.h"

#include <algorithm>
#include <iterator>
#include <xcb/xcbext.h>

namespace nettlecap {

Status X11KeyGrabs::take(const KeyGrabs& grabs, HotKeyReference hotKey) {
    // The server would have no objection: to it we are one client.
    if (std::ranges::any_of(grabs, [this](const KeyGrab& grab) { return owners_.contains(grab); }))
        return badAccess;
    if (const Status status = grab(grabs); status != 0) return status;
    for (const KeyGrab& grab : grabs) owners_.emplace(grab, hotKey);
    return 0;
}

void X11KeyGrabs::giveUp(HotKeyReference hotKey) { ungrab(of(hotKey)); }

void X11KeyGrabs::arrange(const std::map<HotKeyReference, KeyGrabs>& wanted) {
    // First all that is given up: hot keys may change places.
    KeyGrabs left;
    for (const auto& [grab, hotKey] : owners_)
        if (!wanted.contains(hotKey) || !wanted.at(hotKey).contains(grab)) left.insert(grab);
    ungrab(left);
    for (const auto& [hotKey, grabs] : wanted) {
        const KeyGrabs present = of(hotKey);
        KeyGrabs missing;
        std::set_difference(grabs.begin(), grabs.end(), present.begin(), present.end(),
                            std::inserter(missing, missing.end()));
        if (!missing.empty() && take(missing, hotKey) != 0) ungrab(present);
    }
}

std::optional<HotKeyReference> X11KeyGrabs::ownerOf(const KeyGrab& grab) const {
    const auto owner = owners_.find(grab);
    if (owner == owners_.end()) return std::nullopt;
    return owner->second;
}

std::set<HotKeyReference> X11KeyGrabs::ownersOf(const KeyGrabs& grabs, std::uint32_t locks) const {
    std::set<HotKeyReference> owners;
    for (const auto& [grab, owner] : owners_)
        if (grabs.contains({grab.key, static_cast<std::uint16_t>(grab.modifiers & ~locks)}))
            owners.insert(owner);
    return owners;
}

Status X11KeyGrabs::grab(const KeyGrabs& grabs) {
    if (!table_.canAnswer()) return unanswered;
    xcb_connection_t* xcb = connection_.xcb();
    std::vector<unsigned> requests;
    for (const KeyGrab& grab : grabs)
        requests.push_back(xcb_grab_key_checked(xcb, 0, connection_.root(), grab.modifiers, grab.key,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)
                               .sequence);
    // Whatever has failed came before this answer.
    const bool answered = table_.canAnswer();
    Status status = answered ? 0 : unanswered;
    for (const unsigned request : requests) {
        if (!answered) {
            xcb_discard_reply(xcb, request);
            continue;
        }
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        xcb_poll_for_reply(xcb, request, &reply, &error);
        const X11Reply<xcb_generic_error_t> failure(error);
        if (failure && status == 0) status = failure->error_code;
    }
    if (status != 0) ungrab(grabs);
    return status;
}

void X11KeyGrabs::ungrab(const KeyGrabs& grabs) {
    for (const KeyGrab& grab : grabs) {
        xcb_ungrab_key(connection_.xcb(), grab.key, connection_.root(), grab.modifiers);
        owners_.erase(grab);
    }
    connection_.flush();
}

KeyGrabs X11KeyGrabs::of(HotKeyReference hotKey) const {
    KeyGrabs grabs;
    for (const auto& [grab, owner] : owners_)
        if (owner == hotKey) grabs.insert(grab);
    return grabs;
}

}  // namespace nettlecap
