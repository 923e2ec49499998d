#include "platform/contracts/KeyboardContract.h"
#include "platform/linux/TemporaryFolder.h"
#include "platform/linux/x11/KeyboardSession.h"

#include <QProcess>
#include <fstream>

namespace nettlecap::test {
namespace {

constexpr xcb_keycode_t digit1 = 10, enter = 36, altGr = 108;
// X's modifiers: Shift 1, Caps Lock 2, Control 4, Alt 8, Num Lock 16, Super 64.
const std::string controlV = "+37/0 +55/4 -55/4 -37/4";
const std::string controlShiftV = "+37/0 +50/4 +55/5 -55/5 -37/5 -50/1";
const std::string shiftInsert = "+50/0 +118/1 -118/1 -50/1";

class X11KeyboardHarness final : public KeyboardHarness {
public:
    Keyboard& keyboard() override { return *session_.keyboard; }
    void hold(ModifierFlags modifiers) override {
        for (const auto& [flag, key] : keys_) {
            if ((modifiers & ~held_ & flag) != 0) session_.session.user.press(key);
            if ((held_ & ~modifiers & flag) != 0) session_.session.user.release(key);
        }
        held_ = modifiers;
    }
    int pastes() override {
        const std::string_view all = recorder_.keys();
        int count = 0;
        for (auto at = all.find("+55/4 -55/4"); at != all.npos; at = all.find("+55/4 -55/4", at + 1)) ++count;
        return count;
    }
    bool runUntil(const std::function<bool()>& condition) override { return waitFor(condition); }

private:
    static constexpr std::pair<ModifierFlags, xcb_keycode_t> keys_[] = {{modifier::command, key::super},
                                                                        {modifier::option, key::alt},
                                                                        {modifier::control, key::control},
                                                                        {modifier::shift, key::shift}};
    KeyboardSession session_;
    KeyRecorder& recorder_ = session_.openRecorder("Editor");
    ModifierFlags held_ = 0;
};

INSTANTIATE_TEST_SUITE_P(X11, KeyboardContract, testing::Values([]() -> std::unique_ptr<KeyboardHarness> {
                             return std::make_unique<X11KeyboardHarness>();
                         }));

class X11KeyboardTest : public testing::Test, public KeyboardSession {
protected:
    /// Waits for as many keys as were typed, and then tells all.
    std::string typed(KeyRecorder& recorder, const std::string& expected) {
        waitFor([&] { return recorder.keys().size() >= expected.size(); });
        return recorder.keys();
    }
    std::string keysDown() {
        std::string keys;
        const X11Reply<xcb_query_keymap_reply_t> down(
            xcb_query_keymap_reply(user.xcb(), xcb_query_keymap(user.xcb()), nullptr));
        for (unsigned key = 0; key < 256; ++key)
            if ((down->keys[key / 8] & (1U << (key % 8))) != 0) keys += std::to_string(key) + ' ';
        return keys;
    }

