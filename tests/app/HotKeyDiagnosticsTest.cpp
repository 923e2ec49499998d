#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

class HotKeyDiagnosticsTest : public AppModelFixture {
protected:
    std::string diagnostics() const { return system.files.contents(file).value_or("none"); }

    const Path file = folder / "hotkey-diagnostics.txt";
};

TEST_F(HotKeyDiagnosticsTest, TellsOfTheShortcutsAndOfTheirRegistration) {
    system.time.setNow({.secondsSince2001 = 800'000'000.25});

    model->start();

    EXPECT_EQ(diagnostics(), "timestamp=1778307200.25\n"
                             "handler=0\n"
                             "previous=⌘1\n"
                             "next=⌘2\n"
                             "open=⇧⌘V\n"
                             "favorite=⌥F\n"
                             "previousStatus=0\n"
                             "nextStatus=0\n"
                             "openStatus=0\n"
                             "favoriteStatus=0");
}

TEST_F(HotKeyDiagnosticsTest, TellsWhichShortcutsAreTaken) {
    system.hotKeys.take(next);
    system.hotKeys.take(toggleFavorite);

    model->start();

    EXPECT_THAT(diagnostics(), testing::HasSubstr("\nhandler=0\n"));
    EXPECT_THAT(diagnostics(), testing::EndsWith("\npreviousStatus=0\n"
                                                 "nextStatus=-9878\n"
                                                 "openStatus=0\n"
                                                 "favoriteStatus=-9878"));
}

TEST_F(HotKeyDiagnosticsTest, TellsThatNothingWasRegisteredWithoutAHandler) {
    system.hotKeys.setHandlerStatus(-50);

    model->start();

    EXPECT_THAT(diagnostics(), testing::HasSubstr("\nhandler=-50\n"));
    EXPECT_THAT(diagnostics(), testing::EndsWith("\npreviousStatus=-1\n"
                                                 "nextStatus=-1\n"
                                                 "openStatus=-1\n"
                                                 "favoriteStatus=-1"));
}

TEST_F(HotKeyDiagnosticsTest, IsWrittenOnceAtTheStartAndAtEachChangeOfPreferences) {
    EXPECT_EQ(diagnostics(), "none");
    model->start();
    EXPECT_EQ(system.files.writes(file), 1);

    model->updatePreferences([](AppPreferences& preferences) {
        preferences.previousShortcut = {.keyCode = 1, .modifiers = modifier::control | modifier::option};
    });

    EXPECT_EQ(system.files.writes(file), 2);
    EXPECT_THAT(diagnostics(), testing::HasSubstr("\nprevious=⌃⌥S\n"));
}

TEST_F(HotKeyDiagnosticsTest, IsWrittenBeforeTheMessageOfAFailure) {
    system.hotKeys.take(next);
    std::string whenTold;
    const auto subscription = model->statusMessage().subscribe([&] { whenTold = diagnostics(); });

    model->start();

    EXPECT_THAT(whenTold, testing::HasSubstr("nextStatus=-9878"));
}

TEST_F(HotKeyDiagnosticsTest, IsMissedByNobodyWhenItCannotBeWritten) {
    system.files.fail(FileOperation::write, "No space left on device", file);
    startWith({"um", "dois"});

    press(previous);

    EXPECT_EQ(diagnostics(), "none");
    EXPECT_EQ(status(), "Copiado — use ⌘V para colar");
    EXPECT_EQ(*model->store().persistenceError(), std::nullopt);
}

}  // namespace
}  // namespace nettlecap
