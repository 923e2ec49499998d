"""Each hot key with real keys, whatever is in front; and one that another program has."""

import accessible
import targets
from desktop import main, run, wait_until
from hot_keys import FAVORITE, NEWER, OLDER, SEARCH, HotKeyTest
from keyboard import SUPER, Presses
from Xlib import X, display


class StepsTest(HotKeyTest):
    """One press is one step."""

    def setUp(self):
        super().setUp()
        self.texts = [f"texto {number}" for number in range(12)]
        self.copied(*self.texts)
        self.target = targets.XTerm(self)

    def test_a_key_that_repeats_while_it_is_held_is_one_step(self):
        run("xset", "r", "rate", "150", "60")
        presses = Presses()
        self.addCleanup(presses.stop)

        with self.keyboard.holding(SUPER):
            with self.keyboard.holding(OLDER):
                before = presses.count
                wait_until(lambda: presses.count > before + 30, "the key repeats")
            self.wait_for_card("2 de 12")

        self.target.expect(self.texts[-2])

    def test_ten_quick_taps_are_ten_steps(self):
        with self.keyboard.holding(SUPER):
            self.keyboard.tap(*[OLDER] * 10)
            self.wait_for_card("11 de 12")

        self.target.expect(self.texts[-11])

    def test_the_other_key_steps_back(self):
        with self.keyboard.holding(SUPER):
            self.keyboard.tap(OLDER, OLDER, OLDER, NEWER)
            self.wait_for_card("3 de 12")

        self.target.expect(self.texts[-3])

    def test_letting_super_go_first_pastes_as_well(self):
        self.keyboard.down(SUPER)
        self.keyboard.down(OLDER)
        self.keyboard.up(SUPER)
        self.keyboard.up(OLDER)

        self.target.expect(self.texts[-2])


class FavoriteKeyTest(HotKeyTest):
    def favorites(self):
        return [entry["text"] for entry in self.program.history() if entry.get("isFavorite")]

    def test_it_marks_the_entry_reached_and_unmarks_it_from_any_program(self):
        self.copied("o primeiro", "o segundo")
        for kind in targets.ALL:
            with self.subTest(kind.__name__):
                target = kind(self)
                self.paste(OLDER)
                target.expect("o primeiro")

                self.keyboard.chord(*FAVORITE)
                wait_until(lambda: self.favorites() == ["o primeiro"], "the entry is a favourite")
                self.keyboard.chord(*FAVORITE)
                wait_until(lambda: self.favorites() == [], "the entry is none any more")

                target.expect("")


class SearchKeyTest(HotKeyTest):
    """The panel comes with the keyboard in it, from any program."""

    def setUp(self):
        super().setUp()
        self.copied("o primeiro", "o segundo", "o terceiro")

    def in_each_target(self, act):
        """It has the keyboard again afterwards, and nothing was typed or pasted into it: that
        would have come before what is pasted then."""
        for kind in targets.ALL:
            with self.subTest(kind.__name__):
                target = kind(self)
                act()
                wait_until(lambda: not self.program.panel(), "the panel is closed")
                wait_until(lambda: self.screen.active() == target.window.id, "the program is in front again")
                self.copied("o segundo", "o terceiro")  # back to the start
                self.paste(OLDER)
                target.expect("o segundo")

    def test_escape_closes_it_and_the_program_has_the_keyboard_again(self):
        def open_and_close():
            self.open_panel()
            self.keyboard.tap("Escape")

        self.in_each_target(open_and_close)

    def test_the_arrows_choose_a_row(self):
        def choose_the_second():
            self.open_panel()
            self.keyboard.tap("Down", "Down")
            wait_until(lambda: accessible.selected("list item") == ["o segundo"], "the second row is chosen")
            self.keyboard.tap("Escape")

        self.in_each_target(choose_the_second)

    def test_it_ends_a_gesture_and_nothing_is_pasted(self):
        def open_in_the_middle():
            self.copied("o segundo", "o terceiro")  # back to the start
            with self.keyboard.holding(SUPER):
                self.keyboard.tap(OLDER)
                self.wait_for_card("2 de 3")
                self.keyboard.chord(*SEARCH[1:])
                self.program.wait_for_panel()
                self.wait_until_hidden()
            wait_until(lambda: self.screen.active() == self.program.panel().id, "the panel is in front")
            self.keyboard.tap("Escape")

        self.in_each_target(open_in_the_middle)


class TakenKeyTest(HotKeyTest):
    """Another program has ⌘1 already when this one starts."""

    def start(self):
        other = display.Display()
        self.addCleanup(other.close)
        other.screen().root.grab_key(
            self.keyboard.code(OLDER), X.Mod4Mask, True, X.GrabModeAsync, X.GrabModeAsync
        )
        other.sync()
        super().start()

    def test_the_panel_says_which_and_the_others_work(self):
        self.program.show_panel()
        said = "Não foi possível registrar o atalho: anterior"
        wait_until(lambda: said in accessible.names("alert"), f"the panel says {said!r}")
        self.program.close_panel()

        self.copied("o primeiro", "o segundo")
        target = targets.Zenity(self)
        self.paste(OLDER)
        self.paste(NEWER)

        target.expect("o segundo")


if __name__ == "__main__":
    main()
