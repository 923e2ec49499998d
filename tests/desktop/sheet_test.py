"""The sheet in which a saved message is written: a window of its own that is part of the panel
or of the popover over which it is."""

import accessible
import targets
from desktop import click, keys, main, remains, run, wait_until
from ground import Ground
from hot_keys import SEARCH
from keyboard import Keyboard
from tray_test import TrayTest, picture

NEW = "Nova mensagem salva"
WIDTH, BELOW = 440, 48
SKIPPED = {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}


class SheetTest(TrayTest):
    """The subclass says how its host, `self.host`, is opened."""

    def setUp(self):
        super().setUp()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)

    def show(self):
        """The saved messages in the host."""
        self.host = self.open_host()
        keys("Right")
        wait_until(lambda: accessible.checked("radio button") == ["Salvos"], "the saved messages")
        return self.host

    def sheet(self, title=NEW):
        return self.screen.window("Nettlecap", title)

    def open_sheet(self):
        wait_until(lambda: accessible.press("push button", "Adicionar"), "a new message")
        return self.wait_for_sheet()

    def wait_for_sheet(self):
        sheet = wait_until(self.sheet, "the sheet appears")
        wait_until(lambda: self.has_keyboard(sheet), "the sheet has the keyboard")
        return sheet

    def has_keyboard(self, window):
        return self.screen.active() == window.id and self.screen.top_level(self.screen.focus()) == window.id

    def wait_until_only_host(self):
        wait_until(lambda: not self.sheet(), "the sheet is gone")
        wait_until(lambda: self.has_keyboard(self.host), "the keyboard is back")

    def wait_until_both_closed(self):
        wait_until(lambda: not self.screen.window("Nettlecap"), "nothing is shown any more")

    def property(self, window, name):
        value = window.get_full_property(self.screen.display.intern_atom(name), 0)
        return list(value.value) if value else []

    def wait_for_states(self, window, states):
        wait_until(lambda: states <= self.screen.states(window), f"the states {states}")

    def written(self):
        """Title and content, as they stand in the fields."""
        fields = [accessible.named("text", name) for name in ("Título", "Conteúdo")]
        return [field.get_text(0, -1) for field in fields if field]

    def wait_until_written(self, *fields):
        wait_until(lambda: self.written() == [*fields], f"{fields} in the fields")

    def wait_for_messages(self, *messages):
        def kept():
            return [(each["title"], each["content"]) for each in self.program.document().get("snippets", [])]

        wait_until(lambda: kept() == [*messages], f"the messages {messages}")

    def click_in(self, window, role, name):
        node = wait_until(lambda: accessible.named(role, name), f"a {role} {name!r}")
        corner, middle = self.screen.position(window), accessible.middle(node)
        click(corner[0] + middle[0], corner[1] + middle[1])

    def windows(self):
        """How many there are of the program, shown or not."""
        return run("xwininfo", "-root", "-tree").count(b'("nettlecap" "Nettlecap")')


