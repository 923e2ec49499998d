#include "platform/linux/x11/KeyboardSession.h"

#include <QProcess>

namespace nettlecap::test {
namespace {

/// A server that shows its screen in a window of ours, and whose keyboard is what is typed
/// there: for it no XTEST, but a real one, on which lifted keys stay down.
class InnerServer {
public:
    explicit InnerServer(DesktopUser& user) : outerDisplay_(qgetenv("DISPLAY")) {
        server_.start("Xephyr", {"-displayfd", "1", "-screen", "300x200", "-nolisten", "tcp", "-no-host-grab",
                                 "-title", "janela-xephyr"});
        EXPECT_TRUE(server_.waitForReadyRead(30'000));
        qputenv("DISPLAY", ":" + server_.readLine().trimmed());
        EXPECT_NE(user.waitForWindow("janela-xephyr"), 0U);
    }
    ~InnerServer() {
        qputenv("DISPLAY", outerDisplay_);
        server_.terminate();  // killed, it would leave its socket behind
        server_.waitForFinished();
    }
    InnerServer(const InnerServer&) = delete;
    InnerServer& operator=(const InnerServer&) = delete;

private:
    QByteArray outerDisplay_;
    QProcess server_;
};

template <class T>
std::unique_ptr<T> opened(Result<std::unique_ptr<T>> result) {
    EXPECT_TRUE(result);
    return std::move(*result);
}

class RealKeyboardTest : public testing::Test {
protected:
    RealKeyboardTest() {
        xcb_set_input_focus(window_.xcb(), XCB_INPUT_FOCUS_NONE, window_.id(), XCB_CURRENT_TIME);
        xcb_flush(window_.xcb());
    }
    bool paste() {
        return keyboard_.post(std::array{KeyEvent{keyCode::v, modifier::command, true},
                                         KeyEvent{keyCode::v, modifier::command, false}});
    }
    bool holds(ModifierFlags modifiers) {
        return waitFor([&] { return keyboard_.modifiersDown() == modifiers; });
    }
    bool isPasted() {
        return waitFor([&] { return recorder_.keys().find("+55/4 -55/4") != std::string::npos; });
    }

    DesktopUser user_;
    InnerServer server_{user_};
    std::unique_ptr<X11Connection> connection_ = opened(X11Connection::open());
    std::unique_ptr<X11Inquiry> inquiry_ = opened(X11Inquiry::open());
    X11KeyTable keys_{*connection_};
    DesktopEntries entries_{{}, MessageLocale()};
    X11Workspace workspace_{*connection_, *inquiry_, entries_};
    FakeTime time_;
    FakeBackgroundWork background_{time_};
    std::unique_ptr<X11Pasteboard> pasteboard_ =
        opened(X11Pasteboard::open({*connection_, time_, time_, background_}));
    std::unique_ptr<X11HotKeys> hotKeys_ = opened(X11HotKeys::open());
    X11Keyboard keyboard_{{.inquiry = *inquiry_,
                           .keys = keys_,
                           .workspace = workspace_,
                           .entries = entries_,
                           .pasteboard = *pasteboard_,
                           .hotKeys = *hotKeys_}};
    OtherWindow window_{Appearance{}};
    KeyRecorder recorder_{window_};
};

TEST_F(RealKeyboardTest, LiftsWhatHandsHoldAndLeavesItHeld) {
    user_.press(key::super);
    user_.press(key::shift);
    ASSERT_TRUE(holds(modifier::command | modifier::shift));

    EXPECT_TRUE(paste());

    EXPECT_TRUE(isPasted()) << recorder_.keys();
    EXPECT_EQ(keyboard_.modifiersDown(), modifier::command | modifier::shift);
}

TEST_F(RealKeyboardTest, LeavesNoKeyStuck) {
    user_.press(key::super);
    ASSERT_TRUE(holds(modifier::command));

    EXPECT_TRUE(paste());
    EXPECT_TRUE(paste());
    user_.release(key::super);

    EXPECT_TRUE(holds(0));
}

TEST_F(RealKeyboardTest, LeavesNoKeyStuckThatIsLetGoMeanwhile) {
    for (int i = 0; i < 30; ++i) {
        user_.press(key::shift);
        ASSERT_TRUE(holds(modifier::shift));

        user_.release(key::shift);  // which the inner server hears of before, during or after
        EXPECT_TRUE(paste());

        ASSERT_TRUE(holds(0)) << i;
    }
}

}  // namespace
}  // namespace nettlecap::test
