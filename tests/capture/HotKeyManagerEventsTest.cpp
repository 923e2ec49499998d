#include "HotKeyManagerFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using enum HotKeyAction;
using enum HotKeyPhase;

constexpr Status eventNotHandled = -9874;

class HotKeyManagerEventsTest : public HotKeyManagerFixture {};

TEST_F(HotKeyManagerEventsTest, TellsOfAPressAndThenOfItsRelease) {
    registerAll();

    service.fake.press(commandOne);
    service.fake.release(commandOne);
    runMainLoop();

    EXPECT_THAT(calls, ElementsAre(Call(previous, pressed), Call(previous, released)));
}

TEST_F(HotKeyManagerEventsTest, TellsInTheOrderOfTheSystem) {
    registerAll();

    service.fake.press(commandOne);
    service.fake.press(commandTwo);
    service.fake.release(commandOne);
    service.fake.release(commandTwo);
    runMainLoop();

    EXPECT_THAT(calls, ElementsAre(Call(previous, pressed), Call(next, pressed), Call(previous, released),
                                   Call(next, released)));
}

TEST_F(HotKeyManagerEventsTest, IsBehindUntilItHasTold) {
    registerAll();
    EXPECT_FALSE(manager->isBehind());

    service.fake.press(commandOne);
    EXPECT_TRUE(manager->isBehind());

    runMainLoop();
    EXPECT_FALSE(manager->isBehind());
}

TEST_F(HotKeyManagerEventsTest, IsBehindWhereTheSystemIs) {
    service.fake.setBehind(true);
    EXPECT_TRUE(manager->isBehind());
}

TEST_F(HotKeyManagerEventsTest, KnowsEachActionByItsId) {
    registerAll();

    for (const std::uint32_t id : {4U, 3U, 2U, 1U}) EXPECT_EQ(deliver(id), 0);
    runMainLoop();

    EXPECT_THAT(calls, ElementsAre(Call(toggleFavorite, pressed), Call(openSearch, pressed),
                                   Call(next, pressed), Call(previous, pressed)));
}

TEST_F(HotKeyManagerEventsTest, NeverTellsWithinTheSystemsCall) {
    registerAll();

    EXPECT_EQ(deliver(1), 0);

    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(time.waitingTasks(), 1U);
}

TEST_F(HotKeyManagerEventsTest, TakesUnknownIdsForHandledAndTellsNobody) {
    registerAll();

    EXPECT_EQ(deliver(0), 0);
    EXPECT_EQ(deliver(5), 0);
    EXPECT_EQ(deliver(0xFFFF'FFFF, HotKeyEvent::released), 0);

    EXPECT_EQ(time.waitingTasks(), 0U);
}

TEST_F(HotKeyManagerEventsTest, DoesNotHandleAnEventThatIsNotThere) {
    registerAll();

    EXPECT_EQ(service.fake.deliver(nullptr), eventNotHandled);
    EXPECT_EQ(time.waitingTasks(), 0U);
}

TEST_F(HotKeyManagerEventsTest, AnswersWhyTheIdCouldNotBeRead) {
    registerAll();
    const HotKeyEvent event{.idStatus = -9870, .id = {.signature = HotKeyManager::signature, .id = 1}};

    EXPECT_EQ(service.fake.deliver(&event), -9870);
    EXPECT_EQ(time.waitingTasks(), 0U);
}

TEST_F(HotKeyManagerEventsTest, TakesEveryOtherKindOfEventForAPress) {
    registerAll();

    EXPECT_EQ(deliver(1, 7), 0);
    EXPECT_EQ(deliver(1, 6), 0);
    runMainLoop();

    EXPECT_THAT(calls, ElementsAre(Call(previous, pressed), Call(previous, released)));
}

TEST_F(HotKeyManagerEventsTest, DoesNotCompareTheSignature) {
    registerAll();
    const HotKeyEvent event{.id = {.signature = 0, .id = 2}};

    EXPECT_EQ(service.fake.deliver(&event), 0);
    runMainLoop();

    EXPECT_THAT(calls, ElementsAre(Call(next, pressed)));
}

TEST_F(HotKeyManagerEventsTest, TellsTheHandlerThatIsThereWhenItsTurnComes) {
    registerAll();
    service.fake.press(commandOne);
    std::vector<Call> others;
    manager->registerShortcuts(shortcuts,
                               [&](auto action, auto phase) { others.emplace_back(action, phase); });

    runMainLoop();

    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(others, ElementsAre(Call(previous, pressed)));
}

TEST_F(HotKeyManagerEventsTest, ReplacesTheHandlerOfActionsEvenWhereNothingCanBeRegistered) {
    service.keepsHandlerReference = true;
    std::vector<Call> others;
    manager->registerShortcuts(shortcuts,
                               [&](auto action, auto phase) { others.emplace_back(action, phase); });
    registerAll();

    deliver(1);
    runMainLoop();

    EXPECT_THAT(others, IsEmpty());
    EXPECT_THAT(calls, ElementsAre(Call(previous, pressed)));
}

TEST_F(HotKeyManagerEventsTest, WorksWithoutAHandlerOfActions) {
    manager->registerShortcuts(shortcuts, nullptr);

    service.fake.press(commandOne);
    runMainLoop();

    EXPECT_THAT(registeredIds(), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(HotKeyManagerEventsTest, AHandlerOfActionsMayRegisterAnew) {
    const std::string large(1000, 'x');  // held by the handler itself, which is replaced meanwhile
    std::string seen;
    manager->registerShortcuts(shortcuts, [this, large, &seen](HotKeyAction, HotKeyPhase) {
        registerAll();
        seen = large;
    });

    service.fake.press(commandOne);
    service.fake.release(commandOne);
    runMainLoop();

    EXPECT_EQ(seen, large);
    EXPECT_THAT(calls, ElementsAre(Call(previous, released)));
}

TEST_F(HotKeyManagerEventsTest, AHandlerOfActionsMayEndTheManager) {
    manager->registerShortcuts(shortcuts, [this, before = note()](HotKeyAction action, HotKeyPhase phase) {
        manager.reset();
        before(action, phase);
    });

    service.fake.press(commandOne);
    service.fake.release(commandOne);
    runMainLoop();

    EXPECT_THAT(calls, ElementsAre(Call(previous, pressed)));
}

TEST_F(HotKeyManagerEventsTest, TellsNothingOnceItIsGone) {
    registerAll();
    service.fake.press(commandOne);

    manager.reset();
    runMainLoop();

    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(time.waitingTasks(), 0U);
}

}  // namespace
}  // namespace nettlecap
