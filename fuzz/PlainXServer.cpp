#include "PlainXServer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/eventfd.h>
#include <unistd.h>

namespace nettlecap {

namespace {

constexpr std::uint8_t firstFixesEvent = 87;
constexpr std::size_t eventSize = 32;
constexpr std::uint32_t unit = 4;  // of lengths on the wire

PlainXServer* server = nullptr;

/// Always readable: whoever drives us looks at each turn.
int descriptor() {
    static const int number = eventfd(1, EFD_CLOEXEC);
    return number;
}

template <class Reply>
Reply* allocate(std::size_t more = 0) {
    auto* reply = static_cast<Reply*>(std::calloc(1, sizeof(Reply) + more));
    if (!reply) std::abort();
    return reply;
}

}  // namespace

PlainXServer::PlainXServer() {
    for (std::size_t atom = 0; atom <= XCB_ATOM_WM_TRANSIENT_FOR; ++atom) names_.emplace_back("predefined");
    names_[XCB_ATOM_NONE].clear();
    for (const auto& [name, atom] :
         {std::pair("ATOM", XCB_ATOM_ATOM), {"STRING", XCB_ATOM_STRING}, {"PRIMARY", XCB_ATOM_PRIMARY}}) {
        atoms_[name] = atom;
        names_[atom] = name;
    }
    server = this;
}

PlainXServer::~PlainXServer() {
    for (xcb_generic_event_t* event : events_) std::free(event);
    for (const auto& [sequence, reply] : replies_) {
        std::free(reply.reply);
        std::free(reply.error);
    }
    server = nullptr;
}

xcb_atom_t PlainXServer::atom(std::string_view name) {
    const auto [known, isNew] = atoms_.try_emplace(std::string(name), static_cast<xcb_atom_t>(names_.size()));
    if (isNew) names_.emplace_back(name);
    return known->second;
}

void PlainXServer::tell(std::string_view bytes) {
    auto* event = allocate<xcb_generic_event_t>();
    std::memcpy(event, bytes.data(), std::min(bytes.size(), eventSize));
    event->sequence = static_cast<std::uint16_t>(sequence_);
    event->full_sequence = sequence_;
    events_.push_back(event);
}

template <class Event>
void PlainXServer::send(Event event, std::uint8_t kind) {
    static_assert(sizeof event <= eventSize);
    event.response_type = kind;
    tell({reinterpret_cast<const char*>(&event), sizeof event});
}

void PlainXServer::fail(std::uint8_t code, std::uint32_t resource) {
    xcb_value_error_t error{};
    error.error_code = code;
    error.bad_value = resource;
    send(error, 0);
}

void PlainXServer::notify(xcb_window_t window, xcb_atom_t property, std::uint8_t state) {
    if (!windows_.contains(window) && !watched_.contains(window)) return;
    xcb_property_notify_event_t event{};
    event.window = window;
    event.atom = property;
    event.time = now_;
    event.state = state;
    send(event, XCB_PROPERTY_NOTIFY);
}

void PlainXServer::put(xcb_window_t window, xcb_atom_t property, Property contents) {
    if (window < others && !windows_.contains(window)) return;
    properties_[{window, property}] = std::move(contents);
    notify(window, property, XCB_PROPERTY_NEW_VALUE);
}

void PlainXServer::remove(xcb_window_t window, xcb_atom_t property) {
    if (properties_.erase({window, property}) > 0) notify(window, property, XCB_PROPERTY_DELETE);
}

void PlainXServer::own(xcb_atom_t selection, xcb_window_t owner) { change(selection, owner, now_); }

void PlainXServer::change(xcb_atom_t selection, xcb_window_t owner, xcb_timestamp_t time) {
    Selection& known = selections_[selection];
    if (time == XCB_CURRENT_TIME) time = now_;
    if (static_cast<std::int32_t>(time - known.since) < 0 || time > now_) return;
    if (windows_.contains(known.owner) && owner != known.owner) {
        xcb_selection_clear_event_t cleared{};
        cleared.time = now_;
        cleared.owner = known.owner;
        cleared.selection = selection;
        send(cleared, XCB_SELECTION_CLEAR);
    }
    known = {.owner = owner, .since = time};
    tellOfOwner(selection, owner, XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER);
}

void PlainXServer::die(xcb_atom_t selection) {
    Selection& known = selections_[selection];
    if (known.owner < others) return;
    known.owner = XCB_NONE;
    tellOfOwner(selection, XCB_NONE, XCB_XFIXES_SELECTION_EVENT_SELECTION_CLIENT_CLOSE);
}

void PlainXServer::tellOfOwner(xcb_atom_t selection, xcb_window_t owner, std::uint8_t kind) {
    xcb_xfixes_selection_notify_event_t event{};
    event.subtype = kind;
    event.window = root;
    event.owner = owner;
    event.selection = selection;
    event.timestamp = now_;
    event.selection_timestamp = selections_[selection].since;
    send(event, firstFixesEvent + XCB_XFIXES_SELECTION_NOTIFY);
}

void PlainXServer::answer(const Question& question, bool isRefusal) {
    if (!windows_.contains(question.requestor)) return;
    xcb_selection_notify_event_t event{};
    event.time = question.time;
    event.requestor = question.requestor;
    event.target = question.target;
    event.property = isRefusal ? xcb_atom_t(XCB_ATOM_NONE) : question.property;
    send(event, XCB_SELECTION_NOTIFY | 0x80);
}

void PlainXServer::ask(xcb_atom_t selection, const Question& question) {
    const xcb_window_t owner = selections_[selection].owner;
    if (!windows_.contains(owner)) return;
    xcb_selection_request_event_t event{};
    event.time = question.time;
    event.owner = owner;
    event.requestor = question.requestor;
    event.selection = selection;
    event.target = question.target;
    event.property = question.property;
    send(event, XCB_SELECTION_REQUEST);
}

void PlainXServer::destroy(xcb_window_t window) {
    std::erase_if(properties_, [&](const auto& property) { return property.first.first == window; });
    if (watched_.erase(window) == 0) return;
    xcb_destroy_notify_event_t event{};
    event.window = window;
    send(event, XCB_DESTROY_NOTIFY);
}

/// What xcb's functions do with the server.
struct PlainXcb {
    static unsigned next() { return ++server->sequence_; }

