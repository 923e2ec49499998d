#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11Session.h"

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <array>

namespace nettlecap {

void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.size.width << " x " << rect.size.height << " at (" << rect.origin.x << ", " << rect.origin.y
         << ')';
}

namespace test {
namespace {

/// On a desktop of 1280 x 800 pixels, which may be any number of points.
class X11ScreensTest : public X11SessionTest {
protected:
    ~X11ScreensTest() override {
        if (QGuiApplication::screens().size() > 1) joinMonitors();
    }

    /// A bar or dock that reserves what the numbers say, in pixels.
    void reserve(const std::string& property, const std::vector<std::uint32_t>& strut) {
        auto& dock = session.open({.isPanel = true});
        xcb_connection_t* xcb = dock.xcb();
        const auto question =
            xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(property.size()), property.data());
        const X11Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(xcb, question, nullptr));
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, dock.id(), atom->atom, XCB_ATOM_CARDINAL, 32,
                            static_cast<std::uint32_t>(strut.size()), strut.data());
        std::free(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
        user.waitForManager();
    }
    /// Two monitors side by side, the left one 800 and the right one 400 pixels high.
    void splitMonitors() {
        run({"--setmonitor", "A", "640/160x800/200+0+0", "screen"});
        run({"--setmonitor", "B", "640/160x400/100+640+0", "none"});
        ASSERT_TRUE(waitFor([] { return QGuiApplication::screens().size() == 2; }));
    }
    void joinMonitors() {
        run({"--delmonitor", "B"});
        run({"--delmonitor", "A"});
        EXPECT_TRUE(waitFor([] { return QGuiApplication::screens().size() == 1; }));
    }
    static void run(const QStringList& arguments) { EXPECT_EQ(QProcess::execute("xrandr", arguments), 0); }

    /// A rectangle in pixels from the bottom left of a desktop without ratio, in points.
    static Rect points(double x, double y, double width, double height) {
        const double ratio = qGuiApp->devicePixelRatio();
        return {.origin = {x / ratio, y / ratio}, .size = {width / ratio, height / ratio}};
    }

    X11Screens screens{*session.inquiry};
};

TEST_F(X11ScreensTest, KnowsTheOnlyScreen) {
    ASSERT_EQ(screens.all().size(), 1U);
    EXPECT_EQ(screens.all().front().frame, points(0, 0, 1280, 800));
    EXPECT_EQ(screens.all().front().visibleFrame, points(0, 0, 1280, 800));
    EXPECT_EQ(screens.main(), screens.all().front());
}

TEST_F(X11ScreensTest, KnowsWhereThePointerIs) {
    user.moveTo(100, 750);

    const double ratio = qGuiApp->devicePixelRatio();
    EXPECT_EQ(screens.pointerLocation(), (Point{100 / ratio, (800 - 751) / ratio}));
}

TEST_F(X11ScreensTest, LeavesOutWhatIsReservedAtEachEdge) {
    reserve("_NET_WM_STRUT_PARTIAL", {0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 1279});
    EXPECT_EQ(screens.main()->visibleFrame, points(0, 40, 1280, 760));

    reserve("_NET_WM_STRUT_PARTIAL", {0, 0, 30, 0, 0, 0, 0, 0, 0, 1279, 0, 0});
    EXPECT_EQ(screens.main()->visibleFrame, points(0, 40, 1280, 730));

    reserve("_NET_WM_STRUT_PARTIAL", {100, 0, 0, 0, 0, 799, 0, 0, 0, 0, 0, 0});
    reserve("_NET_WM_STRUT_PARTIAL", {0, 50, 0, 0, 0, 0, 0, 799, 0, 0, 0, 0});
    EXPECT_EQ(screens.main()->visibleFrame, points(100, 40, 1130, 730));
    EXPECT_EQ(screens.main()->frame, points(0, 0, 1280, 800));
}

TEST_F(X11ScreensTest, KnowsTheOlderWayToReserve) {
    reserve("_NET_WM_STRUT", {10, 20, 30, 40});

    EXPECT_EQ(screens.main()->visibleFrame, points(10, 40, 1250, 730));
}

