"""The panel as a window among those of other programs: how it comes, where it stands, and
what becomes of it."""

import accessible
import targets
from desktop import click, main, run, wait_until
from panel import BESIDE_ITS_NAME, BETWEEN_THE_BUTTONS, SETTINGS, PanelTest


class OpeningTest(PanelTest):
    def setUp(self):
        super().setUp()
        self.copied("o primeiro", "o segundo", "o terceiro")

    def test_from_any_program_what_is_typed_filters_at_once(self):
        for kind in targets.ALL:
            with self.subTest(kind.__name__):
                target = kind(self)
                self.open_panel()

                self.keyboard.tap(*"segun")

                self.wait_for_query("segun")
                self.wait_for_rows("o segundo")
                self.keyboard.tap("Escape")
                self.wait_until_closed(target)
                target.expect("")

    def test_return_pastes_the_top_row_into_the_program_that_was_in_front(self):
        for kind in targets.ALL:
            with self.subTest(kind.__name__):
                target = kind(self)
                self.open_panel()
                self.keyboard.tap(*"prim")
                self.wait_for_rows("o primeiro")

                self.keyboard.tap("Return")

                self.wait_until_closed(target)
                target.expect("o primeiro")

    def test_after_escape_the_next_one_starts_afresh(self):
        self.open_panel()
        self.keyboard.tap(*"segun", "Down", "Right")
        self.wait_for_query("segun")
        self.wait_for_section("Salvos")
        self.keyboard.tap("Escape")
        self.wait_until_closed()

        self.open_panel()

        self.wait_for_query("")
        self.wait_for_section("Histórico")
        self.wait_for_rows("o terceiro", "o segundo", "o primeiro")
        self.assertEqual(accessible.selected("list item"), [])

    def test_the_settings_close_with_escape_and_the_history_comes_next(self):
        target = targets.Zenity(self)
        self.open_panel()
        self.press("push button", "Ajustes")
        self.wait_for_title(SETTINGS)

        self.keyboard.tap("Escape")
        self.wait_until_closed(target)

        self.open_panel()
        self.wait_for_rows("o terceiro", "o segundo", "o primeiro")


class PlaceTest(PanelTest):
    def expect_in_the_middle_of(self, left, top, width, height):
        self.open_panel()

        def is_there():
            x, y = self.content_middle()
            return abs(x - left - width / 2) <= 1 and abs(y - top - height / 2) <= 1

        wait_until(is_there, f"the panel is in the middle of {width} x {height} at {left}, {top}")
        self.keyboard.tap("Escape")
        self.wait_until_closed()

    def test_it_opens_in_the_middle_of_what_a_bar_leaves(self):
        self.expect_in_the_middle_of(*self.screen.work_area())
        whole = self.screen.work_area()
        self.client("tint2")
        wait_until(lambda: self.screen.work_area() != whole, "the bar has its place")

        self.expect_in_the_middle_of(*self.screen.work_area())

    def test_it_opens_on_the_screen_under_the_pointer(self):
        for name, left, output in (("left", 0, "screen"), ("right", 640, "none")):
            run("xrandr", "--setmonitor", name, f"640/160x800/200+{left}+0", output)
            self.addCleanup(run, "xrandr", "--delmonitor", name)
        self.open_panel()
        self.keyboard.tap("Escape")  # told on the same connection as the monitors, and after them
        self.wait_until_closed()
        for x, left in ((639, 0), (640, 640), (0, 0), (1279, 640)):
            with self.subTest(x):
                run("xdotool", "mousemove", str(x), "780")
                self.expect_in_the_middle_of(left, 0, 640, 800)

    def test_a_panel_that_was_moved_stays_there_while_its_content_changes(self):
        self.copied("uma linha")
        self.open_panel()
        place = self.drag(right=-150, down=80)

        self.press("push button", "Ajustes")
        self.wait_for_title(SETTINGS)
        self.assertEqual(self.screen.position(self.window()), place)

        self.press("push button", "Voltar ao histórico")
        self.wait_for_title("Nettlecap")
        self.assertEqual(self.screen.position(self.window()), place)

        self.press("push button", "Ajustes")
        self.wait_for_title(SETTINGS)
        self.open_panel()  # the key leads back as well
        self.wait_for_rows("uma linha")
        self.assertEqual(self.screen.position(self.window()), place)

    def test_it_is_dragged_by_its_background_too_and_hears_the_next_click(self):
        self.copied("uma linha")
        self.open_panel()
        self.drag(right=-150, down=80, held=BESIDE_ITS_NAME)
        self.drag(right=60, down=-40, held=BETWEEN_THE_BUTTONS)

        click(*self.program.middle(accessible.named("push button", "Ajustes")))
        self.wait_for_title(SETTINGS)
        self.drag(right=60, down=-40, held=BESIDE_ITS_NAME)


class WithinTest(PanelTest):
    """Nothing that it asks comes in a window of its own; what is written does (see sheet_test)."""

    def setUp(self):
        super().setUp()
        self.copied("uma linha")
        self.open_panel()

    def expect_within(self, title):
        self.wait_for_dialog(title)
        left, top, width, height = accessible.place(accessible.nodes("dialog")[0])
        self.assertTrue(0 <= left <= left + width <= 430 and 0 <= top <= top + height <= 560)
        self.assertEqual(len(run("wmctrl", "-l").decode().splitlines()), 1)

    def test_the_questions_before_something_is_deleted(self):
        self.press("push button", "Limpar")
        self.expect_within("Limpar os itens não favoritados?")
        self.keyboard.tap("Escape")
        self.wait_until_answered()

        self.keyboard.tap("Down", "Delete")
        self.expect_within("Excluir item do histórico?")

    def test_the_question_of_the_settings(self):
        self.press("push button", "Ajustes")
        self.wait_for_title(SETTINGS)
        self.scroll_to("push button", "Limpar histórico…")
        self.press("push button", "Limpar histórico…")

        self.expect_within("Limpar o histórico?")
        self.keyboard.tap("Escape")
        self.wait_until_answered()
        self.assertEqual(self.program.texts(), ["uma linha"])


if __name__ == "__main__":
    main()
