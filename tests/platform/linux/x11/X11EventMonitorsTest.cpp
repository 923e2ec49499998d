#include "platform/linux/x11/MonitoredSession.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QProcess>

namespace nettlecap::test {
namespace {

using X11EventMonitorsTest = MonitoredSessionTest;

TEST_F(X11EventMonitorsTest, HearsKeysWhileAProgramHoldsTheKeyboard) {
    ASSERT_TRUE(other_.grabKeyboard());

    EXPECT_EQ(told({key::control, key::c}), "c");
    EXPECT_EQ(told({key::control, key::v}), "");
}

TEST_F(X11EventMonitorsTest, HearsTheKeysOfAFrozenKeyboardWhenTheProgramGetsThem) {
    ASSERT_TRUE(other_.grabKeyboard(XCB_GRAB_MODE_SYNC));
    EXPECT_EQ(told({key::control, key::c}), "");

    other_.thaw();

    EXPECT_TRUE(waitFor([&] { return told_ == "c"; }));
}

TEST_F(X11EventMonitorsTest, HearsClicksWhileAProgramHoldsThePointer) {
    ASSERT_TRUE(other_.grabPointer());

    user.click(1);

    EXPECT_EQ(told(), "l");
}

TEST_F(X11EventMonitorsTest, NeverTellsTheWheelNorTheMiddleButton) {
    for (const unsigned button : {2U, 4U, 5U, 6U, 7U, 8U, 9U}) user.click(static_cast<std::uint8_t>(button));

    EXPECT_EQ(told(), "");
}

TEST_F(X11EventMonitorsTest, NamesTheRightApplicationRightAfterAChangeOfWindows) {
    const auto& another = session.openNamed("Navegador");
    std::vector<std::string> expected;
    for (int i = 0; i < 40; ++i) {
        const bool first = i % 2 == 0;
        user.activate(first ? other_.id() : another.id());
        user.type({key::control, key::c});
        expected.emplace_back(first ? "Editor" : "Navegador");
        ASSERT_TRUE(waitFor([&] { return tellers_.size() == expected.size(); }));
    }

    EXPECT_EQ(tellers_, expected);
}

TEST_F(X11EventMonitorsTest, TellsAClickOnAWindowBehindWhenThatIsInFront) {
    session.open({.windowClass = X11Session::classOf("Navegador"), .x = 600, .y = 300});
    ASSERT_EQ(front(), "Navegador");

    user.moveInto(other_.id());
    user.click(1);

    ASSERT_TRUE(waitFor([&] { return told_ == "l"; }));
    EXPECT_EQ(tellers_.back(), "Editor");
}

TEST_F(X11EventMonitorsTest, TellsClicksThatBringNothingToTheFront) {
    const auto& menu = session.open({.x = 600, .y = 300, .isManaged = false});
    user.moveInto(menu.id());
    user.click(1);
    ASSERT_TRUE(waitFor([&] { return told_ == "l"; }));

    const auto& panel = session.open({.x = 600, .y = 500, .isPanel = true});
    user.moveInto(panel.id());
    user.click(1);
    // Who is in front then is the manager's to say: to openbox it was a click on the desktop.
    EXPECT_TRUE(waitFor([&] { return told_ == "ll"; }));
}

TEST_F(X11EventMonitorsTest, TellsOfAClickAndAKeyInTheirOrder) {
    const auto& panel = session.open({.x = 600, .y = 500, .isPanel = true});
    user.moveInto(panel.id());
    user.click(1);
    user.type({key::control, key::c});

    ASSERT_TRUE(waitFor([&] { return told_.size() == 2; }));
    EXPECT_EQ(told_, "lc");
}

TEST_F(X11EventMonitorsTest, KnowsAClickOnAWindowInsideOfOurs) {
    QWindow& window = session.openOwn(600, 400);
    QRasterWindow inner;
    inner.setParent(&window);
    inner.setGeometry(20, 20, 100, 100);
    inner.show();
    ASSERT_TRUE(waitFor([&] { return inner.isExposed(); }));

    user.moveInto(static_cast<xcb_window_t>(window.winId()));
    user.click(1);

    ASSERT_TRUE(waitFor([&] { return !toldHere_.empty(); }));
    EXPECT_EQ(toldHere_, "l");
    user.moveInto(other_.id());
    EXPECT_EQ(told(), "");
}

TEST_F(X11EventMonitorsTest, KnowsAClickOnAnIconOfOursInATray) {
    const OtherWindow tray({.x = 600, .y = 400});
    xcb_connection_t* xcb = session.connection->xcb();
    const xcb_window_t icon = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, icon, tray.id(), 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(xcb, icon);
    (void)session.connection->serverTime();

    user.moveInto(icon);
    user.click(1);

    ASSERT_TRUE(waitFor([&] { return !toldHere_.empty(); }));
    EXPECT_EQ(toldHere_, "l");
    user.moveInto(other_.id());
    EXPECT_EQ(told(), "");
    xcb_destroy_window(xcb, icon);
}

TEST_F(X11EventMonitorsTest, CountsBothPressesOfADoubleClickHere) {
    const QWindow& window = session.openOwn();
    user.moveInto(static_cast<xcb_window_t>(window.winId()));

    user.click(1);
    ASSERT_TRUE(waitFor([&] { return toldHere_ == "l"; }));
    user.click(1);
    ASSERT_TRUE(waitFor([&] { return toldHere_ == "ll"; }));
    user.click(3);

    ASSERT_TRUE(waitFor([&] { return toldHere_.ends_with('r'); }));
    EXPECT_EQ(toldHere_, "llr");
}

TEST_F(X11EventMonitorsTest, TellsNothingElseThatIsTypedHere) {
    session.openOwn();

    user.type({key::c});
    user.type({key::control, key::v});
    user.type({key::super, key::c});
    user.type({key::shift, key::deleteForward});

    ASSERT_TRUE(waitFor([&] { return !toldHere_.empty(); }));
    EXPECT_EQ(toldHere_, "x");
}

TEST_F(X11EventMonitorsTest, FindsTheLettersOfTheLayoutHereToo) {
    session.openOwn();
    user.setLayout("dvorak,ru", 1);

    user.type({key::control, key::i});
    user.type({key::control, key::x});

    ASSERT_TRUE(waitFor([&] { return !toldHere_.empty(); }));
    EXPECT_EQ(toldHere_, "x");
}

/// Counts what a window of ours is given.
class Receiver : public QObject {
public:
    explicit Receiver(QObject& window) { window.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::KeyPress) ++keys;
        if (event->type() == QEvent::MouseButtonPress) ++presses;
        return false;
    }
    int keys = 0;
    int presses = 0;
};

TEST_F(X11EventMonitorsTest, PassesOnWhatItSees) {
    QWindow& window = session.openOwn();
    const Receiver receiver(window);
    user.moveInto(static_cast<xcb_window_t>(window.winId()));

    user.click(1);
    user.type({key::control, key::c});

    ASSERT_TRUE(waitFor([&] { return toldHere_.size() == 2; }));
    EXPECT_EQ(receiver.presses, 1);
    EXPECT_EQ(receiver.keys, 2);
}

TEST_F(X11EventMonitorsTest, CountsNothingThatTheProgramSendsItself) {
    QWindow& window = session.openOwn();
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);

