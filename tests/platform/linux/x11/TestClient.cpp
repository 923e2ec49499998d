#include "platform/linux/x11/TestClient.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <cstring>

namespace nettlecap::test {

namespace {

constexpr std::size_t pieceSize = 200'000;
constexpr std::uint32_t allUnits = 0x1000'0000;

template <class T>
using Owned = std::unique_ptr<T, void (*)(void*)>;

template <class T>
Owned<T> owned(T* memory) {
    return {memory, std::free};
}

template <class T>
const T& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const T&>(event);
}

}  // namespace

TestClient::TestClient() : xcb_(xcb_connect(nullptr, nullptr)), window_(XCB_NONE) {
    assert(xcb_connection_has_error(xcb_) == 0);
    window_ = newWindow();
}

TestClient::~TestClient() { quit(); }

xcb_window_t TestClient::newWindow() {
    const xcb_window_t window = xcb_generate_id(xcb_);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb_, 0, window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &mask);
    return window;
}

xcb_atom_t TestClient::atom(const std::string& name) {
    if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
    const auto cookie = xcb_intern_atom(xcb_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto reply = owned(xcb_intern_atom_reply(xcb_, cookie, nullptr));
    return atoms_[name] = reply->atom;
}

std::string TestClient::nameOf(xcb_atom_t atom) {
    const auto reply = owned(xcb_get_atom_name_reply(xcb_, xcb_get_atom_name(xcb_, atom), nullptr));
    if (!reply) return {};
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

std::vector<std::string> TestClient::namesIn(const std::string& atoms) {
    std::vector<std::string> result;
    for (std::size_t at = 0; at + sizeof(xcb_atom_t) <= atoms.size(); at += sizeof(xcb_atom_t)) {
        xcb_atom_t value = 0;
        std::memcpy(&value, atoms.data() + at, sizeof value);
        result.push_back(value == XCB_ATOM_NONE ? "" : nameOf(value));
    }
    return result;
}

xcb_timestamp_t TestClient::serverTime() {
    const xcb_atom_t clock = atom("TEST_CLOCK");
    xcb_change_property(xcb_, XCB_PROP_MODE_APPEND, window_, clock, XCB_ATOM_INTEGER, 32, 0, nullptr);
    xcb_flush(xcb_);
    for (;;) {
        auto event = owned(xcb_wait_for_event(xcb_));
        assert(event);
        const auto& change = as<xcb_property_notify_event_t>(*event);
        const bool isClock = (event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY && change.atom == clock;
        if (isClock) return change.time;
        early_.push_back(std::move(event));
    }
}

xcb_window_t TestClient::ownerOf(const std::string& selection) {
    const auto cookie = xcb_get_selection_owner(xcb_, atom(selection));
    return owned(xcb_get_selection_owner_reply(xcb_, cookie, nullptr))->owner;
}

void TestClient::sync() { (void)owned(xcb_get_input_focus_reply(xcb_, xcb_get_input_focus(xcb_), nullptr)); }

void TestClient::pump() {
    while (xcb_) {
        auto event = owned<xcb_generic_event_t>(nullptr);
        if (early_.empty()) {
            event = owned(xcb_poll_for_event(xcb_));
        } else {
            event = std::move(early_.front());
            early_.pop_front();
        }
        if (!event) break;
        handle(*event);
    }
    if (xcb_) xcb_flush(xcb_);
}

void TestClient::quit() {
    if (xcb_) xcb_disconnect(std::exchange(xcb_, nullptr));
}

void TestOwner::offer(const std::string& target, std::string bytes) {
    behave(target, [this, target, bytes = std::move(bytes)](const Request& request) {
        if (bytes.size() > pieceSize)
            sendInPieces(request, target, bytes);
        else
            putAndTell(request, target, 8, bytes);
    });
}

void TestOwner::behave(const std::string& target, Behaviour behaviour) {
    behaviours_[atom(target)] = std::move(behaviour);
    listed_.push_back(atom(target));
}

void TestOwner::mute(const std::string& target) {
    behave(target, [](const Request&) {});
}

void TestOwner::refuse(const std::string& target) {
    behave(target, [this](const Request& request) { tell(request, true); });
}

void TestOwner::own(const std::string& selection) {
    selection_ = selection;
    lost_ = false;
    xcb_set_selection_owner(xcb(), window(), atom(selection), serverTime());
    sync();
}

void TestOwner::release() {
    xcb_set_selection_owner(xcb(), XCB_NONE, atom(selection_), serverTime());
    sync();
}

void TestOwner::destroyWindow() {
    xcb_destroy_window(xcb(), window());
    sync();
}

int TestOwner::asked(const std::string& target) { return isGone() ? 0 : asked_[atom(target)]; }

int TestOwner::askedInAll() const {
    int sum = 0;
    for (const auto& [target, times] : asked_) sum += times;
    return sum;
}

std::vector<std::string> TestOwner::atomsIn(const Request& request) {
    const auto cookie = xcb_get_property(xcb(), 0, request.requestor, request.property,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, allUnits);
    const auto reply = owned(xcb_get_property_reply(xcb(), cookie, nullptr));
    if (!reply) return {};
    return namesIn({static_cast<const char*>(xcb_get_property_value(reply.get())),
                    static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
}

void TestOwner::put(const Request& request, const std::string& type, unsigned format,
                    const std::string& bytes) {
    const auto length = static_cast<std::uint32_t>(bytes.size() / (format / 8));
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, request.requestor, request.property, atom(type),
                        static_cast<std::uint8_t>(format), length, bytes.data());
}

void TestOwner::putAndTell(const Request& request, const std::string& type, unsigned format,
                           const std::string& bytes) {
    put(request, type, format, bytes);
    tell(request);
}

void TestOwner::tell(const Request& request, bool refused) {
    std::array<char, 32> wire{};
    xcb_selection_notify_event_t told{};
    told.response_type = XCB_SELECTION_NOTIFY;
    told.time = request.time;
    told.requestor = request.requestor;
    told.selection = request.selection;
    told.target = request.target;
    told.property = refused ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : request.property;
    std::memcpy(wire.data(), &told, sizeof told);
    xcb_send_event(xcb(), 0, request.requestor, 0, wire.data());
    xcb_flush(xcb());
}

void TestOwner::announce(const Request& request, std::uint32_t size) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb(), request.requestor, XCB_CW_EVENT_MASK, &mask);
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, request.requestor, request.property, atom("INCR"), 32,
                        1, &size);
    tell(request);
}

void TestOwner::onTaken(const Request& request, Behaviour behaviour) {
    transfers_.insert_or_assign(std::pair(request.requestor, request.property),
                                Transfer{request, std::move(behaviour)});
}

void TestOwner::sendInPieces(const Request& request, const std::string& type, std::string bytes) {
    announce(request, static_cast<std::uint32_t>(bytes.size()));
    const auto all = std::make_shared<const std::string>(std::move(bytes));
    onTaken(request, [this, type, all, sent = std::size_t(0)](const Request& to) mutable {
        const std::string piece = all->substr(sent, pieceSize);
        sent += piece.size();
        put(to, type, 8, piece);
        if (piece.empty()) transfers_.erase({to.requestor, to.property});
    });
}

void TestOwner::answerTargets(const Request& request) {
    std::vector<xcb_atom_t> targets = listed_;
    targets.push_back(atom("TARGETS"));
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(targets.size()), targets.data());
    tell(request);
}

