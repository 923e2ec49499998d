"""How long it takes from a hot key's press to what it asks for on the screen: the real
program on a virtual desktop, pressed and looked at through the X server. A number in the
table is the time until one pixel, asked for again and again, has changed."""

import contextlib
import os
import statistics
import subprocess
import time

from outside import QUICK, ROUNDS, Benchmark, note
from desktop import run, wait_until
from ground import COLOUR, Ground
from hot_keys import NEWER, OLDER, SEARCH
from keyboard import SUPER, Keyboard

PICTURE_ROUNDS = 6 if QUICK else 60
FRAME = 1000 / 60  # ms
MAGENTA = (255, 0, 255)
# Of 3840x2160: as drawings are, and as photographs are at worst.
PICTURES = {
    "smooth": ("-size", "3840x2160", "gradient:navy-gold"),
    "noisy": ("-size", "960x540", "plasma:navy-gold", "-resize", "3840x2160"),
}


class Decoder(contextlib.ExitStack):
    """A program that decodes a picture when asked to, and does nothing else."""

    def __init__(self, path):
        super().__init__()
        self.process = self.enter_context(
            subprocess.Popen(
                [os.environ["NETTLECAP_DECODE_PICTURE"], str(path)],
                stdin=subprocess.PIPE,
                stdout=subprocess.PIPE,
                text=True,
            )
        )

    def decode(self):  # ms
        print(file=self.process.stdin, flush=True)
        return float(self.process.stdout.readline())


class HotKeys(Benchmark):
    def measure(self):
        self.open()
        self.keyboard = Keyboard()
        self.addCleanup(self.keyboard.close)
        self.program = self.nettlecap().start()
        self.ground = Ground(self)
        left, top, width, height = self.screen.work_area()
        self.edge = left + width // 2, top + height - 110 - 12  # of every card, above its bottom
        self.middle = left + width // 2, top + height - 110 - 330 + 22 + 120  # of a card's picture

        self.report("one look at a pixel", self.looks())
        self.copy("um texto", "por cima")
        self.measure_card("press to card, text", "cardText")
        for name, source in PICTURES.items():
            self.measure_picture(name, self.copy_picture(name, source))
        panel = self.panel()
        self.report("press to panel, warm", panel, 50)
        note("panel", panel, unit="ms")

    def measure_card(self, what, key):
        times = self.card(self.see_card, ROUNDS)
        self.report(what, times, FRAME)
        note(key, times, unit="ms")

    def measure_picture(self, name, path):
        """One bare decode between every two gestures, since the processor's pace changes, and is
        another one after a rest than after a second of decoding."""
        self.measure_card(f"press to card, {name} picture: the card", f"card{name.title()}")
        decodes = []
        with Decoder(path) as decoder:
            wholes = self.card(self.see_picture, PICTURE_ROUNDS, lambda: decodes.append(decoder.decode()))
        self.report(f"bare decode, {name} picture of {path.stat().st_size / 1e6:.1f} MB", decodes)
        to_reach = statistics.median(decodes) + FRAME
        self.report(f"press to card, {name} picture: with it", wholes, to_reach)
        note(f"picture{name.title()}", wholes, decodes, unit="ms")

    def looks(self):
        return [self.see(time.monotonic(), self.edge, lambda it: True) for _ in range(ROUNDS)]

    def see(self, since, place, wanted):
        while not wanted(self.screen.colour(*place)):
            if time.monotonic() > since + 10:
                raise AssertionError(f"at {place} there is {self.screen.colour(*place)}")
            time.sleep(0.0005)  # the program needs the processors, too
        return (time.monotonic() - since) * 1000

    def see_card(self, since):
        return self.see(since, self.edge, lambda it: it != COLOUR)

    def see_picture(self, since):
        return self.see(since, self.middle, lambda it: it == MAGENTA)

    def card(self, seen, rounds, between=lambda: None):
        """Of a history's second entry; each round is a gesture of its own."""
        times = []
        for _ in range(rounds):
            with self.gesture():
                times.append(seen(self.keyboard.down(OLDER)))
                self.keyboard.up(OLDER)
            between()
            with self.gesture():
                self.keyboard.tap(NEWER)  # back, so that the next step arrives there again
        return times

    @contextlib.contextmanager
    def gesture(self):
        with self.keyboard.holding(SUPER):
            yield
            before = self.ground.listen().keys
        wait_until(lambda: self.ground.listen().keys >= before + 2, "Ctrl+V is typed")
        wait_until(lambda: self.screen.colour(*self.edge) == COLOUR, "the card is gone")

    def panel(self):
        self.keyboard.chord(*SEARCH)
        panel = self.program.wait_for_panel()
        x, y = self.screen.position(panel)
        geometry = panel.get_geometry()
        middle = x + geometry.width // 2, y + geometry.height // 2
        times = []
        for _ in range(ROUNDS):
            self.program.wait_for_panel()  # as the window manager has it, too
            self.program.close_panel()
            wait_until(lambda: self.screen.colour(*middle) == COLOUR, "the panel is gone")
            with self.keyboard.holding(*SEARCH[:-1]):
                times.append(self.see(self.keyboard.down(SEARCH[-1]), middle, lambda it: it != COLOUR))
                self.keyboard.up(SEARCH[-1])
        return times

    def copy(self, *texts):
        for text in texts:
            self.offer(text)
            self.program.wait_for_text(text)

    def copy_picture(self, name, source):
        """With a patch in the middle that can be known again."""
        path = self.folder / f"{name}.png"
        patch = "rectangle 1600,900 2240,1260"
        run("convert", *source, "-fill", "magenta", "-draw", patch, "-depth", "8", f"png24:{path}")
        self.offer(path.read_bytes(), "image/png")
        self.program.wait_for_image()
        self.copy(f"por cima da figura {name}")
        return path


print(f"{'ms':<48}{'least':>9}{'median':>9}{'most':>9}{'to reach':>9}")
with HotKeys() as benchmark:
    benchmark.measure()
