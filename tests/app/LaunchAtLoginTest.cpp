#include "app/LaunchAtLogin.h"
#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

using enum LoginItemStatus;

class LaunchAtLoginTest : public AppModelFixture {
protected:
    static constexpr bool loudly = true;
    static constexpr bool silently = false;

    /// What the status line says after a synchronization that found the system in `status`.
    std::string sync(bool desired, LoginItemStatus status, bool showStatus) {
        state.statusMessage = std::nullopt;
        state.preferences.edit([&](AppPreferences& preferences) { preferences.launchAtLogin = desired; });
        system.loginItem.setStatus(status);
        launchAtLogin.syncLaunchAtLogin(state, showStatus);
        return state.statusMessage->value_or("none");
    }
    std::string wanted(LoginItemStatus status, bool showStatus) { return sync(true, status, showStatus); }
    std::string unwanted(LoginItemStatus status, bool showStatus) { return sync(false, status, showStatus); }
    std::string diagnostics() const { return system.files.contents(file).value_or("none"); }

    /// A model of a user who wants it, or does not.
    void makeModel(bool desired) {
        model.reset();
        AppPreferences{.launchAtLogin = desired}.save(system.defaults);
        model = newModel({.updates = nullptr, .loginItem = std::make_unique<LaunchAtLogin>(ports)});
    }
    void setPreference(bool desired) {
        model->updatePreferences([&](AppPreferences& preferences) { preferences.launchAtLogin = desired; });
    }

    const Path file = folder / "launch-at-login-diagnostics.txt";
    const LaunchAtLogin::Ports ports{
        .loginItem = system.loginItem, .bundle = system.bundle, .files = system.files, .clock = system.time};
    AppState state;
    LaunchAtLogin launchAtLogin{ports};
};

// Not wanted.

TEST_F(LaunchAtLoginTest, LeavesAloneWhatIsNotRegisteredAndNotWanted) {
    state.launchAtLoginRequiresApproval = true;

    EXPECT_EQ(unwanted(notRegistered, loudly), "Início automático desativado");
    EXPECT_EQ(unwanted(notRegistered, silently), "none");

    EXPECT_EQ(system.loginItem.unregistrations(), 0);
    EXPECT_FALSE(*state.launchAtLoginRequiresApproval);
}

TEST_F(LaunchAtLoginTest, UnregistersWhatIsNotWantedWhateverItsStatus) {
    int expected = 0;
    for (const LoginItemStatus status : {enabled, requiresApproval, notFound, unknown}) {
        state.launchAtLoginRequiresApproval = true;

        EXPECT_EQ(unwanted(status, loudly), "Início automático desativado");

        EXPECT_EQ(system.loginItem.unregistrations(), ++expected);
        EXPECT_EQ(system.loginItem.status(), notRegistered);
        EXPECT_FALSE(*state.launchAtLoginRequiresApproval);
    }
}

TEST_F(LaunchAtLoginTest, UnregistersWithoutAWordWhereNoneIsWanted) {
    EXPECT_EQ(unwanted(enabled, silently), "none");

    EXPECT_EQ(system.loginItem.status(), notRegistered);
}

TEST_F(LaunchAtLoginTest, SaysInAnyCaseWhyItCouldNotUnregister) {
    system.loginItem.failUnregistration("Permission denied");
    state.launchAtLoginRequiresApproval = true;

    for (const bool showStatus : {loudly, silently})
        EXPECT_EQ(unwanted(requiresApproval, showStatus),
                  "Não foi possível desativar o início automático: Permission denied");

    EXPECT_FALSE(*state.launchAtLoginRequiresApproval);
    EXPECT_THAT(diagnostics(), EndsWith("\nerror=Permission denied"));
}

// Wanted.

TEST_F(LaunchAtLoginTest, RegistersWhatIsWantedAndNotRegisteredOrNotFound) {
    int expected = 0;
    for (const LoginItemStatus status : {notRegistered, notFound}) {
        state.launchAtLoginRequiresApproval = true;

        EXPECT_EQ(wanted(status, loudly), "Nettlecap iniciará com o Mac");

        EXPECT_EQ(system.loginItem.registrations(), ++expected);
        EXPECT_EQ(system.loginItem.status(), enabled);
        EXPECT_FALSE(*state.launchAtLoginRequiresApproval);
    }
}