    DesktopUser& user = session.user;
};

TEST_F(X11KeyboardTest, PastesWithControlV) {
    auto& editor = openRecorder("Editor");

    EXPECT_TRUE(paste());

    EXPECT_EQ(typed(editor, controlV), controlV);
}

TEST_F(X11KeyboardTest, PastesWithControlShiftVInATerminal) {
    auto& terminal = openRecorder("Xfce4-terminal");

    EXPECT_TRUE(paste());

    EXPECT_EQ(typed(terminal, controlShiftV), controlShiftV);
}

TEST_F(X11KeyboardTest, PastesWithShiftInsertInXterm) {
    auto& xterm = openRecorder("XTerm");

    EXPECT_TRUE(paste());

    EXPECT_EQ(typed(xterm, shiftInsert), shiftInsert);
}

TEST_F(X11KeyboardTest, PastesIntoADialogAsIntoItsWindow) {
    const auto& xterm = session.openNamed("XTerm");
    auto& recorder = record(session.open({.transientFor = xterm.id()}));

    EXPECT_TRUE(paste());

    EXPECT_EQ(typed(recorder, shiftInsert), shiftInsert);
}

TEST_F(X11KeyboardTest, TypesOtherKeysAsTheyStand) {
    auto& editor = openRecorder("Editor");
    const KeyEvent optionC{.keyCode = keyCode::c, .flags = modifier::option, .isDown = true};
    const KeyEvent shiftCommandV{.keyCode = keyCode::v, .flags = modifier::command | modifier::shift};

    EXPECT_TRUE(keyboard->post(std::array{optionC, KeyEvent{keyCode::c, modifier::option, false}}));
    const std::string altC = "+64/0 +54/8 -54/8 -64/8";
    EXPECT_EQ(typed(editor, altC), altC);
    editor.forget();

    EXPECT_TRUE(keyboard->post(
        std::array{shiftCommandV, KeyEvent{shiftCommandV.keyCode, shiftCommandV.flags, false}}));
    const std::string superShiftV = "+50/0 +133/1 +55/65 -55/65 -50/65 -133/64";
    EXPECT_EQ(typed(editor, superShiftV), superShiftV);
}

TEST_F(X11KeyboardTest, TypesAllOrNothing) {
    auto& editor = openRecorder("Editor");
    constexpr KeyCode unknown = 9999;

    EXPECT_FALSE(keyboard->post(std::array{KeyEvent{.keyCode = keyCode::c}, KeyEvent{.keyCode = unknown}}));
    EXPECT_TRUE(paste());

    EXPECT_EQ(typed(editor, controlV), controlV);
}

TEST_F(X11KeyboardTest, LiftsHeldModifiersAndPressesThemAgain) {
    auto& editor = openRecorder("Editor");
    user.press(key::super);
    editor.forget();

    EXPECT_TRUE(paste());

    const std::string expected = "-133/64 " + controlV + " +133/0";
    EXPECT_EQ(typed(editor, expected), expected);
    EXPECT_EQ(keysDown(), "133 ");
    user.release(key::super);
    EXPECT_EQ(keysDown(), "");
}

TEST_F(X11KeyboardTest, LiftsTheVeryModifierThatItTypes) {
    auto& editor = openRecorder("Editor");
    user.press(key::control);
    editor.forget();

    EXPECT_TRUE(paste());

    const std::string expected = "-37/4 " + controlV + " +37/0";
    EXPECT_EQ(typed(editor, expected), expected);
    EXPECT_EQ(keysDown(), "37 ");
}

TEST_F(X11KeyboardTest, LiftsModifiersThatThePortsDoNotKnow) {
    auto& editor = openRecorder("Editor");
    user.setLayout("us(altgr-intl)");
    user.press(altGr);
    editor.forget();

    EXPECT_TRUE(paste());

    EXPECT_TRUE(waitFor([&] { return editor.keys().find(controlV) != std::string::npos; })) << editor.keys();
    EXPECT_EQ(keyboard->modifiersDown(), 0U);
    EXPECT_EQ(keysDown(), "108 ");
}

TEST_F(X11KeyboardTest, PastesWhileTheHotKeyIsStillDown) {
    auto& editor = openRecorder("Editor");
    user.press(key::super);
    user.press(digit1);
    editor.forget();

    EXPECT_TRUE(paste());

    EXPECT_TRUE(waitFor([&] { return editor.keys().find(controlV) != std::string::npos; })) << editor.keys();
    EXPECT_EQ(keysDown(), "133 ");
    user.release(digit1);
    EXPECT_EQ(keysDown(), "133 ");
}

TEST_F(X11KeyboardTest, PastesWhileTheHotKeysGrabLasts) {
    auto& editor = openRecorder("Editor");
    DesktopUser grabber;
    xcb_grab_key(grabber.xcb(), 0, session.connection->root(), XCB_MOD_MASK_4, digit1, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    (void)grabber.active();  // answered after the grab
    user.press(key::super);
    user.press(digit1);
    user.release(key::super);
    editor.forget();

    EXPECT_TRUE(paste());

    EXPECT_EQ(typed(editor, controlV), controlV);
}

TEST_F(X11KeyboardTest, PastesWhileVItselfIsStillDown) {
    auto& editor = openRecorder("Editor");
    user.press(key::super);
    user.press(key::v);
    user.release(key::super);
    editor.forget();

    EXPECT_TRUE(paste());

    EXPECT_TRUE(waitFor([&] { return editor.keys().find(controlV) != std::string::npos; })) << editor.keys();
    user.release(key::v);
    EXPECT_EQ(keysDown(), "");
}

TEST_F(X11KeyboardTest, PressesNothingAgainThatWasLetGoBefore) {
    auto& editor = openRecorder("Editor");
    user.press(key::shift);
    EXPECT_EQ(keyboard->modifiersDown(), modifier::shift);
    user.release(key::shift);
    editor.forget();

    EXPECT_TRUE(paste());

    EXPECT_EQ(typed(editor, controlV), controlV);
    EXPECT_EQ(keysDown(), "");
}

TEST_F(X11KeyboardTest, PastesAlthoughCapsLockAndNumLockAreOn) {
    auto& editor = openRecorder("Editor");
    user.lockModifiers(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);

    EXPECT_TRUE(paste());

    const std::string expected = "+37/18 +55/22 -55/22 -37/22";
    EXPECT_EQ(typed(editor, expected), expected);
    EXPECT_TRUE(user.isLocked(XCB_MOD_MASK_LOCK));
    EXPECT_TRUE(user.isLocked(XCB_MOD_MASK_2));
    EXPECT_EQ(keyboard->modifiersDown(), 0U);
}

TEST_F(X11KeyboardTest, LeavesAHeldLockKeyAlone) {
    openRecorder("Editor");
    user.press(key::capsLock);

    EXPECT_TRUE(paste());

    EXPECT_EQ(keysDown(), "66 ");
    user.release(key::capsLock);
    user.type({key::capsLock});
    EXPECT_FALSE(user.isLocked(XCB_MOD_MASK_LOCK));
}

TEST_F(X11KeyboardTest, TypesTheKeyThatCarriesV) {
    auto& editor = openRecorder("Editor");
    user.setLayout("us(dvorak)");

    EXPECT_TRUE(paste());

    const std::string expected = "+37/0 +60/4 -60/4 -37/4";  // where ANSI has the full stop
    EXPECT_EQ(typed(editor, expected), expected);
}

TEST_F(X11KeyboardTest, TypesAtVsPlaceWhereNoKeyCarriesV) {
    auto& editor = openRecorder("Editor");
    for (const char* layout : {"fr", "ru"}) {
        user.setLayout(layout);
        editor.forget();

        EXPECT_TRUE(paste());

        EXPECT_EQ(typed(editor, controlV), controlV) << layout;
    }
}

TEST_F(X11KeyboardTest, FollowsTheLayoutInUse) {
    auto& editor = openRecorder("Editor");
    user.setLayout("us,us(dvorak)", 1);

    EXPECT_TRUE(paste());

    const std::string expected = "+37/128 +60/132 -60/132 -37/132";  // 128: the second layout
    EXPECT_EQ(typed(editor, expected), expected);
}

TEST_F(X11KeyboardTest, OwnsPrimaryUntilXtermHasReadIt) {
    putOnClipboard("maçã");
    openRecorder("XTerm");

    EXPECT_TRUE(paste());
    EXPECT_EQ(ownerOf("PRIMARY") != XCB_WINDOW_NONE, true);

    time.advance(Seconds(1.0));
    EXPECT_TRUE(runUntil([&] { return ownerOf("PRIMARY") == XCB_WINDOW_NONE; }));
    EXPECT_NE(ownerOf("CLIPBOARD"), XCB_WINDOW_NONE);
}

TEST_F(X11KeyboardTest, LeavesPrimaryAloneForAllOthers) {
    putOnClipboard("maçã");
    for (const char* windowClass : {"Editor", "Xfce4-terminal"}) {
        openRecorder(windowClass);
        EXPECT_TRUE(paste());
        EXPECT_EQ(ownerOf("PRIMARY"), XCB_WINDOW_NONE) << windowClass;
    }
}

TEST_F(X11KeyboardTest, TypesNothingWhileSomebodyHoldsTheServer) {
    auto& grabber = session.openNamed("Editor");
    auto& recorder = record(grabber);
    user.press(key::shift);
    ASSERT_EQ(keyboard->modifiersDown(), modifier::shift);
    recorder.forget();
    grabber.grabServer();

    EXPECT_EQ(keyboard->modifiersDown(), 0U);
    EXPECT_FALSE(paste());

    grabber.ungrabServer();
    EXPECT_TRUE(waitFor([&] { return keyboard->modifiersDown() == modifier::shift; }));
    EXPECT_EQ(recorder.keys(), "");
}

/// Programs that others wrote, which show what was pasted into them.
class PastingTest : public X11KeyboardTest {
protected:
    ~PastingTest() override {
        program_.kill();
        program_.waitForFinished();
    }
    std::string fileContents() const {
        std::ifstream file(folder_.path() / "pasted");
        return {std::istreambuf_iterator(file), {}};
    }
    /// Runs `cat` in a terminal, which keeps what is pasted there line by line.
    std::string catCommand() const { return "cat > " + (folder_.path() / "pasted").string(); }

    TemporaryFolder folder_;
    QProcess program_;
};

TEST_F(PastingTest, ReachesXterm) {
    program_.start("xterm",
                   {"-title", "janela-xterm", "-e", "sh", "-c", QString::fromStdString(catCommand())});
    ASSERT_NE(user.waitForWindow("janela-xterm"), 0U);
    ASSERT_TRUE(waitFor([&] { return std::filesystem::exists(folder_.path() / "pasted"); }));
    putOnClipboard("olá xterm\n");

    EXPECT_TRUE(paste());

    EXPECT_TRUE(runUntil([&] { return fileContents() == "olá xterm\n"; })) << fileContents();
    EXPECT_TRUE(runUntil([&] { return ownerOf("PRIMARY") == XCB_WINDOW_NONE; }));
}

TEST_F(PastingTest, ReachesATerminalWithCapsLockOnAndKeysHeld) {
    program_.start("xfce4-terminal",
                   {"--disable-server", "--title=janela-terminal", "--dynamic-title-mode=none", "-e",
                    QString::fromStdString("sh -c '" + catCommand() + "'")});
    ASSERT_NE(user.waitForWindow("janela-terminal"), 0U);
    ASSERT_TRUE(waitFor([&] { return std::filesystem::exists(folder_.path() / "pasted"); }));
    putOnClipboard("olá terminal");  // it asks the user about a text of several lines
    user.lockModifiers(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
    user.press(key::super);

    EXPECT_TRUE(paste());

    user.release(key::super);
    EXPECT_TRUE(runUntil([&] {
        user.type({enter});
        return fileContents().find("olá terminal\n") != std::string::npos;
    })) << fileContents();
}

/// A second X server, which lacks XTEST.
TEST_F(X11KeyboardTest, IsNotTrustedByAServerWithoutXtest) {
    QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp", "-tst"});
    ASSERT_TRUE(server.waitForReadyRead(30'000));
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":" + server.readLine().trimmed());
    {
        const auto inquiry = X11Inquiry::open();
        ASSERT_TRUE(inquiry);
        X11Keyboard other({.inquiry = **inquiry,
                           .keys = session.raw->keyTable(),
                           .workspace = *session.workspace,
                           .entries = session.entries,
                           .pasteboard = *pasteboard,
                           .hotKeys = *hotKeys});

        EXPECT_FALSE(other.isTrusted(true));
        EXPECT_FALSE(other.post(std::array{KeyEvent{keyCode::v, modifier::command, true}}));
        EXPECT_TRUE((*inquiry)->canAnswer());
    }
    qputenv("DISPLAY", display);
    server.terminate();  // killed, it would leave its socket behind
    server.waitForFinished();
}

}  // namespace
}  // namespace nettlecap::test
