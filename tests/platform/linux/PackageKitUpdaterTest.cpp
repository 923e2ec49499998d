#include "platform/contracts/SoftwareUpdaterContract.h"
#include "platform/linux/Environment.h"
#include "platform/linux/TemporaryFolder.h"
#include "platform/linux/UpdaterOnABus.h"

#include <fstream>
#include <gtest/gtest.h>
#include <random>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr Seconds second{1};

class PackageKitUpdaterHarness final : public SoftwareUpdaterHarness {
public:
    SoftwareUpdater& updater() override { return on_.updater; }
    void waitForCheck() override {
        ++checks_;
        on_.runUntil([this] { return answers() >= checks_; });
    }
    int answers() override { return static_cast<int>(on_.notifications.shown().size()); }

private:
    UpdaterOnABus on_;
    int checks_ = 0;
};

INSTANTIATE_TEST_SUITE_P(PackageKit, SoftwareUpdaterContract,
                         testing::Values([]() -> std::unique_ptr<SoftwareUpdaterHarness> {
                             return std::make_unique<PackageKitUpdaterHarness>();
                         }));

class PackageKitUpdaterTest : public testing::Test, protected UpdaterOnABus {
protected:
    void SetUp() override { updater.start(); }

    /// The desktop gets a program of that name, which leaves a file behind.
    void installUpdateProgram(const std::string& name) {
        std::ofstream(bin.path() / name) << "#!/bin/sh\n: > '" << opened.string() << "'\n";
        fs::permissions(bin.path() / name, fs::perms(0755));
    }

    PrivateBus quietBus;
    QDBusConnection quiet = quietBus.connect(QStringLiteral("quiet"));  // nobody shows notices there
    TemporaryFolder bin;
    Path opened = bin.path() / "opened";
    Environment path{"PATH", bin.path()};
};

TEST_F(PackageKitUpdaterTest, TellsTheUserOfANewerVersion) {
    archive.updates = {QStringLiteral("other;9;all;debian"), QString(newer)};

    updater.checkForUpdates();

    EXPECT_EQ(told(), "Atualização disponível|Nettlecap 0.2.0|");
    EXPECT_EQ(archive.askedFor, (QStringList{"RefreshCache", "GetUpdates"}));
}

TEST_F(PackageKitUpdaterTest, TheButtonOpensWhatTheDesktopHasForUpdates) {
    for (const char* program : {"update-manager", "gpk-update-viewer", "plasma-discover", "gnome-software"}) {
        installUpdateProgram(program);
        archive.updates = {QString(newer)};
        updater.checkForUpdates();
        ASSERT_EQ(told(), "Atualização disponível|Nettlecap 0.2.0|default,Instalar,button,Instalar");

        // The answer to the notice may still be on its way.
        EXPECT_TRUE(runUntil([&] {
            notifications.press();
            return fs::exists(opened);
        })) << program;
        fs::remove(opened);
        fs::remove(bin.path() / program);
        notifications.forget();
    }
}

TEST_F(PackageKitUpdaterTest, WhoAsksWhereNoNoticesAreShownSeesTheProgramForUpdates) {
    installUpdateProgram("gnome-software");
    PackageKitUpdater there(ports(),
                            {.system = [this] { return ours; }, .session = [this] { return quiet; }});
    there.start();

    there.checkForUpdates();

    EXPECT_TRUE(runUntil([this] { return fs::exists(opened); }));
}

TEST_F(PackageKitUpdaterTest, OpensNothingThatNobodyAskedFor) {
    installUpdateProgram("gnome-software");
    archive.updates = {QString(newer)};
    PackageKitUpdater there(ports(),
                            {.system = [this] { return ours; }, .session = [this] { return quiet; }});
    there.start();
    there.setAutomaticallyChecksForUpdates(true);
    there.resetUpdateCycleAfterShortDelay();
    time.advance(PackageKitUpdater::shortDelay);
    ASSERT_TRUE(runUntil([&] { return there.canCheckForUpdates(); }));
    EXPECT_FALSE(fs::exists(opened));

    // Nor later: this look's answer would open it after that one's.
    const Path openedOnce = bin.path() / "opened-once";
    std::ofstream(bin.path() / "gnome-software") << "#!/bin/sh\necho >>'" << openedOnce.string() << "'\n";
    there.checkForUpdates();
    ASSERT_TRUE(runUntil([&] { return fs::exists(openedOnce) && fs::file_size(openedOnce) > 0; }));
    EXPECT_EQ(fs::file_size(openedOnce), 1U);
    EXPECT_FALSE(fs::exists(opened));
}

