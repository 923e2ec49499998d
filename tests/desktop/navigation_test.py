"""Stepping through the history with real keys, and pasting into real programs by letting go."""

import targets
from desktop import main, run, screenshot, wait_until
from hot_keys import OLDER, HotKeyTest
from keyboard import CAPS_LOCK, NUM_LOCK, SUPER


class PasteOnReleaseTest(HotKeyTest):
    """⌘ down, 1, 1, ⌘ up: the third-newest text."""

    def setUp(self):
        super().setUp()
        self.copied("o primeiro: ação", "o segundo", "o terceiro")

    def gesture_into(self, kind, name):
        target = kind(self)
        with self.focus_stays(target.window):
            with self.keyboard.holding(SUPER):
                self.keyboard.tap(OLDER)
                self.wait_for_card("2 de 3", "o segundo")
                self.keyboard.tap(OLDER)
                self.wait_for_card("3 de 3", "o primeiro: ação")
                screenshot(f"{name}-{kind.__name__.lower()}")
            target.expect("o primeiro: ação")
        self.wait_until_hidden()
        return target

    def test_pastes_into_a_gtk_program(self):
        zenity = self.gesture_into(targets.Zenity, "paste")

        self.assertTrue(zenity.known.endswith("+=o primeiro: ação="))
        self.assertEqual(zenity.printed(), zenity.known)

    def test_pastes_into_a_qt_program(self):
        self.gesture_into(targets.FeatherPad, "paste")

    def test_pastes_into_xterm(self):
        self.gesture_into(targets.XTerm, "paste")

    def test_pastes_into_a_terminal_of_a_desktop(self):
        self.gesture_into(targets.Xfce4Terminal, "paste")

    def test_caps_lock_and_num_lock_change_nothing(self):
        for lock in (CAPS_LOCK, NUM_LOCK):
            self.keyboard.lock(lock, True)

        for kind in targets.ALL:
            with self.subTest(kind.__name__):
                self.copied("o primeiro: ação", "o segundo", "o terceiro")
                self.gesture_into(kind, "paste-with-locks")


class LayoutsTest(HotKeyTest):
    """The keyboard's layout changes while the program runs."""

    def tearDown(self):
        run("setxkbmap", "us", "-option", "")
        super().tearDown()

    def test_the_hot_key_and_the_paste_keystroke_follow_the_layout(self):
        self.copied("o primeiro", "o segundo")
        for kind in (targets.Zenity, targets.Xfce4Terminal):
            target = kind(self)
            for layout in ("fr", "us,ru", "us -variant dvorak", "us"):
                with self.subTest(layout, into=kind.__name__):
                    run("setxkbmap", *layout.split())

                    self.paste(OLDER)

                    target.expect("o primeiro")
                    self.copied("o primeiro", "o segundo")  # back to the start

    def test_a_layout_without_latin_letters_is_in_use(self):
        self.copied("o primeiro", "o segundo")
        for kind in targets.ALL:
            with self.subTest(kind.__name__):
                target = kind(self)
                run("setxkbmap", "us,ru", "-option", "grp:shifts_toggle")
                self.keyboard.chord("Shift_L", "Shift_R")
                self.keyboard.tap("a")
                wait_until(lambda: target.received() == "ф", "Russian is typed")

                self.paste(OLDER)

                wait_until(lambda: len(target.received()) > 1, "something is pasted")
                self.keyboard.chord("Shift_L", "Shift_R")
                target.expect("фo primeiro")
                self.copied("o primeiro", "o segundo")  # back to the start
                run("setxkbmap", "us", "-option", "")


if __name__ == "__main__":
    main()
