#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class HotKeyRegistrationTest : public AppModelFixture {};

TEST_F(HotKeyRegistrationTest, RegistersFourShortcutsAndOneHandlerInOneRun) {
    model->start();
    model->updatePreferences([](AppPreferences&) {});

    EXPECT_THAT(system.hotKeys.registered(), SizeIs(4));
    EXPECT_EQ(system.hotKeys.installations(), 1);
    EXPECT_EQ(status(), "none");
}

TEST_F(HotKeyRegistrationTest, NamesTheShortcutsThatAreTaken) {
    system.hotKeys.take(openSearch);
    system.hotKeys.take(toggleFavorite);
    model->start();
    EXPECT_EQ(status(), "Não foi possível registrar o atalho: abrir Nettlecap, alternar favorito");

    make();
    system.hotKeys.giveBack(openSearch);
    system.hotKeys.giveBack(toggleFavorite);
    system.hotKeys.take(next);
    model->start();
    EXPECT_EQ(status(), "Não foi possível registrar o atalho: seguinte");
}

TEST_F(HotKeyRegistrationTest, NamesAllShortcutsWhenTheSystemTakesNoHandler) {
    system.hotKeys.setHandlerStatus(-50);

    model->start();

    EXPECT_EQ(status(), "Não foi possível registrar o atalho: "
                        "anterior, seguinte, abrir Nettlecap, alternar favorito");
}

TEST_F(HotKeyRegistrationTest, AnswersToTheShortcutsThatAreNotTaken) {
    system.hotKeys.take(previous);
    startWith({"um", "dois"});

    press(previous);
    EXPECT_EQ(card(), "hidden");
    press(next);
    EXPECT_EQ(card(), "dois, 1 of 2");
}

TEST_F(HotKeyRegistrationTest, ForgetsAFailureOnceTheShortcutsAreRegistered) {
    system.hotKeys.take(previous);
    model->start();
    system.hotKeys.giveBack(previous);

    model->updatePreferences([](AppPreferences&) {});

    EXPECT_EQ(*model->statusMessage(), std::nullopt);
}

TEST_F(HotKeyRegistrationTest, ForgetsAnyMessageThatSpeaksOfAShortcut) {
    services.loginItemMessage = "Nenhum atalho, nem início automático";
    model->start();
    EXPECT_EQ(status(), "Nenhum atalho, nem início automático");

    model->updatePreferences([](AppPreferences&) {});

    EXPECT_EQ(*model->statusMessage(), std::nullopt);
}

TEST_F(HotKeyRegistrationTest, LeavesOtherMessagesWhenTheShortcutsAreRegistered) {
    startWith({"um"});
    model->copy(entry(0));

    model->updatePreferences([](AppPreferences&) {});

    EXPECT_EQ(status(), "Copiado — use ⌘V para colar");
}

TEST_F(HotKeyRegistrationTest, LetsTheShortcutsGoWithTheModel) {
    startWith({"um", "dois"});
    system.hotKeys.press(previous);

    model.reset();
    system.time.advance(0s);

    EXPECT_THAT(system.hotKeys.registered(), IsEmpty());
    EXPECT_FALSE(system.hotKeys.hasHandler());
    EXPECT_THAT(windows.happenings, IsEmpty());
}

}  // namespace
}  // namespace nettlecap
