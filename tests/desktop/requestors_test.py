"""Every kind of program that asks for the clipboard and behaves badly, one after the other, asks one
run of the program: how long its main loop is silent, what it takes of the memory, and whether
whoever pastes next gets what was copied. It prints the silences: how long they are is the
machine's business, too, and only such as nobody would wait for are failures."""

import os
import sys
import time

from desktop import HERE, DesktopTest, keep_doing, keys, main, wait_until
from pulse import Pulse

MIB = 1 << 20
SLACK = int(os.environ["NETTLECAP_MEMORY_SLACK"]) * MIB
ABSURD = 10.0  # seconds
PATIENCE = 10  # of the program with who takes nothing
CROWD = 2000


class RequestorsTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap().start()

    def own(self, target, content):
        """The program owns what was copied, once who had copied it is gone."""
        self.offer_and_end(content, target)
        self.target, self.content = target, content

    def asked(self, *options):
        told = self.folder / "requestor"
        with told.open("wb") as file:
            process = self.client(sys.executable, "-B", str(HERE / "requestor.py"), *options, stdout=file, stderr=None)
        wait_until(lambda: "asked" in told.read_text().split() or process.poll() is not None, "all was asked")
        return process

    def expect_well(self, what, times, *options, limit=4 * MIB, seconds=0):
        """Also so many seconds later."""
        with self.subTest(what):
            before, end = self.program.memory_peak(), time.monotonic() + seconds
            with Pulse() as pulse:
                process = self.asked(str(times), *options)
                wait_until(lambda: self.pasted(self.target) == self.content, "it can be pasted")
                wait_until(lambda: time.monotonic() > end, "its patience is over")
                wait_until(lambda: self.pasted(self.target) == self.content, "it can still be pasted")
                self.end(process)
                wait_until(lambda: self.pasted(self.target) == self.content, "it can be pasted afterwards")
            taken = self.program.memory_peak() - before
            silence = f"silent for {pulse.longest * 1000:.0f} ms, {taken / MIB:.0f} MiB more"
            print(f"\n  {what}: {silence}", end=" ", flush=True)
            self.program.check_alive()
            self.assertLess(pulse.longest, ABSURD)
            self.assertLess(taken, limit + SLACK)

    def expect_well_of_all(self):
        self.expect_well("one that takes nothing", 1, "unread")
        self.expect_well("a crowd that takes nothing", CROWD, "unread", seconds=PATIENCE + 2)
        self.expect_well("a crowd that takes the first piece", CROWD, "begun", seconds=PATIENCE + 2)
        self.expect_well("a crowd that goes after the first piece", CROWD, "gone")
        self.expect_well("a crowd that is gone before the answer", CROWD, "early")
        self.expect_well("a crowd that dies of the first answer", CROWD, "begun", "--die-after", "1")
        self.expect_well("a crowd that asks what makes no sense", CROWD // 20, "absurd")
        self.expect_well("the same place again and again", CROWD, "repeated")
        self.expect_well("a thousand in one request", 10, "multiple", limit=16 * MIB)
        self.expect_well("several in one that make no sense", 20, "senseless")

    def test_a_text_in_pieces(self):
        self.own("UTF8_STRING", b"uma linha\n" * 400_000)
        self.expect_well_of_all()

    def test_a_picture_in_pieces(self):
        self.own("image/png", os.urandom(4 * MIB))
        self.expect_well_of_all()

    def test_a_text_that_goes_in_one_piece(self):
        self.own("UTF8_STRING", b"uma linha\n" * 20_000)
        self.expect_well("a crowd that takes nothing", 500, "unread")
        self.expect_well("a crowd that is gone before the answer", CROWD, "early")
        self.expect_well("a thousand in one request", 1, "multiple", limit=256 * MIB)
        self.expect_well("several in one that make no sense", 20, "senseless")

    def test_an_editor_pastes_in_the_middle_of_a_crowd(self):
        self.own("UTF8_STRING", b"uma linha\n" * 50_000)
        path = self.file("editor.txt", "")
        self.client("mousepad", "--disable-server", str(path))
        self.window_of("Mousepad")
        self.asked(str(CROWD), "begun")

        keys("ctrl+v")

        keep_doing(lambda: keys("ctrl+s"), lambda: path.read_bytes() == self.content, "the text is in the file")


if __name__ == "__main__":
    main()
