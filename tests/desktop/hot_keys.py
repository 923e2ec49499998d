"""What the tests of the hot keys share: hands on the keyboard, the card as it can be seen
from outside, and somebody who watches who has the focus."""

import contextlib
import threading
import time

import accessible
from desktop import DesktopTest, wait_until
from keyboard import ALT, SHIFT, SUPER, Keyboard
from screen import Screen
from Xlib import X

HINT = " • solte as teclas para colar"
OLDER, NEWER = "1", "2"  # with Super
SEARCH, FAVORITE = (SUPER, SHIFT, "v"), (ALT, "f")


class Focus(threading.Thread):
    """Asks the X server again and again who has the keyboard and who is the active window."""

    def __init__(self):
        super().__init__(daemon=True)
        self.screen, self.stopping, self.seen, self.times = Screen(), False, set(), 0
        self.start()

    def run(self):
        while not self.stopping:
            self.seen.add((self.screen.focus(), self.screen.active()))
            self.times += 1
            time.sleep(0.001)

    def stop(self):
        self.stopping = True
        self.join(10)
        self.screen.display.close()


class HotKeyTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        self.start()

    def start(self):
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT).start()

    def copied(self, *texts):
        for text in texts:
            self.offer(text)
            self.program.wait_for_text(text)

    def open_panel(self):
        """With the search key; the panel has the keyboard then."""
        self.keyboard.chord(*SEARCH)
        panel = self.program.wait_for_panel()
        wait_until(lambda: self.screen.active() == panel.id, "the panel is in front")
        wait_until(lambda: self.screen.focus() == panel.id, "the panel has the keyboard")
        return panel

    def floating(self):
        """What the program shows above everything, while it is there: the card or a preview."""
        for window in self.screen.root.query_tree().children:
            with contextlib.suppress(Exception):  # it is gone between the list and the question
                known = window.get_attributes()
                if known.override_redirect and known.map_state == X.IsViewable:
                    if (window.get_wm_class() or ("", ""))[1] == "Nettlecap":
                        return window
        return None

    def card(self):
        return self.floating()

    def wait_for_card(self, position, *texts):
        """The card, once it tells that position and these texts."""
        wanted = {f"Item {position}{HINT}", *texts}
        wait_until(lambda: self.card() and wanted <= set(accessible.names("label")), f"a card with {wanted}")
        return self.card()

    def wait_until_hidden(self):
        wait_until(lambda: not self.card(), "the card is hidden")

    def paste(self, *steps):
        """A whole gesture, as fast as these hands are."""
        with self.keyboard.holding(SUPER):
            self.keyboard.tap(*steps)

    @contextlib.contextmanager
    def focus_stays(self, window):
        """Nobody but that window has the keyboard in between, be it ever so short."""
        focus = Focus()
        try:
            yield
        finally:
            focus.stop()
        self.assertGreater(focus.times, 20)
        self.assertEqual({active for _, active in focus.seen}, {window.id})
        self.assertEqual({self.screen.top_level(number) for number, _ in focus.seen}, {window.id})
