#include "platform/linux/x11/X11EmbeddedIcon.h"
#include "platform/linux/EmbeddingTray.h"
#include "platform/linux/x11/X11World.h"

#include <array>
#include <cstring>

namespace nettlecap::test {
namespace {

constexpr QRgb half = 0x80800000;  // red that lets as much of the ground through, premultiplied

/// An icon of one colour in a tray at the top left of the screen.
class X11EmbeddedIconTest : public testing::Test {
protected:
    void dock(EmbeddingTray::Kind kind = EmbeddingTray::Kind::black) {
        tray = &world.add<EmbeddingTray>(kind);
        icon = std::make_unique<X11EmbeddedIcon>(
            *world.connection, tray->window(),
            X11EmbeddedIcon::Look{.name = "Nettlecap", .picture = [this](int side) {
                                      sides.push_back(side);
                                      QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
                                      image.fill(colour);
                                      return image;
                                  }});
        ASSERT_TRUE(world.waitFor([this] { return icon->geometry() == place(); }));
    }
    static QRect place() { return {100, 0, EmbeddingTray::side, EmbeddingTray::side}; }

    template <class Reply>
    X11Reply<Reply> reply(unsigned sequence) {
        return world.connection->waitFor<Reply>(sequence);
    }
    std::string property(const char* name) {
        const auto question =
            xcb_get_property(world.connection->xcb(), 0, tray->icon(), world.connection->atoms().of(name),
                             XCB_GET_PROPERTY_TYPE_ANY, 0, 100);
        const auto answer = reply<xcb_get_property_reply_t>(question.sequence);
        return {static_cast<const char*>(xcb_get_property_value(answer.get())),
                static_cast<std::size_t>(xcb_get_property_value_length(answer.get()))};
    }
    std::uint32_t number(const char* name, std::size_t index) {
        std::uint32_t result = 0;
        std::memcpy(&result, property(name).data() + index * sizeof result, sizeof result);
        return result;
    }
    /// In the icon's middle; without its alpha, if it has one.
    std::uint32_t drawn() {
        const auto question = xcb_get_image(world.connection->xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, tray->icon(),
                                            EmbeddingTray::side / 2, EmbeddingTray::side / 2, 1, 1, ~0U);
        const auto answer = reply<xcb_get_image_reply_t>(question.sequence);
        std::uint32_t result = 0;
        if (answer) std::memcpy(&result, xcb_get_image_data(answer.get()), sizeof result);
        return result & 0xFFFFFF;
    }
    bool waitForColour(std::uint32_t wanted) {
        return world.waitFor([&] { return drawn() == wanted; });
    }

    X11World world;
    EmbeddingTray* tray = nullptr;
    QRgb colour = 0xFF102030;
    std::vector<int> sides;
    std::unique_ptr<X11EmbeddedIcon> icon;
};

TEST_F(X11EmbeddedIconTest, SaysWhatItIs) {
    dock();

    EXPECT_EQ(property("WM_CLASS"), std::string("nettlecap\0Nettlecap\0", 20));
    EXPECT_EQ(property("WM_NAME"), "Nettlecap");
    EXPECT_EQ(property("_NET_WM_NAME"), "Nettlecap");
    EXPECT_EQ(number("_XEMBED_INFO", 0), 0U);
    EXPECT_EQ(number("_XEMBED_INFO", 1), 1U) << "it is to be shown";
    EXPECT_EQ(number("WM_HINTS", 0), 1U);
    EXPECT_EQ(number("WM_HINTS", 1), 0U) << "it takes no keyboard";
}

TEST_F(X11EmbeddedIconTest, IsDrawnInTheSizeThatItHas) {
    dock();
    EXPECT_TRUE(waitForColour(0x102030));
    EXPECT_EQ(sides.back(), EmbeddingTray::side);

    tray->resizeIcon(40, 32);

    EXPECT_TRUE(world.waitFor([this] { return sides.back() == 32; }));
    EXPECT_EQ(icon->geometry().size(), QSize(40, 32));
}

TEST_F(X11EmbeddedIconTest, StaysSmallInATrayWithAbsurdRoom) {
    dock();

    tray->resizeIcon(20'000, 20'000);

    EXPECT_TRUE(world.waitFor([this] { return sides.back() == 256; }));
    EXPECT_EQ(icon->geometry().size(), QSize(20'000, 20'000)) << "the connection lives";
}

TEST_F(X11EmbeddedIconTest, IsDrawnAnewOnDemand) {
    dock();
    EXPECT_TRUE(waitForColour(0x102030));
    colour = 0xFF405060;

    icon->repaint();

    EXPECT_TRUE(waitForColour(0x405060));
}

TEST_F(X11EmbeddedIconTest, TheTraysGroundIsSeenThroughIt) {
    colour = half;
    dock(EmbeddingTray::Kind::blue);

    // Half of the ground's blue, give or take one for the rounding.
    EXPECT_TRUE(world.waitFor([this] { return (drawn() & 0xFFFFFE) == (0x80007F & 0xFFFFFE); })) << drawn();
}

TEST_F(X11EmbeddedIconTest, InATrayThatIsTranslucentItIsTranslucent) {
    colour = half;
    dock(EmbeddingTray::Kind::translucent);

    EXPECT_TRUE(waitForColour(0x800000));
    const auto question = xcb_get_geometry(world.connection->xcb(), tray->icon());
    EXPECT_EQ(reply<xcb_get_geometry_reply_t>(question.sequence)->depth, 32);
}

TEST_F(X11EmbeddedIconTest, IsNowhereOnceItsTrayIsGone) {
    dock();

    tray->quit();

    EXPECT_TRUE(world.waitFor([this] { return icon->geometry().isEmpty(); }));
}

TEST_F(X11EmbeddedIconTest, GoesFromTheTray) {
    dock();
    const xcb_window_t window = tray->icon();

    icon.reset();

    const auto question = xcb_get_geometry(world.connection->xcb(), window);
    EXPECT_EQ(reply<xcb_get_geometry_reply_t>(question.sequence), nullptr);
}

TEST_F(X11EmbeddedIconTest, ATrayThatIsGoneTakesNothing) {
    X11EmbeddedIcon late(*world.connection, XCB_WINDOW_NONE, {.name = "Nettlecap", .picture = {}});

    EXPECT_TRUE(late.geometry().isEmpty());
}

}  // namespace
}  // namespace nettlecap::test