TEST_F(LaunchAtLoginTest, RegistersWithoutAWordWhereNoneIsWanted) {
    EXPECT_EQ(wanted(notRegistered, silently), "none");

    EXPECT_EQ(system.loginItem.status(), enabled);
}

TEST_F(LaunchAtLoginTest, SaysInAnyCaseWhyItCouldNotRegister) {
    system.loginItem.failRegistration("No space left on device");
    state.launchAtLoginRequiresApproval = true;

    for (const LoginItemStatus status : {notRegistered, notFound})
        for (const bool showStatus : {loudly, silently})
            EXPECT_EQ(wanted(status, showStatus),
                      "Não foi possível ativar o início automático: No space left on device");

    EXPECT_FALSE(*state.launchAtLoginRequiresApproval);
    EXPECT_THAT(diagnostics(), EndsWith("\nerror=No space left on device"));
}

TEST_F(LaunchAtLoginTest, AsksForTheApprovalThatARegistrationNeedsInAnyCase) {
    system.loginItem.setNeedsApproval(true);

    for (const bool showStatus : {loudly, silently}) {
        state.launchAtLoginRequiresApproval = false;
        EXPECT_EQ(wanted(notRegistered, showStatus), "Autorize o Nettlecap nos Itens de Início do macOS");
        EXPECT_TRUE(*state.launchAtLoginRequiresApproval);
    }
}

TEST_F(LaunchAtLoginTest, IsContentWithWhatIsEnabled) {
    state.launchAtLoginRequiresApproval = true;

    EXPECT_EQ(wanted(enabled, loudly), "Nettlecap iniciará com o Mac");
    EXPECT_EQ(wanted(enabled, silently), "none");

    EXPECT_EQ(system.loginItem.registrations(), 0);
    EXPECT_FALSE(*state.launchAtLoginRequiresApproval);
}

TEST_F(LaunchAtLoginTest, AsksForApprovalInAnyCaseAndRegistersNothing) {
    for (const bool showStatus : {loudly, silently}) {
        state.launchAtLoginRequiresApproval = false;
        EXPECT_EQ(wanted(requiresApproval, showStatus), "Autorize o Nettlecap nos Itens de Início do macOS");
        EXPECT_TRUE(*state.launchAtLoginRequiresApproval);
    }

    EXPECT_EQ(system.loginItem.registrations(), 0);
}

TEST_F(LaunchAtLoginTest, OnlyForgetsTheApprovalWhereTheStatusIsUnknown) {
    state.launchAtLoginRequiresApproval = true;

    wanted(unknown, silently);

    EXPECT_FALSE(*state.launchAtLoginRequiresApproval);
    EXPECT_EQ(system.loginItem.registrations() + system.loginItem.unregistrations(), 0);
}

// Diagnostics.

TEST_F(LaunchAtLoginTest, WritesWhatTheSystemAnswered) {
    system.time.setNow({.secondsSince2001 = 800'000'000.25});
    system.bundle.setPath("/opt/nettlecap/bin/nettlecap");

    wanted(notRegistered, silently);

    EXPECT_EQ(diagnostics(), "timestamp=1778307200.25\n"
                             "desiredEnabled=true\n"
                             "status=enabled\n"
                             "bundle=/opt/nettlecap/bin/nettlecap\n"
                             "error=none");
}

TEST_F(LaunchAtLoginTest, WritesTheStatusAsItIsAfterAFailure) {
    system.loginItem.failUnregistration("Permission denied");

    unwanted(enabled, silently);

    EXPECT_EQ(diagnostics(), "timestamp=1778307200.0\n"
                             "desiredEnabled=false\n"
                             "status=enabled\n"
                             "bundle=/usr/share/nettlecap\n"
                             "error=Permission denied");
}

