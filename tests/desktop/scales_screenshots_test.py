"""Pictures of the panel, its previews and the card on screens of other scales, for people to
look at, in the artefacts folder. The screen is so large that it has 1280 x 800 points at 2."""

import contextlib

import accessible
from appearance import AppearanceTest
from desktop import keys, main, run, wait_until
from hot_keys import HINT, NEWER, OLDER
from keyboard import SUPER, Keyboard
from screenshots_test import ENTRIES
from Xlib import X
from Xlib.error import XError


class ScalesScreenshotsTest(AppearanceTest):
    def walk(self, name, scale, **surroundings):
        self.scale = scale
        self.store_picture("figura.png", "-size", "640x400", "plasma:royalblue-gold")
        self.start_with("light", ENTRIES, **surroundings)
        wait_until(lambda: len(accessible.names("list item")) >= 7, "the rows")
        geometry = self.panel.get_geometry()
        self.assertEqual((geometry.width, geometry.height), (430 * scale, 560 * scale))
        self.preview("Texto copiado", 420, f"scale-{name}-text")
        keys("Down", "Down")
        self.preview("Imagem copiada", 440, f"scale-{name}-picture")
        self.sheet(f"scale-{name}-sheet")
        self.program.close_panel()
        self.cards(name)

    def preview(self, heading, width, name):
        """Of the next row; all of it on the screen."""
        keys("Down")
        self.told("heading", heading)
        left, top, right, bottom = wait_until(self.floating, "the preview's window")
        self.assertAlmostEqual(right - left, (width + 36) * self.scale, delta=2)
        self.assertGreaterEqual(min(left, top), 0)
        self.assertLessEqual(right, 2560)
        self.assertLessEqual(bottom, 1600)
        self.take(name)

    def sheet(self, name):
        """Of a new message; over the panel, and wider than that."""
        keys("Right")
        self.press("push button", "Adicionar")
        sheet = wait_until(lambda: self.screen.window("Nettlecap", "Nova mensagem salva"), "the sheet")
        wait_until(lambda: self.screen.active() == sheet.id, "the sheet has the keyboard")
        self.assertEqual(sheet.get_geometry().width, 440 * self.scale)
        (x, y), (left, top) = self.screen.position(sheet), self.screen.position(self.panel)
        self.assertAlmostEqual(x, left - 5 * self.scale, delta=1)
        self.assertEqual(y, top + 48 * self.scale)
        self.take(name)
        keys("Escape", "Left")
        self.gone("dialog", "Nova mensagem salva")

    def floating(self):
        """Where the window is that no window manager knows of."""
        for window in self.screen.root.query_tree().children:
            with contextlib.suppress(XError):  # gone between the list and the question
                known = window.get_attributes()
                if known.override_redirect and known.map_state == X.IsViewable:
                    if (window.get_wm_class() or ("", ""))[1] == "Nettlecap":
                        place = window.get_geometry()
                        return place.x, place.y, place.x + place.width, place.y + place.height
        return None

    def cards(self, name):
        keyboard = Keyboard()
        self.addCleanup(keyboard.close)
        with keyboard.holding(SUPER):
            for step, position, kind in ((NEWER, 2, "text"), (OLDER, 3, "picture")):  # of the chosen row
                keyboard.tap(step)
                caption = f"Item {position} de {len(ENTRIES)}{HINT}"
                wait_until(lambda: caption in accessible.names("label"), f"the card of the {kind}")
                self.take(f"scale-{name}-card-{kind}")
            keys("Escape")

    def test_one_and_a_half(self):
        self.walk("1.5", 1.5, QT_SCALE_FACTOR="1.5")

    def test_two(self):
        self.walk("2", 2, QT_SCALE_FACTOR="2")

    def test_dots_per_inch(self):
        run("xrdb", "-merge", input=b"Xft.dpi: 192\n")
        self.addCleanup(run, "xrdb", "-remove")
        self.walk("dpi", 2)


if __name__ == "__main__":
    main()
