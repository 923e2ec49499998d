#include "platform/linux/x11/X11World.h"

#include <QEventLoop>
#include <array>
#include <cstdlib>
#include <poll.h>
#include <sys/socket.h>

using namespace nettlecap;
using namespace nettlecap::test;

constexpr std::chrono::seconds patience(30);

class X11ConnectionTest : public testing::Test {
protected:
    X11World world;
    X11Connection& connection = *world.connection;
    xcb_connection_t* xcb = connection.xcb();
};

TEST_F(X11ConnectionTest, SaysWhyItCannotBeOpened) {
    const char* const present = std::getenv("DISPLAY");
    ASSERT_TRUE(present);
    const std::string display = present;

    setenv("DISPLAY", ":4711", 1);
    const auto refused = X11Connection::open();
    setenv("DISPLAY", "nonsense", 1);
    const auto misnamed = X11Connection::open();
    setenv("DISPLAY", (display + ".99").c_str(), 1);
    const auto screenless = X11Connection::open();
    setenv("DISPLAY", display.c_str(), 1);

    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.description(), "cannot connect to the X server");
    ASSERT_FALSE(misnamed);
    EXPECT_EQ(misnamed.description(), "DISPLAY names no X server");
    ASSERT_FALSE(screenless);
    EXPECT_EQ(screenless.description(), "the X server has no such screen");
}

TEST_F(X11ConnectionTest, HandsRepliesOverInOrder) {
    std::vector<std::string> told;
    const auto name = [&](const xcb_get_atom_name_reply_t* reply) {
        told.push_back(reply ? std::string(xcb_get_atom_name_name(reply), reply->name_len) : "error");
    };
    for (const xcb_atom_t atom : {XCB_ATOM_PRIMARY + 0U, 4'000'000'000U, XCB_ATOM_STRING + 0U})
        connection.await<xcb_get_atom_name_reply_t>(xcb_get_atom_name(xcb, atom).sequence, name);

    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(world.waitFor([&] { return told.size() == 3; }));
    EXPECT_EQ(told, (std::vector<std::string>{"PRIMARY", "error", "STRING"}));
}

TEST_F(X11ConnectionTest, LetsOthersHaveTheirTurnHoweverManyRepliesThereAre) {
    int turns = 0;
    QTimer others;
    others.callOnTimeout([&] { ++turns; });
    std::vector<int> turnsBefore;
    for (int i = 0; i < 50; ++i)
        connection.await<xcb_get_input_focus_reply_t>(
            xcb_get_input_focus(xcb).sequence, [&](const xcb_get_input_focus_reply_t*) {
                turnsBefore.push_back(turns);
                const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(1);
                while (std::chrono::steady_clock::now() < end) continue;
            });
    ASSERT_TRUE(connection.serverTime());  // by now all of them are there

    others.start(0);
    ASSERT_TRUE(world.waitFor([&] { return turnsBefore.size() == 50; }));

    EXPECT_GT(turnsBefore.back(), turnsBefore.front() + 2);
}

TEST_F(X11ConnectionTest, TellsOfEventsAndOfErrorsWithoutAReply) {
    int errors = 0;
    const auto events = connection.onEvent([&](const xcb_generic_event_t& event) {
        const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
        if (event.response_type == 0 && error.resource_id == 12345) ++errors;
    });

    xcb_map_window(xcb, 12345);
    connection.flush();

    EXPECT_TRUE(world.waitFor([&] { return errors == 1; }));
}

TEST_F(X11ConnectionTest, LosesNoEventThatCameWhileItWaited) {
    const xcb_window_t window = xcb_generate_id(xcb);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb, 0, window, connection.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    int changes = 0;
    const auto events = connection.onEvent([&](const xcb_generic_event_t& event) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (event.response_type == XCB_PROPERTY_NOTIFY && change.window == window) ++changes;
    });

    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 1, "a");
    const auto time = connection.serverTime();

    EXPECT_TRUE(time.has_value());
    EXPECT_EQ(changes, 0) << "told from the main loop only";
    EXPECT_TRUE(world.waitFor([&] { return changes == 1; }));
}