class InEitherHost:
    def test_it_is_440_points_wide_over_its_host_with_all_of_it_visible(self):
        self.start()
        host = self.show()

        sheet = self.open_sheet()

        size = sheet.get_geometry()
        self.assertEqual(size.width, WIDTH)
        corner, (x, y) = self.screen.position(host), self.screen.position(sheet)
        left, top, width, height = self.screen.work_area()
        self.assertEqual(x, min(max(left, corner[0] - (WIDTH - 430) // 2), left + width - WIDTH))
        self.assertEqual(y, corner[1] + BELOW)
        self.assertLessEqual(y + size.height, top + height)

    def test_it_is_a_dialog_that_belongs_to_its_host_and_is_on_no_taskbar(self):
        self.start()
        host = self.show()
        for _ in range(2):
            sheet = self.open_sheet()

            self.wait_for_states(sheet, SKIPPED | {"_NET_WM_STATE_MODAL"})
            self.assertIn(self.screen.display.intern_atom("_NET_WM_WINDOW_TYPE_DIALOG"),
                          self.property(sheet, "_NET_WM_WINDOW_TYPE"))
            self.assertEqual(sheet.get_wm_transient_for().id, host.id)
            keys("Escape")
            self.wait_until_only_host()

    def test_a_message_is_written_with_keys_and_clicks_while_the_host_stays(self):
        self.start()
        host = self.show()
        sheet = self.open_sheet()

        keys("F", "i", "m")
        self.click_in(sheet, "text", "Conteúdo")
        keys("A", "n", "a")
        self.wait_until_written("Fim", "Ana")
        remains(lambda: self.screen.window("Nettlecap", "Nettlecap"), "the host is shown")
        self.click_in(sheet, "push button", "Salvar")

        self.wait_for_messages(("Fim", "Ana"))
        self.wait_until_only_host()
        self.assertEqual(self.program.panel().id, host.id)

    def test_escape_cancels_and_what_is_typed_next_is_searched(self):
        self.start()
        self.show()
        self.open_sheet()
        keys("x", "Escape")
        self.wait_until_only_host()

        keys("o", "i")

        wait_until(lambda: accessible.texts("Nettlecap") == ["oi"], "the search")
        self.wait_for_messages()

    def test_while_it_is_open_its_host_takes_neither_clicks_nor_keys(self):
        self.start()
        host = self.show()
        sheet = self.open_sheet()
        for role, name in (("push button", "Sair"), ("push button", "Ajustes"), ("radio button", "Histórico")):
            self.click_in(host, role, name)
            wait_until(lambda: self.has_keyboard(sheet), "the sheet has the keyboard")
        keys("o", "i")

        self.wait_until_written("oi", "")
        self.program.check_alive()
        self.assertEqual(accessible.checked("radio button"), ["Salvos"])
        self.assertEqual(accessible.texts("Nettlecap"), ["", "oi", ""])

    def test_each_opening_is_a_fresh_sheet_and_nothing_stays_of_it(self):
        self.start()
        self.show()
        before = self.windows()
        for _ in range(3):
            self.open_sheet()
            self.wait_until_written("", "")
            keys("x")
            self.wait_until_written("x", "")
            keys("Escape")
            self.wait_until_only_host()

            wait_until(lambda: self.windows() == before, "its window is gone")

    def test_a_request_to_close_it_cancels(self):
        self.start()
        self.show()
        sheet = self.open_sheet()
        keys("x")

        run("wmctrl", "-i", "-c", hex(sheet.id))

        self.wait_until_only_host()
        self.wait_for_messages()


class OverThePopoverTest(InEitherHost, SheetTest):
    def open_host(self):
        return self.open_popover()

    def expect_both_closed_by(self, go_elsewhere):
        self.show()
        self.open_sheet()
        keys("o", "i")
        self.wait_until_written("oi", "")

        go_elsewhere()
        self.wait_until_both_closed()

        self.press_icon()
        self.host = wait_until(self.popover, "the popover appears")
        self.wait_for_sheet()
        self.wait_until_written("oi", "")
        keys("Escape")
        self.wait_until_only_host()

    def test_a_click_on_another_program_closes_both_and_what_was_typed_comes_back(self):
        self.start()
        Ground(self)

        self.expect_both_closed_by(lambda: click(*self.free_place()))

    def test_another_program_that_takes_the_keyboard_closes_both_and_what_was_typed_comes_back(self):
        self.start()
        ground = Ground(self)

        self.expect_both_closed_by(lambda: run("xdotool", "windowactivate", str(ground.window.id)))

    def test_a_click_on_the_desktop_closes_both_and_what_was_typed_comes_back(self):
        self.start()

        self.expect_both_closed_by(lambda: click(*self.free_place()))

    def test_a_click_on_the_icon_closes_both_and_what_was_typed_comes_back(self):
        self.start()

        self.expect_both_closed_by(self.press_icon)

    def test_what_is_behind_it_is_seen_at_its_round_corners(self):
        self.start()
        Ground(self)
        for name, prepare in (("alone", lambda: None), ("composited", self.compositor)):
            prepare()
            self.show()
            sheet = self.open_sheet()
            (x, y), height = self.screen.position(sheet), sheet.get_geometry().height
            for corner in ((x, y), (x, y + height - 1)):  # beside the popover, which is narrower
                self.wait_for_ground(*corner)
            picture(f"sheet-corners-{name}")
            keys("Escape")
            self.wait_until_only_host()
            self.press_icon()
            self.wait_until_closed()

    def wait_for_ground(self, x, y):
        """Also in the shadow of something."""

        def is_green():
            red, green, blue = self.screen.colour(x, y)
            return green > red + 40 and green > blue + 40

        wait_until(is_green, f"the ground at {x}, {y}")


class OverThePanelTest(InEitherHost, SheetTest):
    def start(self):
        self.program.start()

    def open_host(self):
        self.keyboard.chord(*SEARCH)
        panel = self.program.wait_for_panel()
        wait_until(lambda: self.has_keyboard(panel), "the panel has the keyboard")
        return panel

    def test_closing_the_panel_closes_it_and_the_next_panel_has_none(self):
        self.start()
        host = self.show()
        self.open_sheet()
        keys("o", "i")
        self.wait_until_written("oi", "")

        run("wmctrl", "-i", "-c", hex(host.id))
        self.wait_until_both_closed()

        self.show()
        remains(lambda: not self.sheet(), "no sheet")
        self.wait_for_messages()

    def test_it_goes_where_the_panel_goes(self):
        self.start()
        host = self.show()
        sheet = self.open_sheet()
        before = self.screen.position(host)

        run("xdotool", "windowmove", str(host.id), "60", "40")

        wait_until(lambda: self.screen.position(host) != before, "the panel has moved")

        def is_over_it():
            corner = self.screen.position(host)
            return self.screen.position(sheet) == (corner[0] - 5, corner[1] + BELOW)

        wait_until(is_over_it, "the sheet is over it again")

    def test_the_search_key_brings_the_panel_without_it(self):
        self.start()
        self.show()
        self.open_sheet()

        self.host = self.open_host_again()

        self.wait_until_only_host()
        wait_until(lambda: accessible.checked("radio button") == ["Histórico"], "a history that starts afresh")

    def open_host_again(self):
        self.keyboard.chord(*SEARCH)
        return self.program.wait_for_panel()

    def test_another_program_leaves_both_as_they_are(self):
        self.start()
        target = targets.XTerm(self)
        self.show()
        sheet = self.open_sheet()
        keys("o")
        self.wait_until_written("o", "")

        run("xdotool", "windowactivate", str(target.window.id))
        wait_until(lambda: self.has_keyboard(target.window), "the other program has the keyboard")
        remains(self.sheet, "the sheet is shown")
        run("xdotool", "windowactivate", str(sheet.id))
        wait_until(lambda: self.has_keyboard(sheet), "the sheet has the keyboard")
        keys("i")

        self.wait_until_written("oi", "")


if __name__ == "__main__":
    main()
