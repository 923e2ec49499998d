"""From the press of Ctrl+C in another program to the copy on the disk, with 5,000 entries of
1 KB: the real program on a virtual desktop. The copy is on the disk once the state file has
been replaced, after it was flushed. The floor, in turns with it, writes the same bytes to the
same disk just as safely."""

import os
import time

from outside import ROUNDS, Benchmark, note
from appearance import entry
from copies_test import Editor
from keyboard import Keyboard

LINE = "a reunião de terça-feira começa às 15h30, na sala do segundo andar. "
ENTRIES = 5000


class Copy(Benchmark):
    def measure(self):
        self.open()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        entries = [entry(f"{number} anotações: {LINE * 15}"[:1000], number) for number in range(ENTRIES)]
        self.program = self.program_with(entries, {}).start()
        self.editor = Editor(self)
        rounds = [self.round(number) for number in range(ROUNDS + 1)][1:]
        times, floors = zip(*rounds)
        self.report("the same bytes, safely on the disk", floors)
        self.report("Ctrl+C to the copy on the disk", times)
        note("keyToDisk", times, floors, unit="ms")

    def round(self, number):
        floor = self.floor()
        self.editor.content = {"UTF8_STRING": f"cópia {number} {LINE * 15}".encode()[:1000]}
        before = self.program.state_file.stat().st_ino
        with self.keyboard.holding("Control_L"):
            since = self.keyboard.down("c")
            while self.program.state_file.stat().st_ino == before:
                self.editor.serve()
                self.program.check_alive()
                if time.monotonic() > since + 20:
                    raise AssertionError("the copy does not come to the disk")
                time.sleep(0.0002)  # the program needs the processors, too
            took = time.monotonic() - since
            self.keyboard.up("c")
        self.program.wait_for_text(self.editor.content["UTF8_STRING"].decode(errors="replace"))
        return took * 1000, floor

    def floor(self):
        folder = self.program.data.parent
        document = self.program.state_file.read_bytes()
        directory = os.open(folder, os.O_RDONLY | os.O_DIRECTORY)
        since = time.monotonic()
        with open(folder / ".floor", "wb") as file:
            file.write(document)
            file.flush()
            os.fsync(file.fileno())
        os.replace(folder / ".floor", folder / "floor.json")
        os.fsync(directory)
        took = time.monotonic() - since
        os.close(directory)
        return took * 1000


print(f"{'ms':<48}{'least':>9}{'median':>9}{'most':>9}")
with Copy() as benchmark:
    benchmark.measure()
