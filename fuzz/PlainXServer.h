#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <xcb/xfixes.h>

namespace nettlecap {

/// An X server within the process, as far as selections and properties go: it stands in the
/// place of those functions of xcb that reach a real one. Everybody else on it is played by
/// who holds it. Its answers are allocated to the byte, so that no reading beyond them goes
/// unseen. One at a time.
class PlainXServer {
public:
    static constexpr xcb_window_t root = 1;
    static constexpr xcb_window_t others = 1U << 24U;  ///< windows from here on are not ours

    /// A selection that somebody was asked for.
    struct Question {
        xcb_window_t requestor = XCB_NONE;
        xcb_atom_t target = XCB_ATOM_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;
        xcb_timestamp_t time = XCB_CURRENT_TIME;
    };
    struct Property {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::uint8_t format = 8;
        std::string bytes;
    };

    PlainXServer();
    ~PlainXServer();
    PlainXServer(const PlainXServer&) = delete;
    PlainXServer& operator=(const PlainXServer&) = delete;

    // What the others do.
    void pass(xcb_timestamp_t milliseconds) { now_ += milliseconds; }
    void own(xcb_atom_t selection, xcb_window_t owner);
    void die(xcb_atom_t selection);
    void put(xcb_window_t window, xcb_atom_t property, Property contents);
    void remove(xcb_window_t window, xcb_atom_t property);
    void answer(const Question& question, bool isRefusal);
    void ask(xcb_atom_t selection, const Question& question);
    void destroy(xcb_window_t window);
    void tell(std::string_view event);  ///< any 32 bytes, as one client may send them to another

    xcb_atom_t atom(std::string_view name);
    const std::deque<Question>& questions() const { return questions_; }
    std::size_t ourWindows() const { return windows_.size(); }

private:
    friend struct PlainXcb;
    using Place = std::pair<xcb_window_t, xcb_atom_t>;
    struct Selection {
        xcb_window_t owner = XCB_NONE;
        xcb_timestamp_t since = 0;
    };
    struct Reply {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
    };

    template <class Event>
    void send(Event event, std::uint8_t kind);
    void fail(std::uint8_t code, std::uint32_t resource);
    void notify(xcb_window_t window, xcb_atom_t property, std::uint8_t state);
    void change(xcb_atom_t selection, xcb_window_t owner, xcb_timestamp_t time);
    void tellOfOwner(xcb_atom_t selection, xcb_window_t owner, std::uint8_t kind);

    std::uint32_t sequence_ = 0;
    xcb_timestamp_t now_ = 1000;
    xcb_window_t lastWindow_ = root;
    std::set<xcb_window_t> windows_;  // ours
    std::set<xcb_window_t> watched_;  // others'
    std::map<Place, Property> properties_;
    std::map<xcb_atom_t, Selection> selections_;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::vector<std::string> names_;
    std::deque<Question> questions_;
    std::deque<xcb_generic_event_t*> events_;
    std::map<unsigned, Reply> replies_;
};

}  // namespace nettlecap
