#include "platform/linux/x11/X11Session.h"

#include <QProcess>
#include <sys/wait.h>
#include <unistd.h>

namespace nettlecap::test {
namespace {

/// Applications that were in front once.
class X11WorkspaceApplicationsTest : public X11SessionTest {
protected:
    RunningApplication inFront() const { return session.workspace->frontmostApplication().value(); }
    static std::uint32_t numberOf(const QProcess& process) {
        return static_cast<std::uint32_t>(process.processId());
    }
};

TEST_F(X11WorkspaceApplicationsTest, IsTerminatedWithItsProcess) {
    QProcess process;
    process.start("sleep", {"1000"});
    ASSERT_TRUE(process.waitForStarted());
    auto& window = session.open({.windowClass = X11Session::classOf("Editor"), .process = numberOf(process)});
    const auto editor = inFront();
    window.quit();
    EXPECT_FALSE(session.workspace->isTerminated(editor));

    process.kill();
    process.waitForFinished();

    EXPECT_TRUE(session.workspace->isTerminated(editor));
}

TEST_F(X11WorkspaceApplicationsTest, IsTerminatedAlthoughItsParentHasNotNoticed) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(0);
    siginfo_t ended{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT), 0);

    EXPECT_TRUE(session.workspace->isTerminated({.processIdentifier = child}));

    EXPECT_EQ(::waitpid(child, nullptr, 0), child);
}

TEST_F(X11WorkspaceApplicationsTest, IsTerminatedWithItsWindowWhereNoProcessIsKnown) {
    auto& window = session.openNamed("Editor");
    const auto editor = inFront();
    EXPECT_FALSE(session.workspace->isTerminated(editor));

    window.quit();

    EXPECT_TRUE(session.workspace->isTerminated(editor));
}

TEST_F(X11WorkspaceApplicationsTest, RunsWhileItsWindowIsThereWhateverNumberASandboxGaveIt) {
    session.open({.windowClass = X11Session::classOf("Editor"), .process = 4'000'000});

    EXPECT_FALSE(session.workspace->isTerminated(inFront()));
}

TEST_F(X11WorkspaceApplicationsTest, IsNotCalledTerminatedByAServerThatCannotAnswer) {
    session.openNamed("Editor");
    const auto editor = inFront();
    auto& grabber = session.openNamed("Outro");
    grabber.grabServer();

    EXPECT_FALSE(session.workspace->isTerminated(editor));
    session.workspace->activate(editor);

    grabber.ungrabServer();
    EXPECT_TRUE(waitFor([&] { return front() == "Outro"; }));
}

TEST_F(X11WorkspaceApplicationsTest, ComesToTheFrontFromMinimized) {
    auto& window = session.openNamed("Editor");
    const auto editor = inFront();
    session.openNamed("Outro");
    QProcess::execute("xdotool", {"windowminimize", QString::number(window.id())});

    session.workspace->activate(editor);

    EXPECT_TRUE(waitFor([&] { return user.active() == window.id(); }));
}

TEST_F(X11WorkspaceApplicationsTest, DoesNotGiveItsPlaceToWhoeverGotTheNumberOfItsWindow) {
    session.openNamed("Outro");
    const auto other = inFront();
    session.openNamed("Editor");
    auto gone = other;
    gone.processIdentifier = 1;

    session.workspace->activate(gone);
    user.waitForManager();

    EXPECT_EQ(front(), "Editor");
}

}  // namespace
}  // namespace nettlecap::test