void TestOwner::handle(const xcb_generic_event_t& event) {
    const auto kind = event.response_type & 0x7F;
    if (kind == XCB_SELECTION_CLEAR) {
        lost_ = true;
    } else if (kind == XCB_PROPERTY_NOTIFY) {
        const auto& change = as<xcb_property_notify_event_t>(event);
        const auto found = transfers_.find({change.window, change.atom});
        if (found == transfers_.end() || change.state != XCB_PROPERTY_DELETE) return;
        auto transfer = found->second;
        transfer.taken(transfer.request);
        const auto still = transfers_.find({change.window, change.atom});
        if (still != transfers_.end()) still->second.taken = std::move(transfer.taken);
    } else if (kind == XCB_SELECTION_REQUEST) {
        const Request request = as<Request>(event);
        ++asked_[request.target];
        const auto behaviour = behaviours_.find(request.target);
        if (behaviour != behaviours_.end())
            Behaviour(behaviour->second)(request);
        else if (request.target == atom("TARGETS"))
            answerTargets(request);
        else
            tell(request, true);
    }
}

void TestRequestor::ask(const std::string& target, const std::string& selection, xcb_timestamp_t time) {
    convert(atom(target), atom("TEST_ANSWER"), atom(selection), time);
}

void TestRequestor::askWithoutProperty(const std::string& target) {
    convert(atom(target), XCB_ATOM_NONE, atom("CLIPBOARD"), XCB_CURRENT_TIME);
}

