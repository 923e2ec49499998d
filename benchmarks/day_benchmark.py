"""What the program holds of the memory after a long day: the copies, the panel, the previews,
the settings and the gestures of ten hours, made as fast as the program takes them, and then
once more what it costs while nobody uses it."""

import os
import struct
import time
import zlib

from outside import Benchmark, note
from appearance import entry
from copies_test import Editor
from desktop import click, wait_until
from hot_keys import OLDER, SEARCH, HotKeyTest
from keyboard import SUPER, Keyboard
from panel import SETTINGS
from panel_hands import PanelHands
from upkeep import calm_down, idle, memory_alone, private_dirty, settle
from Xlib import X

HOURS = int(os.environ.get("NETTLECAP_HOURS", "10"))
COPIES, PICTURE_EVERY = 200, 20  # an hour
GESTURES = 30
OPENINGS, PREVIEW_EVERY = 20, 4
ENTRIES = 500
LARGE = 5_000_000  # bytes, every third hour: the last has left the history by the evening
IDLE_SECONDS = 20
LINE = "a reunião de terça-feira começa às 15h30. "


def picture(number, width=1280, height=800):
    """A PNG like no other, of colours that run into each other."""

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    colours = bytes(range(256)) * (width * 3 // 256 + 2)
    rows = b"".join(b"\0" + colours[(start := row * number % 256):start + width * 3] for row in range(height))
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b"")


class Typist(Editor):
    """Copies at Ctrl+C, and counts what is pasted into it."""

    def __init__(self, test):
        super().__init__(test)
        self.copy_key, self.pastes = test.keyboard.code("c"), 0

    def serve(self):
        while self.display.pending_events():
            happened = self.display.next_event()
            if happened.type == X.KeyPress and happened.state & X.ControlMask:
                if happened.detail == self.copy_key:
                    self.window.set_selection_owner(self.atom("CLIPBOARD"), happened.time)
                else:
                    self.pastes += 1
            elif happened.type == X.SelectionRequest:
                self.answer(happened)
        self.display.flush()


class Day(PanelHands, Benchmark):
    floating = HotKeyTest.floating

    def measure(self):
        self.open()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        entries = [entry(f"{number} anotações: {LINE * 24}", number) for number in range(ENTRIES)]
        self.program = self.program_with(entries, {"launchAtLogin": False})
        self.find_buttons()
        self.program.start()
        self.typist, self.copied = Typist(self), 0
        since = time.monotonic()
        morning = self.tell("in the morning")
        for hour in range(1, HOURS + 1):
            self.hour(hour)
            evening = self.tell(f"after {hour} of {HOURS} hours")
        took = time.monotonic() - since
        calm_down(self.program.process.pid)
        wakes, used = idle(self.program.process.pid, IDLE_SECONDS)
        print(f"idle afterwards: {wakes:.2f} wake-ups a second, {used:.3f} % of a core; the day took {took:.0f} s")
        note("dayMemory", [evening], [morning], unit="MiB", hours=HOURS)
        note("dayWakeups", [wakes], unit="/s", processor=used)

    def tell(self, when):
        """What is held now, once that stands still."""
        pid = self.program.process.pid
        settle(pid)
        alone = memory_alone(pid) / 1024
        print(f"{when:<48}{alone:9.2f}{private_dirty(pid) / 1024:9.2f}", flush=True)
        return alone

    def hour(self, hour):
        for number in range(COPIES):
            self.copy(self.copied % PICTURE_EVERY == PICTURE_EVERY - 1)
            if number % (COPIES // GESTURES) == 0:
                self.gesture(1 + number % 5)
            if number % (COPIES // OPENINGS) == 0:
                self.look_for(number // 10)
        if hour % 3 == 1 and hour + 3 <= HOURS:
            self.copy_large(hour)
        self.look_through_settings()

    def copy(self, is_picture):
        """By the keys that a user presses."""
        self.copied += 1
        text = f"cópia {self.copied} {LINE * (self.copied % 48)}"
        self.typist.content = {"image/png": picture(self.copied)} if is_picture else {"UTF8_STRING": text.encode()}
        before = self.saved()
        self.keyboard.chord("Control_L", "c")
        self.serve_until(lambda: self.saved() != before, "the copy is saved")

    def copy_large(self, hour):
        text = f"hora {hour} " + "0123456789" * (LARGE // 10)
        self.offer(text)
        self.program.wait_for_text(text)

    def saved(self):
        return self.program.state_file.stat().st_ino

    def serve_until(self, condition, what):
        def served():
            self.typist.serve()
            self.program.check_alive()
            return condition()

        wait_until(served, what)

    def gesture(self, steps):
        before = self.typist.pastes
        with self.keyboard.holding(SUPER):
            self.keyboard.tap(*[OLDER] * steps)
        self.serve_until(lambda: self.typist.pastes > before, "the entry is pasted")
        wait_until(lambda: not self.floating(), "the card is gone")

    def panel(self):
        self.keyboard.chord(*SEARCH)
        panel = self.program.wait_for_panel()
        wait_until(lambda: self.screen.focus() == panel.id, "the panel has the keyboard")
        return panel

    def look_for(self, number):
        self.panel()
        self.keyboard.tap(*"reuniao"[:number % 8], "Down", "Down", "Up", "Down")
        if number % PREVIEW_EVERY == 0:
            wait_until(self.floating, "a preview")
        self.leave()

    def look_through_settings(self):
        panel = self.panel()
        self.use_sheet(panel)
        click(*self.gear)
        self.wait_for_title(SETTINGS)
        click(*self.back)
        self.wait_for_title("Nettlecap")
        self.leave()

    def leave(self):
        self.close_panel()
        wait_until(lambda: self.screen.active() == self.typist.window.id, "the program is in front again")


print(f"{'MiB':<48}{'alone':>9}{'dirty':>9}")
with Day() as benchmark:
    benchmark.measure()
