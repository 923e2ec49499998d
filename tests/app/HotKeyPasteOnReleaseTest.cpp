#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HotKeyPasteOnReleaseTest : public AppModelFixture {
protected:
    HotKeyPasteOnReleaseTest() { startWith({"um", "dois", "três", "quatro"}); }

    void clearHistory() { model->store().clearNonFavorites(); }
    void setPreviousShortcut(const ShortcutDefinition& shortcut) {
        model->updatePreferences(
            [&](AppPreferences& preferences) { preferences.previousShortcut = shortcut; });
    }
    /// A gesture whose key is up again while ⌘ is still down.
    void beginToWait() {
        hold(modifier::command);
        tap(previous);
    }
};

// The wait for the modifiers.

TEST_F(HotKeyPasteOnReleaseTest, PastesWhatWasSelectedOnceTheModifiersAreUp) {
    beginToWait();
    EXPECT_EQ(card(), "três, 2 of 4");

    letGo();
    wait();

    EXPECT_EQ(card(), "hidden");
    EXPECT_EQ(pasteboardText(), "três");
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, LooksAtTheModifiersEveryTwoHundredthsOfASecond) {
    beginToWait();
    system.time.advance(1ms);
    letGo();
    system.time.advance(18ms);
    EXPECT_EQ(card(), "três, 2 of 4");

    system.time.advance(1ms);
    EXPECT_EQ(card(), "hidden");
}

TEST_F(HotKeyPasteOnReleaseTest, TypesTwelveHundredthsOfASecondAfterTheModifiersAreSeenUp) {
    beginToWait();
    letGo();

    system.time.advance(139ms);
    EXPECT_EQ(pastes(), 0U);

    system.time.advance(1ms);
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, DoesNotWaitWhenTheModifiersAreUpFirst) {
    press(previous);
    release(previous);
    EXPECT_EQ(card(), "hidden");

    system.time.advance(120ms);
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, PastesOnceWhereTheKeysWereQuickerThanTheProgram) {
    for (int taps = 0; taps < 3; ++taps) {
        system.hotKeys.press(previous);
        system.hotKeys.release(previous);
    }

    wait();

    EXPECT_EQ(pasteboardText(), "um");
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, WaitsForAPressThatIsOnItsWay) {
    system.hotKeys.setBehind(true);
    tap(previous);
    system.time.advance(1s);
    EXPECT_EQ(card(), "três, 2 of 4");

    system.hotKeys.setBehind(false);
    system.time.advance(20ms);
    EXPECT_EQ(card(), "hidden");
}

TEST_F(HotKeyPasteOnReleaseTest, WaitsAsLongAsTheModifiersAreDown) {
    beginToWait();
    system.time.advance(3600s);
    EXPECT_EQ(card(), "três, 2 of 4");
    EXPECT_EQ(pastes(), 0U);

    letGo();
    wait();
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, TakesAModifierThatIsDownAgainForOneThatNeverWasUp) {
    beginToWait();
    letGo();
    system.time.advance(10ms);
    hold(modifier::command);
    system.time.advance(10ms);
    letGo();
    EXPECT_EQ(card(), "três, 2 of 4");

    system.time.advance(20ms);
    EXPECT_EQ(card(), "hidden");
}

TEST_F(HotKeyPasteOnReleaseTest, WaitsForTheModifiersOfItsShortcutOnly) {
    hold(modifier::shift | modifier::option | modifier::control);

    tap(previous);

    EXPECT_EQ(card(), "hidden");
}

TEST_F(HotKeyPasteOnReleaseTest, WaitsForEachModifierOfItsShortcut) {
    setPreviousShortcut({.keyCode = 0, .modifiers = modifier::control | modifier::option | modifier::shift});
    const Shortcut shortcut{0, hotKeyModifier::control | hotKeyModifier::option | hotKeyModifier::shift};
    for (const auto held : {modifier::control, modifier::option, modifier::shift}) {
        hold(held);
        tap(shortcut);
        system.time.advance(1s);
        EXPECT_NE(card(), "hidden");
        letGo();
        system.time.advance(20ms);
        EXPECT_EQ(card(), "hidden");
    }
}

TEST_F(HotKeyPasteOnReleaseTest, DoesNotWaitForAShortcutWithoutModifiers) {
    setPreviousShortcut({.keyCode = 0});
    hold(modifier::all);

    tap({0, 0});

    EXPECT_EQ(card(), "hidden");
}

TEST_F(HotKeyPasteOnReleaseTest, WaitsForTheModifiersOfTheChordThatWasReleased) {
    setPreviousShortcut({.keyCode = 0, .modifiers = modifier::control});
    hold(modifier::control);
    tap(next);
    EXPECT_EQ(card(), "hidden");

    tap({0, hotKeyModifier::control});
    EXPECT_EQ(card(), "três, 2 of 4");
}

// The paste.