TEST_F(X11ConnectionTest, NeverSleepsOnAnEventThatIsThere) {
    const xcb_window_t window = xcb_generate_id(xcb);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb, 0, window, connection.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    constexpr int rounds = 20'000;
    int round = 0;
    QEventLoop loop;  // nothing else wakes it
    QTimer silence;
    silence.callOnTimeout(&loop, [&loop] { loop.quit(); });
    const auto next = [&] {
        connection.await<xcb_get_input_focus_reply_t>(xcb_get_input_focus(xcb).sequence,
                                                      [](const xcb_get_input_focus_reply_t*) {});
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 1, "a");
    };
    const auto events = connection.onEvent([&](const xcb_generic_event_t& event) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (event.response_type != XCB_PROPERTY_NOTIFY || change.window != window) return;
        if (++round == rounds) return loop.quit();
        silence.start(patience);
        next();
    });
    world.stop();
    silence.start(patience);

    next();
    loop.exec();

    EXPECT_EQ(round, rounds);
}

TEST_F(X11ConnectionTest, NeverSleepsOnAReplyThatIsThere) {
    constexpr int rounds = 1000;
    int round = 0;
    QEventLoop loop;  // nothing else wakes it
    QTimer silence;
    silence.callOnTimeout(&loop, [&loop] { loop.quit(); });
    std::function<void()> next = [&] {
        const auto cookie = xcb_get_input_focus(xcb);
        connection.flush();
        connection.await<xcb_get_input_focus_reply_t>(
            cookie.sequence, [&](const xcb_get_input_focus_reply_t*) {
                if (++round == rounds) return loop.quit();
                silence.start(patience);
                next();
                // The next reply comes while this handler runs.
                pollfd readable{.fd = xcb_get_file_descriptor(xcb), .events = POLLIN, .revents = 0};
                (void)poll(&readable, 1, 1000);
            });
    };
    world.stop();
    silence.start(patience);

    next();
    loop.exec();

    EXPECT_EQ(round, rounds);
}

TEST_F(X11ConnectionTest, KnowsTheServersTime) {
    const auto first = connection.serverTime();
    auto& other = world.add<TestRequestor>();
    const xcb_timestamp_t between = other.serverTime();
    const auto last = connection.serverTime();

    ASSERT_TRUE(first && last);
    EXPECT_LE(*first, between);
    EXPECT_LE(between, *last);
}

TEST_F(X11ConnectionTest, NamesAtomsBothWays) {
    auto& other = world.add<TestRequestor>();
    const xcb_atom_t made = other.atom("com.example.made-elsewhere");
    EXPECT_EQ(connection.atoms().of("UTF8_STRING"), other.atom("UTF8_STRING"));

    X11Atoms::Names names;
    connection.atoms().names({made, 4'000'000'000U, XCB_ATOM_STRING, made},
                             [&](X11Atoms::Names told) { names = std::move(told); });

    EXPECT_TRUE(world.waitFor([&] { return names.size() == 4; }));
    EXPECT_EQ(names[0], "com.example.made-elsewhere");
    EXPECT_EQ(names[1], std::nullopt);
    EXPECT_EQ(names[2], "STRING");
    EXPECT_EQ(names[3], names[0]);
}

TEST_F(X11ConnectionTest, AnswersAtOnceForNamesItKnows) {
    const xcb_atom_t atom = connection.atoms().of("CLIPBOARD");

    X11Atoms::Names names;
    connection.atoms().names({atom}, [&](X11Atoms::Names told) { names = std::move(told); });

    EXPECT_EQ(names, X11Atoms::Names{"CLIPBOARD"});
}

TEST_F(X11ConnectionTest, EndsClearlyWhenTheServerGoes) {
    int lost = 0;
    int unanswered = 0;
    const auto onReply = [&](const xcb_get_input_focus_reply_t* reply) {
        if (!reply) ++unanswered;
    };
    const auto losses = connection.onLost([&] {
        ++lost;
        EXPECT_EQ(unanswered, 1);
    });

    shutdown(xcb_get_file_descriptor(xcb), SHUT_RDWR);
    connection.await<xcb_get_input_focus_reply_t>(xcb_get_input_focus(xcb).sequence, onReply);

    EXPECT_TRUE(world.waitFor([&] { return lost == 1; }));
    EXPECT_TRUE(connection.isLost());
    EXPECT_EQ(connection.serverTime(), std::nullopt);
    EXPECT_EQ(connection.atoms().of("NEVER_SEEN_BEFORE"), 0U);
    connection.await<xcb_get_input_focus_reply_t>(xcb_get_input_focus(xcb).sequence, onReply);
    EXPECT_TRUE(world.waitFor([&] { return unanswered == 2; }));
    EXPECT_EQ(lost, 1);
}
