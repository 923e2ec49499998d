#include "HotKeyManagerFixture.h"

#include <unordered_map>

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using enum HotKeyAction;

class HotKeyManagerTest : public HotKeyManagerFixture {};

TEST_F(HotKeyManagerTest, RegistersNothingBeforeItIsAskedTo) {
    EXPECT_FALSE(service.fake.hasHandler());
    EXPECT_THAT(service.fake.registered(), IsEmpty());
    EXPECT_EQ(manager->lastHandlerStatus(), 0);
    EXPECT_THAT(manager->lastRegistrationStatuses(), IsEmpty());
}

TEST_F(HotKeyManagerTest, AnActionIsKnownByANumberFromOneToFour) {
    EXPECT_EQ(static_cast<std::uint32_t>(previous), 1U);
    EXPECT_EQ(static_cast<std::uint32_t>(next), 2U);
    EXPECT_EQ(static_cast<std::uint32_t>(openSearch), 3U);
    EXPECT_EQ(static_cast<std::uint32_t>(toggleFavorite), 4U);

    const std::unordered_map<HotKeyAction, int> dictionary = {{previous, 1}, {next, 2}};
    EXPECT_EQ(dictionary.at(next), 2);
}

TEST_F(HotKeyManagerTest, RegistersTheFourShortcutsInTheirOrder) {
    EXPECT_THAT(registerAll(), IsEmpty());

    constexpr std::uint32_t ntlc = ('N' << 24) | ('T' << 16) | ('L' << 8) | 'C';
    EXPECT_EQ(service.fake.requests(),
              (std::vector<HotKeyRequest>{
                  {.keyCode = 18, .modifiers = 0x100, .id = {.signature = ntlc, .id = 1}},
                  {.keyCode = 19, .modifiers = 0x100, .id = {.signature = ntlc, .id = 2}},
                  {.keyCode = 9, .modifiers = 0x300, .id = {.signature = ntlc, .id = 3}},
                  {.keyCode = 3, .modifiers = 0x800, .id = {.signature = ntlc, .id = 4}},
              }));
    EXPECT_THAT(manager->lastRegistrationStatuses(),
                ElementsAre(Pair(previous, 0), Pair(next, 0), Pair(openSearch, 0), Pair(toggleFavorite, 0)));
}

TEST_F(HotKeyManagerTest, TranslatesTheModifiers) {
    using namespace modifier;

    EXPECT_EQ(registeredModifiers(0), 0U);
    EXPECT_EQ(registeredModifiers(command), 0x100U);
    EXPECT_EQ(registeredModifiers(shift), 0x200U);
    EXPECT_EQ(registeredModifiers(option), 0x800U);
    EXPECT_EQ(registeredModifiers(control), 0x1000U);
    EXPECT_EQ(registeredModifiers(command | shift), 0x300U);
    EXPECT_EQ(registeredModifiers(control | option), 0x1800U);
    EXPECT_EQ(registeredModifiers(command | option | control), 0x1900U);
    EXPECT_EQ(registeredModifiers(all), 0x1B00U);
}

TEST_F(HotKeyManagerTest, DropsOtherModifiers) {
    constexpr ModifierFlags capsLock = 1U << 16;
    constexpr ModifierFlags numericPad = 1U << 21;
    constexpr ModifierFlags function = 1U << 23;

    EXPECT_EQ(registeredModifiers(capsLock | numericPad | function), 0U);
    EXPECT_EQ(registeredModifiers(~ModifierFlags{0}), 0x1B00U);
}

TEST_F(HotKeyManagerTest, TheOthersWorkWhenOneShortcutIsTaken) {
    service.fake.take(commandTwo);

    EXPECT_THAT(registerAll(), ElementsAre(next));

    EXPECT_THAT(registeredIds(), ElementsAre(1, 3, 4));
    EXPECT_THAT(manager->lastRegistrationStatuses(),
                ElementsAre(Pair(previous, 0), Pair(next, FakeHotKeyService::taken), Pair(openSearch, 0),
                            Pair(toggleFavorite, 0)));
    EXPECT_EQ(manager->lastHandlerStatus(), 0);
}

TEST_F(HotKeyManagerTest, NamesTheFailuresInTheOrderOfTheShortcuts) {
    service.fake.take({3, 0x800});
    service.fake.take({9, 0x300});
    service.fake.take(commandOne);

    EXPECT_THAT(registerAll(), ElementsAre(previous, openSearch, toggleFavorite));
}

