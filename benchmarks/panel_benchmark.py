"""What the panel costs with 5,000 entries, every tenth of them a picture: the real program
on a virtual desktop, with real wheel and keys. For each step: how long until the list looks
different on the screen, how long its frames took, as the renderer itself tells, and how much
processor time the main thread, which draws, took until it rested again. The floor is a step
that moves the field's caret and changes nothing else."""

import pathlib
import re
import shutil
import statistics
import time

from outside import ROUNDS, Benchmark, note
from appearance import entry
from desktop import run, wait_until
from keyboard import Keyboard
from Xlib import X
from Xlib.ext import xtest

FRAMES = {"QT_LOGGING_RULES": "qt.scenegraph.time.renderloop.debug=true", "QT_LOGGING_TO_CONSOLE": "1"}
ENTRIES, PICTURES = 5000, 50
LINE = "a reunião de terça-feira começa às 15h30, na sala do segundo andar. "
WHEEL_DOWN = 5


class Panel(Benchmark):
    def measure(self):
        self.seen = {}
        self.open()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        self.start()
        self.keyboard.tap("a")
        floor = self.steps("floor: the caret moves", self.field, self.move_caret)
        self.keyboard.tap("BackSpace")
        self.rest()
        before = self.memory()
        self.steps("the scroll bar, dragged", self.list, self.drag, floor)
        self.let_go()
        self.steps("one notch of the wheel", self.list, self.turn, floor)
        self.steps("ten notches at once", self.list, lambda: self.turn(10), floor)
        self.steps("a letter in the search field", self.list, self.letter, floor)
        carets = self.seen["floor: the caret moves"]
        note("wheel", self.seen["one notch of the wheel"], carets, unit="ms")
        note("letter", self.seen["a letter in the search field"], carets, unit="ms")
        print(f"memory: {before:.1f} MB before, {self.memory():.1f} MB after", flush=True)

    def start(self):
        entries = [self.entry(number) for number in range(ENTRIES)]
        self.program = self.program_with(entries, {}, environment=FRAMES)
        first, *others = [self.program.images / f"figura{number}.png" for number in range(PICTURES)]
        run("convert", "-size", "1920x1080", "gradient:navy-gold", f"png:{first}")
        for other in others:
            shutil.copy(first, other)
        self.program.spawn()
        panel = self.program.wait_for_panel()
        wait_until(lambda: self.screen.active() == panel.id, "the panel has the focus")
        left, top = self.screen.position(panel)
        # Strips across what changes: the field's text, and the rows' from top to bottom.
        self.field = left + 40, top + 52, 80, 18
        self.list = left + 64, top + 90, 120, 400
        self.handle = left + 425, top + 92
        run("xdotool", "mousemove", str(left + 200), str(top + 300))
        self.rest()

    @staticmethod
    def entry(number):
        if number % 10 == 9:
            return entry(None, number, "Fotos", imageFilename=f"figura{number // 10 % PICTURES}.png")
        text = f"{number} anotações: {LINE * 15}"
        return entry(text[:1000], number)

    def steps(self, what, strip, act, floor=None):
        seconds, processor = [], []
        told = len(self.frames())
        for _ in range(ROUNDS):
            before, used = self.look(strip), self.used()
            since = time.monotonic()
            act()
            while self.look(strip) == before:
                if time.monotonic() > since + 10:
                    raise AssertionError(f"{what}: nothing changes")
                time.sleep(0.0005)
            seconds.append((time.monotonic() - since) * 1000)
            self.rest()
            processor.append((self.used() - used) / 1e6)
        frames = self.frames()[told:]
        middle = statistics.median(processor)
        ratio = f"{middle / floor:9.1f}" if floor else ""
        slow = sum(frame > 33 for frame in frames)
        print(f"{what:<30}{statistics.median(seconds):9.1f}{len(frames):9}{statistics.median(frames):9.1f}"
              f"{max(frames):9}{slow:9}{middle:12.1f}{ratio}", flush=True)
        self.seen[what] = seconds
        return middle

    def frames(self):
        """How long each took, in whole ms."""
        return [int(ms) for ms in re.findall(r"Frame rendered with .* in (\d+)ms", self.program.log.read_text())]

    def look(self, strip):
        return self.screen.root.get_image(*strip, X.ZPixmap, 0xFFFFFFFF).data

    def used(self):
        """Of processor time by the main thread, in ns."""
        pid = self.program.process.pid
        return int(pathlib.Path(f"/proc/{pid}/task/{pid}/schedstat").read_text().split()[0])

    def rest(self):
        """Until the main thread has used less than 1 ms in 60."""

        def resting():
            before = self.used()
            time.sleep(0.06)
            return self.used() - before < 1e6

        wait_until(resting, "the program rests")

    def memory(self):
        status = pathlib.Path(f"/proc/{self.program.process.pid}/status").read_text().splitlines()
        return next(int(line.split()[1]) for line in status if line.startswith("VmRSS:")) / 1000

    def event(self, kind, detail=0, **place):
        xtest.fake_input(self.keyboard.display, kind, detail, **place)
        self.keyboard.display.sync()

    def move_caret(self):
        self.caret_at_end = not getattr(self, "caret_at_end", True)
        self.keyboard.tap("End" if self.caret_at_end else "Home")

    def turn(self, notches=1):
        for _ in range(notches):
            self.event(X.ButtonPress, WHEEL_DOWN)
            self.event(X.ButtonRelease, WHEEL_DOWN)

    def drag(self):
        """A little further than before, from the top to the middle of the list."""
        if not hasattr(self, "dragged"):
            run("xdotool", "mousemove", *map(str, self.handle))
            self.event(X.ButtonPress, 1)
            self.dragged = 0
        self.dragged += 5
        x, y = self.handle
        self.event(X.MotionNotify, x=x, y=y + self.dragged)

    def let_go(self):
        self.event(X.ButtonRelease, 1)
        self.rest()

    def letter(self):
        """Of a number that leaves fewer entries with each."""
        self.typed = getattr(self, "typed", 0) + 1
        self.keyboard.tap("BackSpace" if self.typed % 2 == 0 else "7")


print(f"{'ms':<30}{'pixels':>9}{'frames':>9}{'median':>9}{'most':>9}{'> 33':>9}{'processor':>12}{'x floor':>9}")
with Panel() as benchmark:
    benchmark.measure()
