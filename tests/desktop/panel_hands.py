"""Hands that know where the panel's buttons are while nothing asks for accessibility, which
keeps a record of everything that was ever shown."""

import accessible
from desktop import click, keep_doing, wait_until
from panel import SETTINGS

SHEET = "Nova mensagem salva"


class PanelHands:
    """Of a test or a measurement that has a program, a keyboard and the screen."""

    def find_buttons(self):
        """With a program that shows them to screen readers; they are in the same places
        afterwards, when it does not."""
        before = dict(self.program.environment)
        self.program.environment |= accessible.ENVIRONMENT
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
        self.program.environment = before

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

    def close_panel(self):
        keep_doing(lambda: self.keyboard.tap("Escape"), lambda: not self.program.panel(), "the panel closes")