TEST_F(HotKeyManagerTest, LeavesItToTheSystemWhetherTwoActionsMayShareAShortcut) {
    shortcuts.next = shortcuts.previous;

    EXPECT_THAT(registerAll(), ElementsAre(next));

    EXPECT_EQ(service.fake.requests().size(), 4U);
    EXPECT_THAT(registeredIds(), ElementsAre(1, 3, 4));
}

TEST_F(HotKeyManagerTest, ReplacesWhatItRegisteredBefore) {
    registerAll();
    shortcuts.previous.keyCode = 20;

    EXPECT_THAT(registerAll(), IsEmpty());

    EXPECT_THAT(registeredIds(), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(service.fake.registered().begin()->second.keyCode, 20U);
    EXPECT_THAT(service.diary, ElementsAre("hot key 1", "hot key 2", "hot key 3", "hot key 4"));
    EXPECT_EQ(service.fake.installations(), 1);
}

TEST_F(HotKeyManagerTest, ForgetsTheStatusesOfTheRegistrationBefore) {
    service.fake.take(commandTwo);
    registerAll();
    service.fake.giveBack(commandTwo);

    EXPECT_THAT(registerAll(), IsEmpty());

    EXPECT_EQ(manager->lastRegistrationStatuses().at(next), 0);
}

TEST_F(HotKeyManagerTest, UnregistersAllAndKeepsTheHandler) {
    registerAll();

    manager->unregisterAll();
    manager->unregisterAll();

    EXPECT_THAT(service.fake.registered(), IsEmpty());
    EXPECT_EQ(service.diary.size(), 4U);
    EXPECT_TRUE(service.fake.hasHandler());
    EXPECT_EQ(manager->lastRegistrationStatuses().size(), 4U);
}

TEST_F(HotKeyManagerTest, WithoutAHandlerNothingIsRegistered) {
    service.fake.setHandlerStatus(-9870);

    EXPECT_THAT(registerAll(), ElementsAre(previous, next, openSearch, toggleFavorite));

    EXPECT_EQ(manager->lastHandlerStatus(), -9870);
    EXPECT_THAT(manager->lastRegistrationStatuses(), IsEmpty());
    EXPECT_THAT(service.fake.requests(), IsEmpty());
}

TEST_F(HotKeyManagerTest, TriesToInstallTheHandlerAgain) {
    service.fake.setHandlerStatus(-9870);
    registerAll();
    service.fake.setHandlerStatus(0);

    EXPECT_THAT(registerAll(), IsEmpty());

    EXPECT_EQ(manager->lastHandlerStatus(), 0);
    EXPECT_EQ(service.fake.installations(), 2);
    EXPECT_THAT(registeredIds(), ElementsAre(1, 2, 3, 4));
}

TEST_F(HotKeyManagerTest, AHandlerWithoutAReferenceIsNone) {
    service.keepsHandlerReference = true;

    EXPECT_THAT(registerAll(), ElementsAre(previous, next, openSearch, toggleFavorite));

    EXPECT_EQ(manager->lastHandlerStatus(), 0);
    EXPECT_THAT(manager->lastRegistrationStatuses(), IsEmpty());
    EXPECT_THAT(service.fake.requests(), IsEmpty());
}

TEST_F(HotKeyManagerTest, AHotKeyWithoutAReferenceIsNoFailureAndNeverUnregistered) {
    service.keepsHotKeyReferences = true;

    EXPECT_THAT(registerAll(), IsEmpty());
    EXPECT_EQ(manager->lastRegistrationStatuses().at(previous), 0);

    manager->unregisterAll();
    EXPECT_THAT(service.diary, IsEmpty());
}

TEST_F(HotKeyManagerTest, EndsTheHotKeysAndThenTheHandlerWithItself) {
    registerAll();

    manager.reset();

    EXPECT_THAT(service.diary, ElementsAre("hot key 1", "hot key 2", "hot key 3", "hot key 4", "handler"));
    EXPECT_THAT(service.fake.registered(), IsEmpty());
    EXPECT_FALSE(service.fake.hasHandler());
}

TEST_F(HotKeyManagerTest, RemovesNoHandlerThatItNeverInstalled) {
    service.fake.setHandlerStatus(-9870);
    registerAll();

    manager.reset();

    EXPECT_THAT(service.diary, IsEmpty());
}

}  // namespace
}  // namespace nettlecap
