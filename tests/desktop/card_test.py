"""The card of the navigation as a window among others."""

import contextlib

from desktop import click, main, remains, run, wait_until
from ground import COLOUR, Ground
from hot_keys import OLDER, HotKeyTest
from keyboard import SUPER

LONG = "\n".join(f"linha {number} de um texto com muitas linhas" for number in range(30))


class CardTest(HotKeyTest):
    def setUp(self):
        super().setUp()
        self.copied("um texto curto", "por cima")

    @contextlib.contextmanager
    def shown(self, position="2 de 2"):
        with self.keyboard.holding(SUPER):
            self.keyboard.tap(OLDER)
            card = self.wait_for_card(position)
            wait_until(lambda: self.is_drawn(card), "the card is drawn")
            yield card
        self.wait_until_hidden()

    def rectangle(self, card):
        geometry = card.get_geometry()
        return geometry.x, geometry.y, geometry.width, geometry.height

    def is_drawn(self, card):
        x, y, width, height = self.rectangle(card)
        return self.screen.colour(x + width // 2, y + 12) != COLOUR

    def test_it_never_has_the_focus_and_is_no_window_to_switch_to(self):
        ground = Ground(self)

        with self.focus_stays(ground.window), self.shown() as card:
            managed = run("wmctrl", "-l").decode()

        self.assertEqual(len(managed.splitlines()), 1, managed)
        self.assertTrue(card.get_attributes().override_redirect)

    def test_clicks_go_to_the_window_below_and_change_nothing(self):
        ground = Ground(self)
        with self.focus_stays(ground.window), self.shown() as card:
            x, y, width, height = self.rectangle(card)
            places = [(x + width // 2, y + height // 2), (x + 6, y + 6), (x + width - 7, y + height - 7)]
            for place in places:
                click(*place)
            wait_until(lambda: len(ground.listen().clicks) >= 3, "the window below is clicked")
            self.assertEqual(ground.clicks, places)
            remains(self.card, "the card is shown")

    def expect_place(self, card):
        left, top, width, height = self.screen.work_area()
        x, y, card_width, card_height = self.rectangle(card)
        self.assertEqual(x + card_width / 2, left + width / 2)
        self.assertEqual(y + card_height, top + height - 110)

    def test_it_stands_in_the_middle_110_above_the_bottom(self):
        Ground(self)
        with self.shown() as card:
            self.expect_place(card)
            self.assertEqual(self.rectangle(card)[2], 440)

    def test_it_stands_110_above_a_bar_at_the_bottom(self):
        Ground(self)
        whole = self.screen.work_area()
        self.client("tint2")
        wait_until(lambda: self.screen.work_area() != whole, "the bar has its place")

        with self.shown() as card:
            self.expect_place(card)

    def test_it_comes_on_the_monitor_where_the_user_works(self):
        for name, left, output in (("left", 0, "screen"), ("right", 640, "none")):
            run("xrandr", "--setmonitor", name, f"640/160x800/200+{left}+0", output)
            self.addCleanup(run, "xrandr", "--delmonitor", name)
        self.client("xterm")
        window = self.window_of("XTerm")
        for left in (0, 640):
            run("wmctrl", "-r", ":ACTIVE:", "-e", f"0,{left + 60},60,400,300")
            wait_until(lambda: left < self.screen.position(window)[0] < left + 200, "the window is there")
            with self.subTest(left=left), self.shown() as card:
                x, y, width, height = self.rectangle(card)
                self.assertEqual((x + width / 2, y + height), (left + 320, 800 - 110))

    def test_a_long_text_has_a_wider_card_that_keeps_its_height(self):
        Ground(self)
        self.copied(LONG, "por cima")
        with self.shown("2 de 3") as card:
            _, _, width, height = self.rectangle(card)
            self.assertEqual(width, 480)
            self.assertLessEqual(height, 260)
            self.expect_place(card)

    def test_it_is_seen_above_a_full_screen_window(self):
        Ground(self, full_screen=True)
        with self.shown() as card:
            x, y, width, height = self.rectangle(card)
            self.assertNotEqual(self.screen.colour(x + width // 2, y + height - 12), COLOUR)

    def test_it_is_seen_on_every_workspace(self):
        Ground(self)
        with self.shown() as card:
            run("wmctrl", "-s", "1")
            wait_until(lambda: self.screen.desktop() == 1, "the other workspace")
            x, y, width, height = self.rectangle(card)
            wait_until(lambda: self.screen.colour(20, 20) != COLOUR, "the window stays behind")
            behind = self.screen.colour(20, 20)
            self.assertNotIn(self.screen.colour(x + width // 2, y + height - 12), (behind, COLOUR))

    def corners(self, card):
        x, y, width, height = self.rectangle(card)
        return {self.screen.colour(a, b) for a in (x, x + width - 1) for b in (y, y + height - 1)}

    def test_its_corners_show_what_is_behind(self):
        Ground(self)
        with self.shown() as card:
            self.assertEqual(self.corners(card), {COLOUR})

        self.compositor()
        with self.shown() as card:
            wait_until(lambda: self.corners(card) == {COLOUR}, "what is behind shows through")


if __name__ == "__main__":
    main()
