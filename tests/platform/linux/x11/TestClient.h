#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

namespace nettlecap::test {

/// Another program: a connection to the X server of its own, driven by the test.
class TestClient {
public:
    TestClient();
    virtual ~TestClient();
    TestClient(const TestClient&) = delete;
    TestClient& operator=(const TestClient&) = delete;

    xcb_atom_t atom(const std::string& name);
    std::string nameOf(xcb_atom_t atom);
    std::vector<std::string> namesIn(const std::string& atoms);  ///< "" for none
    xcb_timestamp_t serverTime();
    xcb_window_t ownerOf(const std::string& selection);
    xcb_window_t newWindow();
    void sync();  ///< until the server has carried out everything

    void pump();  ///< deals with what has come
    void quit();  ///< closes the connection, as a killed program does
    bool isGone() const { return xcb_ == nullptr; }
    xcb_window_t window() const { return window_; }
    xcb_connection_t* xcb() const { return xcb_; }

protected:
    virtual void handle(const xcb_generic_event_t& event) = 0;

private:
    xcb_connection_t* xcb_;
    xcb_window_t window_;
    std::deque<std::unique_ptr<xcb_generic_event_t, void (*)(void*)>> early_;
    std::map<std::string, xcb_atom_t> atoms_;
};

/// Owns a selection and answers as the test has it.
class TestOwner : public TestClient {
public:
    using Request = xcb_selection_request_event_t;
    using Behaviour = std::function<void(const Request&)>;

    /// Large contents go piece by piece. The property's type is the target.
    void offer(const std::string& target, std::string bytes);
    void behave(const std::string& target, Behaviour behaviour);
    void mute(const std::string& target);
    void refuse(const std::string& target);
    /// Listed in TARGETS though nothing is behind it: an answer to it is a refusal.
    void list(xcb_atom_t target) { listed_.push_back(target); }

    void own(const std::string& selection = "CLIPBOARD");
    void release();
    void destroyWindow();

    int asked(const std::string& target);  ///< how often
    int askedInAll() const;
    bool hasLost() const { return lost_; }
    bool isSending() const { return !transfers_.empty(); }

    // What behaviours are made of.
    std::vector<std::string> atomsIn(const Request& request);  ///< what the requestor set beforehand
    void put(const Request& request, const std::string& type, unsigned format, const std::string& bytes);
    void putAndTell(const Request& request, const std::string& type, unsigned format,
                    const std::string& bytes);
    void tell(const Request& request, bool refused = false);
    void announce(const Request& request, std::uint32_t size);
    void sendInPieces(const Request& request, const std::string& type, std::string bytes);
    /// Calls each time the property is taken away, after announce().
    void onTaken(const Request& request, Behaviour behaviour);

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    struct Transfer {
        Request request;
        Behaviour taken;
    };

    void answerTargets(const Request& request);

    std::string selection_ = "CLIPBOARD";
    std::map<xcb_atom_t, Behaviour> behaviours_;
    std::vector<xcb_atom_t> listed_;
    std::map<xcb_atom_t, int> asked_;
    std::map<std::pair<xcb_window_t, xcb_atom_t>, Transfer> transfers_;
    bool lost_ = false;
};

/// Asks the owner of a selection, and reads what it gives.
class TestRequestor : public TestClient {
public:
    struct Answer {
        bool refused = false;
        std::string type;
        unsigned format = 0;
        std::string bytes;
        bool inPieces = false;
        xcb_timestamp_t time = 0;
    };

    void ask(const std::string& target, const std::string& selection = "CLIPBOARD",
             xcb_timestamp_t time = XCB_CURRENT_TIME);
    void askWithoutProperty(const std::string& target);
    void askMultiple(const std::vector<std::pair<std::string, std::string>>& targetsAndProperties);
    void setTakesNothing() { takesNothing_ = true; }  ///< from now on no answer is read

    const std::optional<Answer>& answer() const { return answer_; }
    bool wasTold() const { return told_; }
    std::vector<std::string> names();  ///< of the answer's atoms
    Answer property(const std::string& name);

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    void convert(xcb_atom_t target, xcb_atom_t property, xcb_atom_t selection, xcb_timestamp_t time);
    Answer take(xcb_atom_t property);

    xcb_atom_t property_ = XCB_ATOM_NONE;
    bool takesNothing_ = false;
    bool told_ = false;
    bool inPieces_ = false;
    Answer coming_;
    std::optional<Answer> answer_;
};

}  // namespace nettlecap::test