    static unsigned replied(void* reply, xcb_generic_error_t* error = nullptr) {
        const unsigned sequence = next();
        server->replies_[sequence] = {reply, error};
        return sequence;
    }

    static unsigned refused(std::uint8_t code) {
        auto* error = allocate<xcb_generic_error_t>();
        error->error_code = code;
        return replied(nullptr, error);
    }

    static bool take(unsigned sequence, void** reply, xcb_generic_error_t** error) {
        const auto found = server->replies_.find(sequence);
        if (found == server->replies_.end()) return false;
        *reply = found->second.reply;
        if (error)
            *error = found->second.error;
        else
            std::free(found->second.error);
        server->replies_.erase(found);
        return true;
    }

    static xcb_generic_event_t* event() {
        if (server->events_.empty()) return nullptr;
        xcb_generic_event_t* event = server->events_.front();
        server->events_.pop_front();
        return event;
    }

    static xcb_window_t window() { return ++server->lastWindow_; }
    static void create(xcb_window_t window) {
        next();
        server->windows_.insert(window);
    }
    static void destroy(xcb_window_t window) {
        next();
        server->windows_.erase(window);
        server->destroy(window);
    }

    static void watch(xcb_window_t window, std::uint32_t events) {
        next();
        if (events == 0)
            server->watched_.erase(window);
        else if (window >= PlainXServer::others)
            server->watched_.insert(window);
        else
            server->fail(XCB_WINDOW, window);
    }

    static void changeProperty(std::uint8_t mode, xcb_window_t window, xcb_atom_t property,
                               PlainXServer::Property contents) {
        next();
        const bool isThere = server->windows_.contains(window) || window >= PlainXServer::others;
        if (!isThere) return server->fail(XCB_WINDOW, window);
        if (mode == XCB_PROP_MODE_APPEND)
            contents.bytes.insert(0, server->properties_[{window, property}].bytes);
        server->put(window, property, std::move(contents));
    }

    static void deleteProperty(xcb_window_t window, xcb_atom_t property) {
        next();
        server->remove(window, property);
    }

