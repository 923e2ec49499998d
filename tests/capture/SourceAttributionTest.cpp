#include "SourceAttributionFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// One whose uptime may run backwards.
class TurningClock final : public Clock {
public:
    void set(Uptime uptime) { uptime_ = uptime; }

    Date now() const override { return {}; }
    Uptime uptime() const override { return uptime_; }

private:
    Uptime uptime_{};
};

class SourceAttributionTest : public SourceAttributionFixture {};

// The program in front.

TEST_F(SourceAttributionTest, CreditsTheProgramInFrontByNameOrIdentifier) {
    start();

    workspace.setFrontmost(notes);
    EXPECT_EQ(source(), "Notas");

    workspace.setFrontmost(RunningApplication{.localizedName = " \n", .bundleIdentifier = "org.exemplo.App"});
    EXPECT_EQ(source(), "org.exemplo.App");

    workspace.setFrontmost(RunningApplication{.localizedName = " ", .bundleIdentifier = ""});
    EXPECT_EQ(source(), "Outro dispositivo");
}

TEST_F(SourceAttributionTest, DoesNotFallBackToTheRecentBrowserWhenANamelessProgramIsInFront) {
    start();
    activate(safari);
    workspace.setFrontmost(RunningApplication{.localizedName = " ", .bundleIdentifier = ""});

    EXPECT_EQ(source(webTypes), "Outro dispositivo");
}

TEST_F(SourceAttributionTest, CreditsAnotherDeviceWhenNobodyIsInFront) {
    start();
    activate(safari);
    workspace.setFrontmost(std::nullopt);

    EXPECT_EQ(source(webTypes), "Outro dispositivo");
}

TEST_F(SourceAttributionTest, CreditsAnotherDeviceWhenOnlyNettlecapIsInFront) {
    start();
    activate(notes);
    activate(itself);

    EXPECT_EQ(source(), "Outro dispositivo");
    EXPECT_EQ(source(webTypes), "Outro dispositivo");
}

// The browser that was in front just before.

TEST_F(SourceAttributionTest, CreditsTheBrowserThatWasInFrontUpToFiveSecondsAgo) {
    start();
    activate(safari);
    activate(itself);

    time.advance(3s);
    EXPECT_EQ(source(webTypes), "Safari");
    time.advance(2s);
    EXPECT_EQ(source(webTypes), "Safari");
    time.advance(0.001s);
    EXPECT_EQ(source(webTypes), "Outro dispositivo");
}

TEST_F(SourceAttributionTest, CreditsTheRecentBrowserOnlyForItsOwnMarkers) {
    start();
    activate(safari);
    activate(itself);

    EXPECT_EQ(source({"public.utf8-plain-text", "public.html"}), "Outro dispositivo");
}

TEST_F(SourceAttributionTest, RemembersTheLastOtherProgramOnly) {
    start();
    activate(safari);
    activate(notes);
    activate(itself);

    EXPECT_EQ(source(webTypes), "Outro dispositivo");
}

TEST_F(SourceAttributionTest, RemembersTheProgramThatWasInFrontAtTheStart) {
    workspace.setFrontmost(safari);
    time.advance(10s);
    start();
    workspace.setFrontmost(itself);

    time.advance(5s);
    EXPECT_EQ(source(webTypes), "Safari");
    time.advance(0.001s);
    EXPECT_EQ(source(webTypes), "Outro dispositivo");
}

TEST_F(SourceAttributionTest, CountsFiveSecondsFromTheTaskOfAnActivation) {
    LateScheduler late;
    attribution = std::make_unique<SourceAttribution>(
        SourceAttribution::Ports{.workspace = workspace, .events = events, .scheduler = late, .clock = time});
    start();
    workspace.activate(safari);
    workspace.setFrontmost(itself);
    time.advance(1s);
    EXPECT_EQ(source(webTypes), "Outro dispositivo");

    late.runPosted();
    time.advance(5s);
    EXPECT_EQ(source(webTypes), "Safari");
}