TEST_F(LaunchAtLoginTest, WritesTheNameOfEachStatus) {
    system.loginItem.failRegistration("never");
    const std::vector<std::pair<LoginItemStatus, std::string>> names = {
        {notRegistered, "notRegistered"}, {enabled, "enabled"}, {requiresApproval, "requiresApproval"},
        {notFound, "notFound"},           {unknown, "unknown"},
    };

    for (const auto& [status, name] : names) {
        wanted(status, silently);
        EXPECT_THAT(diagnostics(), HasSubstr("\nstatus=" + name + "\n"));
    }
}

TEST_F(LaunchAtLoginTest, WritesOnceWhateverCameOfIt) {
    int writes = 0;
    for (const bool fails : {false, true}) {
        const auto failure = fails ? std::optional<std::string>("no") : std::nullopt;
        system.loginItem.failRegistration(failure);
        system.loginItem.failUnregistration(failure);
        for (const LoginItemStatus status : {notRegistered, enabled, requiresApproval, notFound, unknown})
            for (const bool desired : {true, false}) {
                sync(desired, status, silently);
                EXPECT_EQ(system.files.writes(file), ++writes);
                EXPECT_THAT(diagnostics(),
                            HasSubstr(desired ? "\ndesiredEnabled=true\n" : "\ndesiredEnabled=false\n"));
            }
    }
}

TEST_F(LaunchAtLoginTest, WritesUTF8WhateverThePathIs) {
    system.bundle.setPath("/opt/ol\xE1/nettlecap");

    wanted(enabled, silently);

    EXPECT_THAT(diagnostics(), HasSubstr("\nbundle=/opt/ol\uFFFD/nettlecap\n"));
}

TEST_F(LaunchAtLoginTest, DoesWithoutDiagnosticsThatCannotBeWritten) {
    system.files.fail(FileOperation::write, "No space left on device", file);
    EXPECT_EQ(wanted(notRegistered, loudly), "Nettlecap iniciará com o Mac");
    EXPECT_EQ(diagnostics(), "none");

    system.files.setApplicationSupportDirectory(std::nullopt);
    EXPECT_EQ(wanted(enabled, loudly), "Nettlecap iniciará com o Mac");
    EXPECT_EQ(system.loginItem.status(), enabled);
}

// In the model.

TEST_F(LaunchAtLoginTest, AHealthyItemIsNotMentionedAtTheStart) {
    system.loginItem.setStatus(enabled);
    makeModel(true);

    model->start();

    EXPECT_EQ(status(), "none");
    EXPECT_THAT(diagnostics(), HasSubstr("\ndesiredEnabled=true\nstatus=enabled\n"));
}

TEST_F(LaunchAtLoginTest, SwitchingOffWhatIsNotRegisteredSaysSoAndUnregistersNothing) {
    system.loginItem.failRegistration("No space left on device");
    makeModel(true);
    model->start();

    setPreference(false);

    EXPECT_EQ(status(), "Início automático desativado");
    EXPECT_EQ(system.loginItem.unregistrations(), 0);
}

TEST_F(LaunchAtLoginTest, SwitchingOnSaysSo) {
    makeModel(false);
    model->start();
    EXPECT_EQ(status(), "none");

    setPreference(true);

    EXPECT_EQ(status(), "Nettlecap iniciará com o Mac");
    EXPECT_EQ(system.loginItem.status(), enabled);
}

TEST_F(LaunchAtLoginTest, AFailureLeavesThePreference) {
    makeModel(false);
    model->start();
    system.loginItem.failRegistration("Permission denied");

    setPreference(true);

    EXPECT_EQ(status(), "Não foi possível ativar o início automático: Permission denied");
    EXPECT_TRUE(model->preferences()->launchAtLogin);
    EXPECT_TRUE(AppPreferences::load(system.defaults).launchAtLogin);
}

TEST_F(LaunchAtLoginTest, TheModelSaysThatApprovalIsRequiredAndOpensThePlaceForIt) {
    system.loginItem.setStatus(requiresApproval);
    makeModel(true);

    model->start();
    EXPECT_TRUE(*model->launchAtLoginRequiresApproval());
    EXPECT_EQ(status(), "Autorize o Nettlecap nos Itens de Início do macOS");

    model->openLoginItems();
    EXPECT_EQ(system.loginItem.settingsOpenings(), 1);
}

}  // namespace
}  // namespace nettlecap
