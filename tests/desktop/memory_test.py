"""What the program holds of the memory while its panel is closed. Nothing asks for
accessibility here, which keeps a record of everything that was ever shown."""

import json
import os

import accessible
from desktop import DesktopTest, click, keep_doing, main, wait_until
from holdings import Holdings, assert_flat
from hot_keys import SEARCH
from keyboard import Keyboard
from panel import SETTINGS

SHEET = "Nova mensagem salva"
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


class MemoryTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT)
        self.program.images.mkdir(parents=True)
        self.program.state_file.write_text(json.dumps({"entries": ENTRIES, "snippets": []}))
        self.find_buttons()
        for name in accessible.ENVIRONMENT:
            del self.program.environment[name]
        self.program.start()

    def find_buttons(self):
        """They are in the same places afterwards."""
        self.program.start().show_panel()
        self.gear = self.place_of("Ajustes")
        click(*self.gear)
        self.wait_for_title(SETTINGS)
        self.back = self.place_of("Voltar ao histórico")
        click(*self.back)
        self.wait_for_title("Nettlecap")
        self.keyboard.tap("Right")
        self.add = self.place_of("Adicionar")
        self.program.stop()

    def place_of(self, button):
        found = wait_until(lambda: accessible.named("push button", button), f"a button {button!r}")
        return self.program.middle(found)

    def wait_for_title(self, title):
        wait_until(lambda: self.screen.window("Nettlecap", title), f"the panel is called {title!r}")

    def use_sheet(self, panel):
        """As wide as it is, it is a window of its own each time."""
        self.keyboard.tap("Right")
        click(*self.add)
        self.wait_for_title(SHEET)
        self.keyboard.tap("x", "Escape")
        wait_until(lambda: not self.screen.window("Nettlecap", SHEET), "the sheet is gone")
        wait_until(lambda: self.screen.focus() == panel.id, "the panel has the keyboard again")
        self.keyboard.tap("Left")

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

    def close_panel(self):
        keep_doing(lambda: self.keyboard.tap("Escape"), lambda: not self.program.panel(), "the panel closes")

    def test_a_panel_that_opens_changes_and_closes_holds_on_to_nothing(self):
        self.use_panel(20)
        holdings = Holdings(self.program)
        before = holdings.all()

        self.use_panel(ROUNDS)

        assert_flat(self, holdings, before, ROUNDS)


if __name__ == "__main__":
    main()
