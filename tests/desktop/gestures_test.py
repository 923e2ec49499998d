"""Gestures by chance, and what each has to paste: nothing else is ever typed."""

import os
import random

import targets
from desktop import main, run, wait_until
from hot_keys import NEWER, OLDER, HotKeyTest
from keyboard import SUPER
from Xlib import display

ROUNDS = int(os.environ.get("NETTLECAP_GESTURE_ROUNDS", "50"))


class Expected:
    """The history and the position in it, as the rules have them."""

    def __init__(self):
        self.texts, self.position = [], None

    def copied(self, text):
        if text in self.texts:
            self.texts.remove(text)
        self.texts.insert(0, text)
        self.position = None

    def step(self, key):
        last = len(self.texts) - 1
        if key == OLDER:
            self.position = min(1 if self.position is None else self.position + 1, last)
        else:
            self.position = max((self.position or 0) - 1, 0)

    def text(self):
        return self.texts[self.position]


class Takeovers:
    """Counts how often the clipboard was taken over, be it by its owner once more."""

    def __init__(self):
        self.display = display.Display()
        self.display.xfixes_query_version()
        clipboard = self.display.intern_atom("CLIPBOARD")
        self.display.xfixes_select_selection_input(self.display.screen().root, clipboard, 1)
        self.display.sync()
        self.total = 0

    def count(self):
        self.display.sync()
        for _ in range(self.display.pending_events()):
            self.display.next_event()
            self.total += 1
        return self.total


class GesturesTest(HotKeyTest):
    def setUp(self):
        super().setUp()
        seed = int(os.environ.get("NETTLECAP_SEED", random.randrange(10**6)))
        print(f"{ROUNDS} gestures, NETTLECAP_SEED={seed}", flush=True)
        self.chance = random.Random(seed)
        self.expected = Expected()
        self.takeovers = Takeovers()
        self.addCleanup(self.takeovers.display.close)

    def test_whatever_the_hands_do_the_entry_reached_is_pasted_and_nothing_else(self):
        for _ in range(5):
            self.copy_something()
        targets_there = [targets.Zenity(self), targets.XTerm(self)]
        target = targets_there[-1]

        for number in range(ROUNDS):
            if self.chance.random() < 0.1:
                target = self.chance.choice(targets_there)
                self.bring_to_front(target)
            if self.chance.random() < 0.2:
                self.copy_something()
            self.gesture()
            try:
                target.expect(self.expected.text())
            except AssertionError as failure:
                raise AssertionError(f"gesture {number}, into {type(target).__name__}: {failure}") from None

    def gesture(self):
        self.keyboard.down(SUPER)
        before = self.takeovers.count()
        for steps in range(self.chance.randrange(4)):
            key = self.press()
            self.keyboard.up(key)
            self.dawdle()
            if self.chance.random() < 0.1:
                # Or the step would come after the copy, which nobody could have made so soon.
                wait_until(lambda: self.takeovers.count() > before + steps, "the steps so far are made")
                self.copy_something()
                before = self.takeovers.count() - steps - 1
        key = self.press()
        self.dawdle()
        both = [SUPER, key]
        self.chance.shuffle(both)
        for one in both:
            self.keyboard.up(one)

    def press(self):
        key = self.chance.choice((OLDER, OLDER, NEWER))
        self.keyboard.down(key)
        self.expected.step(key)
        return key

    def dawdle(self):
        """Until the card is there, or not at all."""
        if self.chance.random() < 0.5:
            wait_until(self.card, "the card appears")

    def copy_something(self):
        is_new = len(self.expected.texts) < 3 or self.chance.random() < 0.7
        text = f"texto {self.chance.random()}" if is_new else self.chance.choice(self.expected.texts[1:])
        self.copied(text)
        self.expected.copied(text)

    def bring_to_front(self, target):
        run("xdotool", "windowactivate", str(target.window.id))
        wait_until(lambda: self.screen.active() == target.window.id, "the target is in front")


if __name__ == "__main__":
    main()