TEST_F(PackageKitUpdaterTest, SurvivesAPressOnceTheProgramForUpdatesIsGone) {
    installUpdateProgram("gnome-software");
    archive.updates = {QString(newer)};
    updater.checkForUpdates();
    ASSERT_EQ(told(), "Atualização disponível|Nettlecap 0.2.0|default,Instalar,button,Instalar");
    fs::remove(bin.path() / "gnome-software");

    notifications.press();
    archive.updates.clear();
    updater.checkForUpdates();

    EXPECT_TRUE(runUntil([this] { return notifications.shown().size() == 2; }));
    EXPECT_FALSE(fs::exists(opened));
}

TEST_F(PackageKitUpdaterTest, TellsTheUserThatThereIsNone) {
    archive.updates = {QStringLiteral("nettlecap-other;9;all;debian"), QStringLiteral("nettlecap")};
    archive.heldBack = {QString(newer)};

    updater.checkForUpdates();

    EXPECT_EQ(told(), "O Nettlecap está atualizado||");
}

TEST_F(PackageKitUpdaterTest, OnlyWhoAsksMayBeAskedForAPassword) {
    updater.checkForUpdates();
    ASSERT_EQ(looksAfter(0s), 1);
    EXPECT_TRUE(archive.hints.contains("interactive=true"));
    EXPECT_TRUE(archive.hints.contains("background=false"));

    updater.setAutomaticallyChecksForUpdates(true);
    updater.resetUpdateCycleAfterShortDelay();
    ASSERT_EQ(looksAfter(PackageKitUpdater::interval + PackageKitUpdater::shortDelay), 2);
    EXPECT_TRUE(archive.hints.contains("interactive=false"));
    EXPECT_TRUE(archive.hints.contains("background=true"));
}

TEST_F(PackageKitUpdaterTest, TellsTheUserWhatWentWrongInTheSystemsWords) {
    archive.refreshError = QStringLiteral("Cannot reach <the> archive");

    updater.checkForUpdates();

    EXPECT_EQ(told(), "Não foi possível buscar atualizações|Cannot reach &lt;the&gt; archive|");
    EXPECT_TRUE(updater.canCheckForUpdates());
}

TEST_F(PackageKitUpdaterTest, FindsWhatTheSystemKnowsOfWhereItCannotRefresh) {
    archive.refusal = QStringLiteral("not authorised");
    archive.updates = {QString(newer)};

    updater.checkForUpdates();

    EXPECT_EQ(told(), "Atualização disponível|Nettlecap 0.2.0|");
}

TEST_F(PackageKitUpdaterTest, DoesNotCallItselfTheNewestWhereItCannotRefresh) {
    archive.refusal = QStringLiteral("not authorised");

    updater.checkForUpdates();

    EXPECT_EQ(told(), "Não foi possível buscar atualizações|not authorised|");
}

TEST_F(PackageKitUpdaterTest, SurvivesAListThatFails) {
    archive.listError = QStringLiteral("Lists are damaged");

    updater.checkForUpdates();

    EXPECT_EQ(told(), "Não foi possível buscar atualizações|Lists are damaged|");
}

TEST_F(PackageKitUpdaterTest, SurvivesACancellation) {
    archive.isCancelled = true;

    updater.checkForUpdates();

    EXPECT_EQ(told(), "Não foi possível buscar atualizações|Operation canceled|");
}

