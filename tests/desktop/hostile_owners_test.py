"""Every kind of owner that behaves badly, one after the other, offers something to one run of the
program: how long its main loop is silent, what it takes of the memory, and whether it captures the
next good copy. It prints the silences: how long they are is the machine's business, too, and
only such as nobody would wait for are failures."""

import os
import time

from desktop import DesktopTest, main, wait_until
from pulse import Pulse

MIB = 1 << 20
SLACK = int(os.environ["NETTLECAP_MEMORY_SLACK"]) * MIB
ABSURD = 10.0  # seconds
TEXT, PICTURE, HINT = "UTF8_STRING", "image/png", "x-kde-passwordManagerHint"
TEXT_LIMIT, PICTURE_LIMIT = 64 * MIB, 256 * MIB


class HostileOwnersTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap().start()
        self.short = self.file("short", "curto")
        self.long = self.file("long", "a" * MIB)
        self.copies = 0

    def expect_well(self, what, *options, limit=MIB, until=None, captured=None):
        """Until: what the owner tells once enough of it was seen; else until it is left alone."""
        with self.subTest(what):
            before = self.program.memory_peak()
            with Pulse() as pulse:
                owner = self.owner(*options)
                self.since, self.count = time.monotonic(), 0
                wait_until(lambda: until in owner.events() if until else self.is_left_alone(owner), "it was seen")
                if captured is not None:
                    self.assertEqual(len(self.program.wait_for_text(captured)["text"]), len(captured))
                self.copies += 1
                good = f"depois de {self.copies}"
                self.offer(good)
                self.program.wait_for_text(good)
            owner.stop()
            self.assertNotIn("Traceback (most recent call last):", owner.events())
            taken = self.program.memory_peak() - before
            silence = f"silent for {pulse.longest * 1000:.0f} ms, {taken / MIB:.0f} MiB more"
            print(f"\n  {what}: {silence}", end=" ", flush=True)
            self.assertLess(pulse.longest, ABSURD)
            # Twice the limit: what has arrived, and the room that a growing buffer keeps ahead.
            self.assertLess(taken, 2 * limit + SLACK)

    def is_left_alone(self, owner):
        """It is over, or has heard nothing for two seconds."""
        count = len(owner.events())
        if count != self.count:
            self.count, self.since = count, time.monotonic()
        return owner.process.poll() is not None or time.monotonic() - self.since > 2

    def test_a_good_one(self):
        """What the others are to be compared with."""
        self.expect_well("a short text", "--offer", f"{TEXT}={self.short}", captured="curto")
        self.expect_well("a long text", "--offer", f"{TEXT}={self.long}", "--incremental", TEXT)

    def test_one_that_is_silent_or_dies_at_any_step(self):
        offer = ("--offer", f"{TEXT}={self.long}", "--incremental", TEXT)
        steps = {
            "about everything": ("--mute", "ALL"),
            "about its targets": ("--mute", "TARGETS"),
            "about its secrecy": ("--offer", f"{HINT}={self.short}", "--mute", HINT),
            "about its text": ("--mute", TEXT),
            "about all forms": ("--offer", f"{PICTURE}={self.short}", "--mute", TEXT, "--mute", PICTURE),
            "before the first piece": ("--stall-after", "0"),
            "after the first piece": ("--stall-after", "1"),
            "before the end": ("--stall-after", str(MIB)),
        }
        for step, options in steps.items():
            self.expect_well(f"silent {step}", *offer, *options)
            self.expect_well(f"dead, asked {step}", *offer, *options, "--die")
        self.expect_well("dead once it gave", *offer, "--quit-after", TEXT, captured="a" * MIB)

    def test_one_that_trickles(self):
        offer = ("--offer", f"{TEXT}={self.long}", "--incremental", TEXT, "--piece", "1")
        self.expect_well("a byte now and then", *offer, "--pause", "20", until="sent 100")
        self.expect_well("a byte at a time", *offer, until="sent 5000")

    def test_one_that_lies_about_sizes_and_types(self):
        whole = ("--offer", f"{TEXT}={self.long}")
        pieces = (*whole, "--incremental", TEXT)
        self.expect_well("more than it announced", *pieces, "--announce", "0", captured="a" * MIB)
        self.expect_well("less than it announced", *pieces, "--announce", str(2**31 - 1), captured="a" * MIB)
        self.expect_well("nothing where it said it was", *whole, "--absent", TEXT)
        self.expect_well("no targets where it said they were", *whole, "--absent", "TARGETS")
        for form in ("UTF8_STRING/32", "ATOM/32", "INCR/8", "INCR/32", "COMPOUND_TEXT/8", "image/png/8"):
            self.expect_well(f"text as {form}", *whole, "--as", f"{TEXT}={form}")
        self.expect_well("pieces that change their type", *pieces, "--fickle")

    def test_one_of_two_gibibytes(self):
        for announced in ("0", str(2**31 - 1)):
            told = ("--announce", announced)
            for target, limit in ((TEXT, TEXT_LIMIT), (PICTURE, PICTURE_LIMIT)):
                self.expect_well(f"endless {target}, {announced} announced", "--endless", target, *told, limit=limit)
            self.expect_well(f"endless targets, {announced} announced", "--endless", "TARGETS", *told)
            self.expect_well(f"endless hint, {announced} announced", "--endless", HINT, *told)

    def test_one_of_as_much_as_is_taken_or_more_at_one_go(self):
        self.expect_well(
            "the largest text in one go", "--offer", f"{TEXT}={self.file('largest', 'a ' * (TEXT_LIMIT // 2))}",
            limit=8 * TEXT_LIMIT,
        )  # fmt: skip
        self.expect_well(
            "a larger one", "--offer", f"{TEXT}={self.file('larger', 'a' * (TEXT_LIMIT + 1))}", limit=TEXT_LIMIT
        )
        noise = self.file("noise", os.urandom(PICTURE_LIMIT))
        self.expect_well("the largest picture, of noise", "--offer", f"{PICTURE}={noise}", limit=PICTURE_LIMIT)

    def test_one_of_thousands_of_targets(self):
        offer = ("--offer", f"{TEXT}={self.short}")
        self.expect_well("5,000 targets", *offer, "--targets", "5000", captured="curto")
        self.expect_well("as many as are read", *offer, "--targets", "16000")
        self.expect_well("as many without a name", *offer, "--nameless", "16000")
        self.expect_well("a million", *offer, "--nameless", "1000000")


if __name__ == "__main__":
    main()
