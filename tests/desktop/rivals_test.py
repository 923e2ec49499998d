"""Programs that fight over the clipboard, and what the program makes of it."""

import sys
import time

import accessible
from desktop import HERE, DesktopTest, main, remains, wait_until
from pulse import Pulse
from Xlib import X
from Xlib import display as connection

SECONDS = 3  # of a storm


class RivalTest(DesktopTest):
    """Another one keeps what is copied, too, and owns it as soon as it has read it."""

    def setUp(self):
        super().setUp()
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT).start()

    def rival(self, delay):
        told = self.folder / "rival"
        with told.open("wb") as file:
            self.client(sys.executable, "-B", str(HERE / "rival.py"), str(delay), stdout=file)
        wait_until(lambda: "ready" in told.read_text(), "the other one listens")
        return lambda: told.read_text().splitlines()[1:]

    def copy(self, text):
        """Nobody may see its owner: the other one is quick."""
        source = self.folder / text
        source.write_text(text)
        self.client("xclip", "-quiet", "-selection", "clipboard", "-i", str(source))

    def expect_one_entry_each(self, delay):
        told = self.rival(delay)
        for text in ("um", "dois", "três"):
            self.copy(text)
            wait_until(lambda: told()[-1:] == [f"owns {text}"], "the other one owns it")
            self.program.wait_for_text(text)

        remains(lambda: self.program.texts() == ["três", "dois", "um"], "there is one entry each")
        self.assertEqual(told(), ["owns um", "owns dois", "owns três"])
        self.assertEqual(self.pasted(), "três".encode())

    def test_one_that_is_quick(self):
        self.expect_one_entry_each(delay=0)

    def test_one_that_takes_a_moment(self):
        self.expect_one_entry_each(delay=50)

    def test_one_that_is_slow(self):
        self.expect_one_entry_each(delay=600)

    def test_what_is_put_back_comes_to_rest(self):
        told = self.rival(delay=50)
        for text in ("um", "dois"):
            self.copy(text)
            self.program.wait_for_text(text)
            wait_until(lambda: told()[-1:] == [f"owns {text}"], "the other one owns it")
        self.program.show_panel()

        self.program.click_row(1)

        wait_until(lambda: told()[-1:] == ["owns um"] and len(told()) == 3, "the other one owns what was put back")
        remains(lambda: len(told()) == 3, "nobody takes it from the other any more")
        self.assertEqual(sorted(self.program.texts()), ["dois", "um"])
        self.assertEqual(self.pasted(), b"um")

    def test_a_cleared_clipboard_stays_cleared(self):
        told = self.rival(delay=50)
        owner = self.owner("--offer", f"UTF8_STRING={self.secret()}")
        wait_until(lambda: told() == ["owns senha"], "the other one owns it")
        owner.stop()

        remains(lambda: len(told()) == 1, "nobody brings it back")

    def secret(self):
        path = self.folder / "secret"
        path.write_text("senha")
        return path


class StormTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap().start()

    def storm(self):
        """Owners by turns, as many as there is time for, none of which ever answers."""
        display = connection.Display()
        windows = [display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent) for _ in range(2)]
        clipboard, times, end = display.intern_atom("CLIPBOARD"), 0, time.monotonic() + SECONDS
        while time.monotonic() < end:
            for window in windows:
                window.set_selection_owner(clipboard, X.CurrentTime)
                times += 1
            if times % 20 == 0:
                display.sync()
        display.close()
        return times

    def test_thousands_of_owners_a_second_neither_stop_it_nor_cost_the_next_copy(self):
        with Pulse() as pulse:
            times = self.storm()
            self.offer("depois da tempestade")
            self.program.wait_for_text("depois da tempestade")

        print(f"{times / SECONDS:.0f} owners a second, longest silence {pulse.longest * 1000:.0f} ms", end=" ... ")
        self.assertGreater(times / SECONDS, 1000)
        self.assertGreater(pulse.times, 50)
        self.assertEqual(self.program.texts(), ["depois da tempestade"])
        self.program.check_alive()


if __name__ == "__main__":
    main()
