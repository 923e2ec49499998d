"""What the program costs while nobody uses it: how often it wakes and what it uses of a
processor with its poll going, and what it holds of the memory once its panel was closed,
beside an empty Qt Quick program that has shown a window and closed it."""

import os
import subprocess

from outside import Benchmark, note
from appearance import entry
from desktop import wait_until
from holdings import MIB, Holdings
from hot_keys import SEARCH
from keyboard import Keyboard
from upkeep import idle, memory_alone, settle

QUICK = "NETTLECAP_QUICK" in os.environ
IDLE_SECONDS = 5 if QUICK else 20
MEMORY_ROUNDS = 1 if QUICK else 3
PANEL_ROUNDS = 20
ENTRIES = [entry(f"{number} anotações: " + "a reunião de terça-feira começa às 15h30. " * 24, number)
           for number in range(500)]
LARGE = 50_000_000  # bytes
SMALLEST_HISTORY = 10


class Rest(Benchmark):
    def measure(self):
        self.open()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        self.program = self.program_with(ENTRIES, {"launchAtLogin": False})
        rounds = [self.memory_of_both() for _ in range(MEMORY_ROUNDS)]
        held, floors = zip(*rounds)
        self.report("MiB, panel closed, 500 entries", held)
        self.report("MiB, an empty Qt Quick program", floors)
        note("memory", held, floors, unit="MiB")
        self.program.start()
        self.idle()
        self.panel_gives_back()
        self.copy_gives_back()

    def memory_of_both(self):
        floor = self.memory_of_empty_program()
        self.program.start()
        self.used_panel()
        held = self.alone(self.program.process)
        self.program.stop()
        return held, floor

    def memory_of_empty_program(self):
        with subprocess.Popen([os.environ["NETTLECAP_EMPTY_QUICK_PROGRAM"]], stdout=subprocess.PIPE) as process:
            try:
                process.stdout.readline()
                return self.alone(process)
            finally:
                process.kill()

    def used_panel(self):
        self.keyboard.chord(*SEARCH)
        self.program.wait_for_panel()
        self.program.close_panel()

    @staticmethod
    def alone(process):
        """In MiB, once what it holds of its own has stood still."""
        settle(process.pid)
        return memory_alone(process.pid) / 1024

    def idle(self):
        Holdings(self.program).memory()  # until what came with the start is over
        wakes, used = idle(self.program.process.pid, IDLE_SECONDS)
        self.report("wake-ups a second", [wakes])
        self.report("% of a core", [used])
        note("wakeups", [wakes], unit="/s")
        note("processor", [used], unit="% of a core")

    def own(self):
        """What it holds of its own, in MiB."""
        return Holdings(self.program).memory() / MIB

    def panel_gives_back(self):
        self.used_panel()
        before = self.own()
        self.keyboard.chord(*SEARCH)
        self.program.wait_for_panel()
        shown = self.own()
        self.program.close_panel()
        for _ in range(PANEL_ROUNDS - 1):
            self.used_panel()
        after = self.own()
        print(f"panel: {before:.1f} MiB of its own before, {shown:.1f} shown, {after:.1f} after {PANEL_ROUNDS} times")
        note("panelMemory", [after - before], unit="MiB", shown=shown - before)

    def copy_gives_back(self):
        """A text of 50 MB, and ten others so that it leaves a history of ten."""
        self.program.stop()
        stored = self.program.config / "Nettlecap" / "Nettlecap.preferences.v1"
        stored.write_text(f'{{"maxHistoryItems": {SMALLEST_HISTORY}}}')
        self.program.start()
        self.copies("antes")
        before = self.own()
        large = "0123456789" * (LARGE // 10 - 1) + "\nmais uma."
        self.offer(large)
        wait_until(lambda: self.program.state_file.stat().st_size > LARGE, "50 MB are in the history", 120)
        held = self.own()
        self.copies("depois")
        after = self.own()
        print(f"50 MB copied: {before:.1f} MiB of its own before, {held:.1f} with it, {after:.1f} when it has left")
        note("copyMemory", [after - before], unit="MiB", held=held - before)

    def copies(self, word):
        for number in range(SMALLEST_HISTORY):
            self.offer(f"{word} {number}")
            self.program.wait_for_text(f"{word} {number}")


print(f"{'':<48}{'least':>9}{'median':>9}{'most':>9}")
with Rest() as benchmark:
    benchmark.measure()