TEST_F(PackageKitUpdaterTest, SurvivesWhateverTheServiceCallsAPackage) {
    std::mt19937 chance(20261121);
    const auto below = [&](qsizetype end) {
        return std::uniform_int_distribution(qsizetype{0}, end - 1)(chance);
    };
    const QString letters = QStringLiteral(";;;;nettlecap0.2:~é\u202e%s<b>/\n ");
    for (int look = 0; look < 20; ++look) {
        archive.updates.clear();
        for (int i = 0; i < 100; ++i) {
            QString identifier(below(40), QChar(u' '));
            for (QChar& letter : identifier) letter = letters[below(letters.size())];
            archive.updates << identifier;
        }
        updater.checkForUpdates();
        ASSERT_TRUE(runUntil([this] { return updater.canCheckForUpdates(); }));
    }
    archive.updates << QString(newer);

    updater.checkForUpdates();

    // The looks before it have notices too, which may still be on their way.
    EXPECT_TRUE(runUntil([this] {
        return notifications.shown().endsWith(QStringLiteral("Atualização disponível|Nettlecap 0.2.0|"));
    }));
}

TEST_F(PackageKitUpdaterTest, CannotCheckWhileItLooks) {
    archive.answers = false;
    updater.checkForUpdates();
    ASSERT_TRUE(runUntil([&] { return archive.askedFor.size() == 1; }));
    EXPECT_FALSE(updater.canCheckForUpdates());

    updater.checkForUpdates();
    time.advance(PackageKitUpdater::patience - second);
    EXPECT_FALSE(updater.canCheckForUpdates());

    time.advance(second);
    EXPECT_TRUE(updater.canCheckForUpdates());
    EXPECT_EQ(told(), "Não foi possível buscar atualizações|Connection timed out|");
    EXPECT_TRUE(runUntil([&] { return archive.askedFor.contains("Cancel"); }));
    EXPECT_EQ(archive.askedFor, (QStringList{"RefreshCache", "Cancel"}));
}

TEST_F(PackageKitUpdaterTest, SurvivesTheEndOfTheService) {
    archive.answers = false;
    updater.checkForUpdates();
    ASSERT_TRUE(runUntil([&] { return archive.askedFor.size() == 1; }));

    service.reset();

    EXPECT_EQ(told(), "Não foi possível buscar atualizações|Connection reset by peer|");
}

TEST_F(PackageKitUpdaterTest, SurvivesWithoutTheService) {
    service.reset();

    updater.checkForUpdates();

    EXPECT_EQ(told().rfind("Não foi possível buscar atualizações|", 0), 0U);
}

TEST_F(PackageKitUpdaterTest, SurvivesWithoutABus) {
    bus.stop();

    updater.checkForUpdates();
    EXPECT_TRUE(runUntil([this] { return updater.canCheckForUpdates(); }));

    // By now the connection is known to be dead.
    updater.checkForUpdates();
    EXPECT_TRUE(runUntil([this] { return updater.canCheckForUpdates(); }));
}

TEST_F(PackageKitUpdaterTest, SurvivesABusThatNeverWas) {
    const auto none = [] { return QDBusConnection::connectToBus("unix:path=/nowhere", "none"); };
    PackageKitUpdater alone(ports(), {.system = none, .session = [this] { return ours; }});
    alone.start();

    alone.checkForUpdates();

    EXPECT_TRUE(runUntil([&] { return alone.canCheckForUpdates(); }));
    EXPECT_EQ(told().rfind("Não foi possível buscar atualizações|", 0), 0U);
    QDBusConnection::disconnectFromBus("none");
}

TEST_F(PackageKitUpdaterTest, MayGoAwayWhileItLooks) {
    archive.answers = false;
    auto shortLived = std::make_unique<PackageKitUpdater>(ports(), buses());
    shortLived->start();
    shortLived->checkForUpdates();
    ASSERT_TRUE(runUntil([&] { return archive.askedFor.size() == 1; }));

    shortLived.reset();

    EXPECT_TRUE(runUntil([&] { return archive.askedFor.contains("Cancel"); }));
    time.advance(PackageKitUpdater::patience);
}

TEST(PackageKitUpdaterMakeTest, ACopyThatNoPackageBroughtHasNone) {
    FakeTime time;
    FakeUserDefaults defaults;

    EXPECT_EQ(PackageKitUpdater::make({.clock = time, .scheduler = time, .defaults = defaults}), nullptr);
}

}  // namespace
}  // namespace nettlecap
