#include "SourceAttributionFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

class SourceAttributionGesturesTest : public SourceAttributionFixture {};

// Copy keys and clicks in other programs.

TEST_F(SourceAttributionGesturesTest, CreditsACopyKeyToTheProgramInFrontAtThatMoment) {
    start();
    workspace.setFrontmost(notes);

    sendGlobal(copyKey);
    workspace.setFrontmost(safari);
    time.advance(0.45s);

    EXPECT_EQ(source(), "Notas");
}

TEST_F(SourceAttributionGesturesTest, GoesByTheFrontProgramTwoSecondsAfterTheCopyKey) {
    start();
    const auto sourceAfter = [this](Seconds delay) {
        workspace.setFrontmost(notes);
        sendGlobal(copyKey);
        workspace.setFrontmost(safari);
        time.advance(delay);
        return source();
    };

    EXPECT_EQ(sourceAfter(2s), "Notas");
    EXPECT_EQ(sourceAfter(2.001s), "Safari");
    EXPECT_EQ(sourceAfter(2.5s), "Safari");
}

TEST_F(SourceAttributionGesturesTest, CountsCutAsWellAsCopyWithAnyFurtherModifier) {
    start();
    const auto counts = [this](InputEvent event) {
        workspace.setFrontmost(notes);
        sendGlobal(event);
        workspace.setFrontmost(std::nullopt);
        return source() == "Notas";
    };

    EXPECT_TRUE(counts({.flags = modifier::command, .keyCode = 8}));
    EXPECT_TRUE(counts({.flags = modifier::command, .keyCode = 7}));
    EXPECT_TRUE(counts({.flags = modifier::command | modifier::shift, .keyCode = 8}));
    EXPECT_TRUE(counts({.flags = modifier::command | modifier::option | modifier::control, .keyCode = 7}));

    EXPECT_FALSE(counts({.flags = modifier::command, .keyCode = 9}));
    EXPECT_FALSE(counts({.flags = modifier::control, .keyCode = 8}));
    EXPECT_FALSE(counts({.flags = 0, .keyCode = 8}));
}

TEST_F(SourceAttributionGesturesTest, CountsEveryClickOfEitherButton) {
    start();
    for (const auto& click : {leftClick, rightClick}) {
        workspace.setFrontmost(notes);
        sendGlobal(click);
        workspace.setFrontmost(safari);
        EXPECT_EQ(source(), "Notas");
    }
}

TEST_F(SourceAttributionGesturesTest, LetsALaterGestureReplaceAnEarlierOne) {
    start();
    workspace.setFrontmost(notes);
    sendGlobal(copyKey);
    time.advance(1s);
    workspace.setFrontmost(safari);
    sendGlobal(leftClick);
    time.advance(2s);
    workspace.setFrontmost(std::nullopt);

    EXPECT_EQ(source(), "Safari");
}

TEST_F(SourceAttributionGesturesTest, KeepsAGestureThroughKeysThatDoNotCount) {
    start();
    workspace.setFrontmost(notes);
    sendGlobal(copyKey);
    workspace.setFrontmost(safari);
    sendGlobal({.flags = modifier::command, .keyCode = 9});

    EXPECT_EQ(source(), "Notas");
}

TEST_F(SourceAttributionGesturesTest, ClearsTheGestureWhenTheProgramInFrontHasNoName) {
    start();
    const auto sourceAfterClickIn = [this](const std::optional<RunningApplication>& application) {
        workspace.setFrontmost(notes);
        sendGlobal(copyKey);
        workspace.setFrontmost(application);
        sendGlobal(leftClick);
        workspace.setFrontmost(std::nullopt);
        return source();
    };

    EXPECT_EQ(sourceAfterClickIn(std::nullopt), "Outro dispositivo");
    EXPECT_EQ(sourceAfterClickIn(RunningApplication{.bundleIdentifier = "org.x"}), "Outro dispositivo");
    EXPECT_EQ(sourceAfterClickIn(RunningApplication{.localizedName = ""}), "Outro dispositivo");
    EXPECT_EQ(sourceAfterClickIn(RunningApplication{.localizedName = " "}), " ");
}

TEST_F(SourceAttributionGesturesTest, CountsTwoSecondsFromTheEventNotFromItsTask) {
    LateScheduler late;
    attribution = std::make_unique<SourceAttribution>(
        SourceAttribution::Ports{.workspace = workspace, .events = events, .scheduler = late, .clock = time});
    start();
    const auto sourceAfter = [&](Seconds delay) {
        workspace.setFrontmost(notes);
        events.sendGlobal(copyKey);
        workspace.setFrontmost(safari);
        time.advance(delay);
        late.runPosted();
        return source();
    };

    EXPECT_EQ(sourceAfter(2s), "Notas");
    EXPECT_EQ(sourceAfter(2.001s), "Safari");
}

TEST_F(SourceAttributionGesturesTest, TouchesItsStateInATaskOfTheMainLoopOnly) {
    start();
    workspace.setFrontmost(notes);
    events.sendGlobal(copyKey);
    workspace.setFrontmost(std::nullopt);

    EXPECT_EQ(source(), "Outro dispositivo");
    time.advance(0s);
    EXPECT_EQ(source(), "Notas");
}

TEST_F(SourceAttributionGesturesTest, ForgetsAGestureWhenTold) {
    start();
    workspace.setFrontmost(notes);
    sendGlobal(copyKey);
    workspace.setFrontmost(safari);

    attribution->forgetLocalCopy();

    EXPECT_EQ(source(), "Safari");
}

// In this program's own windows.

TEST_F(SourceAttributionGesturesTest, CreditsCopyKeysAndClicksInItsOwnWindowsToNettlecap) {
    start();
    workspace.setFrontmost(notes);

    for (const auto& event :
         {copyKey, InputEvent{.flags = modifier::command, .keyCode = 7}, leftClick, rightClick}) {
        sendLocal(event);
        EXPECT_EQ(source(), "Nettlecap");
    }
}

TEST_F(SourceAttributionGesturesTest, DoesNotCountOtherKeysInItsOwnWindows) {
    start();
    workspace.setFrontmost(notes);

    for (const auto& event : {InputEvent{.flags = modifier::command, .keyCode = 9},
                              InputEvent{.flags = modifier::shift, .keyCode = 8}}) {
        sendLocal(event);
        EXPECT_EQ(source(), "Notas");
    }
}

// Monitors that the system refuses.

TEST_F(SourceAttributionGesturesTest, DoesWithoutMonitorsThatTheSystemRefuses) {
    events.setRefusesGlobal(true);
    events.setRefusesLocal(true);
    start();
    workspace.setFrontmost(notes);

    sendGlobal(copyKey);
    sendLocal(copyKey);
    workspace.setFrontmost(safari);

    EXPECT_EQ(source(), "Safari");
}

TEST_F(SourceAttributionGesturesTest, SeesItsOwnWindowsWhereTheSystemHidesOtherPrograms) {
    events.setRefusesGlobal(true);
    start();

    sendLocal(copyKey);

    EXPECT_EQ(source(), "Nettlecap");
}

TEST_F(SourceAttributionGesturesTest, HearsNothingBeforeItIsStarted) {
    workspace.setFrontmost(notes);
    sendGlobal(copyKey);
    workspace.setFrontmost(std::nullopt);

    EXPECT_EQ(source(), "Outro dispositivo");
}

}  // namespace
}  // namespace nettlecap
