#include "platform/fake/FakeWindows.h"
#include "platform/linux/x11/DesktopUser.h"
#include "ui/qml/QuickCard.h"

#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace test;

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, FreeReply>;

/// The card above another program's window, which is in front.
class QuickCardDesktopTest : public testing::Test {
protected:
    static void SetUpTestSuite() { QQuickWindow::setGraphicsApi(QSGRendererInterface::Software); }

    QuickCardDesktopTest() {
        const std::uint32_t presses = XCB_EVENT_MASK_BUTTON_PRESS;
        xcb_change_window_attributes(other.xcb(), other.id(), XCB_CW_EVENT_MASK, &presses);
        xcb_flush(other.xcb());
        user.activate(other.id());
        EXPECT_TRUE(waitFor([this] { return user.hasKeyboard(other.id()); }));
    }

    /// Over the other window's middle.
    void show() {
        card.setContent(std::make_unique<QuickHostedView>(std::make_unique<QQuickItem>(), nullptr));
        card.setContentSize({120, 80});
        card.setOrigin({240, QGuiApplication::primaryScreen()->geometry().height() - 320.0});
        card.orderFrontRegardless();
        ASSERT_TRUE(waitFor([this] { return card.window().isExposed() && isViewable(); }));
    }
    void hide() {
        card.orderOut();
        ASSERT_TRUE(waitFor([this] { return !card.window().isExposed() && !isViewable(); }));
    }
    xcb_window_t id() const { return static_cast<xcb_window_t>(card.window().winId()); }
    Owned<xcb_get_window_attributes_reply_t> attributes() const {
        const auto question = xcb_get_window_attributes(user.xcb(), id());
        return Owned<xcb_get_window_attributes_reply_t>(
            xcb_get_window_attributes_reply(user.xcb(), question, nullptr));
    }
    bool isViewable() const {
        const auto reply = attributes();
        return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
    }
    bool wasClicked() const {
        const Owned<xcb_generic_event_t> event(xcb_poll_for_event(other.xcb()));
        return event && (event->response_type & 0x7F) == XCB_BUTTON_PRESS;
    }

    FakeNativeWindows native;
    QuickCard card{native};
    DesktopUser user;
    OtherWindow other{{.x = 200, .y = 200}};  // 200 x 150
};

TEST_F(QuickCardDesktopTest, NoWindowManagerKnowsOfIt) {
    show();

    EXPECT_TRUE(attributes()->override_redirect);
}

TEST_F(QuickCardDesktopTest, LeavesTheOtherProgramInFrontWithTheKeyboard) {
    show();
    show();
    user.waitForManager();

    EXPECT_EQ(user.active(), other.id());
    EXPECT_TRUE(user.hasKeyboard(other.id()));
}

TEST_F(QuickCardDesktopTest, ClicksGoThroughToTheWindowBelow) {
    for (const bool isComposited : {true, false}) {
        native.setComposited(isComposited);
        show();
        user.moveTo(300, 280);
        user.click(1);
        EXPECT_TRUE(waitFor([this] { return wasClicked(); })) << "composited: " << isComposited;
        hide();
    }
}

TEST_F(QuickCardDesktopTest, HidingTakesItOffTheScreen) {
    show();

    card.orderOut();

    EXPECT_TRUE(waitFor([this] { return !isViewable(); }));
}

}  // namespace
}  // namespace nettlecap