void TestRequestor::askMultiple(const std::vector<std::pair<std::string, std::string>>& pairs) {
    std::vector<xcb_atom_t> atoms;
    for (const auto& [target, property] : pairs) {
        atoms.push_back(target.empty() ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : atom(target));
        atoms.push_back(property.empty() ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : atom(property));
    }
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window(), atom("TEST_ANSWER"), atom("ATOM_PAIR"), 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
    convert(atom("MULTIPLE"), atom("TEST_ANSWER"), atom("CLIPBOARD"), XCB_CURRENT_TIME);
}

void TestRequestor::convert(xcb_atom_t target, xcb_atom_t property, xcb_atom_t selection,
                            xcb_timestamp_t time) {
    answer_.reset();
    coming_ = {};
    told_ = inPieces_ = false;
    property_ = property == XCB_ATOM_NONE ? target : property;
    xcb_convert_selection(xcb(), window(), selection, target, property, time);
    xcb_flush(xcb());
}

TestRequestor::Answer TestRequestor::take(xcb_atom_t property) {
    const auto cookie =
        xcb_get_property(xcb(), 1, window(), property, XCB_GET_PROPERTY_TYPE_ANY, 0, allUnits);
    const auto reply = owned(xcb_get_property_reply(xcb(), cookie, nullptr));
    Answer answer;
    if (!reply || reply->type == XCB_ATOM_NONE) {
        answer.refused = true;
        return answer;
    }
    answer.type = nameOf(reply->type);
    answer.format = reply->format;
    answer.bytes.assign(static_cast<const char*>(xcb_get_property_value(reply.get())),
                        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    return answer;
}

TestRequestor::Answer TestRequestor::property(const std::string& name) { return take(atom(name)); }

std::vector<std::string> TestRequestor::names() {
    return answer_ ? namesIn(answer_->bytes) : std::vector<std::string>();
}

void TestRequestor::handle(const xcb_generic_event_t& event) {
    const auto kind = event.response_type & 0x7F;
    if (kind == XCB_SELECTION_NOTIFY) {
        const auto& told = as<xcb_selection_notify_event_t>(event);
        told_ = true;
        coming_.time = told.time;
        coming_.refused = told.property == XCB_ATOM_NONE;
        if (coming_.refused) answer_ = coming_;
        if (coming_.refused || takesNothing_) return;
        Answer first = take(property_);
        inPieces_ = first.type == "INCR";
        if (inPieces_) return;
        first.time = told.time;
        answer_ = std::move(first);
    } else if (kind == XCB_PROPERTY_NOTIFY && inPieces_ && !takesNothing_) {
        const auto& change = as<xcb_property_notify_event_t>(event);
        if (change.atom != property_ || change.state != XCB_PROPERTY_NEW_VALUE) return;
        const Answer piece = take(property_);
        if (piece.refused) return;
        coming_.type = piece.type;
        coming_.format = piece.format;
        coming_.inPieces = true;
        coming_.bytes += piece.bytes;
        if (piece.bytes.empty()) answer_ = coming_;
    }
}

}  // namespace nettlecap::test
