"""A long day's copies: keys pressed in another program, what it copies then, and what ours
holds of the memory after all of them. Nothing asks for accessibility here, which keeps a
record of everything that was ever shown."""

import json
import os

from desktop import DesktopTest, main, run, wait_until
from ground import Ground
from holdings import Holdings, assert_flat
from keyboard import Keyboard
from Xlib import X, Xatom
from Xlib.protocol import event

COPIES = int(os.environ.get("NETTLECAP_COPIES", "400"))
LIMIT = 100
WARMING = 250  # copies until the history is full, and everything has been done twice
PICTURE_EVERY = 50


class Editor(Ground):
    """A program that copies when it is told to by Ctrl+C: the clipboard is its own then."""

    def __init__(self, test):
        super().__init__(test)
        self.content, self.asked = {}, 0

    def atom(self, name):
        return self.display.intern_atom(name)

    def serve(self):
        """Does what its events ask for."""
        while self.display.pending_events():
            happened = self.display.next_event()
            if happened.type == X.KeyPress and happened.state & X.ControlMask:
                self.window.set_selection_owner(self.atom("CLIPBOARD"), happened.time)
            elif happened.type == X.SelectionRequest:
                self.answer(happened)
        self.display.flush()

    def answer(self, asked):
        targets = {self.atom(name): content for name, content in self.content.items()}
        property_ = asked.property
        if asked.target == self.atom("TARGETS"):
            asked.requestor.change_property(property_, Xatom.ATOM, 32, [asked.target, *targets])
        elif asked.target in targets:
            asked.requestor.change_property(property_, asked.target, 8, targets[asked.target])
        else:
            property_ = X.NONE
        asked.requestor.send_event(
            event.SelectionNotify(time=asked.time, requestor=asked.requestor, selection=asked.selection,
                                  target=asked.target, property=property_))


class CopiesTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        self.program = self.nettlecap()
        preferences = self.program.config / "Nettlecap" / "Nettlecap.preferences.v1"
        preferences.parent.mkdir(parents=True, mode=0o700)
        preferences.write_text(json.dumps({"maxHistoryItems": LIMIT}))
        self.program.start()
        self.editor = Editor(self)

    def copy(self, content, is_there):
        """By the keys that a user presses."""
        self.editor.content = content
        self.keyboard.chord("Control_L", "c")

        def captured():
            self.editor.serve()
            self.program.check_alive()
            return is_there((self.program.history() or [{}])[0])

        wait_until(captured, "the copy is on top of the history")

    def copy_text(self, number):
        text = f"cópia {number}" + " palavra" * (number % 400)
        self.copy({"UTF8_STRING": text.encode()}, lambda top: top.get("text") == text)

    def copy_picture(self, number, before):
        picture = run("convert", "-size", "320x200", f"xc:#{number * 7919 % 0xFFFFFF:06x}", "png:-")
        self.copy({"image/png": picture}, lambda top: top.get("kind") == "image" and top["id"] != before)

    def copies(self, first, count):
        for number in range(first, first + count):
            if number % PICTURE_EVERY == 0:
                self.copy_picture(number, self.program.history()[0]["id"] if number else None)
            else:
                self.copy_text(number)

    def test_copy_after_copy_is_kept_up_to_the_limit_and_nothing_else_is(self):
        self.copies(0, WARMING)
        holdings = Holdings(self.program)
        before = holdings.all()

        self.copies(WARMING, COPIES)

        assert_flat(self, holdings, before, COPIES)
        history = self.program.history()
        self.assertEqual(len(history), LIMIT)
        self.assertEqual({entry["sourceApplication"] for entry in history}, {"Ground"})
        named = {entry["imageFilename"] for entry in history if entry["kind"] == "image"}
        self.assertEqual({file.name for file in self.program.images.iterdir()}, named)


if __name__ == "__main__":
    main()