    static unsigned property(bool removes, xcb_window_t window, xcb_atom_t property, std::uint32_t offset,
                             std::uint32_t length) {
        const auto found = server->properties_.find({window, property});
        if (found == server->properties_.end()) return replied(allocate<xcb_get_property_reply_t>());
        const auto [type, format, bytes] = found->second;
        const std::size_t begin = std::size_t(offset) * unit;
        if (begin > bytes.size()) return refused(XCB_VALUE);
        const std::size_t size = std::min(bytes.size() - begin, std::size_t(length) * unit);
        auto* reply = allocate<xcb_get_property_reply_t>(size);
        reply->response_type = 1;
        reply->type = type;
        reply->format = format;
        reply->bytes_after = static_cast<std::uint32_t>(bytes.size() - begin - size);
        reply->value_len = static_cast<std::uint32_t>(size / (format / 8U));
        std::memcpy(reply + 1, bytes.data() + begin, size);
        const bool isRead = reply->bytes_after == 0;
        const unsigned sequence = replied(reply);
        if (removes && isRead) server->remove(window, property);
        return sequence;
    }

    static unsigned atom(std::string_view name) {
        auto* reply = allocate<xcb_intern_atom_reply_t>();
        reply->atom = server->atom(name);
        return replied(reply);
    }

    static unsigned name(xcb_atom_t atom) {
        if (atom == XCB_ATOM_NONE || atom >= server->names_.size()) return refused(XCB_ATOM);
        const std::string& name = server->names_[atom];
        auto* reply = allocate<xcb_get_atom_name_reply_t>(name.size());
        reply->name_len = static_cast<std::uint16_t>(name.size());
        std::memcpy(reply + 1, name.data(), name.size());
        return replied(reply);
    }

    static unsigned owner(xcb_atom_t selection) {
        auto* reply = allocate<xcb_get_selection_owner_reply_t>();
        reply->owner = server->selections_[selection].owner;
        return replied(reply);
    }

    static unsigned setOwner(xcb_window_t window, xcb_atom_t selection, xcb_timestamp_t time) {
        const unsigned sequence = next();
        server->change(selection, window, time);
        return sequence;
    }

    static unsigned convert(xcb_atom_t selection, const PlainXServer::Question& question) {
        const unsigned sequence = next();
        const xcb_window_t owner = server->selections_[selection].owner;
        if (server->windows_.contains(owner))
            server->ask(selection, question);
        else if (owner == XCB_NONE)
            server->answer(question, true);
        else
            server->questions_.push_back(question);
        return sequence;
    }
};

}  // namespace nettlecap

using nettlecap::PlainXcb;

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

xcb_connection_t* xcb_connect(const char*, int* screen) {
    *screen = 0;
    return reinterpret_cast<xcb_connection_t*>(nettlecap::server);
}
void xcb_disconnect(xcb_connection_t*) {}
int xcb_connection_has_error(xcb_connection_t*) { return 0; }
int xcb_get_file_descriptor(xcb_connection_t*) { return nettlecap::descriptor(); }
int xcb_flush(xcb_connection_t*) { return 1; }
uint32_t xcb_get_maximum_request_length(xcb_connection_t*) { return 1024; }
uint32_t xcb_generate_id(xcb_connection_t*) { return PlainXcb::window(); }

const xcb_setup_t* xcb_get_setup(xcb_connection_t*) {
    // With one screen, and no name of who made it.
    static struct {
        xcb_setup_t setup;
        xcb_screen_t screen;
    } known{};
    known.setup.resource_id_mask = (1U << 21U) - 1;
    known.setup.roots_len = 1;
    known.screen.root = nettlecap::PlainXServer::root;
    return &known.setup;
}

const xcb_query_extension_reply_t* xcb_get_extension_data(xcb_connection_t*, xcb_extension_t*) {
    static const xcb_query_extension_reply_t fixes{
        .present = 1, .first_event = nettlecap::firstFixesEvent, .first_error = 140};
    return &fixes;
}

xcb_generic_event_t* xcb_poll_for_event(xcb_connection_t*) { return PlainXcb::event(); }
int xcb_poll_for_reply(xcb_connection_t*, unsigned sequence, void** reply, xcb_generic_error_t** error) {
    return PlainXcb::take(sequence, reply, error) ? 1 : 0;
}
void xcb_discard_reply(xcb_connection_t*, unsigned) {}

