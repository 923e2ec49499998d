"""What the desktop tests share: the program under test, real programs beside it, keys,
pointer, screenshots, and waiting for what must come.

Everything runs inside tests/desktop/with-desktop. NETTLECAP_PROGRAM names the program,
NETTLECAP_ARTEFACTS the folder for screenshots, NETTLECAP_DEADLINE how many seconds whatever
must come may take.
"""

import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import accessible
from screen import Screen

HERE = pathlib.Path(__file__).resolve().parent
PROGRAM = os.environ["NETTLECAP_PROGRAM"]
ARTEFACTS = pathlib.Path(os.environ["NETTLECAP_ARTEFACTS"])
ROOM = pathlib.Path(os.environ["NETTLECAP_TEST_DESKTOP"])
# In seconds: many times what the slowest condition takes on a loaded machine.
DEADLINE = float(os.environ.get("NETTLECAP_DEADLINE", "40"))
# Root passes every permission check; without this capability it is held to them like anybody.
AS_ANYBODY = ("setpriv", "--bounding-set=-dac_override,-dac_read_search") if os.geteuid() == 0 else ()


def wait_until(condition, what, seconds=DEADLINE):
    """Returns the condition's first true value; fails when none came in time."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds:.0f} s in vain: {what}")
        time.sleep(0.02)


def keep_doing(action, condition, what, every=1.5):
    """Repeats an action until the condition holds: a window may be on screen before its
    program listens, and a key pressed then is lost."""
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        action()
        pause = time.monotonic() + every
        while time.monotonic() < pause:
            value = condition()
            if value:
                return value
            time.sleep(0.02)
    raise AssertionError(f"tried {DEADLINE:.0f} s in vain: {what}")


def remains(condition, what, seconds=0.8):
    """For what must not happen later: fails as soon as the condition does not hold."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if not condition():
            raise AssertionError(f"it did not last {seconds} s: {what}")
        time.sleep(0.02)


def run(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, timeout=DEADLINE, **options).stdout


def keys(*names):
    """Real key presses, through the X server, to whatever has the focus."""
    run("xdotool", "key", "--clearmodifiers", *names)


def point_at(x, y):
    run("xdotool", "mousemove", str(x), str(y))


def click(x, y, times=1, button=1):
    run("xdotool", "mousemove", str(x), str(y), "click", "--repeat", str(times), "--delay", "60", str(button))


def screenshot(name):
    ARTEFACTS.mkdir(parents=True, exist_ok=True)
    run("import", "-silent", "-window", "root", str(ARTEFACTS / f"{name}.png"))


def settled_screenshot(name):
    """Once two pictures in a row are alike, the windows have finished drawing themselves."""

    def pixels():
        screenshot(name)
        return run("convert", str(ARTEFACTS / f"{name}.png"), "rgb:-")

    wait_until(lambda: pixels() == pixels(), "the screen stands still")


