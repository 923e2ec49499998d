"""Programs that no one here wrote, each with something to type into; what they received is
what they tell or save."""

import pathlib
import tempfile

import accessible
from desktop import keep_doing, keys, run, wait_until


class Target:
    """Ready once it has been made: it has the focus, and what is typed arrives."""

    def __init__(self, test, window_class):
        self.test = test
        self.file = pathlib.Path(tempfile.mkdtemp(dir=test.folder, prefix="target-")) / "received.txt"
        self.file.touch()
        self.start()
        self.window = test.window_of(window_class)
        self.known = ""
        keep_doing(lambda: self.type("+"), lambda: "+" in self.received(), "what is typed arrives")
        self.finish_reading()

    def type(self, text):
        run("xdotool", "type", text)

    def whole(self):
        """All that it has received by now."""
        return self.file.read_text(errors="replace")  # half a character may be there already

    def received(self):
        """What came after what is known already."""
        whole = self.whole()
        if self.known.startswith(whole):  # nothing more, or it is being saved at this moment
            return ""
        if not whole.startswith(self.known):
            raise AssertionError(f"it had {self.known!r}, and now {whole!r}")
        return whole[len(self.known) :]

    def finish_reading(self):
        """Whatever was typed or pasted has arrived when this has; from now on it is known."""
        self.type("=")

        def all_of_it():
            received = self.received()
            return received if received.endswith("=") else None

        received = wait_until(all_of_it, "what is typed arrives")
        self.known += received
        return received.removesuffix("=")

    def expect(self, text):
        """Waits for the text; nothing else came before or after it."""
        wait_until(lambda: len(self.received()) >= len(text), f"{type(self).__name__} receives {text!r:.80}")
        self.test.assertEqual(self.finish_reading(), text)


class Terminal(Target):
    """A program in it writes down each byte as it comes, control characters too."""

    def command(self):
        return "sh", "-c", f"stty raw -echo; exec cat >>'{self.file}'"


class XTerm(Terminal):
    def __init__(self, test):
        super().__init__(test, "XTerm")

    def start(self):
        self.test.client("xterm", "-e", *self.command())


class Xfce4Terminal(Terminal):
    def __init__(self, test):
        super().__init__(test, "Xfce4-terminal")

    def start(self):
        self.test.client("xfce4-terminal", "--disable-server", "-x", *self.command())


class FeatherPad(Target):
    """An editor made with Qt."""

    def __init__(self, test):
        super().__init__(test, "FeatherPad")

    def start(self):
        settings = self.file.parent / "featherpad"
        settings.mkdir()
        (settings / "fp.conf").write_text("[text]\nappendEmptyLine=false\n")  # nor any other change of its own
        own_settings = {"XDG_CONFIG_HOME": str(self.file.parent)}
        self.test.client("featherpad", "--standalone", str(self.file), environment=own_settings)

    def whole(self):
        keys("ctrl+s")
        return self.file.read_text(errors="replace")


class Zenity(Target):
    """A line to type into, made with GTK 3."""

    def __init__(self, test):
        super().__init__(test, "Zenity")

    def start(self):
        with self.file.open("wb") as file:
            self.test.client("zenity", "--entry", environment={"NO_AT_BRIDGE": "0"}, stdout=file)

    def whole(self):
        return "".join(accessible.texts("zenity"))

    def printed(self):
        """What it tells when it is closed."""
        keys("Return")
        return wait_until(lambda: self.file.read_text(), "zenity prints what it has").removesuffix("\n")


ALL = (Zenity, FeatherPad, XTerm, Xfce4Terminal)
