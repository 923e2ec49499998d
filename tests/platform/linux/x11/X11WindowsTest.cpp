#include "platform/linux/x11/X11Windows.h"
#include "platform/linux/x11/X11Session.h"

#include <QProcess>
#include <cstring>

namespace nettlecap::test {
namespace {

class X11WindowsTest : public X11SessionTest {
protected:
    X11WindowsTest() {
        window.setGeometry(500, 300, 200, 150);
        window.setFlag(Qt::WindowStaysOnTopHint);
    }

    /// As a panel does.
    void show() {
        windows.prepareToShow(window.winId());
        window.show();
        window.raise();
        window.requestActivate();
        windows.bringToFront(window.winId());
    }
    /// Until everybody knows, so that nothing of it is taken for the next showing's.
    void hide() {
        window.hide();
        ASSERT_TRUE(waitFor([this] { return user.isDesktopEmpty() && !window.isActive(); }));
        user.waitForManager();
    }
    bool hasKeyboard() {
        return waitFor([this] { return window.isActive() && user.active() == window.winId(); });
    }
    std::optional<std::uint32_t> number(std::string_view property) {
        const auto question =
            session.inquiry->askProperty(static_cast<xcb_window_t>(window.winId()), property);
        return session.inquiry->propertyNumber(question);
    }
    bool hasState(std::string_view name) { return hasState(window, name); }
    bool hasState(const QWindow& of, std::string_view name) {
        const auto states = propertyOf(user.xcb(), static_cast<xcb_window_t>(of.winId()), "_NET_WM_STATE");
        const xcb_atom_t state = session.inquiry->atoms().of(name);
        for (std::size_t at = 0; at + sizeof state <= states.size(); at += sizeof state)
            if (std::memcmp(states.data() + at, &state, sizeof state) == 0) return true;
        return false;
    }

    QRasterWindow window;
    X11Windows windows{*session.connection, *session.inquiry};
};

TEST_F(X11WindowsTest, AShownWindowTakesTheKeyboardFromAnotherProgram) {
    auto& other = session.openNamed("Editor");
    ASSERT_EQ(user.active(), other.id());

    show();

    EXPECT_TRUE(hasKeyboard());
}

TEST_F(X11WindowsTest, AWindowThatIsShownAlreadyTakesTheKeyboardBack) {
    show();
    ASSERT_TRUE(hasKeyboard());
    session.openNamed("Editor");
    ASSERT_NE(user.active(), window.winId());

    show();

    EXPECT_TRUE(hasKeyboard());
}

TEST_F(X11WindowsTest, AHiddenWindowTakesTheKeyboardAgainFromAProgramThatWasUsedMeanwhile) {
    show();
    ASSERT_TRUE(hasKeyboard());
    window.hide();
    auto& other = session.openNamed("Editor");
    user.moveInto(other.id());
    user.click(1);
    user.type({key::b});

    show();

    EXPECT_TRUE(hasKeyboard());
}

TEST_F(X11WindowsTest, AWindowIsOnEveryDesktopEachTimeItIsShown) {
    for (int time = 0; time < 2; ++time) {
        show();
        ASSERT_TRUE(hasKeyboard());
        user.waitForManager();
        EXPECT_EQ(number("_NET_WM_DESKTOP"), 0xFFFFFFFF);
        hide();
    }
}

TEST_F(X11WindowsTest, AWindowThatIsKeptOffTheTaskbarsIsStillAboveTheOthers) {
    for (int time = 0; time < 2; ++time) {
        windows.keepOffTaskbars(window.winId());
        show();
        ASSERT_TRUE(hasKeyboard());
        user.waitForManager();
        for (const char* state :
             {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER", "_NET_WM_STATE_ABOVE"})
            EXPECT_TRUE(hasState(state)) << state;
        hide();
    }
}

TEST_F(X11WindowsTest, AWindowThatCoversItsOwnHasTheKeyboardInsteadOfIt) {
    show();
    ASSERT_TRUE(hasKeyboard());
    QRasterWindow cover;
    cover.setTransientParent(&window);
    cover.setFlags(Qt::Dialog);
    cover.resize(100, 80);
    windows.prepareToCover(cover.winId());
    cover.show();
    ASSERT_TRUE(waitFor([&] { return user.active() == cover.winId(); }));
    user.waitForManager();
    for (const char* state :
         {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER", "_NET_WM_STATE_MODAL"})
        EXPECT_TRUE(hasState(cover, state)) << state;

    windows.bringToFront(window.winId());
    user.waitForManager();

    EXPECT_EQ(user.active(), cover.winId());
}

TEST_F(X11WindowsTest, AnyOtherWindowIsOnTheTaskbars) {
    show();
    ASSERT_TRUE(hasKeyboard());
    user.waitForManager();

    EXPECT_FALSE(hasState("_NET_WM_STATE_SKIP_TASKBAR"));
}

TEST_F(X11WindowsTest, NothingIsCompositedWithoutACompositor) { EXPECT_FALSE(windows.isComposited()); }

TEST_F(X11WindowsTest, KnowsACompositorThatComesAndGoes) {
    QProcess compositor;
    compositor.start("picom", {"--backend", "xrender", "--config", "/dev/null"});
    EXPECT_TRUE(waitFor([this] { return windows.isComposited(); }));

    compositor.terminate();
    EXPECT_TRUE(waitFor([this] { return !windows.isComposited(); }));
    EXPECT_TRUE(waitFor([&] { return compositor.state() == QProcess::NotRunning; }));
}

}  // namespace
}  // namespace nettlecap::test