    QCoreApplication::sendEvent(&window, &press);

    EXPECT_EQ(toldHere_, "");
}

TEST_F(X11EventMonitorsTest, HearsNothingFromTheDevicesWhileNobodyListens) {
    std::string heard;
    const auto devices = session.raw->onInput([&](const InputEvent& event) { heard += letter(event); });
    global_.reset();
    session.openOwn();

    user.type({key::control, key::c});
    ASSERT_TRUE(waitFor([&] { return toldHere_ == "c"; }));

    startMonitors();
    user.type({key::control, key::x});
    EXPECT_TRUE(waitFor([&] { return heard.ends_with('x'); }));
    EXPECT_EQ(heard, "x");
}

TEST_F(X11EventMonitorsTest, KnowsCopyingInATerminal) {
    QProcess terminal;
    terminal.start("xfce4-terminal",
                   {"--disable-server", "--title=janela-copia", "--dynamic-title-mode=none"});
    ASSERT_NE(user.waitForWindow("janela-copia"), 0U);

    user.type({key::control, key::shift, key::c});

    ASSERT_TRUE(waitFor([&] { return told_ == "c"; }));
    EXPECT_EQ(tellers_.back(), "Terminal Xfce");
    terminal.kill();
    terminal.waitForFinished();
}

TEST_F(X11EventMonitorsTest, OutlivesItsMonitors) {
    int heard = 0;
    const auto devices = session.raw->onInput([&](const InputEvent&) { ++heard; });
    session.monitors.reset();
    session.raw->select(true, true);
    user.type({key::control, key::c});
    ASSERT_TRUE(waitFor([&] { return heard == 1; }));

    global_.reset();
    local_.reset();

    EXPECT_EQ(told_, "");
}

}  // namespace
}  // namespace nettlecap::test
