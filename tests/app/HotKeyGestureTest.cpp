#include "app/AppModelFixture.h"

namespace nettlecap {
namespace {

using testing::IsEmpty;

class HotKeyGestureTest : public AppModelFixture {
protected:
    HotKeyGestureTest() { startWith({"um", "dois", "três", "quatro"}); }

    void clearHistory() { model->store().clearNonFavorites(); }
    void setPreviousShortcut(const ShortcutDefinition& shortcut) {
        model->updatePreferences(
            [&](AppPreferences& preferences) { preferences.previousShortcut = shortcut; });
    }
};

// Gestures that selected nothing.

TEST_F(HotKeyGestureTest, HidesTheCardAndPastesNothingWhenNothingWasSelected) {
    clearHistory();
    press(previous);
    EXPECT_EQ(windows.cardHides, 0);

    release(previous);
    wait();

    EXPECT_EQ(windows.cardHides, 1);
    EXPECT_EQ(pastes(), 0U);
    EXPECT_THAT(system.keyboard.prompts(), IsEmpty());
}

TEST_F(HotKeyGestureTest, AStepThatSelectsNothingTakesNoEarlierSelectionBack) {
    press(previous);
    clearHistory();
    press(previous);
    EXPECT_EQ(system.application.beeps(), 1);

    release(previous);
    wait();

    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyGestureTest, ANewGestureDoesNotInheritTheSelectionOfTheLast) {
    press(previous);
    release(previous);
    wait();
    clearHistory();

    tap(previous);
    wait();

    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyGestureTest, AStepOntoAPictureWhoseFileIsGoneCountsAsASelection) {
    copyPictureOutside();
    copyOutside("cinco");
    ASSERT_TRUE(system.files.remove(folder / "Images" / *entry(1).imageFilename));

    press(previous);
    EXPECT_EQ(card(), "picture, 2 of 6");
    release(previous);
    wait();

    EXPECT_EQ(card(), "hidden");
    EXPECT_EQ(pastes(), 1U);
}

// The other chord.

TEST_F(HotKeyGestureTest, IgnoresAReleaseWithoutAPress) {
    release(previous);
    release(next);
    wait();

    EXPECT_THAT(windows.happenings, IsEmpty());
    EXPECT_EQ(pastes(), 0U);
}

TEST_F(HotKeyGestureTest, IgnoresTheReleaseOfTheChordThatIsNotHeld) {
    press(previous);
    release(next);
    wait();
    EXPECT_EQ(card(), "três, 2 of 4");
    EXPECT_EQ(pastes(), 0U);

    release(previous);
    wait();
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyGestureTest, BelongsToTheChordThatWasPressedLast) {
    press(previous);
    press(next);
    EXPECT_EQ(card(), "quatro, 1 of 4");

    release(previous);
    wait();
    EXPECT_EQ(card(), "quatro, 1 of 4");
    EXPECT_EQ(pastes(), 0U);

    release(next);
    wait();
    EXPECT_EQ(card(), "hidden");
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyGestureTest, TheOtherChordBeginsWithoutASelection) {
    press(previous);
    clearHistory();

    press(next);
    release(next);
    wait();

    EXPECT_EQ(card(), "hidden");
    EXPECT_EQ(pastes(), 0U);
}

TEST_F(HotKeyGestureTest, ASecondReleaseOfTheChordDoesNothing) {
    tap(previous);
    release(previous);
    wait();

    EXPECT_EQ(pastes(), 1U);
    EXPECT_EQ(windows.cardHides, 1);
}

// Other preferences in the middle of a gesture.

TEST_F(HotKeyGestureTest, AGestureGoesOnAcrossAChangeOfPreferences) {
    press(previous);
    model->updatePreferences([](AppPreferences& preferences) { preferences.captureImages = false; });

    press(previous);
    EXPECT_EQ(card(), "dois, 3 of 4");
    release(previous);
    wait();

    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyGestureTest, AGestureGoesOnUnderTheNewShortcutOfItsAction) {
    press(previous);
    setPreviousShortcut({.keyCode = 0, .modifiers = modifier::control});
    release(previous);
    wait();
    EXPECT_EQ(pastes(), 0U);

    hold(modifier::control);
    release({0, hotKeyModifier::control});
    wait();
    EXPECT_EQ(card(), "três, 2 of 4");
    letGo();
    wait();
    EXPECT_EQ(pastes(), 1U);
}

TEST_F(HotKeyGestureTest, AWaitGoesOnForTheModifiersItBeganWith) {
    hold(modifier::command);
    tap(previous);
    setPreviousShortcut({.keyCode = 0, .modifiers = modifier::control});
    wait();
    EXPECT_EQ(card(), "três, 2 of 4");

    hold(modifier::control);
    system.time.advance(20ms);
    EXPECT_EQ(card(), "hidden");
}

TEST_F(HotKeyGestureTest, AListenerMayChangeThePreferencesInTheMiddleOfAStep) {
    bool hasChanged = false;
    const auto subscription = model->statusMessage().subscribe([&] {
        if (!std::exchange(hasChanged, true))
            setPreviousShortcut({.keyCode = 0, .modifiers = modifier::control});
    });

    press(previous);
    EXPECT_EQ(card(), "três, 2 of 4");

    tap({0, hotKeyModifier::control});
    wait();
    EXPECT_EQ(pasteboardText(), "dois");
    EXPECT_EQ(pastes(), 1U);
}

}  // namespace
}  // namespace nettlecap