xcb_void_cookie_t xcb_create_window(xcb_connection_t*, uint8_t, xcb_window_t window, xcb_window_t, int16_t,
                                    int16_t, uint16_t, uint16_t, uint16_t, uint16_t, xcb_visualid_t, uint32_t,
                                    const void*) {
    PlainXcb::create(window);
    return {};
}
xcb_void_cookie_t xcb_destroy_window(xcb_connection_t*, xcb_window_t window) {
    PlainXcb::destroy(window);
    return {};
}
xcb_void_cookie_t xcb_change_window_attributes(xcb_connection_t*, xcb_window_t window, uint32_t,
                                               const void* values) {
    PlainXcb::watch(window, *static_cast<const uint32_t*>(values));
    return {};
}
xcb_void_cookie_t xcb_change_property(xcb_connection_t*, uint8_t mode, xcb_window_t window,
                                      xcb_atom_t property, xcb_atom_t type, uint8_t format, uint32_t count,
                                      const void* data) {
    const std::size_t size = std::size_t(count) * (format / 8U);
    std::string bytes(size == 0 ? "" : static_cast<const char*>(data), size);
    PlainXcb::changeProperty(mode, window, property,
                             {.type = type, .format = format, .bytes = std::move(bytes)});
    return {};
}
xcb_void_cookie_t xcb_delete_property(xcb_connection_t*, xcb_window_t window, xcb_atom_t property) {
    PlainXcb::deleteProperty(window, property);
    return {};
}
xcb_get_property_cookie_t xcb_get_property(xcb_connection_t*, uint8_t removes, xcb_window_t window,
                                           xcb_atom_t property, xcb_atom_t, uint32_t offset,
                                           uint32_t length) {
    return {PlainXcb::property(removes != 0, window, property, offset, length)};
}
xcb_intern_atom_cookie_t xcb_intern_atom(xcb_connection_t*, uint8_t, uint16_t size, const char* name) {
    return {PlainXcb::atom({name, size})};
}
xcb_intern_atom_reply_t* xcb_intern_atom_reply(xcb_connection_t*, xcb_intern_atom_cookie_t cookie,
                                               xcb_generic_error_t** error) {
    void* reply = nullptr;
    PlainXcb::take(cookie.sequence, &reply, error);
    return static_cast<xcb_intern_atom_reply_t*>(reply);
}
xcb_get_atom_name_cookie_t xcb_get_atom_name(xcb_connection_t*, xcb_atom_t atom) {
    return {PlainXcb::name(atom)};
}
xcb_get_input_focus_cookie_t xcb_get_input_focus(xcb_connection_t*) {
    return {PlainXcb::replied(nettlecap::allocate<xcb_get_input_focus_reply_t>())};
}
xcb_get_selection_owner_cookie_t xcb_get_selection_owner(xcb_connection_t*, xcb_atom_t selection) {
    return {PlainXcb::owner(selection)};
}
xcb_void_cookie_t xcb_set_selection_owner(xcb_connection_t*, xcb_window_t window, xcb_atom_t selection,
                                          xcb_timestamp_t time) {
    return {PlainXcb::setOwner(window, selection, time)};
}
xcb_void_cookie_t xcb_convert_selection(xcb_connection_t*, xcb_window_t requestor, xcb_atom_t selection,
                                        xcb_atom_t target, xcb_atom_t property, xcb_timestamp_t time) {
    return {PlainXcb::convert(
        selection, {.requestor = requestor, .target = target, .property = property, .time = time})};
}
xcb_void_cookie_t xcb_send_event(xcb_connection_t*, uint8_t, xcb_window_t, uint32_t, const char* event) {
    // Read as the library does.
    static std::string sent;
    sent.assign(event, nettlecap::eventSize);
    return {PlainXcb::next()};
}
xcb_xfixes_query_version_cookie_t xcb_xfixes_query_version(xcb_connection_t*, uint32_t, uint32_t) {
    return {PlainXcb::replied(nettlecap::allocate<xcb_xfixes_query_version_reply_t>())};
}
xcb_void_cookie_t xcb_xfixes_select_selection_input(xcb_connection_t*, xcb_window_t, xcb_atom_t, uint32_t) {
    return {PlainXcb::next()};
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
