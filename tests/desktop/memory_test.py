"""What the program holds of the memory while its panel is closed. Nothing asks for
accessibility here, which keeps a record of everything that was ever shown."""

import json
import os
import pathlib

from desktop import DesktopTest, click, main, wait_until
from holdings import Holdings, assert_flat
from hot_keys import SEARCH
from keyboard import Keyboard
from panel import SETTINGS
from panel_hands import PanelHands

PICTURE = 430 * 560 * 4  # of the panel, in bytes
ROUNDS = int(os.environ.get("NETTLECAP_PANEL_ROUNDS", "100"))
ENTRIES = [
    {
        "id": f"{number:08X}-0000-4000-8000-000000000000",
        "kind": "text",
        "text": f"linha {number}: " + "palavra " * 120,
        "createdAt": 700000000 + number,
        "fingerprint": f"text:{number:064x}",
        "isFavorite": False,
        "sourceApplication": "Mousepad",
    }
    for number in range(500)
]


class MemoryTest(PanelHands, DesktopTest):
    def setUp(self):
        super().setUp()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        self.program = self.nettlecap()
        self.program.images.mkdir(parents=True)
        self.program.state_file.write_text(json.dumps({"entries": ENTRIES, "snippets": []}))
        self.find_buttons()
        self.program.start()

    def use_panel(self, rounds):
        """Everything that it can show, again and again."""
        for _ in range(rounds):
            self.keyboard.chord(*SEARCH)
            panel = self.program.wait_for_panel()
            wait_until(lambda: self.screen.focus() == panel.id, "the panel has the keyboard")
            self.use_sheet(panel)
            self.keyboard.tap(*"linha", "Down", "Down", "Up", "Right", "Left")
            click(*self.gear)
            self.wait_for_title(SETTINGS)
            click(*self.back)
            self.wait_for_title("Nettlecap")
            self.close_panel()

    def test_a_panel_that_opens_changes_and_closes_holds_on_to_nothing(self):
        self.use_panel(20)
        holdings = Holdings(self.program)
        before = holdings.all()

        self.use_panel(ROUNDS)

        assert_flat(self, holdings, before, ROUNDS)

    def test_a_closed_panel_keeps_no_picture_of_itself(self):
        holdings = Holdings(self.program)
        self.keyboard.chord(*SEARCH)
        panel = self.program.wait_for_panel()
        wait_until(lambda: self.screen.focus() == panel.id, "the panel has the keyboard")
        shown = holdings.memory("RssShmem")

        self.close_panel()

        self.assertLess(holdings.memory("RssShmem"), shown - PICTURE * 3 // 4)

    def test_who_meets_no_tiff_does_not_load_its_library(self):
        maps = pathlib.Path(f"/proc/{self.program.process.pid}/maps").read_text()
        libraries = {line.rpartition("/")[2].partition(".")[0] for line in maps.splitlines() if ".so" in line}

        self.assertIn("libQt6Core", libraries)
        self.assertNotIn("libtiff", libraries)


if __name__ == "__main__":
    main()
