"""The rows of the panel under a real mouse: previews come and go, clicks copy or paste."""

import time

import targets
from desktop import click, main, point_at, remains, wait_until
from hot_keys import OLDER
from panel import PanelTest

LONG = "um texto comprido que não cabe na linha " * 5


class PreviewTest(PanelTest):
    def setUp(self):
        super().setUp()
        self.copied("curto", LONG)
        self.open_panel()
        self.wait_for_rows(LONG.strip(), "curto")

    def leave(self):
        point_at(5, 795)

    def test_a_pointer_that_rests_on_a_row_opens_its_preview_and_leaving_closes_it(self):
        place = self.program.middle_of_row(0)
        came = time.monotonic()
        point_at(*place)
        self.wait_for_preview("Texto copiado")
        self.assertGreater(time.monotonic() - came, 0.3)

        left = time.monotonic()
        self.leave()
        self.wait_until_no_preview()
        self.assertGreater(time.monotonic() - left, 0.2)

    def test_rows_that_the_pointer_only_crosses_show_nothing(self):
        long, short = self.program.middle_of_row(0), self.program.middle_of_row(1)
        point_at(*long)
        point_at(*short)

        self.wait_for_preview("Copiado")

        point_at(*long)
        self.leave()
        self.wait_until_no_preview()
        remains(lambda: not self.floating(), "nothing opens any more")

    def test_the_pointer_travels_into_the_preview_and_it_stays(self):
        self.point_at_row(0)
        preview = self.wait_for_preview("Texto copiado").get_geometry()

        point_at(preview.x + preview.width // 2, preview.y + preview.height // 2)
        remains(self.floating, "the preview under the pointer")

        self.leave()
        self.wait_until_no_preview()

    def test_a_panel_that_opens_under_the_pointer_shows_no_preview(self):
        place = self.program.middle_of_row(1)
        self.keyboard.tap("Escape")
        self.wait_until_closed()
        point_at(*place)

        self.open_panel()
        remains(lambda: not self.floating(), "the pointer did not come, the row did")

        point_at(place[0], place[1] - 53)
        self.wait_for_preview("Texto copiado")

    def test_the_wheel_takes_the_preview_of_a_row_away(self):
        self.copied(*[f"linha {number}" for number in range(20)])
        self.wait_for_top_row("linha 19")
        self.point_at_row(2)
        self.wait_for_preview("Copiado")

        self.scroll_to("list item", "curto")
        self.leave()

        self.wait_until_no_preview()

    def test_the_panel_keeps_the_keyboard_while_previews_come_and_go(self):
        with self.focus_stays(self.window()):
            for _ in range(3):
                self.point_at_row(0)
                self.wait_for_preview("Texto copiado")
                self.leave()
                self.wait_until_no_preview()


class ClickTest(PanelTest):
    def setUp(self):
        super().setUp()
        self.copied("o primeiro", "o segundo")
        self.target = targets.Zenity(self)
        self.open_panel()
        self.wait_for_rows("o segundo", "o primeiro")

    def expect_only_copied(self):
        wait_until(lambda: self.pasted() == b"o primeiro", "the text of the row can be pasted")
        self.wait_for_selection("o primeiro")
        self.assertTrue(self.window())

    def expect_pasted(self, text):
        self.wait_until_closed(self.target)
        self.target.expect(text)


class ClickByDefaultTest(ClickTest):
    """Automatic pasting is off."""

    def test_neither_a_click_nor_a_double_click_pastes(self):
        self.program.click_row(1)
        self.expect_only_copied()

        self.program.click_row(1, times=2)

        self.expect_only_copied()
        self.keyboard.tap("Escape")
        self.wait_until_closed(self.target)
        self.paste(OLDER)  # a click's paste would have come before this one
        self.target.expect("o primeiro")

    def test_what_is_pasted_now_is_pasted_all_the_same(self):
        click(*self.program.middle_of_row(1), button=3)
        self.press("menu item", "Colar agora")

        self.expect_pasted("o primeiro")

    def test_the_star_marks_a_favourite_which_stands_first(self):
        x, y = self.program.middle_of_row(1)
        click(x + 190, y)

        self.wait_for_rows("o primeiro", "o segundo")
        self.assertTrue(self.window())


class ClickPastesTest(ClickTest):
    preferences = {"autoPaste": True, "pasteHistoryOnDoubleClick": False}

    def test_a_click_pastes_into_the_program_that_was_in_front(self):
        self.program.click_row(1)

        self.expect_pasted("o primeiro")


class DoubleClickPastesTest(ClickTest):
    preferences = {"autoPaste": True, "pasteHistoryOnDoubleClick": True}

    def test_a_click_only_copies_and_a_double_click_pastes(self):
        self.program.click_row(1)
        self.expect_only_copied()

        self.program.click_row(0, times=2)

        self.expect_pasted("o segundo")


if __name__ == "__main__":
    main()
