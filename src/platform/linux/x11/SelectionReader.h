#pragma once

#include "platform/linux/x11/Deadline.h"
#include "platform/linux/x11/SelectionPorts.h"

namespace nettlecap {

/// One reading of one target of a selection, at one go or piece by piece (INCR). It has a
/// window of its own, which goes with the reader: what an owner answers late reaches nobody.
class SelectionReader {
public:
    struct Request {
        xcb_atom_t selection = XCB_ATOM_NONE;
        xcb_atom_t target = XCB_ATOM_NONE;
        xcb_timestamp_t time = XCB_CURRENT_TIME;
        std::size_t limit = 0;                   ///< in bytes; never more than this is held
        std::vector<xcb_atom_t> parameter = {};  ///< what some targets take, such as SAVE_TARGETS
    };
    enum class Ending { arrived, refused, tooLarge, stalled };
    struct Outcome {
        Ending ending = Ending::refused;
        xcb_atom_t type = XCB_ATOM_NONE;
        unsigned format = 0;
        Bytes bytes;
    };

    /// The handler is called once, never within this call, and may destroy the reader.
    SelectionReader(SelectionPorts ports, Request request, std::function<void(Outcome)> handler);
    ~SelectionReader();
    SelectionReader(const SelectionReader&) = delete;
    SelectionReader& operator=(const SelectionReader&) = delete;

    /// Of the request that went to the owner: an owner that came before it gets it.
    unsigned sequence() const { return sequence_; }
    /// From now on little patience: somebody waits for the end.
    void hurry();

private:
    void onEvent(const xcb_generic_event_t& event);
    void onAnswer(const xcb_selection_notify_event_t& answer);
    void onNewPiece();
    void readSlice(std::uint32_t offset);
    void take(const xcb_get_property_reply_t* slice, std::uint32_t offset);
    void beginPieces(const xcb_get_property_reply_t& announcement);
    bool append(const xcb_get_property_reply_t& slice);
    void endPiece();
    void putOffDeadline();
    void finish(Ending ending);

    SelectionPorts ports_;
    Request request_;
    std::function<void(Outcome)> handler_;
    xcb_window_t window_;
    xcb_atom_t property_;
    unsigned sequence_ = 0;
    bool answered_ = false;
    bool isOver_ = false;  // the owner has nothing more to write
    bool inPieces_ = false;
    bool reading_ = false;
    bool anotherPiece_ = false;  // told while the last one was being read
    std::size_t pieceBegin_ = 0;
    xcb_atom_t type_ = XCB_ATOM_NONE;
    unsigned format_ = 0;
    std::string bytes_;
    Seconds patience_;
    Uptime end_;
    Deadline deadline_;
    Subscription events_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