TEST_F(HotKeyPasteOnReleaseTest, PastesIntoTheApplicationInFrontAndLeavesPanelAndPopover) {
    system.workspace.activate(notes);
    system.workspace.activate(system.workspace.current());
    model->openNettlecap();
    windows.happenings.clear();

    tap(previous);

    EXPECT_EQ(system.workspace.frontmostApplication(), notes);
    EXPECT_THAT(windows.happenings, ElementsAre("card shown", "card hidden"));
}

TEST_F(HotKeyPasteOnReleaseTest, TypesIntoWhateverIsInFrontWhenTheApplicationHasQuit) {
    system.workspace.activate(notes);
    system.workspace.setFrontmost(mail);
    system.workspace.terminate(notes);

    tap(previous);
    wait();

    EXPECT_EQ(system.workspace.frontmostApplication(), mail);
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, LeavesTheMessageOfTheLastStep) {
    tap(previous);
    wait();

    EXPECT_EQ(status(), "Copiado — use ⌘V para colar");
}

TEST_F(HotKeyPasteOnReleaseTest, SaysWhatIsMissingWhenItMayNotTypeAndPromptsOnce) {
    system.keyboard.setTrusted(false);

    tap(previous);
    tap(previous);
    wait();

    EXPECT_EQ(status(), "Copiado. Autorize Acessibilidade para colar automaticamente.");
    EXPECT_EQ(pasteboardText(), "dois");
    EXPECT_EQ(card(), "hidden");
    EXPECT_EQ(pastes(), 0U);
    EXPECT_THAT(system.keyboard.prompts(), ElementsAre(true, false));
}

TEST_F(HotKeyPasteOnReleaseTest, SharesTheOnePromptWithTheCopiesOfTheUser) {
    system.keyboard.setTrusted(false);

    model->copy(entry(0), true);
    tap(previous);

    EXPECT_THAT(system.keyboard.prompts(), ElementsAre(true, false));
}

TEST_F(HotKeyPasteOnReleaseTest, PastesAlsoWhenTheEntryWasRemovedMeanwhile) {
    beginToWait();
    model->store().remove(ClipboardEntry(entry(1)));

    letGo();
    wait();

    EXPECT_EQ(pasteboardText(), "três");
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, PastesAlsoAfterACaptureInTheMiddleOfTheGesture) {
    press(previous);
    copyOutside("cinco");

    release(previous);
    wait();

    EXPECT_EQ(pasteboardText(), "cinco");
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, PastesOnceForSeveralSteps) {
    hold(modifier::command);
    press(previous);
    press(previous);
    press(previous);
    release(previous);

    letGo();
    wait();

    EXPECT_EQ(pasteboardText(), "um");
    EXPECT_EQ(pastes(), 1U);
}

// Giving a waiting paste up.

TEST_F(HotKeyPasteOnReleaseTest, APressGivesAWaitingPasteUpAndItsReleaseBeginsAnother) {
    beginToWait();
    system.time.advance(5ms);

    press(previous);
    letGo();
    wait();
    EXPECT_EQ(card(), "dois, 3 of 4");
    EXPECT_EQ(pastes(), 0U);

    release(previous);
    wait();
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, AnOlderWaitNeverPastesForANewerOne) {
    beginToWait();
    system.time.advance(5ms);
    tap(next);
    system.time.advance(5ms);
    tap(previous);

    letGo();
    system.time.advance(19ms);
    EXPECT_EQ(card(), "três, 2 of 4");
    wait();

    EXPECT_EQ(pastes(), 1U);
    EXPECT_EQ(windows.cardHides, 1);
}

TEST_F(HotKeyPasteOnReleaseTest, APressThatSelectsNothingGivesAWaitingPasteUpToo) {
    beginToWait();
    clearHistory();

    tap(next);
    letGo();
    wait();

    EXPECT_EQ(pastes(), 0U);
}

TEST_F(HotKeyPasteOnReleaseTest, OpenSearchGivesAWaitingPasteUp) {
    beginToWait();

    tap(openSearch);
    letGo();
    wait();

    EXPECT_EQ(pastes(), 0U);
    EXPECT_EQ(card(), "hidden");
    EXPECT_EQ(windows.panel, ContentKind::history);
}

TEST_F(HotKeyPasteOnReleaseTest, AChordThatIsHeldWhileSearchOpensPastesAtItsRelease) {
    press(previous);
    tap(openSearch);
    wait();
    EXPECT_EQ(pastes(), 0U);

    release(previous);
    wait();
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, FavoriteCaptureAndCopyLeaveAWaitingPasteAlone) {
    beginToWait();

    tap(toggleFavorite);
    copyOutside("cinco");
    model->copy(entry(0), false);
    letGo();
    wait();

    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, WhatIsAboutToBeTypedIsTypedWhateverIsPressedThen) {
    tap(previous);
    system.time.advance(50ms);

    hold(modifier::command);
    press(previous);
    tap(openSearch);
    wait();

    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyPasteOnReleaseTest, NothingIsPastedOnceTheModelIsGone) {
    beginToWait();

    model.reset();
    letGo();
    wait();

    EXPECT_EQ(pastes(), 0U);
    EXPECT_EQ(system.time.waitingTasks(), 0U);
}

}  // namespace
}  // namespace nettlecap
