"""How long the program takes to start, with a long history that was read from the disk
before: from the start of its process to its icon in a real tray, and until a second start has
handed over to the first one and ended. The floor is a program that has an icon and nothing
else; they start in turns."""

import os
import statistics
import subprocess
import time

from outside import ROUNDS, Benchmark, note
from appearance import entry
from desktop import PROGRAM, wait_until
from tray import Tint2
from Xlib import X
from Xlib.error import BadWindow

ENTRIES = 5000
LINE = "a reunião de terça-feira começa às 15h30, na sala do segundo andar. "


class Start(Benchmark):
    def measure(self):
        self.open()
        tray = Tint2(self).start()
        wait_until(tray.bar, "the tray is there")
        self.tray = next(window for window in tray._windows() if tray.is_bar(window))
        entries = [entry(f"{number} anotações: {LINE * 15}"[:1000], number) for number in range(ENTRIES)]
        self.environment = self.program_with(entries, {"launchAtLogin": False}).environment
        rounds = [self.round() for _ in range(ROUNDS + 1)][1:]  # the first one warms the disk
        floors, starts, seconds = zip(*rounds)
        self.report("start to icon, of a program with an icon only", floors)
        self.report("start to icon", starts, statistics.median(starts) / statistics.median(floors))
        self.report("second start to its end", seconds)
        note("start", starts, floors, unit="ms")
        note("secondStart", seconds, unit="ms")

    def round(self):
        floor, process = self.start(os.environ["NETTLECAP_EMPTY_PROGRAM"])
        self.finish(process)
        start, process = self.start(PROGRAM)
        second = self.start_again()
        self.finish(process)
        return floor, start, second

    def start(self, program):
        began = time.monotonic()
        process = self.client(program, environment=self.environment)
        while not self.has_icon():
            if time.monotonic() > began + 10 or process.poll() is not None:
                raise AssertionError(f"{program} has no icon")
            time.sleep(0.0005)  # the program needs the processors, too
        return (time.monotonic() - began) * 1000, process

    def start_again(self):
        began = time.monotonic()
        subprocess.run([PROGRAM], env={**os.environ, **self.environment}, check=True, timeout=10)
        return (time.monotonic() - began) * 1000

    def finish(self, process):
        process.terminate()
        process.wait(10)
        wait_until(lambda: not self.has_icon(), "the icon is gone")

    def has_icon(self):
        """Whether the tray has taken in a window, and shows it."""
        try:
            return any(
                icon.get_attributes().map_state == X.IsViewable
                for socket in self.tray.query_tree().children
                for icon in socket.query_tree().children
            )
        except BadWindow:  # gone between the list and the question
            return self.has_icon()


print(f"{'ms':<48}{'least':>9}{'median':>9}{'most':>9}{'x floor':>9}")
with Start() as benchmark:
    benchmark.measure()
