#include "PlainXServer.h"

#include "platform/fake/FakeBackgroundWork.h"
#include "platform/fake/FakeTime.h"
#include "platform/linux/x11/X11Pasteboard.h"

#include <QCoreApplication>
#include <array>
#include <cstdlib>
#include <cstring>

// Whatever other programs do with the clipboard, in whatever order, with whatever in their
// properties, and whatever events they make up: nothing is held of it beyond measure, what is
// read is text, and the next good copy is captured.

namespace {

using namespace nettlecap;
using namespace std::chrono_literals;

void require(bool holds) {
    if (!holds) std::abort();
}

void haveApplication() {
    static int count = 1;
    static std::array<char, 5> name{"fuzz"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static const QCoreApplication application(count, arguments.data());
}

constexpr std::array names = {"TARGETS",
                              "UTF8_STRING",
                              "STRING",
                              "text/plain",
                              "image/png",
                              "image/tiff",
                              "INCR",
                              "MULTIPLE",
                              "TIMESTAMP",
                              "ATOM",
                              "ATOM_PAIR",
                              "text/html",
                              "COMPOUND_TEXT",
                              "SAVE_TARGETS",
                              "NETTLECAP_SELECTION",
                              "x-kde-passwordManagerHint",
                              "application/x-kde-onlyReplaceEmpty",
                              "com.example.other"};

/// Bytes that decide what happens.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : bytes_(reinterpret_cast<const char*>(data), size) {}

    bool isOver() const { return bytes_.empty(); }
    std::uint8_t byte() {
        if (bytes_.empty()) return 0;
        const auto first = static_cast<std::uint8_t>(bytes_.front());
        bytes_.remove_prefix(1);
        return first;
    }
    std::string_view bytes(std::size_t most) {
        const std::string_view result = bytes_.substr(0, most);
        bytes_.remove_prefix(result.size());
        return result;
    }

private:
    std::string_view bytes_;
};

class World {
public:
    explicit World(Input input) : input_(input) {
        for (const char* name : names) atoms_.push_back(server_.atom(name));
        atoms_.push_back(XCB_ATOM_NONE);
        atoms_.push_back(nameless);
        connection_ = std::move(*X11Connection::open());
        pasteboard_ = std::move(*X11Pasteboard::open({*connection_, time_, time_, background_}));
        pasteboard_->setInterest({.groups = {{"public.utf8-plain-text"}, {"public.png", "public.tiff"}},
                                  .unlessOffered = {"com.example.other"}});
        changes_ = pasteboard_->onChange([this] { read(); });
    }

    void run() {
        for (int step = 0; step < mostSteps && !input_.isOver(); ++step) {
            act();
            turn();
        }
        expectTheNextCopy();
        // Also the unanswered questions' windows are only so many.
        require(server_.ourWindows() <= 300);
    }

private:
    static constexpr int mostSteps = 200;
    static constexpr xcb_atom_t nameless = 4'000'000'000U;

    void act() {
        switch (input_.byte() % 16) {
        case 0: return server_.own(clipboard(), window());
        case 1: return server_.own(clipboard(), XCB_NONE);
        case 2: return server_.die(clipboard());
        case 3: return pass();
        case 4: return answer(true);
        case 5: return answer(false);
        case 6: return putAndAnswer();
        case 7: return putAndAnswer();
        case 8: return piece();
        case 9: return remove();
        case 10: return ask();
        case 11: return server_.remove(window(), atom());
        case 12: return server_.destroy(window());
        case 13: return event();
        case 14: return write();
        default: return several();
        }
    }

    xcb_atom_t clipboard() { return server_.atom("CLIPBOARD"); }
    xcb_atom_t atom() { return atoms_[input_.byte() % atoms_.size()]; }
    /// Of three programs with two windows each.
    xcb_window_t window() {
        const std::uint32_t number = input_.byte() % 6U;
        return (8 + number / 2) * (1U << 21U) + number;
    }
    PlainXServer::Question question() {
        const auto& all = server_.questions();
        return all.empty() ? PlainXServer::Question() : all[all.size() - 1 - input_.byte() % all.size()];
    }

    void pass() {
        const Seconds elapsed = std::chrono::milliseconds(1U << (input_.byte() % 16U));
        server_.pass(static_cast<xcb_timestamp_t>(elapsed.count() * 1000));
        time_.advance(elapsed);
    }