TEST_F(X11ScreensTest, ForgetsADockThatIsGone) {
    reserve("_NET_WM_STRUT", {0, 0, 0, 40});
    session.quitAll();

    EXPECT_EQ(screens.main()->visibleFrame, screens.main()->frame);
}

/// With a ratio, the place of a second screen in points is Qt's to choose.
class X11TwoScreensTest : public X11ScreensTest {
protected:
    void SetUp() override { splitMonitors(); }
};

TEST_F(X11TwoScreensTest, CountsFromTheBottomLeftOfThePrimaryOne) {
    const auto all = screens.all();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].frame, points(0, 0, 640, 800));
    EXPECT_EQ(all[1].frame.size, points(0, 0, 640, 400).size);
    // Their tops are at one height.
    EXPECT_EQ(all[1].frame.origin.y + all[1].frame.size.height, all[0].frame.size.height);
    EXPECT_EQ(all[1].frame.origin.x, 640);
}

TEST_F(X11TwoScreensTest, ADockReservesOnItsOwnScreenOnly) {
    reserve("_NET_WM_STRUT_PARTIAL", {0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 639});
    reserve("_NET_WM_STRUT_PARTIAL", {0, 0, 30, 0, 0, 0, 0, 0, 640, 1279, 0, 0});

    const auto all = screens.all();

    EXPECT_EQ(all[0].visibleFrame, points(0, 40, 640, 760));
    EXPECT_EQ(all[1].visibleFrame.size, points(0, 0, 640, 370).size);
    EXPECT_EQ(all[1].visibleFrame.origin, all[1].frame.origin);
}

TEST_F(X11TwoScreensTest, ADockAtAnInnerEdgeLeavesTheOtherScreenAlone) {
    // At the bottom of the right screen, 400 pixels above that of the desktop.
    reserve("_NET_WM_STRUT_PARTIAL", {0, 0, 0, 440, 0, 0, 0, 0, 0, 0, 640, 1279});
    // At the left of the right screen: the left one would be covered whole.
    reserve("_NET_WM_STRUT_PARTIAL", {700, 0, 0, 0, 0, 399, 0, 0, 0, 0, 0, 0});

    const auto all = screens.all();

    EXPECT_EQ(all[0].visibleFrame, all[0].frame);
    EXPECT_EQ(all[1].visibleFrame.size, points(0, 0, 580, 360).size);
}

TEST_F(X11TwoScreensTest, ThePointerIsOnTheScreenThatShowsIt) {
    const auto all = screens.all();
    // The corners of the left one, and the first column of the right one.
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(0, 799), std::pair(639, 0), std::pair(639, 799)}) {
        user.moveTo(static_cast<std::int16_t>(x), static_cast<std::int16_t>(y));
        EXPECT_TRUE(all[0].frame.contains(screens.pointerLocation())) << x << ", " << y;
        EXPECT_FALSE(all[1].frame.contains(screens.pointerLocation())) << x << ", " << y;
    }
    user.moveTo(640, 399);
    EXPECT_TRUE(all[1].frame.contains(screens.pointerLocation()));
    EXPECT_FALSE(all[0].frame.contains(screens.pointerLocation()));
}

TEST_F(X11TwoScreensTest, TheMainOneHasTheMiddleOfTheActiveWindow) {
    EXPECT_EQ(screens.main(), screens.all()[0]);

    session.open({.x = 545, .y = 100});  // 200 wide
    EXPECT_EQ(screens.main(), screens.all()[1]);

    session.open({.x = 530, .y = 100});
    EXPECT_EQ(screens.main(), screens.all()[0]);
}

TEST_F(X11TwoScreensTest, TheMainOneIsThePrimaryOneWithoutAnActiveWindow) {
    session.open({.x = 900, .y = 100});
    EXPECT_EQ(screens.main(), screens.all()[1]);

    session.quitAll();
    EXPECT_EQ(screens.main(), screens.all()[0]);
}

}  // namespace
}  // namespace test
}  // namespace nettlecap
