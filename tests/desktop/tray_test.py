"""The icon in real trays, its popover and its menu."""

import json
import os
import uuid

import accessible
from desktop import DEADLINE, DesktopTest, click, keys, main, run, settled_screenshot, wait_until
from ground import Ground
from panel import BESIDE_ITS_NAME
from reader import tree
from tray import DARK, LIGHT, Tint2, Tint2AtTheTop, Trayer, Xfce4Panel

LEFT, RIGHT = "1", "3"
SKIPPED = {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}


def picture(name):
    """Named after the window manager, too: the tests run on several at a time."""
    settled_screenshot(f"tray-{name}-on-{os.environ.get('NETTLECAP_TEST_WM') or 'openbox'}")


class TrayTest(DesktopTest):
    kind = Tint2

    def setUp(self):
        super().setUp()
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT)
        self.popups = accessible.Popups(self)
        self.tray = self.kind(self)

    def start(self, *texts):
        """The tray and the program, with nothing open and these texts copied."""
        self.tray.start()
        wait_until(self.tray.is_there, "the tray is there")
        self.program.start()
        for text in texts:
            self.offer(text)
            self.program.wait_for_text(text)
        wait_until(self.tray.icon, "the icon is in the tray")
        self.wait_until_inactive()

    def wait_until_inactive(self):
        """Qt takes a moment to believe that a closed window has lost the keyboard, and closes
        a menu that opened meanwhile."""
        wait_until(lambda: not any("active" in told for told in tree(everything=True)), "no window is active")

    def stop(self):
        self.program.stop()
        self.tray.stop()

    def popover(self):
        return self.program.panel()

    def press_icon(self, button=LEFT):
        x, y = wait_until(self.tray.icon, "the icon is in the tray")
        run("xdotool", "mousemove", str(x), str(y), "click", button)

    def open_popover(self):
        self.press_icon()
        popover = wait_until(self.popover, "the popover appears")
        wait_until(lambda: self.screen.active() == popover.id, "the popover has the keyboard")
        return popover

    def wait_until_closed(self):
        wait_until(lambda: not self.popover(), "the popover is gone")

    def free_place(self):
        """Of the desktop, where nothing of ours is."""
        return (1200 if self.tray.icon()[0] < 640 else 60), 400

    def menu(self):
        """The menu's lines, whoever shows it."""
        return self.popups.names("menu item")

    def open_menu(self):
        self.press_icon(RIGHT)
        wait_until(lambda: "Quit Nettlecap" in self.menu(), "the menu is open")

    def close_menu(self):
        keys("Escape")
        wait_until(lambda: "Quit Nettlecap" not in self.menu(), "the menu is closed")

    def wait_for_end(self):
        process, self.program.process = self.program.process, None
        self.assertEqual(process.wait(DEADLINE), 0)


class InEveryTray:
    def test_a_left_click_opens_the_popover_and_the_next_one_closes_it(self):
        self.start()
        for _ in range(3):
            self.open_popover()
            self.press_icon()
            self.wait_until_closed()

    def test_the_popover_hangs_from_the_icon_with_all_of_it_visible(self):
        self.start()

        popover = self.open_popover()

        size = popover.get_geometry()
        self.assertEqual((size.width, size.height), (430, 560))
        x, y = self.screen.position(popover)
        left, top, width, height = self.screen.work_area()
        middle, icon_y = self.tray.icon()
        self.assertEqual(y, top if icon_y < 400 else top + height - 560)
        self.assertAlmostEqual(x, min(max(left, middle - 215), left + width - 430), delta=2)

    def test_no_taskbar_lists_the_popover(self):
        self.start()
        for _ in range(2):
            popover = self.open_popover()
            self.assertLessEqual(SKIPPED, self.screen.states(popover))
            self.press_icon()
            self.wait_until_closed()

    def test_a_click_on_the_desktop_closes_the_popover(self):
        self.start()
        for _ in range(2):
            self.open_popover()
            click(*self.free_place())
            self.wait_until_closed()

    def test_a_click_on_another_program_closes_the_popover(self):
        self.start()
        Ground(self)
        for _ in range(2):
            self.open_popover()
            click(*self.free_place())
            self.wait_until_closed()

    def test_escape_closes_the_popover(self):
        self.start()
        for _ in range(2):
            self.open_popover()
            keys("Escape")
            self.wait_until_closed()

    def test_a_right_click_opens_the_menu_instead_of_the_popover(self):
        self.start()
        self.open_popover()

        self.open_menu()
        self.wait_until_closed()
        self.assertEqual(self.menu(), ["Buscar atualizações…", "Settings…", "Quit Nettlecap"])

        self.close_menu()
        self.open_popover()

    def test_the_menu_ends_the_program(self):
        self.start()
        self.open_menu()

        keys("Up", "Return")

        self.wait_for_end()

    def test_the_icon_comes_with_a_tray_that_is_late(self):
        self.program.start()

        self.tray.start()

        self.open_popover()

    def test_the_icon_comes_back_when_its_tray_is_restarted(self):
        self.start()

        self.tray.stop()
        self.program.check_alive()
        self.tray.start()

        self.open_popover()


