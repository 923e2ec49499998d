"""What the program costs while nobody uses it: how often it wakes and what it uses of a
processor with its poll going, and what it holds of the memory once its panel was closed,
beside an empty Qt Quick program that has shown a window and closed it."""

import os
import pathlib
import re
import subprocess
import time

from outside import Benchmark, note
from appearance import entry
from desktop import wait_until
from holdings import MIB, Holdings
from hot_keys import SEARCH
from keyboard import Keyboard

QUICK = "NETTLECAP_QUICK" in os.environ
IDLE_SECONDS = 5 if QUICK else 20
MEMORY_ROUNDS = 1 if QUICK else 3
PANEL_ROUNDS = 20
ENTRIES = [entry(f"{number} anotações: " + "a reunião de terça-feira começa às 15h30. " * 24, number)
           for number in range(500)]
LARGE = 50_000_000  # bytes
SMALLEST_HISTORY = 10


def files_without_qt():
    """Those that some program has in memory which does not use Qt."""
    files = set()
    for maps in pathlib.Path("/proc").glob("[0-9]*/maps"):
        try:
            mapped = {line.split(maxsplit=5)[5] for line in maps.read_text().splitlines() if "/" in line}
        except OSError:  # it ended meanwhile, or is not ours to look at
            continue
        if not any("libQt6Core" in path for path in mapped):
            files |= mapped
    return files


def memory_alone(pid):
    """In KiB: the process's PSS, its part of what it shares, if no other program used Qt. So
    of what only those have in memory too, the whole is its part."""
    common, mapping, sizes, total = files_without_qt(), "", {}, 0
    for line in pathlib.Path(f"/proc/{pid}/smaps").read_text().splitlines():
        words = line.split(maxsplit=5)
        if not words[0].endswith(":"):
            mapping = words[5] if len(words) == 6 else ""
        elif words[0] in ("Rss:", "Pss:"):
            sizes[words[0]] = int(words[1])
            if words[0] == "Pss:":
                total += sizes["Pss:" if mapping in common else "Rss:"]
    return total


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

    def alone(self, process):
        """In MiB, once what it holds of its own has stood still."""
        status, seen = pathlib.Path(f"/proc/{process.pid}/status"), []

        def settled():
            seen.append(int(re.search(r"RssAnon:\s+(\d+)", status.read_text())[1]))
            return len(seen) >= 25 and max(seen[-25:]) - min(seen[-25:]) < 64

        wait_until(settled, "the memory stands still")
        return memory_alone(process.pid) / 1024

    def idle(self):
        Holdings(self.program).memory()  # until what came with the start is over
        wakes, used = self.switches(), self.used()
        time.sleep(IDLE_SECONDS)
        wakes = (self.switches() - wakes) / IDLE_SECONDS
        used = (self.used() - used) / 1e9 / IDLE_SECONDS * 100
        self.report("wake-ups a second", [wakes])
        self.report("% of a core", [used])
        note("wakeups", [wakes], unit="/s")
        note("processor", [used], unit="% of a core")

    def tasks(self, file):
        return [path.read_text() for path in pathlib.Path(f"/proc/{self.program.process.pid}/task").glob(f"*/{file}")]

    def switches(self):
        """How often any of its threads went to sleep of its own accord, and so woke before."""
        return sum(int(line.split()[1]) for status in self.tasks("status") for line in status.splitlines()
                   if line.startswith("voluntary_ctxt_switches:"))

    def used(self):
        """Of processor time, in ns."""
        return sum(int(schedstat.split()[0]) for schedstat in self.tasks("schedstat"))

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
