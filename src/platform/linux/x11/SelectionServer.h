#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/x11/OutgoingTransfers.h"

namespace nettlecap {

/// Owns a selection and answers whoever asks for it. A form's bytes are made when somebody
/// asks, once for all who ask meanwhile, and are not kept afterwards. What has begun is
/// completed, also when the contents are replaced or the selection is lost.
class SelectionServer {
public:
    SelectionServer(SelectionPorts ports, xcb_atom_t selection);
    ~SelectionServer();
    SelectionServer(const SelectionServer&) = delete;
    SelectionServer& operator=(const SelectionServer&) = delete;

    /// Asks for the selection, with nothing to offer yet. The server refuses a time before
    /// that of the last owner. The number is that of the request.
    unsigned claim(xcb_timestamp_t time);
    void offer(PasteboardItem item);
    /// Another owner is there.
    void forget();
    /// Gives the selection up, unless another owner is there.
    void release();

    /// Waits for the server.
    bool isOwner();
    xcb_window_t window() const { return window_; }
    bool isServing() const { return contents_ != nullptr; }
    const std::vector<PasteboardItem::Form>& forms() const;
    std::vector<xcb_atom_t> targets() const;  ///< those that stand for forms

    /// Tells whose window was given a form, or is being given a large one.
    Subscription onRead(std::function<void(xcb_window_t)> handler) const {
        return read_.subscribe(std::move(handler));
    }

private:
    using Delivery = std::function<void(const std::optional<Bytes>&)>;
    struct Served {
        std::size_t form = 0;
        bool isLatin1 = false;
        std::vector<Delivery> waiting = {};
    };
    struct Contents {
        std::vector<PasteboardItem::Form> forms;
        std::map<xcb_atom_t, Served> served;
        std::vector<xcb_atom_t> targets;  // in order
    };
    struct Part {
        xcb_atom_t target = XCB_ATOM_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;  // set to none when refused
    };
    struct Conversion {
        xcb_selection_request_event_t request;
        bool isMultiple = false;
        bool hasGivenForm = false;
        std::vector<Part> parts;
        std::size_t open = 0;
    };

    void onEvent(const xcb_generic_event_t& event);
    void answer(const xcb_selection_request_event_t& request);
    void readParts(const std::shared_ptr<Conversion>& conversion);
    void convertAll(const std::shared_ptr<Conversion>& conversion);
    void convert(const std::shared_ptr<Conversion>& conversion, std::size_t part);
    bool convertAtOnce(xcb_window_t requestor, const Part& part);
    void deliver(xcb_atom_t target, Delivery delivery);
    void endPart(const std::shared_ptr<Conversion>& conversion, std::size_t part, bool done);
    void notify(const xcb_selection_request_event_t& request, xcb_atom_t property) const;

    SelectionPorts ports_;
    xcb_atom_t selection_;
    xcb_window_t window_;
    xcb_timestamp_t since_ = XCB_CURRENT_TIME;
    std::shared_ptr<Contents> contents_;  // null: not ours
    OutgoingTransfers transfers_;
    Signal<xcb_window_t> read_;
    Subscription events_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