TEST_F(SourceAttributionTest, CountsFiveSecondsFromTheLastActivation) {
    start();
    activate(safari);
    time.advance(4s);
    activate(itself);
    activate(safari);
    activate(itself);
    time.advance(5s);

    EXPECT_EQ(source(webTypes), "Safari");
}

TEST_F(SourceAttributionTest, IsNotMovedByTheWallClock) {
    start();
    activate(safari);
    activate(itself);
    time.setNow({0});
    EXPECT_EQ(source(webTypes), "Safari");

    time.setNow({900'000'000});
    EXPECT_EQ(source(webTypes), "Safari");
}

TEST_F(SourceAttributionTest, DoesNotCreditABrowserThatCameAfterTheChange) {
    TurningClock turning;
    attribution = std::make_unique<SourceAttribution>(SourceAttribution::Ports{
        .workspace = workspace, .events = events, .scheduler = time, .clock = turning});
    start();
    turning.set(10s);
    activate(safari);
    activate(itself);
    EXPECT_EQ(source(webTypes), "Safari");

    turning.set(9.999s);
    EXPECT_EQ(source(webTypes), "Outro dispositivo");
}

TEST_F(SourceAttributionTest, AppliesTheBrowserRuleToItselfWhenItBearsTheBrowsersName) {
    workspace.setCurrent({.localizedName = "Nettlecap", .bundleIdentifier = "com.apple.Safari"});
    start();
    workspace.setFrontmost(
        RunningApplication{.localizedName = "Cópia", .bundleIdentifier = "com.apple.Safari"});

    EXPECT_EQ(source(webTypes), "Cópia");
    EXPECT_EQ(source(), "Outro dispositivo");
}

// Who this program is.

TEST_F(SourceAttributionTest, KnowsItselfByIdentifierOrName) {
    start();
    const auto isNettlecap = [this](RunningApplication application) {
        workspace.setFrontmost(std::move(application));
        return source() == "Outro dispositivo";
    };

    EXPECT_TRUE(isNettlecap({.localizedName = "Outro nome", .bundleIdentifier = "com.nettlecap.Nettlecap"}));
    EXPECT_TRUE(isNettlecap({.localizedName = "Nettlecap", .bundleIdentifier = "org.exemplo"}));
    EXPECT_TRUE(isNettlecap({.localizedName = "Nettlecap"}));

    EXPECT_FALSE(isNettlecap({.localizedName = "nettlecap", .bundleIdentifier = "org.exemplo"}));
    EXPECT_FALSE(isNettlecap({.localizedName = "Nettlecap 2"}));
    EXPECT_FALSE(isNettlecap({.bundleIdentifier = "com.nettlecap.nettlecap"}));
}

TEST_F(SourceAttributionTest, TakesTwoProgramsWithoutIdentifierForOne) {
    workspace.setCurrent({.localizedName = "Nettlecap"});
    start();

    workspace.setFrontmost(RunningApplication{.localizedName = "Notas"});
    EXPECT_EQ(source(), "Outro dispositivo");

    workspace.setFrontmost(notes);
    EXPECT_EQ(source(), "Notas");
}

// Lifetime.

TEST_F(SourceAttributionTest, InstallsItsMonitorsOnce) {
    start();
    start();
    events.sendGlobal(copyKey);
    workspace.activate(notes);

    EXPECT_EQ(time.waitingTasks(), 2U);
}

TEST_F(SourceAttributionTest, LeavesNothingBehindThatTouchesIt) {
    start();
    workspace.setFrontmost(notes);
    events.sendGlobal(copyKey);
    events.sendLocal(copyKey);
    workspace.activate(safari);

    attribution.reset();
    time.advance(1s);
    events.sendGlobal(leftClick);
    workspace.activate(notes);

    EXPECT_EQ(time.waitingTasks(), 0U);
}

}  // namespace
}  // namespace nettlecap