class Nettlecap:
    """The program under test, with folders of its own that survive its process."""

    def __init__(self, screen, folder, wrapper=(), environment=None):
        self.screen = screen
        self.folder = folder
        self.data = folder / "data" / "Nettlecap"
        self.state_file = self.data / "history.json"
        self.images = self.data / "Images"
        self.config = folder / "config"
        self.log = folder / "log"
        self.wrapper = list(wrapper)
        self.environment = {
            "XDG_DATA_HOME": str(folder / "data"),
            "XDG_CONFIG_HOME": str(folder / "config"),
            **(environment or {}),
        }
        self.process = None

    def spawn(self, **options):
        with self.log.open("ab") as log:
            self.process = subprocess.Popen(
                [*self.wrapper, PROGRAM],
                env={**os.environ, **self.environment},
                stdout=log,
                stderr=log,
                **options,
            )
        return self

    def start(self):
        """Starts it and waits until it captures: its panel comes last, so what comes after
        the panel is a copy made while it runs."""
        self.spawn()
        self.wait_for_panel()
        self.close_panel()
        return self

    def close_panel(self):
        def escape():
            panel = self.panel()
            if panel:
                run("xdotool", "windowactivate", str(panel.id))
                keys("Escape")

        keep_doing(escape, lambda: not self.panel(), "the panel closes")

    def panel(self):
        return self.screen.window(window_class="Nettlecap", title="Nettlecap")

    def wait_for_panel(self):
        def shown():
            self.check_alive()
            return self.panel()

        return wait_until(shown, "the panel appears")

    def show_panel(self):
        """Asks for the panel the way a desktop does, by a second start; it has the focus then."""
        subprocess.run([PROGRAM], env={**os.environ, **self.environment}, check=True, timeout=DEADLINE)
        panel = self.wait_for_panel()
        wait_until(lambda: self.screen.active() == panel.id, "the panel has the focus")
        return panel

    def middle(self, node):
        """Where on the screen the middle is of something within the shown panel, for which the
        program has to run with accessible.ENVIRONMENT."""
        window = self.screen.window(window_class="Nettlecap")
        corner, middle = self.screen.position(window), accessible.middle(node)
        return corner[0] + middle[0], corner[1] + middle[1]

    def middle_of_row(self, number):
        """Of the shown panel, the first being 0."""
        rows = wait_until(lambda: accessible.rows()[number:], f"a row {number}")
        return self.middle(rows[0])

    def click_row(self, number, times=1):
        click(*self.middle_of_row(number), times)

    def check_alive(self):
        status = self.process.poll()
        if status is not None:
            raise AssertionError(f"the program ended with {status}:\n{self.log.read_text(errors='replace')[-4000:]}")

    def stop(self):
        """Ends it as a session does. A program that had died before is a failure, and one
        that does not obey."""
        process, self.process = self.process, None
        if process is None:
            return
        process.terminate()
        try:
            status = process.wait(DEADLINE)
        except subprocess.TimeoutExpired:
            process.kill()
            status = f"{process.wait()}, only when it was killed"
        report = self.log.read_text(errors="replace")
        if status != 0 or "runtime error" in report:
            raise AssertionError(f"the program ended with {status}:\n{report[-4000:]}")

    def kill(self):
        self.process.kill()
        self.process.wait(10)
        self.process = None

    def document(self):
        """The state file. It is there and whole at every instant, once it was saved."""
        return json.loads(self.state_file.read_bytes()) if self.state_file.exists() else {"entries": []}

    def history(self):
        return self.document()["entries"]

    def texts(self):
        return [entry.get("text") for entry in self.history()]

    def wait_for_text(self, text):
        """The entry that holds the text, once it stands on top."""

        def on_top():
            self.check_alive()
            top = (self.history() or [{}])[0]
            return top if top.get("text") == text else None

        return wait_until(on_top, f"a text of {len(text)} characters on top of the history")

    def wait_for_image(self):
        """The entry of a picture, once it stands on top, and the bytes of its file."""

        def on_top():
            self.check_alive()
            top = (self.history() or [{}])[0]
            return top if top.get("kind") == "image" else None

        entry = wait_until(on_top, "a picture on top of the history")
        return entry, (self.images / entry["imageFilename"]).read_bytes()

    def leftovers(self):
        """Files in its folders that an interrupted write left behind."""
        return [path.name for path in self.data.rglob(".*") if path.name != ".lock"]

    def memory_peak(self):
        """In bytes, of what the process ever had in memory at once."""
        for line in pathlib.Path(f"/proc/{self.process.pid}/status").read_text().splitlines():
            if line.startswith("VmHWM:"):
                return int(line.split()[1]) * 1024
        raise AssertionError("the kernel tells no peak")


