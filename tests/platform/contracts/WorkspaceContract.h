#pragma once

#include "platform/Workspace.h"

#include <gmock/gmock.h>

namespace nettlecap {

/// A workspace to be tested, and someone who changes windows.
class WorkspaceHarness {
public:
    virtual ~WorkspaceHarness() = default;

    virtual Workspace& workspace() = 0;
    virtual void bringToFront(const std::string& application) = 0;  ///< another one, of this name
    virtual void bringThisProgramToFront() = 0;
    virtual void quit(const std::string& application) = 0;              ///< one that was in front before
    virtual bool runUntil(const std::function<bool()>& condition) = 0;  ///< false: long past the time for it
};

/// What every Workspace does. Instantiate it with a function that makes the harness.
class WorkspaceContract : public testing::TestWithParam<std::unique_ptr<WorkspaceHarness> (*)()> {
protected:
    std::string front() {
        const auto application = workspace.frontmostApplication();
        return application ? application->localizedName.value_or("(nameless)") : "(nothing)";
    }
    /// In front now, which everybody has been told, and as the workspace knows it.
    RunningApplication brought(const std::string& application) {
        bool isTold = false;
        const auto listening = workspace.onActivation(
            [&](const RunningApplication& front) { isTold = front.localizedName == application; });
        harness->bringToFront(application);
        EXPECT_TRUE(harness->runUntil([&] { return isTold; }));
        return workspace.frontmostApplication().value_or(RunningApplication());
    }
    /// Keeps what is told in `told`.
    Subscription listen() {
        return workspace.onActivation([this](const RunningApplication& application) {
            told.push_back(application.localizedName.value_or("(nameless)"));
        });
    }

    std::unique_ptr<WorkspaceHarness> harness = GetParam()();
    Workspace& workspace = harness->workspace();
    std::vector<std::string> told;
};

TEST_P(WorkspaceContract, KnowsThisProgram) {
    const auto current = workspace.current();

    EXPECT_EQ(current.localizedName, "Nettlecap");
    EXPECT_EQ(current.bundleIdentifier, "com.nettlecap.Nettlecap");
    EXPECT_TRUE(current.processIdentifier);
}

TEST_P(WorkspaceContract, NamesTheApplicationInFrontAtOnce) {
    harness->bringToFront("Editor");
    EXPECT_EQ(front(), "Editor");

    harness->bringToFront("Navegador");
    EXPECT_EQ(front(), "Navegador");

    harness->bringToFront("Editor");
    EXPECT_EQ(front(), "Editor");
}

TEST_P(WorkspaceContract, KnowsThisProgramInFront) {
    harness->bringToFront("Editor");
    harness->bringThisProgramToFront();

    const auto application = workspace.frontmostApplication();

    ASSERT_TRUE(application);
    EXPECT_EQ(application->processIdentifier, workspace.current().processIdentifier);
    EXPECT_EQ(application->bundleIdentifier, "com.nettlecap.Nettlecap");
}

TEST_P(WorkspaceContract, TellsOfEachApplicationThatComesToTheFront) {
    const auto listening = listen();

    harness->bringToFront("Editor");
    ASSERT_TRUE(harness->runUntil([&] { return told.size() == 1; }));
    harness->bringThisProgramToFront();
    ASSERT_TRUE(harness->runUntil([&] { return told.size() == 2; }));
    harness->bringToFront("Navegador");
    ASSERT_TRUE(harness->runUntil([&] { return told.size() == 3; }));

    EXPECT_THAT(told, testing::ElementsAre("Editor", "Nettlecap", "Navegador"));
}

TEST_P(WorkspaceContract, HasTheApplicationInFrontByTheTimeItTells) {
    std::string seen;
    const auto listening = workspace.onActivation([&](const RunningApplication&) { seen = front(); });

    harness->bringToFront("Editor");

    ASSERT_TRUE(harness->runUntil([&] { return !seen.empty(); }));
    EXPECT_EQ(seen, "Editor");
}

TEST_P(WorkspaceContract, TellsNothingAfterTheSubscription) {
    auto ended = listen();
    ended.reset();
    std::string heard;
    const auto listening = workspace.onActivation(
        [&](const RunningApplication& application) { heard = *application.localizedName; });

    harness->bringToFront("Editor");

    ASSERT_TRUE(harness->runUntil([&] { return heard == "Editor"; }));
    EXPECT_TRUE(told.empty());
}

TEST_P(WorkspaceContract, AListenerMayEndItsOwnSubscription) {
    int calls = 0;
    Subscription once;
    once = workspace.onActivation([&](const RunningApplication&) {
        ++calls;
        once.reset();
    });
    const auto listening = listen();

    harness->bringToFront("Editor");
    ASSERT_TRUE(harness->runUntil([&] { return told.size() == 1; }));
    harness->bringToFront("Navegador");
    ASSERT_TRUE(harness->runUntil([&] { return told.size() == 2; }));

    EXPECT_EQ(calls, 1);
}

TEST_P(WorkspaceContract, BringsAnApplicationBackToTheFront) {
    const auto editor = brought("Editor");
    brought("Navegador");
    const auto listening = listen();

    workspace.activate(editor);

    EXPECT_TRUE(harness->runUntil([&] { return front() == "Editor"; }));
    EXPECT_TRUE(harness->runUntil([&] { return !told.empty() && told.back() == "Editor"; }));
}

TEST_P(WorkspaceContract, LeavesTheApplicationInFrontThere) {
    const auto editor = brought("Editor");

    workspace.activate(editor);
    harness->bringToFront("Navegador");
    workspace.activate(editor);
    workspace.activate(editor);

    EXPECT_TRUE(harness->runUntil([&] { return front() == "Editor"; }));
}

TEST_P(WorkspaceContract, KnowsWhetherAnApplicationHasTerminated) {
    const auto editor = brought("Editor");
    const auto browser = brought("Navegador");
    EXPECT_FALSE(workspace.isTerminated(editor));
    EXPECT_FALSE(workspace.isTerminated(browser));
    EXPECT_FALSE(workspace.isTerminated(workspace.current()));

    harness->quit("Editor");

    EXPECT_TRUE(harness->runUntil([&] { return workspace.isTerminated(editor); }));
    EXPECT_FALSE(workspace.isTerminated(browser));
}

TEST_P(WorkspaceContract, BringsNothingToTheFrontInPlaceOfAnApplicationThatIsGone) {
    const auto editor = brought("Editor");
    brought("Navegador");
    harness->quit("Editor");
    ASSERT_TRUE(harness->runUntil([&] { return workspace.isTerminated(editor); }));
    const auto listening = listen();

    workspace.activate(editor);
    harness->bringThisProgramToFront();

    EXPECT_TRUE(harness->runUntil([&] { return front() == "Nettlecap"; }));
    ASSERT_TRUE(harness->runUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, testing::ElementsAre("Nettlecap"));
}

}  // namespace nettlecap
