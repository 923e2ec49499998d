#include "platform/linux/x11/SelectionReader.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace nettlecap {

namespace {

constexpr Seconds stepPatience(1.5);    // of one answer, and of each piece
constexpr Seconds wholePatience(60.0);  // of all pieces: they could trickle for ever
constexpr Seconds hurriedStepPatience(0.1);
constexpr Seconds hurriedWholePatience(1.0);

constexpr std::uint32_t unitSize = 4;                         // GetProperty counts in these
constexpr std::uint32_t sliceUnits = 256U * 1024 / unitSize;  // so that no reply stalls the main loop

std::string_view bytesOf(const xcb_get_property_reply_t& slice) {
    return {static_cast<const char*>(xcb_get_property_value(&slice)),
            static_cast<std::size_t>(xcb_get_property_value_length(&slice))};
}

/// Room that nobody writes to costs nothing, while growing copies all that has arrived.
void reserve(std::string& bytes, std::size_t size) try {
    bytes.reserve(size);
} catch (const std::bad_alloc&) {
    return;  // a system that counts what is only reserved: it grows
}

}  // namespace

SelectionReader::SelectionReader(SelectionPorts ports, Request request, std::function<void(Outcome)> handler)
    : ports_(ports), request_(std::move(request)), handler_(std::move(handler)),
      window_(xcb_generate_id(ports.connection.xcb())),
      property_(ports.connection.atoms().of("NETTLECAP_SELECTION")), patience_(stepPatience),
      end_(ports.clock.uptime() + wholePatience),
      deadline_(ports.scheduler, ports.clock, [this] { finish(Ending::stalled); }),
      events_(ports.connection.onEvent([this](const xcb_generic_event_t& event) { onEvent(event); })) {
    xcb_connection_t* xcb = ports_.connection.xcb();
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb, 0, window_, ports_.connection.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    if (!request_.parameter.empty())
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window_, property_, XCB_ATOM_ATOM, 32,
                            static_cast<std::uint32_t>(request_.parameter.size()), request_.parameter.data());
    sequence_ =
        xcb_convert_selection(xcb, window_, request_.selection, request_.target, property_, request_.time)
            .sequence;
    putOffDeadline();
}

SelectionReader::~SelectionReader() {
    if (isOver_)
        xcb_destroy_window(ports_.connection.xcb(), window_);
    else
        ports_.connection.destroyOnceAnswered(window_);
}

void SelectionReader::hurry() {
    patience_ = hurriedStepPatience;
    end_ = ports_.clock.uptime() + hurriedWholePatience;
    putOffDeadline();
}

void SelectionReader::onEvent(const xcb_generic_event_t& event) {
    const auto kind = event.response_type & 0x7F;
    if (kind == XCB_SELECTION_NOTIFY) {
        const auto& answer = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        if (answer.requestor == window_) onAnswer(answer);
    } else if (kind == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        const bool isOurs = change.window == window_ && change.atom == property_;
        if (isOurs && change.state == XCB_PROPERTY_NEW_VALUE && inPieces_) onNewPiece();
    }
}

void SelectionReader::onAnswer(const xcb_selection_notify_event_t& answer) {
    if (answered_) return;
    answered_ = true;
    if (answer.property != property_) return finish(Ending::refused);
    putOffDeadline();
    readSlice(0);
}

void SelectionReader::onNewPiece() {
    if (reading_)
        anotherPiece_ = true;
    else
        readSlice(0);
}

void SelectionReader::readSlice(std::uint32_t offset) {
    reading_ = true;
    constexpr std::uint8_t removeOnceRead = 1;
    const auto cookie = xcb_get_property(ports_.connection.xcb(), removeOnceRead, window_, property_,
                                         XCB_GET_PROPERTY_TYPE_ANY, offset, sliceUnits);
    ports_.connection.await<xcb_get_property_reply_t>(
        cookie.sequence,
        guard_([this, offset](const xcb_get_property_reply_t* slice) { take(slice, offset); }));
}

void SelectionReader::take(const xcb_get_property_reply_t* slice, std::uint32_t offset) {
    if (!slice) return finish(Ending::refused);
    const bool isMissing = slice->type == XCB_ATOM_NONE;
    if (isMissing && !inPieces_) return finish(Ending::refused);
    if (isMissing) {  // set and taken away again: no piece, and no end either
        reading_ = false;
        if (std::exchange(anotherPiece_, false)) readSlice(0);
        return;
    }
    if (!inPieces_ && offset == 0 && slice->type == ports_.connection.atoms().of("INCR"))
        return beginPieces(*slice);
    if (offset == 0) pieceBegin_ = bytes_.size();
    if (bytes_.size() + bytesOf(*slice).size() + slice->bytes_after > request_.limit)
        return finish(Ending::tooLarge);
    if (!append(*slice)) return finish(Ending::refused);
    if (slice->bytes_after > 0) return readSlice(offset + sliceUnits);
    endPiece();
}

void SelectionReader::beginPieces(const xcb_get_property_reply_t& announcement) {
    inPieces_ = true;
    reading_ = false;
    std::uint32_t size = 0;
    if (bytesOf(announcement).size() >= sizeof size)
        std::memcpy(&size, bytesOf(announcement).data(), sizeof size);
    reserve(bytes_, std::min<std::size_t>(size, request_.limit));
    // Its removal, which reading brings unless there was too much of it, begins the transfer.
    if (announcement.bytes_after > 0) xcb_delete_property(ports_.connection.xcb(), window_, property_);
    putOffDeadline();
}

bool SelectionReader::append(const xcb_get_property_reply_t& slice) {
    const std::string_view added = bytesOf(slice);
    const bool isFirst = format_ == 0;
    if (isFirst) {
        type_ = slice.type;
        format_ = slice.format;
        if (!inPieces_) bytes_.reserve(added.size() + slice.bytes_after);
    }
    if (added.empty()) return slice.bytes_after == 0;
    if (slice.type != type_ || slice.format != format_) return false;
    // The size that was told is at best a lower bound. What exceeds it grows only once.
    if (bytes_.size() + added.size() > bytes_.capacity()) reserve(bytes_, request_.limit);
    bytes_ += added;
    putOffDeadline();
    return true;
}

void SelectionReader::endPiece() {
    const bool isLast = !inPieces_ || bytes_.size() == pieceBegin_;
    if (isLast) return finish(Ending::arrived);
    reading_ = false;
    if (std::exchange(anotherPiece_, false)) readSlice(0);
}

void SelectionReader::putOffDeadline() {
    deadline_.set(std::max(Seconds(0), std::min(patience_, end_ - ports_.clock.uptime())));
}

void SelectionReader::finish(Ending ending) {
    const auto handler = std::exchange(handler_, nullptr);
    if (!handler) return;
    deadline_.clear();
    events_.reset();
    isOver_ = ending == Ending::arrived || ending == Ending::refused;
    Outcome outcome{.ending = ending};
    if (ending == Ending::arrived) {
        if (bytes_.capacity() / 2 > bytes_.size()) bytes_.shrink_to_fit();
        outcome.type = type_;
        outcome.format = format_;
        outcome.bytes = Bytes(std::move(bytes_));
    }
    handler(std::move(outcome));
}

}  // namespace nettlecap