class Tint2Test(InEveryTray, TrayTest):
    def test_a_click_on_the_bar_closes_the_popover(self):
        self.start()
        left, top, _, height = self.tray.bar()
        self.open_popover()

        click(left + 5, top + height // 2)

        self.wait_until_closed()

    def test_the_keys_of_the_menu_work_while_it_is_open(self):
        self.start()
        self.open_menu()
        keys("ctrl+comma")
        settings = wait_until(lambda: self.screen.window("Nettlecap", "Ajustes do Nettlecap"), "the settings")
        wait_until(lambda: self.screen.active() == settings.id, "the settings have the keyboard")
        keys("Escape")
        wait_until(lambda: not self.screen.window("Nettlecap"), "the settings are gone")

        self.open_menu()
        keys("ctrl+q")

        self.wait_for_end()

    def test_the_menu_leaves_the_keyboard_to_whoever_had_it(self):
        self.start()
        ground = Ground(self)
        self.open_menu()
        self.close_menu()

        keys("a")

        wait_until(lambda: ground.listen().keys > 0, "the window has the key")

    def test_what_opens_over_the_list_does_not_close_the_popover(self):
        self.start("um", "dois")
        popover = self.open_popover()

        keys("Down", "Delete")
        wait_until(lambda: "Excluir" in accessible.names("push button"), "it asks whether to delete")
        keys("Escape")
        wait_until(lambda: "Excluir" not in accessible.names("push button"), "it asks no more")

        self.assertEqual(self.screen.active(), popover.id)

    def wait_for_search(self, text):
        wait_until(lambda: accessible.texts("Nettlecap") == [text], f"the search field holds '{text}'")

    def test_the_search_field_has_the_keyboard_and_keeps_what_was_typed(self):
        self.start("um", "dois", "três")
        self.open_popover()
        keys("d", "o")
        self.wait_for_search("do")
        keys("Escape")
        self.wait_until_closed()

        self.open_popover()
        self.wait_for_search("do")
        keys("i")
        self.wait_for_search("doi")

    def test_the_popover_stays_where_it_hangs_when_somebody_drags_it(self):
        self.start()
        popover = self.open_popover()
        place = self.screen.position(popover)

        x, y = place[0] + BESIDE_ITS_NAME[0], place[1] + BESIDE_ITS_NAME[1]
        run("xdotool", "mousemove", str(x), str(y), "mousedown", LEFT)
        for _ in range(10):
            run("xdotool", "mousemove_relative", "--", "-20", "10")
        run("xdotool", "mouseup", LEFT)

        keys("d")
        self.wait_for_search("d")  # the popover has dealt with all of it
        self.assertEqual(self.screen.position(popover), place)

    def test_what_is_behind_the_popover_is_seen_at_its_round_corners(self):
        Ground(self)
        for name, prepare in (("alone", lambda: None), ("composited", self.compositor)):
            prepare()  # first: a bar that lives to see a compositor come makes itself anew
            self.start()
            x, y = self.screen.position(self.open_popover())
            wait_until(lambda: not self.is_ground(x + 20, y + 20), "the popover is drawn")
            wait_until(lambda: all(self.is_ground(x + 1, y + down) for down in (1, 558)), "the ground at the corners")
            picture(f"corners-{name}")
            self.stop()

    def is_ground(self, x, y):
        """Also in the shadow of something."""
        red, green, blue = self.screen.colour(x, y)
        return green > red + 40 and green > blue + 40

    def test_the_popover_keeps_its_section(self):
        snippet = {"id": str(uuid.uuid4()).upper(), "title": "Saudação", "content": "Olá!",
                   "createdAt": 0, "updatedAt": 0}
        self.program.data.mkdir(parents=True, mode=0o700)
        self.program.state_file.write_text(json.dumps({"entries": [], "snippets": [snippet]}))
        self.start("um")
        self.open_popover()
        keys("Right")
        click(*self.free_place())
        self.wait_until_closed()

        self.open_popover()
        keys("Return")

        wait_until(lambda: self.pasted() == "Olá!".encode(), "the saved message is pasted")
        self.wait_until_closed()


class TrayerTest(InEveryTray, TrayTest):
    kind = Trayer


class Xfce4PanelTest(InEveryTray, TrayTest):
    kind = Xfce4Panel


class ScreenshotsTest(TrayTest):
    def test_the_popover_and_the_menu_on_dark_and_light_bars(self):
        for kind in (Tint2, Tint2AtTheTop, Trayer, Xfce4Panel):
            for name, colour in (("dark", DARK), ("light", LIGHT)):
                with self.subTest(kind.__name__, colour=name):
                    self.tray = kind(self, colour)
                    self.start("https://exemplo.com.br/pedidos?pagina=2", "Bom dia! Segue o relatório.")
                    self.open_popover()
                    picture(f"{kind.__name__.lower()}-{name}-popover")
                    self.open_menu()
                    picture(f"{kind.__name__.lower()}-{name}-menu")
                    self.close_menu()
                    self.stop()


if __name__ == "__main__":
    main()