    PlainXServer::Property property() {
        const xcb_atom_t type = atom();
        constexpr std::array<std::uint8_t, 3> formats = {8, 16, 32};
        const std::uint8_t format = formats[input_.byte() % formats.size()];
        const std::size_t units = format / 8U;
        std::string part(input_.bytes(input_.byte()));
        part.resize(part.size() / units * units);
        std::string bytes;
        for (std::size_t times = 1U << (input_.byte() % 11U); times > 0; --times) bytes += part;
        return {.type = type, .format = format, .bytes = std::move(bytes)};
    }

    /// The atoms are ones that mean something.
    PlainXServer::Property targets() {
        std::string bytes;
        for (int count = input_.byte() % 8; count > 0; --count) {
            const xcb_atom_t listed = atom();
            bytes.append(reinterpret_cast<const char*>(&listed), sizeof listed);
        }
        return {.type = XCB_ATOM_ATOM, .format = 32, .bytes = std::move(bytes)};
    }

    void answer(bool isRefusal) { server_.answer(question(), isRefusal); }

    void putAndAnswer() {
        const auto asked = question();
        const bool isTargets = asked.target == server_.atom("TARGETS") && input_.byte() % 4 != 0;
        server_.put(asked.requestor, asked.property, isTargets ? targets() : property());
        server_.answer(asked, false);
    }

    void piece() {
        const auto asked = question();
        server_.put(asked.requestor, asked.property, property());
    }

    void remove() {
        const auto asked = question();
        server_.remove(asked.requestor, asked.property);
    }

    void ask() {
        const auto selection = input_.byte() % 4 == 0 ? xcb_atom_t(XCB_ATOM_PRIMARY) : clipboard();
        server_.ask(selection,
                    {.requestor = window(), .target = atom(), .property = atom(), .time = input_.byte()});
    }

    void several() {
        const xcb_window_t requestor = window();
        const xcb_atom_t place = atom();
        server_.put(requestor, place, input_.byte() % 4 == 0 ? property() : targets());
        server_.ask(clipboard(),
                    {.requestor = requestor, .target = server_.atom("MULTIPLE"), .property = place});
    }

    void event() {
        std::string bytes(input_.bytes(32));
        bytes.resize(32);
        server_.tell(bytes);
    }

    void write() {
        pasteboard_->clearContents();
        const std::string text(input_.byte() * 64U, 'a');
        (void)pasteboard_->write(
            {.forms = {{.type = "public.utf8-plain-text", .bytes = [text] { return Bytes(text); }}}});
        if (input_.byte() % 2 == 0) (void)pasteboard_->lendAsPrimary(window());
    }

    void turn() {
        QCoreApplication::processEvents();
        background_.runAll();
        time_.advance(0s);
    }

    void read() {
        require(pasteboard_->changeCount() > lastCount_);
        lastCount_ = pasteboard_->changeCount();
        if (const auto text = pasteboard_->string(pasteboardType::text)) require(text->size() <= 64U << 20U);
    }

    void expectTheNextCopy() {
        const std::size_t before = server_.questions().size();
        server_.pass(1000);
        time_.advance(1s);
        turn();
        server_.own(clipboard(), 12U * (1U << 21U));
        std::size_t answered = before;
        for (int round = 0; round < 300; ++round) {
            turn();
            for (; answered < server_.questions().size(); ++answered) giveWell(server_.questions()[answered]);
            turn();
            if (pasteboard_->string(pasteboardType::text) == "bom") return;
            server_.pass(10);
            time_.advance(10ms);
        }
        require(false);
    }

    void giveWell(const PlainXServer::Question& asked) {
        const xcb_atom_t text = server_.atom("UTF8_STRING");
        if (asked.target == server_.atom("TARGETS"))
            server_.put(
                asked.requestor, asked.property,
                {.type = XCB_ATOM_ATOM, .format = 32, .bytes = {reinterpret_cast<const char*>(&text), 4}});
        else if (asked.target == text)
            server_.put(asked.requestor, asked.property, {.type = text, .format = 8, .bytes = "bom"});
        server_.answer(asked, asked.target != text && asked.target != server_.atom("TARGETS"));
    }

    Input input_;
    PlainXServer server_;
    std::vector<xcb_atom_t> atoms_;
    FakeTime time_;
    FakeBackgroundWork background_{time_};
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11Pasteboard> pasteboard_;
    Subscription changes_;
    std::int64_t lastCount_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    haveApplication();
    World(Input(data, size)).run();
    return 0;
}
