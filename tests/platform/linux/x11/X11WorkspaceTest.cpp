#include "platform/linux/x11/X11Session.h"

#include <QProcess>
#include <fstream>
#include <unistd.h>

namespace nettlecap::test {
namespace {

using X11WorkspaceTest = X11SessionTest;

std::uint32_t parentProcess() { return static_cast<std::uint32_t>(::getppid()); }

std::string thisHost() {
    char name[256] = {};
    ::gethostname(name, sizeof name - 1);
    return name;
}

TEST_F(X11WorkspaceTest, SeesNothingOnAnEmptyDesktop) {
    EXPECT_TRUE(waitFor([&] { return front() == "(nothing)"; }));
}

TEST_F(X11WorkspaceTest, NamesAnApplicationAfterItsDesktopEntry) {
    session.open({.windowClass = X11Session::classOf("XTerm"), .process = parentProcess()});

    const auto application = session.workspace->frontmostApplication();

    ASSERT_TRUE(application);
    EXPECT_EQ(application->localizedName, "XTerm");
    EXPECT_EQ(application->bundleIdentifier, "debian-xterm");
    EXPECT_EQ(application->processIdentifier, parentProcess());
    EXPECT_EQ(application->handle, user.active());
}

TEST_F(X11WorkspaceTest, NamesAnApplicationWithoutAnEntryAfterItsClass) {
    session.open({.windowClass = std::string("calculo\0Calculadora", 20)});

    EXPECT_EQ(front(), "Calculadora");
    EXPECT_EQ(frontIdentifier(), std::nullopt);
}

TEST_F(X11WorkspaceTest, NamesAnApplicationWithoutAClassAfterItsProcess) {
    session.open({.process = 1});

    std::string name;
    std::ifstream("/proc/1/comm") >> name;
    EXPECT_TRUE(front().starts_with(name)) << front();
}

TEST_F(X11WorkspaceTest, LeavesAWindowThatSaysNothingNameless) {
    session.open(Appearance{});

    EXPECT_EQ(front(), "(nameless)");
}

TEST_F(X11WorkspaceTest, SurvivesAnyClass) {
    for (const auto& bytes :
         {std::string(), std::string("\0", 1), std::string("\0\0\0\0", 4), std::string("so"),
          std::string("a\0\0b", 4), std::string("\xFF\xFE\0\xC3\0", 5), std::string(200'000, 'x')}) {
        session.open({.windowClass = bytes});
        EXPECT_NE(front(), "(nothing)");
        session.quitAll();
    }
}

TEST_F(X11WorkspaceTest, ReadsAClassInLatin1AndInUtf8) {
    session.open({.windowClass = std::string("a\0Edi\xE7\xE3o", 9)});
    EXPECT_EQ(front(), "Edição");

    session.openNamed("Edição");
    EXPECT_EQ(front(), "Edição");
}

TEST_F(X11WorkspaceTest, DoesNotTakeAProcessOfAnotherHostForOneOfThis) {
    const auto own = static_cast<std::uint32_t>(::getpid());
    session.open({.windowClass = X11Session::classOf("Longe"), .process = own, .machine = "outra-maquina"});

    const auto application = session.workspace->frontmostApplication();

    EXPECT_EQ(application->processIdentifier, std::nullopt);
    EXPECT_EQ(application->localizedName, "Longe");
}

TEST_F(X11WorkspaceTest, KnowsThisHostByItsNameWithAndWithoutADomain) {
    for (const auto& machine : {thisHost(), thisHost() + ".example.org", std::string("localhost")}) {
        session.open({.windowClass = X11Session::classOf("Perto"), .process = 1, .machine = machine});
        EXPECT_EQ(session.workspace->frontmostApplication()->processIdentifier, 1) << machine;
    }
}

TEST_F(X11WorkspaceTest, GivesADialogTheProcessAndTheClassOfItsWindow) {
    const auto& window = session.open({.windowClass = X11Session::classOf("Editor"), .process = 1});
    const auto& dialog = session.open({.transientFor = window.id()});
    session.open({.transientFor = dialog.id()});

    const auto application = session.workspace->frontmostApplication();

    EXPECT_EQ(application->processIdentifier, 1);
    EXPECT_EQ(application->localizedName, "Editor");
}

TEST_F(X11WorkspaceTest, SurvivesDialogsOfThemselvesAndOfWindowsThatAreGone) {
    auto& first = session.open({.windowClass = X11Session::classOf("Um")});
    const auto& second = session.open({.transientFor = first.id()});
    const xcb_window_t circle = second.id();
    xcb_change_property(first.xcb(), XCB_PROP_MODE_REPLACE, first.id(), XCB_ATOM_WM_TRANSIENT_FOR,
                        XCB_ATOM_WINDOW, 32, 1, &circle);
    user.activate(first.id());
    EXPECT_EQ(front(), "Um");

    first.quit();
    ASSERT_TRUE(waitFor([&] { return user.active() == second.id(); }));
    EXPECT_EQ(front(), "(nameless)");
}

TEST_F(X11WorkspaceTest, KnowsOurOwnWindows) {
    const QWindow& window = session.openOwn();

    const auto application = session.workspace->frontmostApplication();

    ASSERT_TRUE(application);
    EXPECT_EQ(application->processIdentifier, ::getpid());
    EXPECT_EQ(application->localizedName, "Nettlecap");
    EXPECT_EQ(application->bundleIdentifier, "com.nettlecap.Nettlecap");
    EXPECT_EQ(application->handle, window.winId());
}

TEST_F(X11WorkspaceTest, FollowsAClassThatChanges) {
    auto& window = session.openNamed("Inicio");
    ASSERT_EQ(front(), "Inicio");

    window.setClass(X11Session::classOf("Planilha"));

    EXPECT_EQ(front(), "Planilha");
}

TEST_F(X11WorkspaceTest, SeesTheNextWindowWhenTheOneInFrontDies) {
    std::string last;
    const auto listening = session.workspace->onActivation(
        [&](const RunningApplication& application) { last = *application.localizedName; });
    session.openNamed("Atras");
    auto& window = session.openNamed("Frente");
    ASSERT_TRUE(waitFor([&] { return last == "Frente"; }));

    window.quit();

    EXPECT_TRUE(waitFor([&] { return last == "Atras"; }));
    EXPECT_EQ(front(), "Atras");
}

TEST_F(X11WorkspaceTest, SeesNothingWhenTheLastWindowDies) {
    auto& window = session.openNamed("Frente");
    ASSERT_EQ(front(), "Frente");

    window.quit();

    EXPECT_TRUE(waitFor([&] { return front() == "(nothing)"; }));
}

TEST_F(X11WorkspaceTest, KeepsTheLastApplicationWhileNoWindowIsActive) {
    auto& window = session.openNamed("Frente");
    ASSERT_EQ(front(), "Frente");
    user.setRootWindow("_NET_ACTIVE_WINDOW", XCB_WINDOW_NONE);

    EXPECT_EQ(front(), "Frente");

    window.unmap();
    EXPECT_TRUE(waitFor([&] { return front() == "(nothing)"; }));
}

TEST_F(X11WorkspaceTest, TellsOfAnApplicationOnceWhicheverOfItsWindowsIsInFront) {
    std::vector<std::string> told;
    const auto listening = session.workspace->onActivation(
        [&](const RunningApplication& application) { told.push_back(*application.localizedName); });

    session.open({.windowClass = X11Session::classOf("Editor"), .process = 1});
    session.open({.windowClass = X11Session::classOf("Editor"), .process = 1});
    session.openNamed("Outro");

    EXPECT_TRUE(waitFor([&] { return !told.empty() && told.back() == "Outro"; }));
    EXPECT_EQ(told, (std::vector<std::string>{"Editor", "Outro"}));
}

TEST_F(X11WorkspaceTest, AnswersWhatItKnowsWhileSomebodyHoldsTheServer) {
    session.openNamed("Antes");
    ASSERT_EQ(front(), "Antes");
    auto& grabber = session.openNamed("Depois");
    ASSERT_EQ(front(), "Depois");
    grabber.grabServer();

    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 100; ++i) EXPECT_EQ(front(), "Depois");
    const auto waited = std::chrono::steady_clock::now() - start;

    EXPECT_LT(waited, std::chrono::seconds(10));  // a wait for each would be 25
    grabber.ungrabServer();
    session.openNamed("Editor");
    EXPECT_TRUE(waitFor([&] { return front() == "Editor"; }));
}

/// A desktop whose window manager died and left its properties behind, as far as one can see.
class X11WorkspaceWithoutManagerTest : public X11WorkspaceTest {
protected:
    X11WorkspaceWithoutManagerTest() { user.setRootWindow("_NET_SUPPORTING_WM_CHECK", outdated_.id()); }
    ~X11WorkspaceWithoutManagerTest() override { user.setRootWindow("_NET_SUPPORTING_WM_CHECK", manager_); }

    void focus(xcb_window_t window) {
        xcb_set_input_focus(user.xcb(), XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME);
        xcb_flush(user.xcb());
    }

    xcb_window_t manager_ = user.rootWindow("_NET_SUPPORTING_WM_CHECK");
    OtherWindow& window_ = session.openNamed("Focado");
    OtherWindow& outdated_ = session.openNamed("Antigo");
};

TEST_F(X11WorkspaceWithoutManagerTest, FindsTheWindowThatHoldsTheFocus) {
    const xcb_window_t inner = xcb_generate_id(window_.xcb());
    xcb_create_window(window_.xcb(), XCB_COPY_FROM_PARENT, inner, window_.id(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(window_.xcb(), inner);
    xcb_flush(window_.xcb());

    EXPECT_TRUE(waitFor([&] {
        focus(inner);
        user.setRootWindow("_NET_ACTIVE_WINDOW", outdated_.id());
        return front() == "Focado";
    }));
}

TEST_F(X11WorkspaceWithoutManagerTest, GivesTheFocusToAnApplicationItself) {
    EXPECT_TRUE(waitFor([&] {
        focus(window_.id());
        return front() == "Focado";
    }));
    const auto focused = session.workspace->frontmostApplication().value();
    focus(outdated_.id());
    ASSERT_TRUE(waitFor([&] { return front() == "Antigo"; }));

    session.workspace->activate(focused);

    EXPECT_TRUE(waitFor([&] { return front() == "Focado"; }));
}

TEST_F(X11WorkspaceWithoutManagerTest, SeesNothingWhereNoWindowHoldsTheFocus) {
    window_.unmap();
    outdated_.unmap();

    EXPECT_TRUE(waitFor([&] {
        focus(XCB_INPUT_FOCUS_POINTER_ROOT);
        return front() == "(nothing)";
    }));
}

/// Programs that others wrote, each with a window of a title of its own.
class RealProgramsTest : public X11SessionTest {
protected:
    ~RealProgramsTest() override {
        for (const auto& program : programs_) {
            program->kill();
            program->waitForFinished();
        }
    }
    QProcess& start(const char* program, const QStringList& arguments) {
        programs_.push_back(std::make_unique<QProcess>());
        programs_.back()->start(program, arguments);
        return *programs_.back();
    }

    std::vector<std::unique_ptr<QProcess>> programs_;
};

TEST_F(RealProgramsTest, KnowsXterm) {
    const auto& xterm = start("xterm", {"-title", "janela-xterm"});
    ASSERT_NE(user.waitForWindow("janela-xterm"), 0U);

    EXPECT_EQ(front(), "XTerm");
    EXPECT_EQ(frontIdentifier(), "debian-xterm");
    EXPECT_EQ(session.workspace->frontmostApplication()->processIdentifier, xterm.processId());
}

TEST_F(RealProgramsTest, KnowsATerminalByItsTranslatedName) {
    start("xfce4-terminal", {"--disable-server", "--title=janela-terminal", "--dynamic-title-mode=none"});
    ASSERT_NE(user.waitForWindow("janela-terminal"), 0U);

    EXPECT_EQ(front(), "Terminal Xfce");
    EXPECT_EQ(frontIdentifier(), "xfce4-terminal");
    const auto entry = session.entries.find({"xfce4-terminal", "Xfce4-terminal"});
    EXPECT_THAT(entry->categories, testing::Contains("TerminalEmulator"));
}

TEST_F(RealProgramsTest, KnowsAQtEditor) {
    start("featherpad", {"--standalone", "/tmp/janela-featherpad.txt"});
    ASSERT_NE(user.waitForWindow("janela-featherpad"), 0U);

    EXPECT_EQ(front(), "FeatherPad");
    EXPECT_EQ(frontIdentifier(), "featherpad");
}

TEST_F(RealProgramsTest, KnowsAProgramWithoutAnEntry) {
    start("zenity", {"--info", "--title=janela-zenity", "--text=a"});
    ASSERT_NE(user.waitForWindow("janela-zenity"), 0U);

    EXPECT_EQ(front(), "Zenity");
    EXPECT_EQ(frontIdentifier(), std::nullopt);
}

TEST_F(RealProgramsTest, SeesTheNextApplicationWhenOneIsKilled) {
    start("xterm", {"-title", "janela-atras"});
    ASSERT_NE(user.waitForWindow("janela-atras"), 0U);
    auto& zenity = start("zenity", {"--info", "--title=janela-frente", "--text=a"});
    ASSERT_NE(user.waitForWindow("janela-frente"), 0U);
    ASSERT_EQ(front(), "Zenity");

    zenity.kill();

    EXPECT_TRUE(waitFor([&] { return front() == "XTerm"; }));
}

}  // namespace
}  // namespace nettlecap::test
