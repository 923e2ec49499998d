#include "platform/linux/x11/SelectionServer.h"

#include "platform/linux/x11/PasteboardTargets.h"
#include "platform/linux/x11/PropertyText.h"

#include <array>
#include <cstring>

namespace nettlecap {

namespace {

constexpr std::uint32_t partUnits = 2;  // of MULTIPLE: a target and a property
constexpr std::uint32_t mostParts = 1024;

/// Times wrap around every 49 days.
bool isBefore(xcb_timestamp_t time, xcb_timestamp_t other) {
    return static_cast<std::int32_t>(time - other) < 0;
}

std::optional<Bytes> latin1(const std::optional<Bytes>& text) {
    auto bytes = text ? propertyText::latin1FromUtf8(text->view()) : std::nullopt;
    return bytes ? std::optional(Bytes(std::move(*bytes))) : std::nullopt;
}

}  // namespace

SelectionServer::SelectionServer(SelectionPorts ports, xcb_atom_t selection)
    : ports_(ports), selection_(selection), window_(xcb_generate_id(ports.connection.xcb())),
      transfers_(ports),
      events_(ports.connection.onEvent([this](const xcb_generic_event_t& event) { onEvent(event); })) {
    xcb_create_window(ports_.connection.xcb(), 0, window_, ports_.connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

SelectionServer::~SelectionServer() { xcb_destroy_window(ports_.connection.xcb(), window_); }

unsigned SelectionServer::claim(xcb_timestamp_t time) {
    since_ = time;
    contents_ = std::make_shared<Contents>();
    const auto request = xcb_set_selection_owner(ports_.connection.xcb(), window_, selection_, time);
    ports_.connection.flush();
    return request.sequence;
}

void SelectionServer::offer(PasteboardItem item) {
    auto contents = std::make_shared<Contents>();
    contents->forms = std::move(item.forms);
    for (std::size_t form = 0; form < contents->forms.size(); ++form) {
        for (const auto& [name, encoding] : pasteboardTargets::servedAs(contents->forms[form].type)) {
            const xcb_atom_t target = ports_.connection.atoms().of(name);
            const bool isLatin1 = encoding == pasteboardTargets::Encoding::latin1;
            const bool isNew =
                contents->served.emplace(target, Served{.form = form, .isLatin1 = isLatin1}).second;
            if (isNew) contents->targets.push_back(target);
        }
    }
    contents_ = std::move(contents);
}

void SelectionServer::forget() { contents_.reset(); }

void SelectionServer::release() {
    if (!isServing()) return;
    forget();
    // With our own time, which the server refuses if somebody took the selection since.
    xcb_set_selection_owner(ports_.connection.xcb(), XCB_NONE, selection_, since_);
    ports_.connection.flush();
}

bool SelectionServer::isOwner() {
    const auto cookie = xcb_get_selection_owner(ports_.connection.xcb(), selection_);
    const auto reply = ports_.connection.waitFor<xcb_get_selection_owner_reply_t>(cookie.sequence);
    return reply && reply->owner == window_;
}

const std::vector<PasteboardItem::Form>& SelectionServer::forms() const {
    static const std::vector<PasteboardItem::Form> none;
    return contents_ ? contents_->forms : none;
}

std::vector<xcb_atom_t> SelectionServer::targets() const {
    return contents_ ? contents_->targets : std::vector<xcb_atom_t>();
}

void SelectionServer::onEvent(const xcb_generic_event_t& event) {
    const auto kind = event.response_type & 0x7F;
    if (kind == XCB_SELECTION_REQUEST) {
        const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        if (request.owner == window_ && request.selection == selection_) answer(request);
    } else if (kind == XCB_SELECTION_CLEAR) {
        const auto& cleared = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
        const bool isOurs = cleared.owner == window_ && cleared.selection == selection_;
        if (isOurs && !isBefore(cleared.time, since_)) forget();
    }
}

void SelectionServer::answer(const xcb_selection_request_event_t& request) {
    const bool isFromAnEarlierTime = request.time != XCB_CURRENT_TIME && isBefore(request.time, since_);
    if (!contents_ || isFromAnEarlierTime) return notify(request, XCB_ATOM_NONE);
    auto conversion = std::make_shared<Conversion>();
    conversion->request = request;
    conversion->isMultiple = request.target == ports_.connection.atoms().of("MULTIPLE");
    if (conversion->isMultiple) return readParts(conversion);
    // Clients from before ICCCM name no property: the target's name serves (2.2).
    if (request.property == XCB_ATOM_NONE) conversion->request.property = request.target;
    conversion->parts = {{.target = request.target, .property = conversion->request.property}};
    convertAll(conversion);
}

void SelectionServer::readParts(const std::shared_ptr<Conversion>& conversion) {
    const auto& request = conversion->request;
    if (request.property == XCB_ATOM_NONE) return notify(request, XCB_ATOM_NONE);
    const auto cookie = xcb_get_property(ports_.connection.xcb(), 0, request.requestor, request.property,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, mostParts * partUnits);
    ports_.connection.await<xcb_get_property_reply_t>(
        cookie.sequence, guard_([this, conversion](const xcb_get_property_reply_t* reply) {
            if (!reply || reply->format != 32 || reply->bytes_after > 0)
                return notify(conversion->request, XCB_ATOM_NONE);
            conversion->parts.resize(reply->value_len / partUnits);
            if (!conversion->parts.empty())
                std::memcpy(conversion->parts.data(), xcb_get_property_value(reply),
                            conversion->parts.size() * sizeof(Part));
            convertAll(conversion);
        }));
}

void SelectionServer::convertAll(const std::shared_ptr<Conversion>& conversion) {
    conversion->open = conversion->parts.size() + 1;
    for (std::size_t part = 0; part < conversion->parts.size(); ++part) convert(conversion, part);
    endPart(conversion, conversion->parts.size(), true);
}

void SelectionServer::convert(const std::shared_ptr<Conversion>& conversion, std::size_t part) {
    const Part wanted = conversion->parts[part];
    const xcb_window_t requestor = conversion->request.requestor;
    if (wanted.property == XCB_ATOM_NONE || !contents_) return endPart(conversion, part, false);
    if (convertAtOnce(requestor, wanted)) return endPart(conversion, part, true);
    if (!contents_->served.contains(wanted.target)) return endPart(conversion, part, false);
    deliver(wanted.target, [=, this](const std::optional<Bytes>& bytes) {
        if (bytes) transfers_.put({requestor, wanted.property}, wanted.target, *bytes);
        if (bytes) conversion->hasGivenForm = true;
        endPart(conversion, part, bytes.has_value());
    });
}

bool SelectionServer::convertAtOnce(xcb_window_t requestor, const Part& part) {
    X11Atoms& atoms = ports_.connection.atoms();
    std::vector<std::uint32_t> values;
    xcb_atom_t type = XCB_ATOM_ATOM;
    if (part.target == atoms.of("TARGETS")) {
        values = {atoms.of("TARGETS"), atoms.of("TIMESTAMP"), atoms.of("MULTIPLE")};
        values.insert(values.end(), contents_->targets.begin(), contents_->targets.end());
    } else if (part.target == atoms.of("TIMESTAMP")) {
        type = XCB_ATOM_INTEGER;
        values = {since_};
    } else {
        return false;
    }
    xcb_change_property(ports_.connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, part.property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
    return true;
}

void SelectionServer::deliver(xcb_atom_t target, Delivery delivery) {
    const auto contents = contents_;
    Served& served = contents->served.at(target);
    served.waiting.push_back(std::move(delivery));
    const bool isBeingMade = served.waiting.size() > 1;
    if (isBeingMade) return;
    auto give = guard_([contents, target](const std::optional<Bytes>& bytes) {
        const auto waiting = std::exchange(contents->served.at(target).waiting, {});
        for (const Delivery& deliver : waiting) deliver(bytes);
    });
    ports_.background.run(
        [make = contents->forms[served.form].bytes, isLatin1 = served.isLatin1, give]() -> Task {
            std::optional<Bytes> bytes = make();
            if (isLatin1) bytes = latin1(bytes);
            return [give, bytes]() mutable { give(bytes); };
        });
}

void SelectionServer::endPart(const std::shared_ptr<Conversion>& conversion, std::size_t part, bool done) {
    if (!done) conversion->parts[part].property = XCB_ATOM_NONE;
    if (--conversion->open > 0) return;
    const auto& request = conversion->request;
    if (conversion->isMultiple) {
        xcb_change_property(ports_.connection.xcb(), XCB_PROP_MODE_REPLACE, request.requestor,
                            request.property, ports_.connection.atoms().of("ATOM_PAIR"), 32,
                            static_cast<std::uint32_t>(conversion->parts.size() * partUnits),
                            conversion->parts.data());
        notify(request, request.property);
    } else {
        notify(request, conversion->parts.front().property);
    }
    if (conversion->hasGivenForm) read_.emit(xcb_window_t(request.requestor));
}

void SelectionServer::notify(const xcb_selection_request_event_t& request, xcb_atom_t property) const {
    xcb_selection_notify_event_t notification{};
    notification.response_type = XCB_SELECTION_NOTIFY;
    notification.time = request.time;
    notification.requestor = request.requestor;
    notification.selection = request.selection;
    notification.target = request.target;
    notification.property = property;
    // Events are 32 bytes on the wire, and more is read from the place than this one has.
    std::array<char, 32> wire{};
    static_assert(sizeof notification <= wire.size());
    std::memcpy(wire.data(), &notification, sizeof notification);
    xcb_send_event(ports_.connection.xcb(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
}

}  // namespace nettlecap