class Owner:
    """A clipboard owner that does what a test needs (see owner.py)."""

    def __init__(self, folder, *options):
        self.log = pathlib.Path(tempfile.mkstemp(dir=folder, prefix="owner-")[1])
        with self.log.open("wb") as log:
            self.process = subprocess.Popen(
                [sys.executable, "-B", str(HERE / "owner.py"), *options],
                stdin=subprocess.PIPE,
                stdout=log,
                stderr=subprocess.STDOUT,
            )
        wait_until(lambda: "owned" in self.events(), "the owner owns the clipboard")

    def events(self):
        return self.log.read_text().splitlines()

    def window(self):
        """The window that owns, or owned, the clipboard for it."""
        return next(int(event.split()[1]) for event in self.events() if event.startswith("window "))

    def requests(self, target):
        return self.events().count(f"asked {target}")

    def tell(self, command):
        self.process.stdin.write(f"{command}\n".encode())
        self.process.stdin.flush()

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait(10)
        self.process.stdin.close()


class Desktop:
    """A folder of one's own, programs started and asked. What it starts it hands to
    addCleanup, so that nothing is left afterwards."""

    def open(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(dir=ROOM, prefix="test-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.screen = Screen()
        self.addCleanup(self.screen.display.close)

    def nettlecap(self, **options):
        program = Nettlecap(self.screen, self.folder, **options)
        self.addCleanup(program.stop)
        return program

    def owner(self, *options):
        owner = Owner(self.folder, *options)
        self.addCleanup(owner.stop)
        return owner

    def client(self, *command, environment=None, **options):
        """A real program beside ours, ended with the test."""
        process = subprocess.Popen(
            command,
            env={**os.environ, **(environment or {})},
            start_new_session=True,
            **{"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options},
        )
        self.addCleanup(self.end, process)
        return process

    def x_server(self, *options):
        """One more, and its display. Two that start at once may choose the same number; the
        one that loses gives up."""
        for _ in range(3):
            reader, writer = os.pipe()
            server = self.client("Xvfb", "-displayfd", str(writer), *options,
                                 "-nolisten", "tcp", "-noreset", pass_fds=[writer])
            os.close(writer)
            with os.fdopen(reader) as told:
                number = told.readline().strip()
            if number:
                return server, f":{number}"
        raise AssertionError("no X server starts")

    @staticmethod
    def end(process):
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait(10)

    def window_of(self, window_class):
        """The client's window, once it has the focus."""
        window = wait_until(lambda: self.screen.window(window_class), f"a window of {window_class}")
        keep_doing(
            lambda: run("xdotool", "windowactivate", str(window.id)),
            lambda: self.screen.active() == window.id,
            f"{window_class} has the focus",
        )
        return window

    def compositor(self):
        self.client("picom", "--backend", "xrender", "--config", "/dev/null")
        wait_until(self.screen.has_compositor, "a compositor runs")

    def file(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def offer(self, content, target=None):
        """xclip owns the clipboard with these bytes until somebody else does."""
        path = pathlib.Path(tempfile.mkstemp(dir=self.folder, prefix="offer-")[1])
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        kind = ("-t", target) if target else ()
        before = self.screen.clipboard_owner()
        process = self.client("xclip", "-quiet", "-selection", "clipboard", *kind, "-i", str(path))
        wait_until(lambda: self.screen.clipboard_owner() not in (0, before), "xclip owns the clipboard")
        return process

    def offer_and_end(self, content, target):
        """By a program that ends when that was taken: ours owns it once it has dealt with it."""
        path = pathlib.Path(tempfile.mkstemp(dir=self.folder, prefix="offer-")[1])
        path.write_bytes(content)
        owner = self.owner("--offer", f"{target}={path}")
        wait_until(lambda: f"gave {target}" in owner.events(), f"{target} is taken")
        owner.tell("quit")
        owner.process.wait(DEADLINE)
        wait_until(lambda: self.screen.clipboard_owner() not in (0, owner.window()), f"{target} is kept")

    def pasted(self, target=None):
        """What another program gets when it pastes; nothing when nobody offers it."""
        kind = ("-t", target) if target else ()
        answer = subprocess.run(
            ["xclip", "-selection", "clipboard", *kind, "-o"], capture_output=True, timeout=DEADLINE
        )
        return answer.stdout if answer.returncode == 0 else None


class DesktopTest(Desktop, unittest.TestCase):
    def setUp(self):
        self.open()


def main():
    unittest.main(module="__main__", verbosity=2, warnings="ignore")
